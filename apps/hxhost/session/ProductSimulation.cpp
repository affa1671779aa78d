#include "apps/hxhost/session/ProductSimulation.h"

#include "host/base/HexText.h"
#include "ports/SimulatedIdentity.h"

namespace hx::host {

std::optional<sim::FaultyProduct> simulateProduct(CommandContext& context, DeviceInterface& device,
                                                  const SimulationOptions& options)
{
    const ProductDescription product = describeProduct(device);
    if (const std::optional<sim::ProductIdentity> identity = simulatedIdentity(product))
        return sim::FaultyProduct(sim::SimulatedProduct(*identity, options.settings()),
                                  options.faultPlan());
    context.fail(
        ExitCode::NoPort,
        QStringLiteral("the product %1 cannot be simulated: its messages begin with \"%2\"")
            .arg(product.name, hexText(product.header)),
        QStringLiteral("F0, a maker of three bytes, family and model, the same in all "
                       "commands of the plugin"),
        QStringLiteral("give the product's own port with --port, or another plugin"));
    return std::nullopt;
}

void failStoring(CommandContext& context, const QString& path, const QString& error)
{
    context.fail(
        ExitCode::FileError,
        QStringLiteral("the simulated product stopped: the state file \"%1\" cannot be written: %2")
            .arg(path, error),
        QStringLiteral("room for all that the product stores"),
        QStringLiteral("make room, then run this command again; the file holds what the product "
                       "had stored before"));
}

} // namespace hx::host

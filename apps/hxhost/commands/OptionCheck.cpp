#include "apps/hxhost/commands/OptionCheck.h"

#include "apps/hxhost/report/ResultSchema.h"
#include "apps/hxhost/session/PortOpener.h"

#include "host/base/FileName.h"

#include <algorithm>

namespace hx::host {

namespace {

// The option with this name; null when the command has none.
const GivenOption* optionOf(const std::vector<GivenOption>& options, const char* name)
{
    const auto found = std::find_if(options.begin(), options.end(),
                                    [name](const auto& option) { return option.name == name; });
    return found == options.end() ? nullptr : &*found;
}

// The last value given; empty when the command has no such option, or it was left out.
QString valueOf(const std::vector<GivenOption>& options, const char* name)
{
    const GivenOption* option = optionOf(options, name);
    return option == nullptr || option->values.empty() ? QString()
                                                       : fileNameText(option->values.back());
}

std::optional<Problem> fieldProblem(const QString& commandName, const QString& field)
{
    if (field.isEmpty() || resultHasField(commandName, field))
        return std::nullopt;
    return Problem{ExitCode::Usage,
                   QStringLiteral("the result of '%1' has no value \"%2\"").arg(commandName, field),
                   QStringLiteral("one of: ") + resultFields(commandName).join(QLatin1String(", ")),
                   QStringLiteral("give one of these with --field; a list's elements are reached "
                                  "by number, as in \"steps.0.step\"")};
}

// The fault would not happen, and the update would.
std::optional<Problem> simulationProblem(const std::vector<GivenOption>& options, const char* name,
                                         const QString& what)
{
    const bool hasPort = optionOf(options, "--port") != nullptr;
    const QString port = valueOf(options, "--port");
    if (!hasPort || valueOf(options, name).isEmpty() || isSimulatedPort(port))
        return std::nullopt;
    return Problem{
        ExitCode::Usage,
        QStringLiteral("%1 cannot be given for %2: only the simulated product has %3")
            .arg(QLatin1String(name),
                 port.isEmpty() ? QStringLiteral("the product's own port")
                                : QStringLiteral("the port \"%1\"").arg(port),
                 what),
        QStringLiteral("--port simulator or --port simulator:STATEFILE"),
        QStringLiteral("give one of these with %1, or leave %1 out").arg(QLatin1String(name))};
}

// An image on standard input would end there, and the update with it.
std::optional<Problem> eofProblem(const std::vector<GivenOption>& options)
{
    const GivenOption* flag = optionOf(options, "--stop-at-eof");
    if (flag == nullptr || flag->values.empty() || valueOf(options, "IMAGE") != QLatin1String("-"))
        return std::nullopt;
    return Problem{
        ExitCode::Usage,
        QStringLiteral("--stop-at-eof cannot be given for \"-\": the image ends standard "
                       "input"),
        QStringLiteral("the name of an image file"),
        QStringLiteral("name the file, or leave --stop-at-eof out")};
}

// A port that is not a pair of this machine's ports has its own answers.
std::optional<Problem> inPortProblem(const std::vector<GivenOption>& options)
{
    const QString port = valueOf(options, "--port");
    const QString inPort = valueOf(options, "--in-port");
    if (inPort.isEmpty() || !isMadeUpPort(port))
        return std::nullopt;
    return Problem{ExitCode::Usage,
                   QStringLiteral("--in-port \"%1\" cannot be given for the port \"%2\", whose "
                                  "answers come by itself")
                       .arg(inPort, port),
                   QStringLiteral("--in-port beside a MIDI port of this machine ('hxhost ports')"),
                   QStringLiteral("leave --in-port out, or give another --port")};
}

} // namespace

std::optional<Problem> optionProblem(const Command& command)
{
    const std::vector<GivenOption> options = command.given();
    if (std::optional<Problem> problem =
            simulationProblem(options, "--fault", QStringLiteral("faults on demand")))
        return problem;
    if (std::optional<Problem> problem = simulationProblem(
            options, "--serial", QStringLiteral("a serial number of your choice")))
        return problem;
    if (std::optional<Problem> problem = eofProblem(options))
        return problem;
    if (std::optional<Problem> problem = inPortProblem(options))
        return problem;
    return fieldProblem(QString::fromStdString(command.fullName()), valueOf(options, "--field"));
}

} // namespace hx::host

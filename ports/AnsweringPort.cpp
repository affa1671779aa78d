#include "ports/AnsweringPort.h"

#include "host/product/ProductReadings.h"

namespace hx {

namespace {

enum class Answer { None, OtherProduct, Served };

Answer answerBy(MidiPort& port, DeviceInterface& device, const Patience& patience)
{
    PortBus bus(port, {}, patience);
    ProductReader reader(device, bus);
    const IdentityReading identity = reader.identity(1);
    if (!identity.isTold())
        return Answer::None;
    return reader.isServed(identity) ? Answer::Served : Answer::OtherProduct;
}

Result<AnsweringPort> openOne(const PortAddress& address, const OpenAddress& open)
{
    Result<std::unique_ptr<MidiPort>> port = open(address);
    if (!port)
        return port.problem();
    return AnsweringPort{std::move(*port), address.input};
}

Problem silenceProblem(const QList<PortAddress>& addresses)
{
    QStringList inputs;
    for (const PortAddress& address : addresses)
        inputs << address.backend + QLatin1Char(':') + address.input;
    return {ExitCode::NoPort,
            QStringLiteral("no answer to %1:%2 came through any of the inputs that may "
                           "belong to it: %3; name the one that does with --in-port")
                .arg(addresses.first().backend, addresses.first().output,
                     inputs.join(QLatin1String(", "))),
            QString(), QString()};
}

// One message may be lost, so each is asked again after all the others.
Result<AnsweringPort> findAnswering(const QList<PortAddress>& addresses, DeviceInterface& device,
                                    const OpenAddress& open, const Patience& patience)
{
    const PortAddress* other = nullptr;
    for (int attempt = 0; attempt < questionAttempts; ++attempt) {
        for (const PortAddress& address : addresses) {
            Result<AnsweringPort> found = openOne(address, open);
            if (!found)
                return found;
            const Answer answer = answerBy(*found->port, device, patience);
            if (answer == Answer::Served)
                return found;
            if (answer == Answer::OtherProduct)
                other = &address;
        }
    }
    if (other != nullptr)
        return openOne(*other, open);
    return silenceProblem(addresses);
}

} // namespace

Result<AnsweringPort> openAnswering(const PortSelection& selection, DeviceInterface& device,
                                    const OpenAddress& open, const Patience& patience)
{
    if (selection.others.isEmpty())
        return openOne(selection.address, open);
    return findAnswering(QList<PortAddress>{selection.address} + selection.others, device, open,
                         patience);
}

} // namespace hx

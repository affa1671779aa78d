#include "ports/PortSelector.h"

#include <algorithm>
#include <functional>

namespace hx {

namespace {

struct Candidate {
    QString backend;
    QString port;

    QString text() const { return backend + QLatin1Char(':') + port; }
};

using Candidates = QList<Candidate>;
using Ports = QStringList MidiBackend::*;

struct Direction {
    QString name;
    QString option; // that names a port of this direction
    Ports ports;
    QString PortAddress::*member;
};

const Direction outputDirection = {QStringLiteral("output"), QStringLiteral("--port"),
                                   &MidiBackend::outputs, &PortAddress::output};
const Direction inputDirection = {QStringLiteral("input"), QStringLiteral("--in-port"),
                                  &MidiBackend::inputs, &PortAddress::input};

using Fits = std::function<bool(const Candidate&)>;

Candidates allPorts(const QList<MidiBackend>& backends, Ports direction)
{
    Candidates all;
    for (const MidiBackend& backend : backends) {
        for (const QString& port : backend.*direction)
            all << Candidate{backend.name, port};
    }
    return all;
}

Candidates fittingOf(const Candidates& all, const Fits& fits)
{
    Candidates fitting;
    for (const Candidate& candidate : all) {
        if (fits(candidate))
            fitting << candidate;
    }
    return fitting;
}

Candidates ofBackend(const Candidates& all, const QString& backend)
{
    return fittingOf(all, [&](const Candidate& candidate) { return candidate.backend == backend; });
}

// The ports that fit `wanted` most closely: whole names, else stable names, else parts of names.
Candidates closest(const Candidates& all, const QString& wanted)
{
    const Fits whole = [&](const Candidate& c) { return c.port == wanted || c.text() == wanted; };
    const Fits stable = [&](const Candidate& c) {
        const QString name = stablePortName(c.port);
        return name == wanted || c.backend + QLatin1Char(':') + name == wanted;
    };
    const Fits part = [&](const Candidate& c) {
        if (c.port.contains(wanted, Qt::CaseInsensitive))
            return true;
        const QString prefix = c.backend + QLatin1Char(':');
        return wanted.startsWith(prefix) &&
               c.port.contains(wanted.mid(prefix.size()), Qt::CaseInsensitive);
    };
    for (const Fits& fits : {whole, stable, part}) {
        const Candidates fitting = fittingOf(all, fits);
        if (!fitting.isEmpty())
            return fitting;
    }
    return {};
}

QString listText(const Candidates& candidates)
{
    QStringList texts;
    for (const Candidate& candidate : candidates)
        texts << candidate.text();
    return texts.join(QLatin1String(", "));
}

Problem nothingFits(const Direction& direction, const QString& wanted, const Candidates& all,
                    const QList<MidiBackend>& backends)
{
    QString expected = all.isEmpty() ? QStringLiteral("a MIDI port, and there is none")
                                     : QStringLiteral("one of: ") + listText(all);
    for (const MidiBackend& backend : backends) {
        if (!backend.unavailable.isEmpty())
            expected +=
                QStringLiteral("; %1 cannot be used: %2").arg(backend.name, backend.unavailable);
    }
    return {ExitCode::NoPort,
            QStringLiteral("no MIDI %1 port fits \"%2\"").arg(direction.name, wanted), expected,
            QStringLiteral("connect the product and look at 'hxhost ports', or use "
                           "'--port simulator'")};
}

Problem severalFit(const Direction& direction, const QString& wanted, const Candidates& fitting)
{
    return {ExitCode::NoPort,
            QStringLiteral("%1 MIDI %2 ports fit \"%3\": %4")
                .arg(QString::number(fitting.size()), direction.name, wanted, listText(fitting)),
            QStringLiteral("a name that fits one port"),
            QStringLiteral("give the whole name of one of them with %1").arg(direction.option)};
}

// The one port that `choose` finds among all of the direction.
Result<PortSelection> oneOf(const Direction& direction, const QString& wanted,
                            const QList<MidiBackend>& backends,
                            const std::function<Candidates(const Candidates&)>& choose)
{
    const Candidates all = allPorts(backends, direction.ports);
    const Candidates fitting = choose(all);
    if (fitting.isEmpty())
        return nothingFits(direction, wanted, all, backends);
    if (fitting.size() > 1)
        return severalFit(direction, wanted, fitting);
    PortSelection selection;
    selection.address.backend = fitting.first().backend;
    selection.address.*direction.member = fitting.first().port;
    return selection;
}

// "Valdrin Update" of "Valdrin Update-01:out".
QString deviceOf(const QString& portName)
{
    return stablePortName(portName).section(QLatin1Char(':'), 0, 0);
}

// "-01" of "Valdrin Update-01:out".
QString countOf(const QString& portName)
{
    const QString client = portName.section(QLatin1Char(':'), 0, 0);
    return client.mid(stablePortName(client).size());
}

// The inputs that may belong to a chosen output when nobody named them: of the same name, else
// those that fit what was asked for, else those of the same device. Likelier are those that JACK
// counts as it does the output.
Candidates inputsBeside(const Candidates& inputs, const QString& output, const QString& wanted)
{
    for (const QString& name : {output, wanted, deviceOf(output)}) {
        const Candidates fitting = closest(inputs, name);
        if (fitting.isEmpty())
            continue;
        Candidates likely;
        Candidates others;
        for (const Candidate& candidate : fitting)
            (countOf(candidate.port) == countOf(output) ? likely : others) << candidate;
        return likely + others;
    }
    return {};
}

} // namespace

Result<PortSelection> selectPort(const QList<MidiBackend>& backends, const QString& output,
                                 const QString& input)
{
    if (input.isEmpty())
        return selectProductPort(backends, output, output);
    Result<PortSelection> chosen =
        oneOf(outputDirection, output, backends,
              [&](const Candidates& all) { return closest(all, output); });
    if (!chosen)
        return chosen;
    const PortAddress& address = chosen->address;
    Result<PortSelection> selection =
        oneOf(inputDirection, input, backends, [&](const Candidates& all) {
            return closest(ofBackend(all, address.backend), input);
        });
    if (selection)
        selection->address.output = address.output;
    return selection;
}

Result<PortSelection> selectProductPort(const QList<MidiBackend>& backends, const QString& output,
                                        const QString& input)
{
    Result<PortSelection> selection =
        oneOf(outputDirection, output, backends,
              [&](const Candidates& all) { return closest(all, output); });
    if (!selection)
        return selection;
    PortAddress& address = selection->address;
    const Candidates all = allPorts(backends, inputDirection.ports);
    const Candidates inputs = inputsBeside(ofBackend(all, address.backend), address.output, input);
    if (inputs.isEmpty())
        return nothingFits(inputDirection, input, all, backends);
    address.input = inputs.first().port;
    for (const Candidate& other : inputs.mid(1))
        selection->others << PortAddress{address.backend, address.output, other.port};
    return selection;
}

Result<PortSelection> selectInput(const QList<MidiBackend>& backends, const QString& input)
{
    return oneOf(inputDirection, input, backends,
                 [&](const Candidates& all) { return closest(all, input); });
}

} // namespace hx

#include "ports/PortList.h"

#include "ports/MidiLibraryLog.h"
#include "ports/PortNames.h"

#include <QRegularExpression>
#include <RtMidi.h>

#include <vector>

namespace hx {

namespace {

void ignoreError(RtMidiError::Type, const std::string&, void*) {}

template <typename Ports>
QStringList listPorts(RtMidi::Api api)
{
    Ports ports(api, "hxhost list");
    ports.setErrorCallback(ignoreError);
    return portNames(ports);
}

// In our words where the library's own do not say what is missing. JACK's part of it reports a
// missing server as a mere warning and lists nothing.
QString reasonOf(RtMidi::Api api, const QString& libraryText)
{
    if (libraryText.isEmpty())
        return QString();
    if (api == RtMidi::UNIX_JACK)
        return QStringLiteral("no JACK server is running");
    const QString below = takeMidiLibraryMessage();
    const QString text = below.isEmpty() ? libraryText : below;
    return api == RtMidi::LINUX_ALSA ? QStringLiteral("there is no ALSA sequencer (%1)").arg(text)
                                     : text;
}

void fillPorts(MidiBackend& backend, RtMidi::Api api)
{
    const RtMidiSilence silence;
    takeMidiLibraryMessage();
    try {
        backend.inputs = listPorts<RtMidiIn>(api);
        backend.outputs = listPorts<RtMidiOut>(api);
    } catch (const RtMidiError& error) {
        backend.unavailable = reasonOf(api, QString::fromStdString(error.getMessage()));
        return;
    }
    if (backend.inputs.isEmpty() && backend.outputs.isEmpty())
        backend.unavailable = reasonOf(api, silence.text());
}

} // namespace

QList<MidiBackend> listMidiBackends()
{
    silenceMidiLibraries();
    std::vector<RtMidi::Api> apis;
    RtMidi::getCompiledApi(apis);
    QList<MidiBackend> backends;
    for (const RtMidi::Api api : apis) {
        if (api == RtMidi::RTMIDI_DUMMY)
            continue;
        MidiBackend backend;
        backend.name = QString::fromStdString(RtMidi::getApiName(api));
        backend.title = QString::fromStdString(RtMidi::getApiDisplayName(api));
        fillPorts(backend, api);
        backends << backend;
    }
    return backends;
}

QString stablePortName(const QString& portName)
{
    static const QRegularExpression alsaNumbers(QStringLiteral(" \\d+:\\d+$"));
    static const QRegularExpression jackCount(QStringLiteral("-\\d\\d(?=:|$)"));
    QString name = portName;
    return name.remove(alsaNumbers).remove(jackCount);
}

bool fitsProductPort(const QString& portName, const QString& productPortName)
{
    return !productPortName.isEmpty() &&
           stablePortName(portName).contains(productPortName, Qt::CaseInsensitive);
}

} // namespace hx

// Loads the plugin of the product "Orbit" and plays its product: a bus whose answers are known.
// Prints what the plugin makes of them, and exits 1 when it cannot be loaded.
#include "deviceinterface/DeviceInterface.h"

#include <QFileInfo>
#include <QPluginLoader>
#include <QTextStream>

#include <map>

namespace {

class AnsweringBus : public Bus {
public:
    std::map<QString, QString> answers; // by command, in hex

    BusData transact(BusData command, QString pattern, unsigned) override
    {
        const auto answer = answers.find(command.toString(-1));
        const HxMidiData reply =
            answer == answers.end() ? HxMidiData() : HxMidiData(answer->second);
        return reply.match(pattern.toLatin1().constData(), true) ? reply : HxMidiData();
    }

    BusData transactExpect(BusData const& command, ResponceData const& expected,
                           unsigned timeoutMs) override
    {
        return transact(command, expected.rx.pattern(), timeoutMs);
    }
};

FwUpdateProtocol describe(DeviceInterface& device, const QStringList& messages)
{
    QList<HxMidiData> image;
    for (const QString& message : messages)
        image << HxMidiData(message);
    return device.getUpdateProtocol(QStringLiteral("image"), image);
}

void printUpdates(QTextStream& out, DeviceInterface& device)
{
    const FwUpdateProtocol known = describe(device, {"F000217F31054301F7", "F000217F3105F7"});
    out << "update: " << int(known.codeType) << ' ' << QString::number(known.fidpid, 16) << ' '
        << known.responseGood.rx.pattern() << ' ' << known.timeoutMs << '\n';
    const FwUpdateProtocol other = describe(device, {"F0006B2D30414301F7", "F0006B2D3041F7"});
    out << "update of another product: " << int(other.codeType) << ' '
        << QString::number(other.fidpid, 16) << '\n';
    describe(device, {});
    out << "no image: " << device.lastError.section(QStringLiteral(" - "), 1) << '\n';
    describe(device, {"F0F7", "F000217F3105F7"});
    out << "short message: " << device.lastError.section(QStringLiteral(" - "), 1) << '\n';
}

void printReadings(QTextStream& out, DeviceInterface& device)
{
    out << "version: " << device.versionNumber() << '\n';
    out << "serial number: " << device.esn() << '\n';
    out << "code valid: " << device.isCodeValid(CodeType::Fwu) << '\n';
}

} // namespace

int main(int argc, char** argv)
{
    QTextStream out(stdout);
    QPluginLoader loader(QFileInfo(QString::fromLocal8Bit(argv[argc - 1])).absoluteFilePath());
    auto* device = qobject_cast<DeviceInterface*>(loader.instance());
    if (!device) {
        out << loader.errorString() << '\n';
        return 1;
    }
    out << "without a bus\n";
    printReadings(out, *device);

    AnsweringBus bus;
    device->bus = &bus;
    out << "no answers\n";
    printReadings(out, *device);

    bus.answers = {
        {"F07E7F0601F7", "F07E00060200"
                         "217F3100050031303233F7"},
        {"F000217F310521F7", "F000217F3105210102030405060708F7"},
        {"F000217F310530F7", "F000217F31053001020304F7"},
        {"F000217F310531F7", "F000217F31053101020304F7"},
    };
    out << "answers\n";
    printReadings(out, *device);

    bus.answers["F000217F310531F7"] = "F000217F31053101020305F7";
    out << "damaged code\n"
        << "code valid: " << device->isCodeValid(CodeType::Fwu) << '\n';

    out << "refusals: " << device->isNak(HxMidiData("F000217F31052146F7"))
        << device->isNak(HxMidiData("F000217F31052100F7")) << device->isNak(HxMidiData()) << '\n';
    printUpdates(out, *device);
    return 0;
}

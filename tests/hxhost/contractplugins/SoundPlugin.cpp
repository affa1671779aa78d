#include "tests/hxhost/contractplugins/SoundPlugin.h"

#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include <unistd.h>

namespace {

constexpr char header[] = "F000006B1122";
constexpr int dataPosition = 8;

QMap<QString, QVariant> soundDictionary()
{
    QMap<QString, QVariant> entries;
    const auto add = [&entries](const char* key, const char* hex) {
        entries.insert(QLatin1String(key), QLatin1String(header) + QLatin1String(hex));
    };
    entries.insert("identify", "F07E7F0601F7");
    entries.insert("identify.response", "F07E..060200006B110022........F7");
    add("reset", "1BF7");
    add("esn.read", "2100F7");
    add("esn.read.response", "2100....F7");
    add("version.read.user", "2E00F7");
    add("version.read.user.response", "2E00........F7");
    add("version.read.user.crc", "3000F7");
    add("version.read.user.crc.response", "3000........F7");
    add("version.calc.user.crc", "3100F7");
    add("version.calc.user.crc.response", "3100........F7");
    add("fwupdate.fwu.response.any", "430C..F7");
    add("fwupdate.fwu.response.good", "430C00F7");
    add("fwupdate.fwu.response.bad", "430C01F7");
    add("fwupdate.fwu.response.failed", "430C02F7");
    add("fwupdate.fwu.filecheck", "430C........F7");
    entries.insert("command.timeout.ms", 2200);
    entries.insert("command.timeout.s", 2);
    return entries;
}

// What the environment asks for, such as "segfault versionNumber".
void misbehaveIn(const char* operation)
{
    const QList<QByteArray> wish = qgetenv("HX_MISBEHAVES").split(' ');
    if (wish.last() != operation)
        return;
    if (wish.first() == "segfault")
        raise(SIGSEGV);
    else if (wish.first() == "abort")
        std::abort();
    else if (wish.first() == "throw")
        throw std::runtime_error("a plugin must not");
    else if (wish.first() == "exit")
        std::exit(EXIT_SUCCESS);
    for (;;)
        usleep(1000);
}

struct Unloading {
    ~Unloading() { misbehaveIn("unloading"); }
} const unloading;

} // namespace

SoundPlugin::SoundPlugin() : m_dictionary(soundDictionary())
{
    misbehaveIn("constructor");
    if (breaks("dictionary.keys"))
        m_dictionary.remove("version.read.user");
    if (breaks("dictionary.keys"))
        m_dictionary.remove("version.read.user.response");
    if (breaks("dictionary.compact"))
        m_dictionary.insert("esn.read", "F0 00006B1122 2100F7");
    if (breaks("dictionary.commands"))
        m_dictionary.insert("reset", "F000006B11221B");
    if (breaks("dictionary.patterns"))
        m_dictionary.insert("gender.read", "F000006B11222F00F7");
    if (breaks("dictionary.patterns"))
        m_dictionary.insert("gender.read.response", "F000006B11222F00(..F7");
    if (breaks("dictionary.pairs"))
        m_dictionary.insert("gender.read.response", "F000006B11222F00....F7");
    if (breaks("dictionary.timeouts"))
        m_dictionary.insert("command.timeout.s", 22);
    if (breaks("update.answers"))
        m_dictionary.insert("fwupdate.fwu.response.bad", "F000006B1122430C0[012]F7");
}

SoundPlugin::~SoundPlugin()
{
    misbehaveIn("destructor");
}

QString SoundPlugin::productName() const
{
    static int calls = 0;
    if (breaks("names.constant"))
        return QString::number(++calls);
    return breaks("names.present") ? QString() : QStringLiteral("Sound");
}

quint32 SoundPlugin::fidpid()
{
    return identifierWord();
}

bool SoundPlugin::canSupport(unsigned int identifier)
{
    return identifier == identifierWord() || (breaks("identifier.served") && identifier == 0x1122);
}

bool SoundPlugin::hasBootcode() const
{
    return !breaks("defaults");
}

QMap<unsigned int, QString> SoundPlugin::getFidPidNameMap() const
{
    if (breaks("maps.served"))
        return {};
    return {{identifierWord(), QStringLiteral("SoundBoot")}};
}

QMap<QString, unsigned int> SoundPlugin::getNameFidPidMap() const
{
    if (breaks("maps.served"))
        return {};
    return {{breaks("maps.inverse") ? QStringLiteral("soundboot") : QStringLiteral("SoundBoot"),
             identifierWord()}};
}

void SoundPlugin::setLastError(QString const& message)
{
    if (breaks("lasterror"))
        lastError += message;
    else
        DeviceInterface::setLastError(message);
}

QVariant SoundPlugin::lookup(QString key) const
{
    return m_dictionary.value(breaks("dictionary.missing") ? key.toLower() : key);
}

QString SoundPlugin::lookupStr(QString key) const
{
    return breaks("dictionary.views") && key == "command.timeout.ms" ? QStringLiteral("2.2 s")
                                                                     : lookup(key).toString();
}

BusData SoundPlugin::ask(const char* key) const
{
    const QString name = QLatin1String(key);
    if (breaks("commands"))
        bus->transact(HxMidiData(lookupStr("reset")), QString(), 1);
    return bus->transact(HxMidiData(lookupStr(name)), lookupStr(name + ".response"),
                         unsigned(lookupInt("command.timeout.ms")));
}

qint32 SoundPlugin::versionNumber()
{
    misbehaveIn("versionNumber");
    constexpr int versionPosition = 11;
    const QByteArray reply = ask("identify").bytes;
    if (breaks("replies.none") && reply.isEmpty())
        return -1;
    if (breaks("version"))
        return 0;
    const bool isWhole = reply.size() == versionPosition + 5;
    return isWhole || breaks("replies.short") ? reply.mid(versionPosition, 4).toInt() : 0;
}

QString SoundPlugin::esn()
{
    const QByteArray reply = ask("esn.read").bytes;
    if (reply.size() != dataPosition + 3)
        return {};
    const QString number = QString::fromLatin1(reply.mid(dataPosition, 2).toHex());
    return breaks("serial-number") ? QStringLiteral("no ") + number : number;
}

bool SoundPlugin::isCodeValid(CodeType code)
{
    if (code != CodeType::Fwu)
        return false;
    const QByteArray stored = ask("version.read.user.crc").bytes.mid(dataPosition, 4);
    const QByteArray calculated = ask("version.calc.user.crc").bytes.mid(dataPosition, 4);
    const bool isWhole = stored.size() == 4 && calculated.size() == 4;
    return isWhole && (stored == calculated || breaks("code-check"));
}

bool SoundPlugin::isNak(BusData reply)
{
    return reply.bytes.size() <= dataPosition ? !breaks("refusal")
                                              : reply.bytes.at(dataPosition) == 0x46;
}

FwUpdateProtocol SoundPlugin::getUpdateProtocol(QString const&, QList<HxMidiData> const& data)
{
    FwUpdateProtocol protocol;
    if (data.isEmpty() || data.last().bytes.size() < 7) {
        if (!breaks("update.short"))
            setLastError(QStringLiteral("too short"));
        return protocol;
    }
    if (data.last().bytes != QByteArray::fromHex(header) + '\xF7') {
        protocol.fidpid = breaks("update.unknown") ? 0 : 0x7F007F;
        return protocol;
    }
    const auto pattern = [this](const char* key) {
        return ResponceData(lookupStr(QLatin1String(key)).toLatin1().constData());
    };
    protocol.fidpid = int(identifierWord());
    protocol.codeType = CodeType::Fwu;
    protocol.responseAny = pattern("fwupdate.fwu.response.any");
    protocol.responseGood = pattern("fwupdate.fwu.response.good");
    protocol.responseBad = pattern("fwupdate.fwu.response.bad");
    protocol.responseFailed = pattern("fwupdate.fwu.response.failed");
    protocol.fileCheck = pattern("fwupdate.fwu.filecheck");
    protocol.timeoutMs = breaks("update.described") ? 0 : lookupInt("command.timeout.ms");
    return protocol;
}

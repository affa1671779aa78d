#include "host/product/MessageNames.h"

#include "host/product/RefusalForm.h"

namespace hx {

namespace {

const char fwuKeys[] = "fwupdate.fwu.";
const char fwdKeys[] = "fwupdate.fwd.";
constexpr char fwdCommand = 0x42;
constexpr int commandPosition = 6;

// "gender" and "gender.response" are left out: they are "gender.read" once more, and the second
// is a note for people that no message fits.
QStringList definiteFirst()
{
    return {
        QStringLiteral("reset"),
        QStringLiteral("identify"),
        QStringLiteral("identify.response"),
        QStringLiteral("gender.read"),
        QStringLiteral("gender.read.response"),
        QStringLiteral("id.dsp0"),
        QStringLiteral("id.dsp1"),
        QStringLiteral("id.dsp0.response.invalid"),
        QStringLiteral("id.dsp1.response.invalid"),
        QStringLiteral("id.dsp0.response"),
        QStringLiteral("id.dsp1.response"),
        QStringLiteral("id.dsp*.response"),
        QStringLiteral("rawgender.read"),
        QStringLiteral("rawgender.read.response"),
        QStringLiteral("version.read.user.crc"),
        QStringLiteral("version.read.user.crc.response"),
        QStringLiteral("version.calc.user.crc"),
        QStringLiteral("version.calc.user.crc.response"),
        QStringLiteral("esn.read"),
        QStringLiteral("esn.read.response"),
        QStringLiteral("loader.set.dfu"),
        QStringLiteral("loader.set.user"),
        QStringLiteral("loader.set.boot"),
        QStringLiteral("version.read.user"),
        QStringLiteral("version.read.user.response"),
        QStringLiteral("fwupdate.fwu.response.good"),
        QStringLiteral("fwupdate.fwu.response.bad"),
        QStringLiteral("fwupdate.fwu.response.failed"),
        QStringLiteral("fwupdate.fwu.response.any"),
        QStringLiteral("fwupdate.fwu.filecheck"),
        QStringLiteral("fwupdate.fwd.response.good"),
        QStringLiteral("fwupdate.fwd.response.bad"),
        QStringLiteral("fwupdate.fwd.response.failed"),
        QStringLiteral("fwupdate.fwd.response.any"),
        QStringLiteral("fwupdate.fwd.filecheck"),
    };
}

// The dictionary's text as a pattern for the whole message: a value that is filled in later fits
// any bytes, and a pattern that stops short of the F7 fits with it.
QRegExp wholeMessage(QString text)
{
    text.replace(QLatin1String("NIB24"), QLatin1String("............"));
    return QRegExp(QStringLiteral("(%1)(F7)?").arg(text), Qt::CaseSensitive, QRegExp::RegExp);
}

bool isRefusal(const QByteArray& message)
{
    return message.size() == refusalBytes && message.at(0) == '\xF0' &&
           message.at(refusalMarkPosition) == refusalMark;
}

} // namespace

QStringList messageKeys()
{
    return definiteFirst();
}

QStringList knownKeys()
{
    QStringList keys = definiteFirst();
    keys << QStringLiteral("gender") << QStringLiteral("gender.response")
         << QStringLiteral("id.dsp.offset.response_flag")
         << QStringLiteral("id.dsp.offset.bank_status") << QStringLiteral("id.dsp.offset.code_size")
         << QStringLiteral("id.dsp.offset.code_ver") << QStringLiteral("command.timeout.ms")
         << QStringLiteral("command.timeout.s");
    keys.sort();
    return keys;
}

MessageNames::MessageNames(DeviceInterface& device)
{
    for (const QString& key : messageKeys()) {
        const QString text = device.lookupStr(key);
        if (!text.isEmpty())
            m_entries.push_back({key, wholeMessage(text)});
    }
}

QString MessageNames::nameOf(const QByteArray& message) const
{
    const QString hex = QString::fromLatin1(message.toHex().toUpper());
    for (const Entry& entry : m_entries) {
        if (!entry.pattern.exactMatch(hex))
            continue;
        // Both kinds of update have the same acknowledgements; the kind byte tells them apart.
        if (entry.key.startsWith(QLatin1String(fwuKeys)) && message.size() > commandPosition &&
            message.at(commandPosition) == fwdCommand)
            return QString(entry.key).replace(QLatin1String(fwuKeys), QLatin1String(fwdKeys));
        return entry.key;
    }
    return isRefusal(message) ? QStringLiteral("nak") : QString();
}

} // namespace hx

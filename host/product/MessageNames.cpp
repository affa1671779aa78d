#include "host/product/MessageNames.h"

#include "host/product/RefusalForm.h"

namespace hx {

namespace {

const char fwuKeys[] = "fwupdate.fwu.";
const char fwdKeys[] = "fwupdate.fwd.";

// "gender" and "gender.response" are left out: they are "gender.read" once more, and the second
// is a note for people that no message fits.
QStringList keysBySpecificity()
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

// The plugin knows which ones: it is asked about each.
QByteArray refusalMarksOf(DeviceInterface& device, const QByteArray& header)
{
    constexpr int dataValues = 0x80;
    QByteArray marks;
    for (int value = 0; value < dataValues && !header.isEmpty(); ++value) {
        const char mark = static_cast<char>(value);
        if (device.isNak(HxMidiData(refusalForm(header + '\0', mark))))
            marks.append(mark);
    }
    return marks;
}

} // namespace

QStringList messageKeys()
{
    return keysBySpecificity();
}

QStringList knownKeys()
{
    QStringList keys = keysBySpecificity();
    keys << QStringLiteral("gender") << QStringLiteral("gender.response")
         << QStringLiteral("id.dsp.offset.response_flag")
         << QStringLiteral("id.dsp.offset.bank_status") << QStringLiteral("id.dsp.offset.code_size")
         << QStringLiteral("id.dsp.offset.code_ver") << QStringLiteral("command.timeout.ms")
         << QStringLiteral("command.timeout.s");
    keys.sort();
    return keys;
}

MessageNames::MessageNames(DeviceInterface& device)
    : m_product(describeProduct(device)), m_refusalMarks(refusalMarksOf(device, m_product.header))
{
    for (const QString& key : messageKeys()) {
        const QString text = device.lookupStr(key);
        if (!text.isEmpty())
            m_entries.push_back({key, wholeMessage(text)});
    }
}

bool MessageNames::isFwd(const QByteArray& message) const
{
    const UpdateKind* fwd = m_product.updateKind(CodeType::Fwd);
    const auto position = m_product.header.size();
    return fwd != nullptr && message.size() > position &&
           static_cast<quint8>(message.at(position)) == fwd->command;
}

// Of any model of the maker: the wrong one refuses too.
bool MessageNames::isRefusal(const QByteArray& message) const
{
    const auto markPosition = m_product.header.size() + 1;
    return isRefusalSize(message.size(), m_product.header.size()) &&
           message.startsWith(m_product.header.left(m_product.header.size() - 2)) &&
           m_refusalMarks.contains(message.at(markPosition));
}

QString MessageNames::nameOf(const QByteArray& message) const
{
    const QString hex = QString::fromLatin1(message.toHex().toUpper());
    for (const Entry& entry : m_entries) {
        if (!entry.pattern.exactMatch(hex))
            continue;
        // Both kinds of update have the same acknowledgements; the kind byte tells them apart.
        if (entry.key.startsWith(QLatin1String(fwuKeys)) && isFwd(message))
            return QString(entry.key).replace(QLatin1String(fwuKeys), QLatin1String(fwdKeys));
        return entry.key;
    }
    return isRefusal(message) ? QStringLiteral("nak") : QString();
}

} // namespace hx

#include "contract/AnsweringBus.h"

#include "contract/PatternSample.h"
#include "host/product/MessageNames.h"

#include <algorithm>

namespace hx {

BusData AnsweringBus::transact(BusData command, QString responsePattern, unsigned timeoutMs)
{
    const QByteArray reply = replyTo(command.bytes, responsePattern);
    exchanges.append({command.bytes, responsePattern, timeoutMs, reply});
    const QByteArray heard = reply.left(longest);
    errorText = heard.isEmpty() ? QStringLiteral("no answer") : QString();
    return HxMidiData(heard);
}

BusData AnsweringBus::transactExpect(BusData const& command, ResponceData const& expected,
                                     unsigned timeoutMs)
{
    return transact(command, expected.rx.pattern(), timeoutMs);
}

// What the plugin waits for, when that is a whole message; else what its dictionary says.
QByteArray AnsweringBus::replyTo(const QByteArray& command, const QString& pattern) const
{
    if (command.isEmpty() || exchanges.size() >= answers)
        return {};
    const QByteArray& fill = fills.at(std::min(exchanges.size(), fills.size() - 1));
    const bool isWhole = pattern.trimmed().endsWith(QLatin1String("F7"), Qt::CaseInsensitive) ||
                         pattern.endsWith(QLatin1Char(')'));
    const QString listed = isWhole ? QString() : dictionaryPattern(command);
    return sampleMessage(listed.isEmpty() ? pattern : listed, fill);
}

QString AnsweringBus::dictionaryPattern(const QByteArray& command) const
{
    const QString hex = QString::fromLatin1(command.toHex().toUpper());
    for (const QString& key : messageKeys()) {
        const QVariant reply = m_device.lookup(key + QStringLiteral(".response"));
        if (reply.isValid() && m_device.lookupStr(key) == hex)
            return reply.toString();
    }
    return {};
}

} // namespace hx

#include "tests/sweep/WireReading.h"

#include <algorithm>
#include <map>

namespace sweep {

const QByteArray versionRequest = QByteArray::fromHex("F0006B2D30412EF7");
const QByteArray storedRequest = QByteArray::fromHex("F0006B2D304130F7");
const QByteArray calculatedRequest = QByteArray::fromHex("F0006B2D304131F7");

namespace {

constexpr hx::Microseconds longestPause = 1000 * 1000; // inside a message, in usual patience
constexpr int valueAt = 7;
constexpr int valueSize = 4;

const QByteArray identityRequest = QByteArray::fromHex("F07E7F0601F7");
const QByteArray productHead = QByteArray::fromHex("F0006B2D3041");

// Puts bytes together to SysEx messages, one exchange at a time.
class Cutter {
public:
    explicit Cutter(int patience) : m_longestPause(patience * longestPause) {}

    void take(const WireEvent& event, std::vector<HeardMessage>* heard)
    {
        for (const char byte : event.bytes)
            takeByte(byte, event.time, heard);
    }
    void forget() { m_message.clear(); }
    void forgetAfter(hx::Microseconds deadline, hx::Microseconds now)
    {
        if (m_last <= deadline && now > deadline)
            forget();
    }

private:
    void takeByte(char byte, hx::Microseconds time, std::vector<HeardMessage>* heard)
    {
        const auto value = static_cast<quint8>(byte);
        if (time - m_last > m_longestPause)
            forget();
        if (value >= 0xF8)
            return;
        m_last = time;
        if (value == 0xF0) {
            m_message = QByteArray(1, byte);
        } else if (!m_message.isEmpty() && (value < 0x80 || value == 0xF7)) {
            m_message.append(byte);
            if (value == 0xF7)
                heard->push_back({m_message, time});
        }
        if (value >= 0x80 && value != 0xF0)
            forget();
    }

    hx::Microseconds m_longestPause;
    QByteArray m_message;
    hx::Microseconds m_last = 0;
};

bool isIdentity(const QByteArray& message)
{
    const bool isShort = message.size() == 15 && message.at(5) != '\0'; // maker of one byte
    return (message.size() == 17 || isShort) && message.startsWith(QByteArray::fromHex("F07E")) &&
           message.mid(3, 2) == QByteArray::fromHex("0602");
}

bool isRefusalOf(const QByteArray& command, const QByteArray& message)
{
    return message == command.left(valueAt) + QByteArray::fromHex("46F7");
}

bool answers(const QByteArray& command, const QByteArray& message)
{
    if (isIdentityRequest(command))
        return isIdentity(message);
    if (command == storedRequest || command == calculatedRequest)
        return isRefusalOf(command, message) ||
               (message.startsWith(command.left(valueAt)) && message.size() >= valueAt + valueSize);
    if (command != versionRequest)
        return isAcknowledgement(message);
    QByteArray ofFamily = message;
    if (ofFamily.size() > commandAt)
        ofFamily[commandAt - 1] = command.at(commandAt - 1); // any model may answer
    return ofFamily.startsWith(command.left(valueAt)) &&
           (ofFamily.size() == valueAt + valueSize + 1 || isRefusalOf(command, ofFamily));
}

} // namespace

bool isIdentityRequest(const QByteArray& command)
{
    return command == identityRequest;
}

bool isIdentityOfProduct(const QByteArray& answer)
{
    return isIdentity(answer) && answer.mid(5, 7) == QByteArray::fromHex("006B2D30004100");
}

bool isAcknowledgement(const QByteArray& answer)
{
    return answer.size() == 10 && answer.startsWith(productHead) &&
           (answer.at(commandAt) == '\x42' || answer.at(commandAt) == '\x43') &&
           answer.at(commandAt + 1) == '\x0C';
}

QByteArray valueIn(const QByteArray& answer)
{
    return answer.size() == valueAt + valueSize + 1 ? answer.mid(valueAt, valueSize) : QByteArray();
}

QByteArray Exchange::answer() const
{
    QByteArray other;
    for (const HeardMessage& message : heard) {
        if (message.time > deadline() || !answers(command, message.bytes))
            continue;
        if (!isIdentityRequest(command) || isIdentityOfProduct(message.bytes))
            return message.bytes;
        other = message.bytes;
    }
    return other;
}

Conversation readConversation(const WireRecord& record, int patience)
{
    Conversation conversation;
    Cutter cutter(patience);
    std::map<QByteArray, hx::Microseconds> givenUp;
    for (const WireEvent& event : record) {
        if (event.kind == WireEvent::Kind::Sent) {
            conversation.exchanges.push_back({event.bytes, event.time, {}, patience});
            givenUp.erase(event.bytes);
            cutter.forget();
        } else if (event.kind == WireEvent::Kind::Lost) {
            givenUp.emplace(event.bytes, event.time);
        } else if (!conversation.exchanges.empty()) {
            Exchange& exchange = conversation.exchanges.back();
            cutter.forgetAfter(exchange.deadline(), event.time);
            cutter.take(event, &exchange.heard);
        }
    }
    for (const auto& message : givenUp)
        conversation.lostAt =
            std::min(conversation.lostAt.value_or(message.second), message.second);
    return conversation;
}

} // namespace sweep

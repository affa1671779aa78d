#include "apps/hxmidi/input/UniversalMessage.h"

#include "qt/Saturated.h"

#include <algorithm>

namespace hx::midi {

namespace {

constexpr int exclusive = 0xF0;
constexpr int endOfExclusive = 0xF7;
constexpr int universalNonRealTime = 0x7E;
constexpr int universalRealTime = 0x7F;
constexpr int everyDevice = 0x7F;
constexpr int nonCommercial = 0x7D;

// F0 7E device 06 01 F7
constexpr char generalInformation = 0x06;
constexpr char identityRequest = 0x01;
constexpr char identityReply = 0x02;
constexpr int devicePosition = 2;
constexpr int subIdPosition = 3;
constexpr int requestSize = 6;

// F0 7E device 06 02, the manufacturer in one byte or three, then these and F7
constexpr int manufacturerPosition = 5;
constexpr int familySize = 2;
constexpr int memberSize = 2;
constexpr int versionSize = 4;

int byteAt(const HxMidiData& message, int at)
{
    return at < message.bytes.size() ? static_cast<unsigned char>(message.bytes.at(at)) : -1;
}

bool isClosed(const HxMidiData& message)
{
    return byteAt(message, saturated(message.bytes.size()) - 1) == endOfExclusive;
}

int manufacturerSize(const HxMidiData& message, int at)
{
    return byteAt(message, at) == 0 ? 3 : 1;
}

QString hex(const HxMidiData& message, int at, int size)
{
    return HxMidiData(message.mid(at, size)).toString(' ', -1);
}

QString deviceWords(const HxMidiData& message)
{
    const int device = byteAt(message, devicePosition);
    return device == everyDevice ? QStringLiteral("every device")
                                 : QStringLiteral("device %1").arg(device);
}

// What is wrong with a message's size; empty when nothing is.
QString sizeWords(const HxMidiData& message, int expected)
{
    if (!isClosed(message))
        return QStringLiteral(", not closed by F7");
    const auto size = message.bytes.size();
    if (size == expected)
        return QString();
    return QStringLiteral(", malformed: %1 bytes instead of %2")
        .arg(QString::number(size), QString::number(expected));
}

// Two 7-bit groups, the least significant first.
int twoGroups(const HxMidiData& message, int at)
{
    return byteAt(message, at) + byteAt(message, at + 1) * 128;
}

QString groupsWords(const HxMidiData& message, int at)
{
    return QStringLiteral("%1 (%2)").arg(hex(message, at, 2),
                                         QString::number(twoGroups(message, at)));
}

QString versionWords(const HxMidiData& message, int at)
{
    const QByteArray version = message.mid(at, versionSize);
    const bool isText =
        std::all_of(version.begin(), version.end(), [](char c) { return c > ' ' && c <= '~'; });
    const QString words = hex(message, at, versionSize);
    return isText ? words + QStringLiteral(" (\"%1\")").arg(QString::fromLatin1(version)) : words;
}

MessageMeaning meaningOfRequest(const HxMidiData& message)
{
    const QString wrong = sizeWords(message, requestSize);
    return {QStringLiteral("identity request to ") + deviceWords(message) + wrong,
            QStringList(),
            {{QStringLiteral("kind"), QStringLiteral("identity request")},
             {QStringLiteral("device"), byteAt(message, devicePosition)},
             {QStringLiteral("wellFormed"), wrong.isEmpty()}}};
}

MessageMeaning meaningOfReply(const HxMidiData& message)
{
    const int makerSize = manufacturerSize(message, manufacturerPosition);
    const int family = manufacturerPosition + makerSize;
    const int member = family + familySize;
    const int version = member + memberSize;
    const QString wrong = sizeWords(message, version + versionSize + 1);
    MessageMeaning meaning{QStringLiteral("identity reply from ") + deviceWords(message) + wrong,
                           QStringList(),
                           {{QStringLiteral("kind"), QStringLiteral("identity reply")},
                            {QStringLiteral("device"), byteAt(message, devicePosition)},
                            {QStringLiteral("wellFormed"), wrong.isEmpty()}}};
    if (!wrong.isEmpty())
        return meaning;
    const QString maker = hex(message, manufacturerPosition, makerSize);
    meaning.parts = QStringList{QStringLiteral("manufacturer ") + maker,
                                QStringLiteral("family ") + groupsWords(message, family),
                                QStringLiteral("member ") + groupsWords(message, member),
                                QStringLiteral("version ") + versionWords(message, version)};
    meaning.details.insert(QStringLiteral("manufacturer"), maker);
    meaning.details.insert(QStringLiteral("family"), twoGroups(message, family));
    meaning.details.insert(QStringLiteral("member"), twoGroups(message, member));
    meaning.details.insert(QStringLiteral("version"), hex(message, version, versionSize));
    return meaning;
}

QString unclosedWords(const HxMidiData& message)
{
    return isClosed(message) ? QString() : QStringLiteral(", not closed by F7");
}

MessageMeaning meaningOfOtherUniversal(const HxMidiData& message)
{
    const QString family = byteAt(message, 1) == universalRealTime
                               ? QStringLiteral("universal real-time")
                               : QStringLiteral("universal non-real-time");
    QString words = family + QStringLiteral(" message");
    const int bodyEnd = saturated(message.bytes.size()) - (isClosed(message) ? 1 : 0);
    if (bodyEnd > subIdPosition)
        words += QStringLiteral(" %1 to %2")
                     .arg(hex(message, subIdPosition, std::min(2, bodyEnd - subIdPosition)),
                          deviceWords(message));
    return {words + unclosedWords(message), QStringList(), {{QStringLiteral("kind"), family}}};
}

MessageMeaning meaningOfManufacturers(const HxMidiData& message)
{
    const QString kind = QStringLiteral("manufacturer's message");
    const int size = manufacturerSize(message, 1);
    const QString id = hex(message, 1, size);
    QString words = QStringLiteral("message of manufacturer ") + id;
    if (byteAt(message, 1) == nonCommercial)
        words = QStringLiteral("non-commercial message (7D)");
    else if (message.bytes.size() - (isClosed(message) ? 1 : 0) < 1 + size)
        return {QStringLiteral("System Exclusive message without a complete manufacturer ID") +
                    unclosedWords(message),
                QStringList(),
                {{QStringLiteral("kind"), kind}}};
    return {words + unclosedWords(message),
            QStringList(),
            {{QStringLiteral("kind"), kind}, {QStringLiteral("manufacturer"), id}}};
}

} // namespace

MessageMeaning meaningOf(const HxMidiData& message)
{
    if (byteAt(message, 0) != exclusive)
        return {};
    const int id = byteAt(message, 1);
    const QByteArray subIds = message.mid(subIdPosition, 2);
    if (id == universalNonRealTime && subIds == QByteArray{1, generalInformation} + identityRequest)
        return meaningOfRequest(message);
    if (id == universalNonRealTime && subIds == QByteArray{1, generalInformation} + identityReply)
        return meaningOfReply(message);
    return id == universalNonRealTime || id == universalRealTime ? meaningOfOtherUniversal(message)
                                                                 : meaningOfManufacturers(message);
}

} // namespace hx::midi

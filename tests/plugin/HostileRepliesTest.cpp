// Damaged and arbitrary replies and images, compared with plain transcriptions of the rules. The
// seed is fixed: a failure comes again. Run under the sanitizers too.
#include "plugin/Identification.h"
#include "plugin/ValdrinBootInterface.h"
#include "tests/mididata/Random.h"
#include "tests/support/FakeBus.h"
#include "tests/support/LogCapture.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using Messages = std::vector<QByteArray>;

unsigned byteAt(const QByteArray& bytes, int position)
{
    return static_cast<unsigned char>(bytes.at(position));
}

std::string hexDigits(const QByteArray& bytes)
{
    return bytes.toHex().toUpper().toStdString();
}

class Hostile : public testing::Test {
protected:
    void SetUp() override { plugin.bus = &bus; }

    // One of the good messages with up to three bytes changed, taken out or put in; now and then
    // nothing but noise.
    QByteArray reply(const Messages& goodOnes)
    {
        if (random.oneIn(8))
            return random.bytes(random.below(65));
        QByteArray bytes = QByteArray::fromHex(random.of(goodOnes));
        for (int changes = random.below(4); changes > 0 && !bytes.isEmpty(); --changes) {
            const QByteArray other = random.bytes(random.oneIn(6) ? random.below(3) : 1);
            bytes.replace(random.below(bytes.size()), 1, other);
        }
        return bytes;
    }

    Random random{20240611};
    ValdrinBootInterface plugin;
    FakeBus bus;
};

// The stored or the calculated value of the code check.
quint32 checksumValue(const QByteArray& reply, quint32 missing)
{
    if (reply.size() != 12)
        return missing;
    quint32 value = byteAt(reply, 6) << 28;
    for (int i = 1; i < 5; ++i) {
        const int signedByte = static_cast<signed char>(reply.at(6 + i));
        value += static_cast<quint32>(signedByte) << (28 - 7 * i);
    }
    return value;
}

bool holds(const std::string& text, const std::string& pattern)
{
    for (std::size_t at = 0; at + pattern.size() <= text.size(); ++at) {
        std::size_t same = 0;
        while (same < pattern.size() && (pattern[same] == '.' || pattern[same] == text[at + same]))
            ++same;
        if (same == pattern.size())
            return true;
    }
    return false;
}

bool isIdentity(const QByteArray& reply)
{
    const std::string digits = hexDigits(reply);
    return reply.size() >= 16 && holds(digits, "006B2D") && holds(digits, "F07E..0602");
}

std::optional<unsigned> rawIdentifier(const QByteArray& reply)
{
    if (reply.size() < 48)
        return std::nullopt;
    const auto joined = [&](int k) {
        return byteAt(reply, 15 + 2 * k) % 16 * 16 + byteAt(reply, 16 + 2 * k) % 16;
    };
    if (joined(8) == 0xFF && joined(9) == 0xFF)
        return std::nullopt;
    return joined(8) * 65536 + joined(9);
}

struct Version {
    QString text;
    int number = 0;
};

Version versionAt(const QByteArray& reply, int position)
{
    Version version;
    for (int i = 0; i < 4; ++i) {
        const QString character(QLatin1Char(reply.at(position + i)));
        version.text += (i > 0 ? QStringLiteral(".") : QString()) + character;
        version.number = version.number * 10 + character.toInt();
    }
    return version;
}

} // namespace

TEST_F(Hostile, refusalsAreToldByLengthAndByteSeven)
{
    for (int round = 0; round < 40000; ++round) {
        const QByteArray bytes = reply({"F0006B2D30412E46F7", "F0006B2D30412E00000000F7"});
        const bool expected = bytes.size() < 8 || bytes.at(7) == 0x46;
        ASSERT_EQ(plugin.isNak(bytes), expected) << hexDigits(bytes);
    }
}

TEST_F(Hostile, theCodeCheckComparesWholeFields)
{
    int valid = 0;
    for (int round = 0; round < 40000; ++round) {
        const LogCapture log;
        const QByteArray stored = reply({"F0006B2D30413000000001F7", "F0006B2D3041305F507226F7"});
        const QByteArray calculated =
            reply({"F0006B2D30413000000001F7", "F0006B2D3041405F507226F7", ""});
        bus.replies = {stored, calculated};
        bus.exchanges.clear();
        const bool expected = checksumValue(stored, 0) == checksumValue(calculated, 1);
        ASSERT_EQ(plugin.isCodeValid(CodeType::Fwu), expected)
            << hexDigits(stored) << " and " << hexDigits(calculated);
        ASSERT_EQ(bus.exchanges.size(), 2);
        ASSERT_EQ(log.lines().size(), int(stored.isEmpty()) + int(calculated.isEmpty()));
        valid += expected ? 1 : 0;
    }
    EXPECT_GT(valid, 1000);
}

TEST_F(Hostile, identityRepliesFillTheRecordOrResetIt)
{
    int accepted = 0;
    for (int round = 0; round < 40000; ++round) {
        const QByteArray bytes =
            reply({"F07E100602006B2D3000410031303233F7", "F07E100602413000410034353637006B2DF7",
                   "0F07E100602006B2D03132333400000000"});
        HxIdentity identity;
        identity.versionNumber = 4711;
        const bool good = isIdentity(bytes);
        ASSERT_EQ(identity.init(bytes, 0), good) << hexDigits(bytes);
        const int position = good && bytes.at(5) == 0 ? 12 : 10;
        const Version version = good ? versionAt(bytes, position) : Version();
        ASSERT_EQ(identity.versionOffset, position);
        ASSERT_EQ(identity.versionText, version.text) << hexDigits(bytes);
        ASSERT_EQ(identity.versionNumber, version.number) << hexDigits(bytes);
        ASSERT_EQ(identity.reply.bytes, good ? bytes : QByteArray());
        accepted += good ? 1 : 0;
    }
    EXPECT_GT(accepted, 10000);
}

TEST_F(Hostile, theRawIdentifierComesFromItsFourNibblesOnly)
{
    const QByteArray header = "F0006B2D3041420D0F000000000000";
    const QByteArray block = QByteArray("0102030405060708").repeated(4);
    for (int round = 0; round < 40000; ++round) {
        const LogCapture log;
        const QByteArray bytes =
            reply({header + block + "F7", header + QByteArray("0F").repeated(32) + "F7"});
        bus.replies = {bytes};
        bus.exchanges.clear();
        const auto expected = rawIdentifier(bytes);
        ASSERT_EQ(hx::getRawFidPid(static_cast<int>(random.word()), &plugin),
                  expected.value_or(0x7F007F))
            << hexDigits(bytes);
        ASSERT_EQ(bus.exchanges.first().command.bytes.size(), 16);
        ASSERT_EQ(log.lines().size(), bytes.isEmpty() || expected ? 1 : 0);
    }
}

TEST_F(Hostile, imagesAreDescribedByTheirFirstAndLastMessage)
{
    const QByteArray closing = QByteArray::fromHex("F0006B2D3041F7");
    for (int round = 0; round < 40000; ++round) {
        const LogCapture log;
        const QByteArray first =
            reply({"F0006B2D3041420AF7", "F0006B2D3041430AF7", "F0006B2D304143"});
        const QByteArray last = random.oneIn(2) ? closing : reply({"F0006B2D3041F7"});
        plugin.lastError.clear();
        const FwUpdateProtocol protocol =
            plugin.getUpdateProtocol(QString(), {first, random.bytes(9), last});
        const bool mismatch = first.size() < 7 || last.size() < 7;
        const bool fits = !mismatch && last == closing && (first[6] == 0x42 || first[6] == 0x43);
        ASSERT_EQ(plugin.lastError.isEmpty(), !mismatch);
        ASSERT_EQ(protocol.fidpid, fits ? 0x300041 : mismatch ? 0 : 0x7F007F);
        ASSERT_EQ(static_cast<int>(protocol.codeType), fits ? 0x44 - first[6] : 0);
        ASSERT_EQ(protocol.timeoutMs, fits ? 2200 : 5500);
        ASSERT_EQ(log.lines().size(), fits || mismatch ? 0 : 1);
    }
}

TEST_F(Hostile, valuesAtAnyPositionHaveTheirTypeAndTheirFallback)
{
    for (int round = 0; round < 40000; ++round) {
        const LogCapture log;
        const QByteArray bytes = random.bytes(random.below(17));
        const int offset = random.position(bytes.size());
        const bool inside = offset >= 0 && offset <= bytes.size() - 5;
        const QVariant number = plugin.getValueWithTypeAndOffset(bytes, 4, offset);
        const QVariant real = plugin.getValueWithTypeAndOffset(bytes, 3, offset);
        const QVariant text = plugin.getValueWithTypeAndOffset(bytes, 6, offset);
        ASSERT_EQ(number.userType(), QMetaType::UInt);
        ASSERT_EQ(real.userType(), QMetaType::UInt);
        ASSERT_EQ(text.userType(), QMetaType::QString);
        ASSERT_TRUE(inside || number.toUInt() == 4294967295U) << offset;
        ASSERT_TRUE(inside || real.toUInt() == 4294867297U) << offset;
    }
}

TEST_F(Hostile, theSerialNumberIsNullOrSixteenDigits)
{
    const QByteArray characters = "0123456789abcdefABCDEF------,,,, xz";
    int answered = 0;
    for (int round = 0; round < 20000; ++round) {
        const LogCapture log;
        QByteArray text(random.below(12), '\0');
        for (char& character : text)
            character = characters.at(random.below(characters.size()));
        bus.replies = {text};
        const QString number = plugin.esn();
        ASSERT_TRUE(number.isNull() || number.size() == 16) << text.constData();
        answered += number.isNull() ? 0 : 1;
    }
    EXPECT_GT(answered, 20);
}

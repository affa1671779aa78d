// What the product calls bad or failed in an update, and what its memory then holds.
#include "simulator/Crc32.h"

#include "tests/simulator/UpdateFixture.h"
#include "tests/support/Valdrin.h"

namespace hx::sim {

namespace {

class UpdateRefusal : public Update {};

// The message with one bit of one byte inverted.
QByteArray damaged(QByteArray message, int position, int bit = 0)
{
    message[position] = static_cast<char>(message.at(position) ^ (1 << bit));
    return message;
}

} // namespace

TEST_F(UpdateRefusal, EveryInvertedBitOfADataMessageIsBadAndWritesNothing)
{
    sendAll({image.at(0)});
    const QByteArray message = image.at(1);
    for (int position = 8; position + 1 < message.size(); ++position)
        for (int bit = 0; bit < 7; ++bit) {
            ASSERT_EQ(send(damaged(message, position, bit)), bad) << position << "." << bit;
            ASSERT_EQ(product.codeBytes(), code.left(112)) << position << "." << bit;
        }
    EXPECT_EQ(send(message), good);
}

TEST_F(UpdateRefusal, DamagedFirstMessageErasesNothing)
{
    const QByteArray held = product.codeBytes();
    EXPECT_EQ(send(damaged(image.at(0), 20)), bad);
    EXPECT_EQ(product.codeBytes(), held);
    EXPECT_TRUE(product.isCodeValid());
}

TEST_F(UpdateRefusal, MissingOrFurtherByteInADataMessageIsBad)
{
    const QByteArray message = image.at(0);
    for (int position = 8; position + 1 < message.size(); ++position) {
        ASSERT_EQ(send(QByteArray(message).remove(position, 1)), bad) << position;
        ASSERT_EQ(send(QByteArray(message).insert(position, '\0')), bad) << position;
    }
    EXPECT_TRUE(product.isCodeValid());
}

TEST_F(UpdateRefusal, ShortestDataMessagesAreBad)
{
    EXPECT_EQ(answers(product, "F0006B2D3041430AF7"), bad);
    EXPECT_EQ(answers(product, "F0006B2D3041420AF7"), badFwd);
    EXPECT_EQ(answers(product, "F0006B2D3041430A00000000000000F7"), bad);
}

TEST_F(UpdateRefusal, CountOutsideOfItsRangeIsBad)
{
    EXPECT_EQ(send(dataMessage(0, 0, QByteArray())), bad);
    EXPECT_EQ(send(dataMessage(0, 0, QByteArray(113, 'x'))), bad);
    EXPECT_EQ(send(dataMessage(0, 0, QByteArray(112, 'x'))), good);
}

TEST_F(UpdateRefusal, TopBitsWithoutAByteAreBad)
{
    // one code byte, header 60 instead of 40 at most
    EXPECT_EQ(send(withSum("\x43\x0A", bytesOf("0000 0000000000 01 6001"))), bad);
    EXPECT_EQ(send(withSum("\x43\x0A", bytesOf("0000 0000000000 01 4001"))), good);
}

TEST_F(UpdateRefusal, SkippedMessageFailsTheUpdate)
{
    sendAll({image.at(0)});
    EXPECT_EQ(send(image.at(2)), failed);
    EXPECT_EQ(send(image.at(1)), failed);
    EXPECT_EQ(product.codeBytes(), code.left(112));
    EXPECT_FALSE(product.isCodeValid());
}

TEST_F(UpdateRefusal, SkippedNumberFailsTheUpdateThoughItsAddressFollows)
{
    sendAll({image.at(0)});
    EXPECT_EQ(send(dataMessage(2, 112, code.mid(112, 112))), failed);
    EXPECT_FALSE(product.isUpdating());
}

TEST_F(UpdateRefusal, AddressThatDoesNotFollowFailsTheUpdate)
{
    sendAll({image.at(0)});
    EXPECT_EQ(send(dataMessage(1, 113, code.mid(112, 112))), failed);
    EXPECT_FALSE(product.isUpdating());
}

TEST_F(UpdateRefusal, HugeAddressFailsTheUpdate)
{
    sendAll({image.at(0)});
    EXPECT_EQ(send(dataMessage(1, 0x7FFFFFFFFull, code.mid(112, 112))), failed);
    sendAll({image.at(0)});
    EXPECT_EQ(send(dataMessage(1, 0x100000070ull, code.mid(112, 112))), failed); // 112 in 32 bits
}

TEST_F(UpdateRefusal, FirstMessageElsewhereThanAtZeroFailsAndErasesNothing)
{
    for (const quint64 address : {1u, 112u}) {
        EXPECT_EQ(send(dataMessage(0, address, code.left(112))), failed);
        EXPECT_TRUE(product.isCodeValid());
    }
}

TEST_F(UpdateRefusal, OtherKindInTheMiddleFailsTheUpdate)
{
    sendAll({image.at(0)});
    EXPECT_EQ(send(dataMessage(1, 112, code.mid(112, 112), kindFwd)), failedFwd);
    EXPECT_FALSE(product.isUpdating());
    sendAll(image.mid(0, 3));
    EXPECT_EQ(send(fileCheck(code, "1024", kindFwd)), failedFwd);
    EXPECT_FALSE(product.isUpdating());
}

TEST_F(UpdateRefusal, DataBehindAShortMessageFailsTheUpdate)
{
    sendAll({dataMessage(0, 0, "abc")});
    EXPECT_EQ(send(dataMessage(1, 3, "def")), failed);
}

TEST_F(UpdateRefusal, MoreCodeThanThereIsRoomForFailsTheUpdate)
{
    SimulatedProductSettings settings;
    settings.memorySize = 300;
    product = SimulatedProduct(valdrin(), settings);
    sendAll(image);
    EXPECT_EQ(product.codeBytes(), code);
    const QVector<QByteArray> larger = imageOf(codeOfSize(301), "1024");
    sendAll({larger.at(0), larger.at(1)});
    EXPECT_EQ(send(larger.at(2)), failed);
    EXPECT_EQ(product.codeBytes().size(), 224);
}

TEST_F(UpdateRefusal, MoreCodeThanThereIsRoomForInTheFirstMessageErasesNothing)
{
    SimulatedProductSettings settings;
    settings.memorySize = 100;
    product = SimulatedProduct(valdrin(), settings);
    EXPECT_EQ(send(image.at(0)), failed);
    EXPECT_TRUE(product.isCodeValid());
}

TEST_F(UpdateRefusal, DataWithoutAFirstMessageFailsAndLeavesTheCodeValid)
{
    EXPECT_EQ(send(image.at(1)), failed);
    EXPECT_TRUE(product.isCodeValid());
    EXPECT_EQ(product.mode(), ProductMode::User);
}

TEST_F(UpdateRefusal, FileCheckWithoutDataFails)
{
    EXPECT_EQ(send(fileCheck(code, "1024")), failed);
    EXPECT_EQ(send(fileCheck(product.codeBytes(), "1024")), failed);
    EXPECT_TRUE(product.isCodeValid());
}

TEST_F(UpdateRefusal, FileCheckOfOtherCodeFails)
{
    QByteArray other = code;
    other[0] = static_cast<char>(other.at(0) ^ 1);
    sendAll(image.mid(0, 3));
    EXPECT_EQ(send(fileCheck(other, "1024")), failed);
    EXPECT_EQ(send(closing()), failed);
    EXPECT_FALSE(product.isCodeValid());
}

TEST_F(UpdateRefusal, FileCheckOfOtherLengthFails)
{
    sendAll(image.mid(0, 2));
    EXPECT_EQ(send(image.at(3)), failed);
    EXPECT_FALSE(product.isUpdating());
}

TEST_F(UpdateRefusal, LengthAndChecksumAreComparedInAllTheirBits)
{
    const QByteArray length = groups(300, 5);
    const QByteArray crc = groups(productCrc32(code), 5);
    const QByteArray rest = "1024\x01";
    sendAll(image.mid(0, 3));
    EXPECT_EQ(send(withSum("\x43\x0C", groups(300 + (1ull << 32), 5) + crc + rest)), failed);
    sendAll(image.mid(0, 3));
    const quint64 higher = productCrc32(code) + (1ull << 32);
    EXPECT_EQ(send(withSum("\x43\x0C", length + groups(higher, 5) + rest)), failed);
    sendAll(image.mid(0, 3));
    EXPECT_EQ(send(withSum("\x43\x0C", length + crc + rest)), good);
}

TEST_F(UpdateRefusal, EveryInvertedBitOfAFileCheckIsBadAndTheUpdateGoesOn)
{
    sendAll(image.mid(0, 3));
    const QByteArray message = image.at(3);
    for (int position = 8; position + 1 < message.size(); ++position)
        for (int bit = 0; bit < 7; ++bit)
            ASSERT_EQ(send(damaged(message, position, bit)), bad) << position << "." << bit;
    sendAll({message, closing()});
    EXPECT_TRUE(product.isCodeValid());
}

TEST_F(UpdateRefusal, FileCheckOfAnotherLayoutIsBad)
{
    sendAll(image.mid(0, 3));
    const QByteArray fields = groups(300, 5) + groups(productCrc32(code), 5);
    EXPECT_EQ(send(withSum("\x43\x0C", fields + "1024\x02")), bad);
    EXPECT_EQ(send(withSum("\x43\x0C", fields + "1024\x01\x01")), bad);
    EXPECT_EQ(send(withSum("\x43\x0C", fields + "102\x01")), bad);
}

TEST_F(UpdateRefusal, VersionThatIsNotFourDigitsIsBad)
{
    sendAll(image.mid(0, 3));
    for (const char* version : {"102:", "/024", "1 24", "A024"})
        EXPECT_EQ(send(fileCheck(code, version)), bad) << version;
    EXPECT_EQ(send(fileCheck(code, "9909")), good);
}

TEST_F(UpdateRefusal, SecondFileCheckThatDiffersFails)
{
    sendAll(image.mid(0, 4));
    EXPECT_EQ(send(fileCheck(code, "1025")), failed);
    EXPECT_FALSE(product.isUpdating());
}

TEST_F(UpdateRefusal, DataBehindTheFileCheckFails)
{
    sendAll(image.mid(0, 4));
    EXPECT_EQ(send(dataMessage(3, 300, "more")), failed);
}

TEST_F(UpdateRefusal, ClosingWithoutAnUpdateFailsAndLeavesTheCodeValid)
{
    EXPECT_EQ(send(closing()), failed);
    EXPECT_TRUE(product.isCodeValid());
}

TEST_F(UpdateRefusal, ClosingBeforeTheFileCheckFailsInTheKindOfTheUpdate)
{
    sendAll(imageOf(code, "1024", kindFwd).mid(0, 3));
    EXPECT_EQ(send(closing()), failedFwd);
    EXPECT_FALSE(product.isCodeValid());
    EXPECT_EQ(send(closing()), failed); // no update is running any more
}

} // namespace hx::sim

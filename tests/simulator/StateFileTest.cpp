#include "simulator/StateFile.h"
#include "simulator/StateChange.h"

#include "simulator/Crc32.h"

#include "tests/simulator/UpdateMessages.h"
#include "tests/support/Valdrin.h"

#include <gtest/gtest.h>

namespace hx::sim {

namespace {

constexpr int sizeOfMemory = 1000;

// `lines`, closed by a line with the right checksum.
QByteArray sealed(const QByteArray& lines)
{
    return lines + "end " +
           QByteArray::number(productCrc32(lines), 16).toUpper().rightJustified(8, '0') + '\n';
}

// Why a state file is refused; "taken" when it is not.
QString refusalOf(const QByteArray& text)
{
    StoredCode code;
    QString error = QStringLiteral("unset");
    if (readStateFile(text, sizeOfMemory, &code, &error))
        return QStringLiteral("taken");
    EXPECT_TRUE(code.bytes.isEmpty());
    EXPECT_TRUE(error.endsWith(
        QLatin1String("; use a copy of the file, or remove it to begin with a fresh product")));
    return error.section(QLatin1Char(';'), 0, 0);
}

std::string reasonFor(const QByteArray& text)
{
    return refusalOf(text).toStdString();
}

const QByteArray worked = "simulated product state 1\n"
                          "kind fwu\n"
                          "valid yes\n"
                          "length 9\n"
                          "version 1.0.2.4\n"
                          "crc CBF43926\n"
                          "000000 313233343536373839\n";

// The worked example with one line replaced.
QByteArray workedWith(const QByteArray& line, const QByteArray& other)
{
    EXPECT_TRUE(worked.contains(line));
    return sealed(QByteArray(worked).replace(line, other));
}

} // namespace

TEST(StateFile, TheWorkedExampleByteForByte)
{
    SimulatedProduct product{valdrin()};
    for (const QByteArray& message : imageOf("123456789", "1024"))
        product.receive(message);
    EXPECT_EQ(product.save(), worked + "end 4097AB99\n");
}

TEST(StateFile, CodeIsWrittenIn32ByteLines)
{
    SimulatedProduct product{valdrin()};
    product.receive(dataMessage(0, 0, codeOfSize(40), kindFwd));
    EXPECT_EQ(product.save(),
              sealed("simulated product state 1\n"
                     "kind fwd\n"
                     "valid no\n"
                     "length 40\n"
                     "version -\n"
                     "crc -\n"
                     "000000 "
                     "054E97E02972BB044D96DF2871BA034C95DE2770B9024B94DD266FB8014A93DC\n"
                     "000020 256EB7004992DB24\n"));
}

TEST(StateFile, MemorySurvivesFromOneProductToTheNext)
{
    for (const int size : {1, 31, 32, 33, 112, 5000}) {
        SimulatedProduct first{valdrin()};
        for (const QByteArray& message : imageOf(codeOfSize(size), "4321", kindFwd))
            first.receive(message);
        SimulatedProduct second{valdrin()};
        QString error;
        ASSERT_TRUE(second.restore(first.save(), &error)) << error.toStdString();
        EXPECT_EQ(second.codeBytes(), codeOfSize(size));
        EXPECT_EQ(second.save(), first.save());
        EXPECT_EQ(answers(second, "F0006B2D30412EF7"), "F0 00 6B 2D 30 41 2E 34 33 32 31 F7");
        EXPECT_EQ(second.code().kind, kindFwd);
    }
}

TEST(StateFile, ASerialNumberOfItsOwnSurvives)
{
    SimulatedProductSettings settings;
    settings.serialNumber = std::array<quint8, 8>{{'U', 'n', 'i', 't', '0', '0', '4', '2'}};
    const SimulatedProduct first{valdrin(), settings};
    EXPECT_TRUE(first.save().contains("\ncrc 8ED7A350\nserial 556E697430303432\n000000 "));
    SimulatedProduct second{valdrin()};
    ASSERT_TRUE(second.restore(first.save(), nullptr));
    EXPECT_EQ(answers(second, "F0006B2D304121F7"),
              "F0 00 6B 2D 30 41 21 55 6E 69 74 30 30 34 32 F7");
    EXPECT_EQ(second.save(), first.save());
    ASSERT_TRUE(second.restore(SimulatedProduct{valdrin()}.save(), nullptr));
    EXPECT_EQ(answers(second, "F0006B2D304121F7"),
              "F0 00 6B 2D 30 41 21 33 30 34 31 30 30 30 31 F7");
}

TEST(StateFile, SerialNumberThatIsNotSixteenHexDigitsIsRefused)
{
    for (const char* number : {"", "55", "556E69743030343", "556e697430303432", "556E697430303432 ",
                               "556E69743030343G", "556E69743030343200"})
        EXPECT_EQ(reasonFor(workedWith("crc CBF43926\n",
                                       QByteArray("crc CBF43926\nserial ") + number + '\n')),
                  "the state file has \"serial " + std::string(number) +
                      "\" in line 7, expected \"serial\" and sixteen hex digits");
}

TEST(StateFile, BrokenOffUpdateSurvivesAsInvalidCode)
{
    SimulatedProduct first{valdrin()};
    first.receive(dataMessage(0, 0, codeOfSize(112)));
    SimulatedProduct second{valdrin()};
    ASSERT_TRUE(second.restore(first.save(), nullptr));
    EXPECT_FALSE(second.isCodeValid());
    EXPECT_FALSE(second.isUpdating());
    EXPECT_EQ(second.mode(), ProductMode::Boot);
    EXPECT_EQ(second.codeBytes(), codeOfSize(112));
}

TEST(StateFile, DecayedCodeSurvivesWithTheChecksumThatWasStored)
{
    SimulatedProduct first{valdrin()};
    first.damageCode(3);
    SimulatedProduct second{valdrin()};
    ASSERT_TRUE(second.restore(first.save(), nullptr));
    EXPECT_NE(answers(second, "F0006B2D304130F7").mid(21),
              answers(second, "F0006B2D304131F7").mid(21));
}

TEST(StateFile, EmptyMemorySurvives)
{
    StoredCode code;
    ASSERT_TRUE(readStateFile(writeStateFile(StoredCode()), sizeOfMemory, &code, nullptr));
    EXPECT_TRUE(code.bytes.isEmpty());
    EXPECT_FALSE(code.valid);
}

TEST(StateFile, RefusedStateLeavesTheProductAsItWas)
{
    SimulatedProduct product{valdrin()};
    product.receive(dataMessage(0, 0, codeOfSize(112)));
    const QByteArray before = product.save();
    QString error;
    EXPECT_FALSE(product.restore("nonsense", &error));
    EXPECT_FALSE(product.restore("nonsense", nullptr));
    EXPECT_EQ(error.toStdString(),
              "this is not a state file: it begins with \"nonsense\", expected \"simulated product "
              "state 1\"; use a copy of the file, or remove it to begin with a fresh product");
    EXPECT_EQ(product.save(), before);
    EXPECT_TRUE(product.isUpdating());
}

TEST(StateFile, EmptyFileIsRefused)
{
    EXPECT_EQ(reasonFor(""), "this is not a state file: it begins with \"\", expected \"simulated "
                             "product state 1\"");
}

TEST(StateFile, ErrorsShowNoControlCharactersAndNoMoreThan60Bytes)
{
    EXPECT_EQ(reasonFor("\x1B[2J\x80\t~" + QByteArray(100, 'x') + "\nmore"),
              "this is not a state file: it begins with \"?[2J??~" + std::string(53, 'x') +
                  "\", expected \"simulated product state 1\"");
}

TEST(StateFile, OtherFormatVersionIsRefused)
{
    EXPECT_EQ(reasonFor("simulated product state 2\nend 00000000\n"),
              "this is not a state file: it begins with \"simulated product state 2\", expected "
              "\"simulated product state 1\"");
}

TEST(StateFile, EveryTruncationIsRefused)
{
    const QByteArray whole = sealed(worked);
    for (int size = 0; size < whole.size(); ++size)
        EXPECT_NE(reasonFor(whole.left(size)), "taken") << size;
    EXPECT_EQ(reasonFor(worked),
              "the state file is cut off: its last line, \"end\" and a checksum, "
              "is missing");
    EXPECT_EQ(reasonFor(whole), "taken");
}

TEST(StateFile, EveryInvertedBitIsRefused)
{
    const QByteArray whole = sealed(worked);
    for (int bit = 0; bit < 8 * whole.size(); ++bit) {
        QByteArray damaged = whole;
        damaged[bit / 8] = static_cast<char>(damaged.at(bit / 8) ^ (1 << bit % 8));
        EXPECT_NE(reasonFor(damaged), "taken") << bit;
    }
}

TEST(StateFile, BytesBehindTheLastLineAreRefused)
{
    EXPECT_EQ(reasonFor(sealed(worked) + "x"),
              "the state file is damaged: it ends with \"end 4097AB99?x\", its content gives "
              "\"end 4097AB99\"");
}

TEST(StateFile, ChecksumThatDisagreesIsRefused)
{
    EXPECT_EQ(reasonFor(worked + "end 00000000\n"),
              "the state file is damaged: it ends with \"end 00000000\", its content gives \"end "
              "4097AB99\"");
}

TEST(StateFile, UnknownKindIsRefused)
{
    EXPECT_EQ(reasonFor(workedWith("kind fwu", "kind fwx")),
              "the state file has \"kind fwx\" in line 2, expected \"kind\" and fwu or fwd");
    EXPECT_EQ(reasonFor(workedWith("kind fwu", "king fwu")),
              "the state file has \"king fwu\" in line 2, expected \"kind\" and fwu or fwd");
}

TEST(StateFile, UnknownValidityIsRefused)
{
    EXPECT_EQ(reasonFor(workedWith("valid yes", "valid maybe")),
              "the state file has \"valid maybe\" in line 3, expected \"valid\" and yes or no");
}

TEST(StateFile, LengthThatIsNoNumberInRangeIsRefused)
{
    for (const char* length : {"x", "-1", "+9", "09", "1001", "99999999999", "9 ", ""})
        EXPECT_EQ(reasonFor(workedWith("length 9", QByteArray("length ") + length)),
                  std::string("the state file has \"length ") + length +
                      "\" in line 4, expected \"length\" and a number from 0 to 1000");
}

TEST(StateFile, VersionThatIsNotFourDigitsIsRefused)
{
    for (const char* version : {"1.0.2", "1.0.2.x", "1.0.2.44", "1024", "-", "1.0.2.4 "})
        EXPECT_EQ(reasonFor(workedWith("version 1.0.2.4", QByteArray("version ") + version)),
                  std::string("the state file has \"version ") + version +
                      "\" in line 5, expected \"version\" and four digits, as in 1.0.2.3");
}

TEST(StateFile, ChecksumThatIsNotEightHexDigitsIsRefused)
{
    for (const char* crc : {"cbf43926", "CBF4392", "0CBF43926", "XBF43926", "-"})
        EXPECT_EQ(reasonFor(workedWith("crc CBF43926", QByteArray("crc ") + crc)),
                  std::string("the state file has \"crc ") + crc +
                      "\" in line 6, expected \"crc\" and eight hex digits");
}

TEST(StateFile, InvalidCodeHasNoVersionAndNoChecksum)
{
    EXPECT_EQ(reasonFor(workedWith("valid yes", "valid no")),
              "the state file has \"version 1.0.2.4\" in line 5, expected \"version\" and -");
    EXPECT_EQ(reasonFor(workedWith("valid yes\nlength 9\nversion 1.0.2.4",
                                   "valid no\nlength 9\nversion -")),
              "the state file has \"crc CBF43926\" in line 6, expected \"crc\" and -");
}

TEST(StateFile, CodeLineThatDoesNotFitIsRefused)
{
    for (const char* line :
         {"000001 313233343536373839", "000000 3132333435363738", "000000 31323334353637383930",
          "000000 31323334353637383x", "000000 3132333435363738 39", "0 313233343536373839", ""})
        EXPECT_EQ(reasonFor(workedWith("000000 313233343536373839", line)),
                  std::string("the state file has \"") + line +
                      "\" in line 7, expected the address 000000 and 9 code bytes");
}

TEST(StateFile, MissingAndFurtherCodeLinesAreRefused)
{
    EXPECT_EQ(reasonFor(workedWith("000000 313233343536373839\n", "")),
              "the state file has \"\" in line 7, expected more code");
    EXPECT_EQ(reasonFor(sealed(worked + "000009 30\n")),
              "the state file has \"000009 30\" in line 8, expected the end of the code");
}

TEST(StateFile, MissingLinesAreRefused)
{
    EXPECT_EQ(reasonFor(sealed("simulated product state 1\n")),
              "the state file has \"\" in line 2, expected \"kind\" and fwu or fwd");
    EXPECT_EQ(reasonFor(sealed("simulated product state 1\nkind fwu\nvalid no\n")),
              "the state file has \"\" in line 4, expected \"length\" and a number from 0 to 1000");
}

TEST(StateFile, TextLargerThanAnyStateIsRefused)
{
    EXPECT_EQ(
        reasonFor("simulated product state 1\n" + QByteArray(4000, '0')),
        "the state file has 4026 bytes, too many for a product with room for 1000 code bytes");
}

TEST(StateFile, LargestStateIsTaken)
{
    for (const int size : {1, 32, 33, sizeOfMemory}) {
        StoredCode code;
        code.bytes = codeOfSize(size);
        code.valid = true;
        code.version = {{'9', '9', '9', '9'}};
        StoredCode back;
        QString error;
        EXPECT_TRUE(readStateFile(writeStateFile(code), size, &back, &error))
            << error.toStdString();
        EXPECT_EQ(back.bytes, code.bytes);
    }
}

TEST(StateFile, ChangesMakeOfAnEarlierStateTheLaterOne)
{
    SimulatedProduct product{valdrin()};
    product.receive(dataMessage(0, 0, codeOfSize(112)));
    QByteArray text = product.save();
    EXPECT_TRUE(product.takeChange().has_value());
    EXPECT_FALSE(product.takeChange().has_value());
    const auto messages = imageOf(codeOfSize(5000), "1024");
    for (int i = 1; i < messages.size(); ++i) {
        product.receive(messages.at(i));
        const std::optional<int> address = product.takeChange();
        if (address)
            text += product.saveChange(*address);
        SimulatedProduct restored{valdrin()};
        QString error;
        ASSERT_TRUE(restored.restore(text, &error)) << error.toStdString();
        EXPECT_EQ(restored.save(), product.save());
    }
    EXPECT_TRUE(product.isCodeValid());
    EXPECT_TRUE(text.contains("\nchange fwu no - - 000070 ")) << text.toStdString();
}

TEST(StateFile, EveryChangeOfTheMemoryIsNoticed)
{
    SimulatedProduct product{valdrin()};
    EXPECT_FALSE(product.takeChange().has_value());
    product.damageCode(3);
    EXPECT_EQ(product.takeChange(), 3);
    product.failPowerAfter(1); // the code is marked, and nothing more
    product.receive(dataMessage(0, 0, codeOfSize(112)));
    EXPECT_EQ(product.takeChange(), 256);
    EXPECT_FALSE(product.isCodeValid());
    product.receive(dataMessage(0, 0, codeOfSize(112)));
    EXPECT_EQ(product.takeChange(), 0);
    product.receive(bytesOf("F07E7F0601F7"));
    EXPECT_FALSE(product.takeChange().has_value());
}

TEST(StateFile, AnUnfinishedChangeDoesNotCountAndADamagedOneIsRefused)
{
    SimulatedProduct product{valdrin()};
    product.damageCode(200);
    const QByteArray whole = product.save();
    product.damageCode(255);
    const QByteArray change = product.saveChange(255);
    for (int size = 0; size < change.size(); ++size) {
        SimulatedProduct restored{valdrin()};
        QString error;
        ASSERT_TRUE(restored.restore(whole + change.left(size), &error)) << error.toStdString();
        EXPECT_EQ(restored.save(), whole);
    }
    for (int bit = 0; bit < 8 * change.size(); ++bit) {
        QByteArray damaged = change;
        damaged[bit / 8] = static_cast<char>(damaged.at(bit / 8) ^ (1 << bit % 8));
        SimulatedProduct restored{valdrin()};
        QString error;
        if (damaged.endsWith('\n')) {
            EXPECT_FALSE(restored.restore(whole + damaged, &error)) << bit;
        }
    }
}

TEST(StateFile, AChangeBehindAHoleOrBeyondTheMemoryIsRefused)
{
    StoredCode code;
    code.bytes = codeOfSize(11);
    EXPECT_EQ(reasonFor(sealed(worked) + writeStateChange(code, 9)), "taken");
    EXPECT_EQ(reasonFor(sealed(worked) + writeStateChange(code, 10)),
              "the state file is damaged in line 9, which records a change");
    code.bytes = codeOfSize(sizeOfMemory + 1);
    EXPECT_EQ(reasonFor(sealed(worked) + writeStateChange(code, 9)),
              "the state file is damaged in line 9, which records a change");
}

} // namespace hx::sim

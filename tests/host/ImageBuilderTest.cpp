#include "host/image/ImageBuilder.h"

#include "host/image/ImageGrammar.h"
#include "tests/host/Bytes.h"
#include "tests/host/ImageSamples.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

using namespace hx;

TEST(ImageGrammar, ComputesTheCheckValueOfTheCrc)
{
    EXPECT_EQ(crc32("123456789"), 0xCBF43926u);
    EXPECT_EQ(crc32(QByteArray()), 0u);
}

TEST(ImageGrammar, ReportsTheLow28BitsOfACrcInFourGroups)
{
    EXPECT_EQ(sevenBitGroups(0xCBF43926, 4), hex("5F507226"));
    EXPECT_EQ(sevenBitGroups(0xFFFFFFFF, 4), hex("7F7F7F7F"));
    EXPECT_EQ(sevenBitGroups(0xF0000000, 4), hex("00000000"));
}

TEST(ImageGrammar, CountsAHeaderByteForEverySevenPackedBytes)
{
    EXPECT_EQ(image::packedSize(1), 2);
    EXPECT_EQ(image::packedSize(7), 8);
    EXPECT_EQ(image::packedSize(8), 10);
    EXPECT_EQ(image::packedSize(112), 128);
}

TEST(ImageBuilder, BuildsTheWorkedExampleByteForByte)
{
    const Result<BuiltImage> built =
        buildImage(samples::product(), hex("F07E81"), CodeType::Fwu, "1.0.2.4");
    ASSERT_TRUE(built);
    ASSERT_EQ(built->messages.size(), 3);
    EXPECT_EQ(built->messages.at(0).bytes,
              hex("F0 00 6B 2D 30 41 43 0A 00 00 00 00 00 00 00 03 50 70 7E 01 42 F7"));
    EXPECT_EQ(built->messages.at(1).bytes,
              hex("F0 00 6B 2D 30 41 43 0C 00 00 00 00 03 06 0C 19 1A 0C "
                  "31 30 32 34 01 1C F7"));
    EXPECT_EQ(built->messages.at(2).bytes, hex("F0 00 6B 2D 30 41 F7"));
    EXPECT_EQ(built->fileContent(), built->messages.at(0).bytes + built->messages.at(1).bytes +
                                        built->messages.at(2).bytes);
}

TEST(ImageBuilder, BuildsKindFwdWithItsOwnCommandByte)
{
    for (const HxMidiData& message : samples::messages(200, CodeType::Fwd).mid(0, 3))
        EXPECT_EQ(message.bytes.at(6), 0x42);
}

TEST(ImageBuilder, CutsTheCodeInto112BytesAMessage)
{
    EXPECT_EQ(samples::messages(112).size(), 3);
    EXPECT_EQ(samples::messages(113).size(), 4);
    EXPECT_EQ(samples::messages(113).at(1).bytes.mid(8, 8), hex("00 01 00 00 00 00 70 01"));
    EXPECT_EQ(samples::messages(112).at(0).bytes.size(), 146);
}

TEST(ImageBuilder, TakesTheVersionWithDotsOrWithout)
{
    EXPECT_EQ(
        buildImage(samples::product(), "x", CodeType::Fwu, "1024")->messages.at(1).bytes.mid(18, 4),
        "1024");
    EXPECT_EQ(buildImage(samples::product(), "x", CodeType::Fwu, "1.0.2.4")
                  ->messages.at(1)
                  .bytes.mid(18, 4),
              "1024");
}

TEST(ImageBuilder, RefusesAVersionThatIsNotFourDigits)
{
    for (const char* version : {"", "1.0.2", "1.0.2.a", "10.0.2.4", "1.0.2.4.",
                                "\xD9\xA1"
                                "024"}) {
        const Problem problem =
            buildImage(samples::product(), "x", CodeType::Fwu, version).problem();
        EXPECT_EQ(problem.what, QString("the version is \"%1\"").arg(version));
        EXPECT_EQ(problem.expected, "four digits such as 1.0.2.4");
    }
}

TEST(ImageBuilder, RefusesCodeThatNoImageCarries)
{
    const auto problemOfCode = [](int size) {
        return buildImage(samples::product(), QByteArray(size, 'x'), CodeType::Fwu, "1024")
            .problem();
    };
    EXPECT_EQ(problemOfCode(0).what, "the code has 0 bytes");
    EXPECT_EQ(problemOfCode(0).expected, "1 to 1048576 code bytes");
    EXPECT_EQ(problemOfCode(0).code, ExitCode::ImageRefused);
    EXPECT_EQ(problemOfCode(1048577).what, "the code has more than 1048576 bytes");
    EXPECT_TRUE(buildImage(samples::product(), QByteArray(1048576, 'x'), CodeType::Fwu, "1024"));
}

TEST(ImageBuilder, RefusesAnUnknownKind)
{
    EXPECT_FALSE(buildImage(samples::product(), "x", CodeType::Unknown, "1024"));
}

// What a fresh product answers to each command, byte for byte.
#include "tests/simulator/UpdateMessages.h"
#include "tests/support/Valdrin.h"

#include <gtest/gtest.h>

namespace hx::sim {

namespace {

class ProductCommands : public testing::Test {
protected:
    QByteArray ask(const char* hex) { return answers(product, hex); }

    SimulatedProduct product{valdrin()};
};

// A product whose update broke off after one message: it has no valid code.
SimulatedProduct productWithoutCode()
{
    SimulatedProduct product{valdrin()};
    product.receive(dataMessage(0, 0, "123456789"));
    return product;
}

} // namespace

TEST_F(ProductCommands, IdentityRequestToAllDevices)
{
    EXPECT_EQ(ask("F0 7E 7F 06 01 F7"), "F0 7E 00 06 02 00 6B 2D 30 00 41 00 31 30 32 33 F7");
}

TEST_F(ProductCommands, IdentityRequestToItsOwnDeviceIdOnly)
{
    SimulatedProductSettings settings;
    settings.deviceId = 0x12;
    product = SimulatedProduct(valdrin(), settings);
    EXPECT_EQ(ask("F0 7E 12 06 01 F7"), "F0 7E 12 06 02 00 6B 2D 30 00 41 00 31 30 32 33 F7");
    EXPECT_EQ(ask("F0 7E 7F 06 01 F7"), "F0 7E 12 06 02 00 6B 2D 30 00 41 00 31 30 32 33 F7");
    EXPECT_EQ(ask("F0 7E 13 06 01 F7"), "");
}

TEST_F(ProductCommands, OtherUniversalMessagesAreNotAnswered)
{
    EXPECT_EQ(ask("F0 7E 7F 06 02 F7"), "");
    EXPECT_EQ(ask("F0 7E 7F 06 01 00 F7"), "");
    EXPECT_EQ(ask("F0 7F 7F 06 01 F7"), "");
    EXPECT_EQ(ask("F0 7E F7"), "");
}

TEST_F(ProductCommands, IdentityCarriesTheBootLoadersVersionWithoutValidCode)
{
    product = productWithoutCode();
    EXPECT_EQ(ask("F0 7E 7F 06 01 F7"), "F0 7E 00 06 02 00 6B 2D 30 00 41 00 30 31 30 30 F7");
}

TEST_F(ProductCommands, Gender)
{
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 2F F7"), "F0 00 6B 2D 30 41 2F 00 30 00 41 F7");
}

TEST_F(ProductCommands, SerialNumber)
{
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 21 F7"), "F0 00 6B 2D 30 41 21 33 30 34 31 30 30 30 31 F7");
}

TEST_F(ProductCommands, Version)
{
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 2E F7"), "F0 00 6B 2D 30 41 2E 31 30 32 33 F7");
}

TEST_F(ProductCommands, VersionIsRefusedWithoutValidCode)
{
    product = productWithoutCode();
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 2E F7"), "F0 00 6B 2D 30 41 2E 46 F7");
}

TEST_F(ProductCommands, ChecksumsOfFactoryCodeAgree)
{
    // CRC-32 of the 256 factory bytes is 8ED7A350
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 30 F7"), "F0 00 6B 2D 30 41 30 76 5E 46 50 F7");
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 31 F7"), "F0 00 6B 2D 30 41 31 76 5E 46 50 F7");
}

TEST_F(ProductCommands, StoredChecksumIsAllOnesWithoutValidCode)
{
    product = productWithoutCode();
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 30 F7"), "F0 00 6B 2D 30 41 30 7F 7F 7F 7F F7");
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 31 F7"), "F0 00 6B 2D 30 41 31 5F 50 72 26 F7");
}

TEST_F(ProductCommands, CalculatedChecksumIsOfWhatTheMemoryHolds)
{
    const QByteArray stored = ask("F0 00 6B 2D 30 41 30 F7");
    product.damageCode(17);
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 30 F7"), stored);
    EXPECT_NE(ask("F0 00 6B 2D 30 41 31 F7").mid(21), stored.mid(21));
    product.damageCode(17);
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 31 F7").mid(21), stored.mid(21));
}

TEST_F(ProductCommands, DamageOutsideOfTheCodeChangesNothing)
{
    product.damageCode(-1);
    product.damageCode(256);
    EXPECT_EQ(product.codeBytes(), SimulatedProduct(valdrin()).codeBytes());
    product.damageCode(255);
    EXPECT_NE(product.codeBytes(), SimulatedProduct(valdrin()).codeBytes());
}

TEST_F(ProductCommands, CodeImageDsp0IsTheCodeOfKindFwu)
{
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 42 08 F7"),
              "F0 00 6B 2D 30 41 42 08 07 7F 00 00 00 00 00 02 00 00 00 00 01 F7");
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 42 09 F7"), "F0 00 6B 2D 30 41 42 09 02 F7");
}

TEST_F(ProductCommands, CodeImageDsp1IsTheCodeOfKindFwd)
{
    for (const QByteArray& message : imageOf("123456789", "2040", kindFwd))
        product.receive(message);
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 42 08 F7"), "F0 00 6B 2D 30 41 42 08 02 F7");
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 42 09 F7"),
              "F0 00 6B 2D 30 41 42 09 0F 78 00 00 00 00 00 00 09 00 00 00 01 F7");
}

TEST_F(ProductCommands, CodeImageBeingWrittenHasNoVersionAndNoGoodBank)
{
    product = productWithoutCode();
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 42 08 F7"),
              "F0 00 6B 2D 30 41 42 08 00 00 00 00 00 00 00 00 09 00 00 00 00 F7");
}

TEST_F(ProductCommands, RawReadOfTheIdentityBlock)
{
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 42 0D 0F 0F 0F 0F 0F 0F 00 F7"),
              "F0 00 6B 2D 30 41 42 0D 0F 0F 0F 0F 0F 0F 00 "
              "03 03 03 00 03 04 03 01 03 00 03 00 03 00 03 01 " // serial number
              "03 00 04 01 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F F7");
}

TEST_F(ProductCommands, RawReadOfCode)
{
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 42 0D 0F 00 00 00 00 00 01 F7"),
              "F0 00 6B 2D 30 41 42 0D 0F 00 00 00 00 00 01 "
              "03 00 05 05 07 0A 09 0F 0C 04 0E 09 00 0E 03 03 "
              "05 08 07 0D 0A 02 0C 07 0E 0C 01 01 03 06 05 0B F7");
}

TEST_F(ProductCommands, RawReadPastTheCodeGivesErasedMemory)
{
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 42 0D 0F 00 00 00 00 0F 0F F7"),
              "F0 00 6B 2D 30 41 42 0D 0F 00 00 00 00 0F 0F "
              "0E 06 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F "
              "0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F F7");
}

TEST_F(ProductCommands, RawReadPastTheLastAddressGivesErasedMemory)
{
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 42 0D 0F 0F 0F 0F 0F 0F 09 F7"),
              "F0 00 6B 2D 30 41 42 0D 0F 0F 0F 0F 0F 0F 09 "
              "04 01 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F "
              "0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F 0F F7");
}

TEST_F(ProductCommands, RawReadIsRefusedUnlessItsAddressIsSixNibbles)
{
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 42 0D 0F 00 00 10 00 00 00 F7"), "F0 00 6B 2D 30 41 42 46 F7");
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 42 0D 0F 00 00 00 00 00 F7"), "F0 00 6B 2D 30 41 42 46 F7");
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 42 0D 0E 00 00 00 00 00 00 F7"), "F0 00 6B 2D 30 41 42 46 F7");
}

TEST_F(ProductCommands, ModeIsChangedWithoutAReply)
{
    EXPECT_EQ(product.mode(), ProductMode::User);
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 1C 02 F7"), "");
    EXPECT_EQ(product.mode(), ProductMode::Boot);
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 1C 01 F7"), "");
    EXPECT_EQ(product.mode(), ProductMode::Dfu);
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 1C 00 F7"), "");
    EXPECT_EQ(product.mode(), ProductMode::User);
}

TEST_F(ProductCommands, UserModeIsRefusedWithoutValidCode)
{
    product = productWithoutCode();
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 1C 00 F7"), "F0 00 6B 2D 30 41 1C 46 F7");
    EXPECT_EQ(product.mode(), ProductMode::Boot);
    EXPECT_TRUE(product.isUpdating());
}

TEST_F(ProductCommands, ResetRunsTheCode)
{
    ask("F0 00 6B 2D 30 41 1C 02 F7");
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 1B 09 58 F7"), "");
    EXPECT_EQ(product.mode(), ProductMode::User);
}

TEST_F(ProductCommands, ResetStaysInTheBootLoaderWithoutValidCodeAndEndsTheUpdate)
{
    product = productWithoutCode();
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 1B 09 58 F7"), "");
    EXPECT_EQ(product.mode(), ProductMode::Boot);
    EXPECT_FALSE(product.isUpdating());
    EXPECT_EQ(product.codeBytes(), "123456789");
}

TEST_F(ProductCommands, UnknownCommandsAreRefused)
{
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 55 F7"), "F0 00 6B 2D 30 41 55 46 F7");
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 1B 09 59 F7"), "F0 00 6B 2D 30 41 1B 46 F7");
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 1C 03 F7"), "F0 00 6B 2D 30 41 1C 46 F7");
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 2E 00 F7"), "F0 00 6B 2D 30 41 2E 46 F7");
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 42 F7"), "F0 00 6B 2D 30 41 42 46 F7");
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 43 08 F7"), "F0 00 6B 2D 30 41 43 46 F7");
}

TEST_F(ProductCommands, WhatIsMeantForOthersIsNotAnswered)
{
    EXPECT_EQ(ask("F0 00 6B 2D 30 42 2E F7"), "");
    EXPECT_EQ(ask("F0 00 6B 2D 31 41 2E F7"), "");
    EXPECT_EQ(ask("F0 00 6B 2E 30 41 2E F7"), "");
    EXPECT_EQ(ask("F0 00 6B 2D 30 F7"), "");
}

TEST_F(ProductCommands, ItsOwnAnswersLedBackAreNotAnswered)
{
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 55 46 F7"), "");
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 43 0C 00 F7"), "");
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 42 0C 02 F7"), "");
}

TEST_F(ProductCommands, EveryExchangeEndsOnACableThatLeadsBack)
{
    for (const char* request :
         {"F07E7F0601F7", "F0006B2D30412FF7", "F0006B2D304121F7", "F0006B2D30412EF7",
          "F0006B2D304130F7", "F0006B2D304131F7", "F0006B2D30414208F7", "F0006B2D30414209F7",
          "F0006B2D3041420D0F000000000000F7", "F0006B2D304155F7", "F0006B2D3041F7"}) {
        QVector<SimulatedReply> replies = product.receive(bytesOf(request));
        for (int lap = 0; lap < 3 && !replies.isEmpty(); ++lap)
            replies = product.receive(replies.first().bytes);
        EXPECT_TRUE(replies.isEmpty()) << request;
    }
}

TEST_F(ProductCommands, IdentityAndSettingsShowInTheAnswers)
{
    SimulatedProductSettings settings;
    settings.version = {{'9', '8', '7', 'x'}};
    settings.serialNumber = std::array<quint8, 8>{{0x80, 0xFF, 3, 4, 5, 6, 7, 8}};
    settings.replyDelayUs = 4321;
    product =
        SimulatedProduct({{{0x12, 0x21, 0xFF}}, 0xA2, 0x33, QStringLiteral("Other")}, settings);
    EXPECT_EQ(product.identity().name, "Other");
    EXPECT_EQ(ask("F0 7E 7F 06 01 F7"), "F0 7E 00 06 02 12 21 7F 22 00 33 00 39 38 37 30 F7");
    EXPECT_EQ(ask("F0 12 21 7F 22 33 21 F7"), "F0 12 21 7F 22 33 21 00 7F 03 04 05 06 07 08 F7");
    EXPECT_EQ(ask("F0 12 21 7F 22 33 2F F7"), "F0 12 21 7F 22 33 2F 00 22 00 33 F7");
    EXPECT_EQ(product.receive(bytesOf("F07E7F0601F7")).first().delayUs, 4321);
}

TEST_F(ProductCommands, SerialNumberBeginsWithFamilyAndModel)
{
    product = SimulatedProduct({{{0x00, 0x21, 0x7F}}, 0x12, 0x05, QString()});
    EXPECT_EQ(ask("F0 00 21 7F 12 05 21 F7"), "F0 00 21 7F 12 05 21 31 32 30 35 30 30 30 31 F7");
}

TEST_F(ProductCommands, MemoryTooSmallForTheFactoryCodeHoldsItsBeginning)
{
    SimulatedProductSettings settings;
    settings.memorySize = 3;
    EXPECT_EQ(hexOf(SimulatedProduct(valdrin(), settings).codeBytes()), "0B 30 55");
    settings.memorySize = -5;
    EXPECT_EQ(SimulatedProduct(valdrin(), settings).codeBytes().size(), 0);
}

TEST_F(ProductCommands, SeveralMessagesAtOnceAreAnsweredInOrder)
{
    EXPECT_EQ(ask("F0 00 6B 2D 30 41 55 F7 F8 F0 00 6B 2D 30 41 56 F7 F0 00 6B"),
              "F0 00 6B 2D 30 41 55 46 F7 | F0 00 6B 2D 30 41 56 46 F7");
    EXPECT_EQ(ask("2D 30 41 57 F7"), "F0 00 6B 2D 30 41 57 46 F7");
}

TEST_F(ProductCommands, PowerCycleLosesAnUnfinishedMessageAndTheMode)
{
    ask("F0 00 6B 2D 30 41 1C 01 F7 F0 00 6B 2D 30");
    product.powerCycle();
    EXPECT_EQ(ask("41 2E F7"), "");
    EXPECT_EQ(product.mode(), ProductMode::User);
}

} // namespace hx::sim

#include "host/update/AcknowledgementReader.h"
#include "tests/host/Bytes.h"

#include <gtest/gtest.h>

using namespace hx;

namespace {

FwUpdateProtocol protocolOf(const char* good, const char* bad, const char* failed)
{
    FwUpdateProtocol protocol;
    protocol.responseAny = ResponceData("F0006B2D30..4[23]0C..F7");
    protocol.responseGood = ResponceData(good);
    protocol.responseBad = ResponceData(bad);
    protocol.responseFailed = ResponceData(failed);
    return protocol;
}

const FwUpdateProtocol usual =
    protocolOf("F0006B2D30..4[23]0C00F7", "F0006B2D30..4[23]0C01F7", "F0006B2D30..4[23]0C02F7");

HxMidiData answer(const char* status)
{
    return HxMidiData(hex("F0006B2D3041430C") + hex(status) + hex("F7"));
}

} // namespace

TEST(AcknowledgementReader, tellsTheThreeStatusesAndTakesAnyOtherForDamage)
{
    AcknowledgementReader reader(usual);
    EXPECT_EQ(reader.read(answer("00")), Acknowledgement::Good);
    EXPECT_EQ(reader.read(answer("01")), Acknowledgement::Bad);
    EXPECT_EQ(reader.read(answer("02")), Acknowledgement::Failed);
    EXPECT_EQ(reader.read(answer("03")), Acknowledgement::Bad);
    EXPECT_EQ(reader.read(HxMidiData(hex("F0006B2D304130F7"))), Acknowledgement::None);
}

TEST(AcknowledgementReader, readsTheSameBytesAgainAsBefore)
{
    AcknowledgementReader reader(usual);
    for (const char* status : {"00", "00", "01", "01", "00", "02", "02", "00"}) {
        const Acknowledgement expected = AcknowledgementReader(usual).read(answer(status));
        EXPECT_EQ(reader.read(answer(status)), expected) << status;
    }
}

TEST(AcknowledgementReader, anEmptyMessageIsNoneUnlessThePatternTakesIt)
{
    EXPECT_EQ(AcknowledgementReader(usual).read(HxMidiData()), Acknowledgement::None);
    FwUpdateProtocol takesAll = usual;
    takesAll.responseAny = ResponceData(".*");
    EXPECT_EQ(AcknowledgementReader(takesAll).read(HxMidiData()), Acknowledgement::Bad);
}

TEST(AcknowledgementReader, whatFitsGoodAndBadIsBadAndWhatFitsFailedIsFailed)
{
    EXPECT_EQ(AcknowledgementReader(protocolOf("F0", "F0", "F7")).read(answer("00")),
              Acknowledgement::Bad);
    EXPECT_EQ(AcknowledgementReader(protocolOf("F0", "F7", "F0")).read(answer("00")),
              Acknowledgement::Failed);
}

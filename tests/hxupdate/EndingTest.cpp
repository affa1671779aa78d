// How each result of the host's is told, and when a product counts as touched.
#include "apps/hxupdate/model/Ending.h"

#include <gtest/gtest.h>

using namespace hxupdate;

namespace {

using Outcome = hx::UpdateOutcome;

struct EndingOfResult {
    Outcome outcome;
    Ending untouched;
    Ending midway;   // at one of the image's messages
    Ending atTheEnd; // after all of them
};

// A result that contradicts itself, such as a success that is none, is told as the worse of both.
const EndingOfResult endings[] = {
    {Outcome::ImageRefused, Ending::ImageRefused, Ending::RefusedMidway, Ending::RefusedMidway},
    {Outcome::NoAnswer, Ending::SilentBefore, Ending::SilentMidway, Ending::SilentMidway},
    {Outcome::WrongProduct, Ending::WrongBefore, Ending::WrongMidway, Ending::WrongAfterwards},
    {Outcome::Failed, Ending::SilentBefore, Ending::RefusedMidway, Ending::RefusedMidway},
    {Outcome::VerificationFailed, Ending::SilentBefore, Ending::NotProven, Ending::NotProven},
    {Outcome::Interrupted, Ending::StoppedBefore, Ending::StoppedMidway, Ending::StoppedUnverified},
    {Outcome::PortLost, Ending::LostBefore, Ending::LostMidway, Ending::LostMidway},
    {Outcome::NotConfirmed, Ending::StoppedBefore, Ending::NotProven, Ending::NotProven},
};

hx::UpdateResult result(Outcome outcome, bool touched, int failedMessage = 0)
{
    hx::UpdateResult made;
    made.outcome = outcome;
    made.touched = touched;
    made.failedMessage = failedMessage;
    return made;
}

} // namespace

TEST(EndingOf, EveryOutcomeBeforeAndAfterTheFirstMessage)
{
    for (const EndingOfResult& row : endings) {
        SCOPED_TRACE(hx::updateOutcomeText(row.outcome).toStdString());
        EXPECT_EQ(endingOf(result(row.outcome, false)), row.untouched);
        EXPECT_EQ(endingOf(result(row.outcome, true, 3)), row.midway);
        EXPECT_EQ(endingOf(result(row.outcome, true)), row.atTheEnd);
    }
}

TEST(EndingOf, AMessageThatArrivesDamagedIsNotOneThatIsRefused)
{
    hx::UpdateResult damaged = result(Outcome::Failed, true, 3);
    damaged.sendEnd = hx::SendEnd::Bad;
    EXPECT_EQ(endingOf(damaged), Ending::DamagedMidway);
}

TEST(EndingOf, AProductThatHoldsTheCodeWithoutHavingSaidSoIsNotUpdatedAndNotEmpty)
{
    for (const Outcome outcome : {Outcome::NoAnswer, Outcome::Failed, Outcome::Interrupted}) {
        hx::UpdateResult holding = result(outcome, true, 5);
        holding.holdsImage = true;
        EXPECT_EQ(endingOf(holding), Ending::Unacknowledged);
    }
}

TEST(EndingOf, OnlyTheHostsSuccessIsASuccess)
{
    EXPECT_EQ(endingOf(result(Outcome::Succeeded, true)), Ending::Succeeded);
    for (const EndingOfResult& row : endings) {
        EXPECT_NE(endingOf(result(row.outcome, false)), Ending::Succeeded);
        EXPECT_NE(endingOf(result(row.outcome, true)), Ending::Succeeded);
    }
}

TEST(EndingOf, MidwayIsWhereTheProductMayHoldNoValidCode)
{
    for (const EndingOfResult& row : endings) {
        EXPECT_FALSE(isMidway(endingOf(result(row.outcome, false))));
        EXPECT_TRUE(isMidway(endingOf(result(row.outcome, true))));
        EXPECT_TRUE(isMidway(endingOf(result(row.outcome, true, 3))));
    }
    for (const Ending ending : {Ending::Succeeded, Ending::NotOpened, Ending::OtherUnit})
        EXPECT_FALSE(isMidway(ending));
}

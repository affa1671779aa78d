// How each result of the host's is told, and when a product counts as touched.
#include "apps/hxupdate/model/Ending.h"

#include <gtest/gtest.h>

using namespace hxupdate;

namespace {

using Outcome = hx::UpdateOutcome;

struct EndingOfResult {
    Outcome outcome;
    Ending untouched;
    Ending touched;
};

// A result that contradicts itself, such as a success that is none, is told as the worse of both.
const EndingOfResult endings[] = {
    {Outcome::ImageRefused, Ending::ImageRefused, Ending::RefusedMidway},
    {Outcome::NoAnswer, Ending::SilentBefore, Ending::SilentMidway},
    {Outcome::WrongProduct, Ending::WrongBefore, Ending::WrongAfterwards},
    {Outcome::Failed, Ending::SilentBefore, Ending::RefusedMidway},
    {Outcome::VerificationFailed, Ending::SilentBefore, Ending::NotProven},
    {Outcome::Interrupted, Ending::StoppedBefore, Ending::StoppedMidway},
    {Outcome::PortLost, Ending::LostBefore, Ending::LostMidway},
    {Outcome::NotConfirmed, Ending::StoppedBefore, Ending::NotProven},
};

hx::UpdateResult result(Outcome outcome, bool touched)
{
    hx::UpdateResult made;
    made.outcome = outcome;
    made.touched = touched;
    return made;
}

} // namespace

TEST(EndingOf, EveryOutcomeBeforeAndAfterTheFirstMessage)
{
    for (const EndingOfResult& row : endings) {
        SCOPED_TRACE(hx::updateOutcomeText(row.outcome).toStdString());
        EXPECT_EQ(endingOf(result(row.outcome, false)), row.untouched);
        EXPECT_EQ(endingOf(result(row.outcome, true)), row.touched);
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
    }
    for (const Ending ending : {Ending::Succeeded, Ending::NotOpened, Ending::OtherUnit})
        EXPECT_FALSE(isMidway(ending));
}

// Answers that do not come when the code in the product is verified.
#include "host/update/UpdateRun.h"

#include "tests/host/ProductSession.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

using namespace hx;

// Its questions are: who it is (1), version (2), stored checksum (3), calculated checksum (4, asked three
// times); what does not agree is asked once more from the version on.
TEST(UpdateVerification, WithoutTheStoredChecksumFails)
{
    ProductSession session({"drop-reply:3-5", "drop-reply:8-10"});
    const UpdateResult result = verifyProduct(session.device(), session.bus);
    EXPECT_EQ(result.outcome, UpdateOutcome::VerificationFailed);
    EXPECT_EQ(result.stored.state, ReadingState::NoAnswer);
    EXPECT_TRUE(result.calculated.good());
}

TEST(UpdateVerification, WithoutTheCalculatedChecksumFails)
{
    ProductSession session({"drop-reply:4-6", "drop-reply:9-11"});
    const UpdateResult result = verifyProduct(session.device(), session.bus);
    EXPECT_EQ(result.outcome, UpdateOutcome::VerificationFailed);
    EXPECT_TRUE(result.stored.good());
    EXPECT_EQ(result.calculated.state, ReadingState::NoAnswer);
    EXPECT_TRUE(result.steps.back().text.endsWith("calculated no answer"))
        << result.steps.back().text.toStdString();
}

// The question before the first message of an update: what is known by then, and what each answer does.
#include "host/update/UpdateRun.h"

#include "tests/host/ImageSamples.h"
#include "tests/host/ProductSession.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

using namespace hx;

namespace {

UpdateResult updateConfirmedBy(ProductSession& session,
                               const std::function<bool(const UpdateResult&)>& confirm,
                               const std::atomic<bool>* interrupted = nullptr)
{
    UpdateOptions options;
    options.confirm = confirm;
    options.interrupted = interrupted;
    return runUpdate(session.device(), session.bus, samples::image(300), options);
}

QString outcomeOf(const UpdateResult& result)
{
    return updateOutcomeText(result.outcome);
}

} // namespace

TEST(UpdateConfirmation, IsAskedWhenTheProductHasToldWhoItIs)
{
    ProductSession session;
    QString version;
    QByteArray number;
    const UpdateResult result = updateConfirmedBy(session, [&](const UpdateResult& asked) {
        version = asked.versionBefore.version;
        number = asked.esnBefore.number;
        return true;
    });
    EXPECT_EQ(outcomeOf(result), updateOutcomeText(UpdateOutcome::Succeeded));
    EXPECT_EQ(version, "1.0.2.3");
    EXPECT_EQ(number, QByteArray("30410001"));
}

TEST(UpdateConfirmation, ThatIsRefusedSendsNothingOfTheImage)
{
    ProductSession session;
    const UpdateResult result =
        updateConfirmedBy(session, [](const UpdateResult&) { return false; });
    EXPECT_EQ(outcomeOf(result), updateOutcomeText(UpdateOutcome::NotConfirmed));
    EXPECT_EQ(result.reason, "The update was not confirmed.");
    EXPECT_FALSE(result.touched);
    EXPECT_TRUE(session.product().isCodeValid());
}

TEST(UpdateConfirmation, ThatIsInterruptedIsNoRefusal)
{
    ProductSession session;
    std::atomic<bool> interrupted{false};
    const UpdateResult result = updateConfirmedBy(
        session,
        [&interrupted](const UpdateResult&) {
            interrupted = true;
            return false;
        },
        &interrupted);
    EXPECT_EQ(outcomeOf(result), updateOutcomeText(UpdateOutcome::Interrupted));
    EXPECT_EQ(result.reason, "interrupted before the question was answered");
    EXPECT_FALSE(result.touched);
}

TEST(UpdateConfirmation, IsAskedOfAProductThatTellsNoSerialNumberToo)
{
    ProductSession session({"silent:3-5"}); // identity and version come first
    bool isKnown = true;
    const UpdateResult result = updateConfirmedBy(session, [&isKnown](const UpdateResult& asked) {
        isKnown = asked.esnBefore.good();
        return true;
    });
    EXPECT_FALSE(isKnown);
    EXPECT_EQ(outcomeOf(result), updateOutcomeText(UpdateOutcome::Succeeded));
}

TEST(UpdateConfirmation, IsNotAskedWhenThePortIsGone)
{
    ProductSession session({"vanish:3"});
    bool isAsked = false;
    const UpdateResult result = updateConfirmedBy(session, [&isAsked](const UpdateResult&) {
        isAsked = true;
        return true;
    });
    EXPECT_FALSE(isAsked);
    EXPECT_EQ(outcomeOf(result), updateOutcomeText(UpdateOutcome::PortLost));
    EXPECT_FALSE(result.touched);
}

// The update against the simulated product on good days and on bad ones.
#include "tests/host/SampleUpdate.h"

using namespace hx;

TEST(UpdateRun, UpdatesAProductAndVerifiesIt)
{
    ProductSession session;
    const UpdateImage image = samples::image(codeBytes);
    const UpdateResult result = update(session, image);

    expectOutcome(result, UpdateOutcome::Succeeded);
    EXPECT_TRUE(holds(session.product(), samples::code(codeBytes)));
    EXPECT_EQ(stepNames(result), QStringList({"image", "identity", "version before", "messages",
                                              "identity after", "version after", "checksums"}));
    for (const UpdateStep& step : result.steps)
        EXPECT_TRUE(step.good) << step.name.toStdString();
    EXPECT_EQ(result.versionBefore.version, "1.0.2.3");
    EXPECT_EQ(result.versionAfter.version, "1.0.2.4");
    EXPECT_EQ(result.identityBefore.version, "1.0.2.3");
    EXPECT_EQ(result.identityAfter.version, "1.0.2.4");
    EXPECT_EQ(result.stored.groups, image.expectedChecksum());
    EXPECT_EQ(result.calculated.groups, image.expectedChecksum());
    EXPECT_EQ(result.imageChecksum, image.expectedChecksum());
    EXPECT_EQ(result.progress.message, imageMessages);
    EXPECT_EQ(result.progress.bytes, image.bytes);
    EXPECT_EQ(result.progress.retries, 0);
    EXPECT_EQ(result.failedMessage, 0);
    EXPECT_EQ(result.productCondition, ProductCondition::CodeIntact);
    EXPECT_TRUE(result.advice.isEmpty());
    EXPECT_TRUE(result.touched);
    EXPECT_EQ(result.duration, session.port.clock().now());
}

TEST(UpdateRun, UpdatesWithKindFwd)
{
    ProductSession session;
    expectOutcome(update(session, samples::image(codeBytes, CodeType::Fwd)),
                  UpdateOutcome::Succeeded);
    EXPECT_TRUE(holds(session.product(), samples::code(codeBytes)));
}

TEST(UpdateRun, UpdatesWithAnImageOf64KiB)
{
    ProductSession session;
    expectOutcome(update(session, samples::image(65536)), UpdateOutcome::Succeeded);
    EXPECT_TRUE(holds(session.product(), samples::code(65536)));
}

TEST(UpdateRun, UpdatesThroughNoiseInPiecesOfOneByte)
{
    SimulatedPortOptions options;
    options.chunkSize = 1;
    ProductSession session({"noise"}, sim::SimulatedProductSettings(), options);
    expectOutcome(update(session), UpdateOutcome::Succeeded);
}

TEST(UpdateRun, ReportsProgressAfterEveryMessage)
{
    SimulatedPortOptions options;
    options.pace = {dinBytesPerSecond, 0};
    ProductSession session({}, sim::SimulatedProductSettings(), options);
    const UpdateImage image = samples::image(codeBytes);
    std::vector<UpdateProgress> reports;
    UpdateOptions updateOptions;
    updateOptions.progress = [&](const UpdateProgress& progress) { reports.push_back(progress); };
    expectOutcome(update(session, image, updateOptions), UpdateOutcome::Succeeded);

    ASSERT_EQ(reports.size(), 5u);
    EXPECT_EQ(reports[0].message, 1);
    EXPECT_EQ(reports[0].totalMessages, imageMessages);
    EXPECT_EQ(reports[0].bytes, 146);
    EXPECT_EQ(reports[0].totalBytes, image.bytes);
    // 146 bytes out and the acknowledgement's 10 back, and at most 5 ms of thought.
    const double wireSeconds = (146.0 + 10) / dinBytesPerSecond;
    EXPECT_LE(reports[0].bytesPerSecond, 146 / wireSeconds + 0.01);
    EXPECT_GE(reports[0].bytesPerSecond, 146 / (wireSeconds + 5e-3));
    EXPECT_NEAR(static_cast<double>(reports[0].remainingMicroseconds),
                static_cast<double>(image.bytes - 146) / reports[0].bytesPerSecond * 1e6, 1.0);
    EXPECT_EQ(reports[4].remainingMicroseconds, 0);
    EXPECT_EQ(reports[4].bytes, image.bytes);
}

TEST(UpdateRun, RefusesADamagedImageBeforeAnythingIsSent)
{
    ProductSession session;
    QList<HxMidiData> messages = samples::messages(codeBytes);
    messages.removeAt(1);
    const UpdateResult result =
        update(session, parseUpdateImage(imageFileOf(messages), samples::product()));
    expectOutcome(result, UpdateOutcome::ImageRefused);
    EXPECT_TRUE(result.reason.startsWith("message 2, byte 154 of the file: "))
        << result.reason.toStdString();
    EXPECT_EQ(session.port.clock().now(), 0);
    EXPECT_FALSE(result.touched);
    EXPECT_EQ(result.productState, "Nothing of the image was sent: the product is as it was.");
    EXPECT_EQ(session.product().codeBytes().size(), 256);
}

TEST(UpdateRun, CountsTheFurtherProblemsOfARefusedImage)
{
    ProductSession session;
    const UpdateResult result = update(
        session, parseUpdateImage(imageFileOf(samples::messages().mid(1, 2)), samples::product()));
    EXPECT_TRUE(result.reason.endsWith(" (and 2 more)")) << result.reason.toStdString();
}

TEST(UpdateRun, SendsNothingOfTheImageToAnotherProduct)
{
    sim::ProductIdentity identity = sim::valdrin();
    identity.model = 0x42;
    ProductSession session(sim::SimulatedProduct(identity), {});
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::WrongProduct);
    EXPECT_TRUE(result.reason.contains("identifier 0x300042")) << result.reason.toStdString();
    EXPECT_TRUE(result.advice.contains("hxhost ports")) << result.advice.toStdString();
    EXPECT_FALSE(result.touched);
    EXPECT_EQ(session.product().codeBytes().size(), 256);
}

TEST(UpdateRun, SaysThatASilentProductDoesNotAnswer)
{
    ProductSession session({"silent"});
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::NoAnswer);
    EXPECT_EQ(session.port.clock().now(), 3 * 2200 * 1000); // three identity requests
    EXPECT_FALSE(result.touched);
    EXPECT_FALSE(result.advice.isEmpty());
}

TEST(UpdateRun, UpdatesAProductThatRefusesToNameItsVersionBefore)
{
    ProductSession session({"refuse:2"});
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::Succeeded);
    EXPECT_EQ(result.versionBefore.state, ReadingState::Refused);
}

TEST(UpdateRun, SendsAMessageAgainThatWasAnsweredBad)
{
    ProductSession session({"bad-ack:2-4"});
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::Succeeded);
    EXPECT_EQ(result.progress.retries, 3);
}

TEST(UpdateRun, SendsAMessageAgainThatWasNotAnswered)
{
    for (const char* fault : {"drop-reply:4-6", "silent:4-6"}) {
        ProductSession session({fault});
        const UpdateResult result = update(session);
        expectOutcome(result, UpdateOutcome::Succeeded);
        EXPECT_EQ(result.progress.retries, 3) << fault;
    }
}

TEST(UpdateRun, GivesUpAMessageThatStaysBadAfterThreeRetries)
{
    ProductSession session({"bad-ack:2-5"});
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::Failed);
    EXPECT_EQ(result.failedMessage, 2);
    EXPECT_EQ(result.progress.message, 1);
    EXPECT_EQ(result.progress.retries, 3);
    EXPECT_EQ(result.reason,
              "message 2 of 5 was answered as damaged: F0 00 6B 2D 30 41 43 0C 01 F7 "
              "(sent 4 times)");
    EXPECT_EQ(result.productCondition, ProductCondition::NoValidCode);
    EXPECT_TRUE(result.productState.startsWith(
        "The update was begun and not finished. The product is in its boot loader"))
        << result.productState.toStdString();
    EXPECT_TRUE(result.advice.contains("hxhost recover"));
    expectRecovers(session.product());
}

TEST(UpdateRun, AProductThatFallsSilentInTheMiddleIsLookedForBeforeTheNextRun)
{
    ProductSession session({"silent:4-"});
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::NoAnswer);
    EXPECT_EQ(result.productCondition, ProductCondition::NoAnswer);
    EXPECT_EQ(
        result.advice,
        "Check power, cables and the choice of port (\"hxhost ports\"). Run the same update "
        "again: it starts afresh and recovers the product. \"hxhost recover\" says what state "
        "the product is in.");
}

TEST(UpdateRun, AnotherProductThatAnswersInTheMiddleIsNotTheOneToUpdateAgain)
{
    ProductSession session({"wrong-model:4-"});
    const UpdateResult result = update(session);
    EXPECT_EQ(result.productCondition, ProductCondition::OtherProduct);
    EXPECT_TRUE(result.advice.startsWith("Choose the port of the right product"))
        << result.advice.toStdString();
}

TEST(UpdateRun, GivesUpAMessageThatStaysUnansweredAfterThreeRetries)
{
    ProductSession session({"silent:4-"});
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::NoAnswer);
    EXPECT_EQ(result.failedMessage, 2);
    EXPECT_TRUE(result.reason.startsWith("message 2 of 5 was not answered: no answer: waited 2200 "
                                         "ms for an acknowledgement; nothing "
                                         "came (sent 4 times)"))
        << result.reason.toStdString();
    EXPECT_EQ(result.productCondition, ProductCondition::NoAnswer);
    expectRecovers(session.product());
}

TEST(UpdateRun, CanBeToldHowOftenToRetry)
{
    ProductSession session({"bad-ack:1"});
    UpdateOptions options;
    options.maxRetries = 0;
    const UpdateResult result = update(session, samples::image(codeBytes), options);
    expectOutcome(result, UpdateOutcome::Failed);
    EXPECT_EQ(result.progress.retries, 0);
}

TEST(UpdateRun, StopsAtOnceWhenTheProductCallsTheUpdateFailed)
{
    ProductSession session({"failed-ack:3"});
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::Failed);
    EXPECT_EQ(result.failedMessage, 3);
    EXPECT_EQ(result.lastReply.bytes, QByteArray::fromHex("F0006B2D3041430C02F7"));
    EXPECT_EQ(result.progress.retries, 0);
    expectRecovers(session.product());
}

TEST(UpdateRun, TakesAnAcknowledgementWithAnotherStatusForDamaged)
{
    ProductSession session({"damage-reply:3:8:04"});
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::Succeeded);
    EXPECT_EQ(result.progress.retries, 1);
}

TEST(UpdateRun, SaysThatThePortWentAwayWheneverThatHappens)
{
    for (int message = 1; message <= messagesBefore + imageMessages + 4; ++message) {
        ProductSession session({QString("vanish:%1").arg(message)});
        const UpdateResult result = update(session);
        expectOutcome(result, UpdateOutcome::PortLost);
        EXPECT_TRUE(result.reason.contains("is gone")) << result.reason.toStdString();
        EXPECT_EQ(result.touched, message > messagesBefore);
        EXPECT_TRUE(result.advice.contains("Connect the port again")) << message;
        expectRecovers(session.product());
    }
}

TEST(UpdateRun, AnInterruptStopsAfterTheMessageInFlight)
{
    ProductSession session({"delay-reply:4:1500"});
    std::atomic<bool> flag{false};
    UpdateOptions options;
    options.interrupted = &flag;
    options.progress = [&](const UpdateProgress& progress) { flag = progress.message == 2; };
    const UpdateResult result = update(session, samples::image(codeBytes), options);
    expectOutcome(result, UpdateOutcome::Interrupted);
    EXPECT_EQ(result.reason, "interrupted before message 3 of 5");
    EXPECT_EQ(result.progress.message, 2);
    EXPECT_EQ(result.productCondition, ProductCondition::NoValidCode);
    EXPECT_TRUE(result.advice.contains("Run the same update again"));
    expectRecovers(session.product());
}

TEST(UpdateRun, AnInterruptDuringAMessageLetsItBeAnswered)
{
    ProductSession session({"delay-reply:3:1500"});
    std::atomic<bool> flag{false};
    class Interrupter : public BusObserver {
    public:
        Interrupter(std::atomic<bool>& raised, int at) : m_raised(raised), m_at(at) {}
        void busEvent(const BusEvent& event) override
        {
            if (event.kind == BusEventKind::Sent && ++m_sent == m_at)
                m_raised = true;
        }

    private:
        std::atomic<bool>& m_raised;
        int m_at;
        int m_sent = 0;
    } interrupter(flag, messagesBefore + 1);
    session.bus.addObserver(&interrupter);
    UpdateOptions options;
    options.interrupted = &flag;
    const UpdateResult result = update(session, samples::image(codeBytes), options);
    expectOutcome(result, UpdateOutcome::Interrupted);
    EXPECT_EQ(result.progress.message, 1);
    session.bus.removeObserver(&interrupter);
}

TEST(UpdateRun, AnInterruptBeforeTheFirstMessageLeavesTheProductAsItWas)
{
    ProductSession session;
    const std::atomic<bool> flag{true};
    UpdateOptions options;
    options.interrupted = &flag;
    const UpdateResult result = update(session, samples::image(codeBytes), options);
    expectOutcome(result, UpdateOutcome::Interrupted);
    EXPECT_FALSE(result.touched);
    EXPECT_TRUE(session.product().isCodeValid());
    EXPECT_EQ(session.product().codeBytes().size(), 256);
}

TEST(UpdateRun, LeavesTheBusWatchingWhatItWatchedBefore)
{
    ProductSession session;
    const std::atomic<bool> before{false};
    const std::atomic<bool> during{false};
    session.bus.watchInterrupt(&before);
    UpdateOptions options;
    options.interrupted = &during;
    update(session, samples::image(codeBytes), options);
    EXPECT_EQ(session.bus.watchInterrupt(nullptr), &before);
}

TEST(UpdateRun, RecoversAProductFromAPowerCutAtAnyMessage)
{
    for (int message = 1; message <= imageMessages; ++message) {
        for (const char* moment : {"before", "during", "after"}) {
            ProductSession session({QString("power-cut:%1:%2").arg(message).arg(moment)});
            const UpdateResult result = update(session);
            EXPECT_EQ(result.succeeded(),
                      holds(session.product(), samples::code(codeBytes)) && result.succeeded())
                << message << moment;
            expectRecovers(session.product());
        }
    }
}

TEST(UpdateRun, ALateAnswerIsNotTakenForTheNextMessages)
{
    // The second data message is answered just after its timeout, when it has gone again; the third
    // one comes damaged.
    ProductSession session({"delay-reply:4:2201", "bad-ack:4"});
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::Succeeded);
    EXPECT_EQ(result.progress.retries, 2);
    EXPECT_TRUE(holds(session.product(), samples::code(codeBytes)));
}

TEST(UpdateOutcome, HasAWordForEachOutcome)
{
    QStringList words;
    for (int i = 0; i <= static_cast<int>(UpdateOutcome::PortLost); ++i)
        words << updateOutcomeText(static_cast<UpdateOutcome>(i));
    EXPECT_EQ(words.removeDuplicates(), 0);
}

// Whether the product holds the code: after an update, and when it is only asked.
#include "tests/host/SampleUpdate.h"

using namespace hx;

TEST(UpdateRun, FindsCodeThatDoesNotHoldAfterTheUpdate)
{
    ProductSession session({"bad-write:5"});
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::VerificationFailed);
    EXPECT_TRUE(result.reason.startsWith("The checksums do not agree: stored "))
        << result.reason.toStdString();
    EXPECT_EQ(result.productCondition, ProductCondition::CodeDamaged);
    EXPECT_NE(result.stored.groups, result.calculated.groups);
}

TEST(UpdateRun, DoesNotCallAProductUpdatedThatIsSilentAfterwards)
{
    ProductSession session({QString("silent:%1-").arg(messagesBefore + imageMessages + 1)});
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::VerificationFailed);
    EXPECT_EQ(session.port.clock().now() / 1000000, 22); // ten identity requests
    EXPECT_EQ(result.progress.message, imageMessages);
}

TEST(UpdateRun, DoesNotCallAProductUpdatedWhoseChecksumsDiffer)
{
    for (int reply : {10, 11}) { // stored, calculated; three replies on they are asked again
        ProductSession session({QString("damage-reply:%1:8:01").arg(reply),
                                QString("damage-reply:%1:8:01").arg(reply + 3)});
        expectOutcome(update(session), UpdateOutcome::VerificationFailed);
    }
}

TEST(UpdateRun, DoesNotCallAProductUpdatedThatHoldsOtherCode)
{
    // Both checksums are damaged alike: they agree with each other, but not with the image.
    ProductSession session({"damage-reply:10-11:8:01", "damage-reply:13-14:8:01"});
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::VerificationFailed);
    EXPECT_EQ(result.stored.groups, result.calculated.groups);
}

TEST(UpdateRun, DoesNotCallAProductUpdatedThatReportsAnotherVersion)
{
    ProductSession session({"damage-reply:9:7:01", "damage-reply:12:7:01"});
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::VerificationFailed);
    EXPECT_EQ(result.reason, "The product reports version 0.0.2.4; the image carries 1.0.2.4.");
}

TEST(UpdateRun, OneChangedAnswerDoesNotCondemnGoodCode)
{
    for (const char* fault : {"damage-reply:9:7:01", "damage-reply:10:8:01", "damage-reply:11:8:01",
                              "cut-reply:10:-1", "refuse:9", "refuse:10", "refuse:11"}) {
        ProductSession session({fault});
        const UpdateResult result = update(session);
        expectOutcome(result, UpdateOutcome::Succeeded);
        EXPECT_EQ(result.productCondition, ProductCondition::CodeIntact) << fault;
    }
}

TEST(UpdateRun, DoesNotCallCodeUnfinishedWhoseLastAcknowledgementIsLostWithThePower)
{
    ProductSession session({"power-cut:5:3"}); // the closing message's three writes are made
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::Failed);
    EXPECT_TRUE(holds(session.product(), samples::code(codeBytes)));
    EXPECT_EQ(result.productCondition, ProductCondition::CodeIntact);
    EXPECT_TRUE(result.productState.startsWith("The product holds the code of the image, although"))
        << result.productState.toStdString();
}

TEST(UpdateRun, OneChangedIdentityIsNoOtherProduct)
{
    for (int reply : {1, 8}) {
        for (int byte = 5; byte <= 10; ++byte) {
            ProductSession session({QString("damage-reply:%1:%2:01").arg(reply).arg(byte)});
            expectOutcome(update(session), UpdateOutcome::Succeeded);
        }
    }
}

TEST(UpdateRun, DoesNotCallAProductUpdatedThatRefusesTheQuestionsAfterwards)
{
    for (int message : {9, 10, 11}) {
        ProductSession session({QString("refuse:%1-").arg(message)});
        expectOutcome(update(session), UpdateOutcome::VerificationFailed);
    }
}

TEST(UpdateRun, FindsAnotherProductAfterTheUpdate)
{
    ProductSession session({"wrong-model:8-"});
    const UpdateResult result = update(session);
    expectOutcome(result, UpdateOutcome::WrongProduct);
    EXPECT_FALSE(result.succeeded());
}

TEST(VerifyProduct, FindsAnIntactProduct)
{
    ProductSession session;
    const UpdateResult result = verifyProduct(session.device(), session.bus);
    expectOutcome(result, UpdateOutcome::Succeeded);
    EXPECT_EQ(stepNames(result), QStringList({"identity after", "version after", "checksums"}));
    EXPECT_FALSE(result.touched);
}

TEST(VerifyProduct, ComparesWithAnImage)
{
    ProductSession session;
    const UpdateImage image = samples::image(codeBytes);
    EXPECT_EQ(verifyProduct(session.device(), session.bus, &image).outcome,
              UpdateOutcome::VerificationFailed);
    update(session, image);
    EXPECT_EQ(verifyProduct(session.device(), session.bus, &image).outcome,
              UpdateOutcome::Succeeded);
}

TEST(VerifyProduct, RefusesADamagedImage)
{
    ProductSession session;
    const UpdateImage image =
        parseUpdateImage(imageFileOf(samples::messages().mid(1)), samples::product());
    const UpdateResult result = verifyProduct(session.device(), session.bus, &image);
    expectOutcome(result, UpdateOutcome::ImageRefused);
    EXPECT_EQ(session.port.clock().now(), 0);
}

TEST(VerifyProduct, FindsDamagedMissingAndSilentCode)
{
    ProductSession damaged;
    damaged.product().damageCode(10);
    expectOutcome(verifyProduct(damaged.device(), damaged.bus), UpdateOutcome::VerificationFailed);

    ProductSession empty;
    empty.port.send(samples::messages().first().bytes);
    const UpdateResult result = verifyProduct(empty.device(), empty.bus);
    expectOutcome(result, UpdateOutcome::VerificationFailed);
    EXPECT_EQ(result.productCondition, ProductCondition::NoValidCode);

    ProductSession silent({"silent"});
    expectOutcome(verifyProduct(silent.device(), silent.bus), UpdateOutcome::NoAnswer);
}

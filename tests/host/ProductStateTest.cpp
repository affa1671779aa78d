#include "host/product/ProductState.h"

#include "tests/host/ImageSamples.h"
#include "tests/host/ProductSession.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

using namespace hx;

namespace {

ProductAssessment assess(ProductSession& session)
{
    ProductReader reader(session.device(), session.bus);
    return assessProduct(reader);
}

} // namespace

TEST(ProductState, FindsAProductWithIntactCode)
{
    ProductSession session;
    const ProductAssessment assessment = assess(session);
    EXPECT_EQ(assessment.condition, ProductCondition::CodeIntact);
    EXPECT_TRUE(assessment.state.startsWith("The product answers and its code is intact: version "
                                            "1.0.2.3, stored checksum"))
        << assessment.state.toStdString();
    EXPECT_EQ(assessment.advice, "Nothing needs to be done.");
}

TEST(ProductState, FindsAnUnfinishedUpdate)
{
    ProductSession session;
    session.port.send(samples::messages().first().bytes);
    const ProductAssessment assessment = assess(session);
    EXPECT_EQ(assessment.condition, ProductCondition::NoValidCode);
    EXPECT_EQ(assessment.version.state, ReadingState::Refused);
    EXPECT_EQ(assessment.stored.groups, QByteArray::fromHex("7F7F7F7F"));
    EXPECT_TRUE(assessment.advice.contains("hxhost update")) << assessment.advice.toStdString();
}

TEST(ProductState, FindsDamagedCode)
{
    ProductSession session;
    session.product().damageCode(0);
    const ProductAssessment assessment = assess(session);
    EXPECT_EQ(assessment.condition, ProductCondition::CodeDamaged);
    EXPECT_TRUE(assessment.advice.contains("hxhost update"));
}

TEST(ProductState, FindsAnotherProduct)
{
    sim::ProductIdentity identity = sim::valdrin();
    identity.model = 0x42;
    ProductSession session(sim::SimulatedProduct(identity), {});
    const ProductAssessment assessment = assess(session);
    EXPECT_EQ(assessment.condition, ProductCondition::OtherProduct);
    EXPECT_EQ(assessment.state,
              "Another product answers: maker 00 6B 2D, identifier 0x300042, version 1.0.2.3.");
    EXPECT_EQ(assessment.stored.state, ReadingState::NotRead);
}

TEST(ProductState, FindsASilentProduct)
{
    ProductSession session({"silent"});
    const ProductAssessment assessment = assess(session);
    EXPECT_EQ(assessment.condition, ProductCondition::NoAnswer);
    EXPECT_TRUE(
        assessment.state.startsWith("The product's state is not known: identify: no answer"));
    EXPECT_TRUE(assessment.advice.contains("hxhost ports"));
}

TEST(ProductState, SaysThatThePortIsGone)
{
    ProductSession session({"vanish:2"});
    EXPECT_EQ(assess(session).condition, ProductCondition::PortLost);
}

TEST(ProductState, OneChangedAnswerIsNeitherAnotherProductNorDamagedCode)
{
    for (const char* fault :
         {"damage-reply:1:10:03", "damage-reply:3:8:01", "damage-reply:4:8:01"}) {
        ProductSession session({fault});
        EXPECT_EQ(assess(session).condition, ProductCondition::CodeIntact) << fault;
    }
}

TEST(ProductState, ARefusedVersionBesideAStoredChecksumIsNoMissingCode)
{
    ProductSession session({"refuse:2"});
    EXPECT_EQ(assess(session).condition, ProductCondition::Unclear);
}

TEST(ProductState, DoesNotGuessWhenOnlySomeQuestionsAreAnswered)
{
    for (const char* fault : {"silent:2-4", "silent:3-5", "silent:4-6", "refuse:3", "refuse:4"}) {
        ProductSession session({fault});
        EXPECT_EQ(assess(session).condition, ProductCondition::Unclear) << fault;
    }
}

TEST(ProductState, HasAWordForEachCondition)
{
    QStringList words;
    for (int i = 0; i <= static_cast<int>(ProductCondition::Unclear); ++i)
        words << productConditionText(static_cast<ProductCondition>(i));
    EXPECT_EQ(words.removeDuplicates(), 0);
}

// Every fault at every place: an update never claims a success that is not one, always ends, and
// leaves a product that a second run recovers.
#include "host/update/UpdateRun.h"

#include "qt/Saturated.h"
#include "tests/host/ImageSamples.h"
#include "tests/host/ProductSession.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

#include <random>

using namespace hx;

namespace {

constexpr int smallCodeBytes = 230;  // three data messages, the last one short
constexpr int exchanges = 2 + 5 + 4; // before, the image, after
constexpr Microseconds longestRun = 10 * 60 * 1000000LL;

const UpdateImage& smallImage()
{
    static const UpdateImage made = samples::image(smallCodeBytes);
    return made;
}

UpdateResult updateAgainst(ProductSession& session)
{
    return runUpdate(session.device(), session.bus, smallImage());
}

bool holdsTheCode(const sim::SimulatedProduct& product)
{
    return product.isCodeValid() && product.codeBytes() == smallImage().code;
}

// Runs an update with these faults and checks what must hold whatever they are.
UpdateResult updateWith(const QStringList& faults)
{
    SCOPED_TRACE(faults.join(" ").toStdString());
    ProductSession session(faults);
    const UpdateResult result = updateAgainst(session);
    EXPECT_LE(session.port.clock().now(), longestRun);
    EXPECT_EQ(result.reason.isEmpty(), result.succeeded());
    EXPECT_FALSE(result.productState.isEmpty());
    if (result.succeeded()) {
        EXPECT_TRUE(holdsTheCode(session.product()));
        EXPECT_EQ(result.progress.message, 5);
    }
    ProductSession again(session.product(), {});
    const UpdateResult second = updateAgainst(again);
    EXPECT_TRUE(second.succeeded()) << second.reason.toStdString();
    EXPECT_TRUE(holdsTheCode(again.product()));
    return result;
}

} // namespace

TEST(UpdateFaults, NoSingleFaultLeadsToAFalseSuccess)
{
    for (const char* fault :
         {"silent",    "duplicate-message", "damage-message", "cut-message",     "insert-message",
          "refuse",    "wrong-model",       "vanish",         "bad-ack",         "failed-ack",
          "power-cut", "bad-write",         "drop-reply",     "duplicate-reply", "damage-reply",
          "cut-reply", "insert-reply",      "delay-reply",    "late-reply",      "swap-reply",
          "noise"}) {
        for (int first = 1; first <= exchanges; ++first) {
            updateWith({QString("%1:%2").arg(fault).arg(first)});
            updateWith({QString("%1:%2-%3").arg(fault).arg(first).arg(first + 1)});
            updateWith({QString("%1:%2-").arg(fault).arg(first)});
        }
    }
}

TEST(UpdateFaults, OneLostDamagedOrDoubledMessageOfTheImageIsMendedByARetry)
{
    for (const char* fault : {"silent", "duplicate-message", "damage-message", "cut-message",
                              "insert-message", "drop-reply", "duplicate-reply", "cut-reply",
                              "insert-reply", "delay-reply", "late-reply"}) {
        for (int message = 3; message <= 6; ++message) { // all but the closing message
            const QString text = QString("%1:%2").arg(fault).arg(message);
            EXPECT_TRUE(updateWith({text}).succeeded()) << text.toStdString();
        }
    }
}

TEST(UpdateFaults, NoDamagedByteOfAMessageLeadsToAFalseSuccess)
{
    for (int message = 3; message <= 7; ++message) {
        const auto size = smallImage().messages.at(message - 3).bytes.size();
        for (int byte = 0; byte < size; ++byte) {
            const int bit = (message + byte) % 8;
            updateWith({QString("damage-message:%1:%2:%3")
                            .arg(message)
                            .arg(byte)
                            .arg(QString::number(1 << bit, 16))});
        }
    }
}

TEST(UpdateFaults, NoDamagedBitOfAReplyLeadsToAFalseSuccess)
{
    for (int reply = 1; reply <= exchanges; ++reply) {
        for (int byte = 0; byte < 17; ++byte) {
            for (int bit = 0; bit < 8; ++bit)
                updateWith({QString("damage-reply:%1:%2:%3")
                                .arg(reply)
                                .arg(byte)
                                .arg(QString::number(1 << bit, 16))});
        }
    }
}

TEST(UpdateFaults, NoPowerCutAtAnySingleWriteLeadsToAFalseSuccess)
{
    for (int message = 1; message <= 5; ++message) {
        for (int writes = 0; writes <= 120; writes += 3)
            updateWith({QString("power-cut:%1:%2").arg(message).arg(writes)});
    }
}

TEST(UpdateFaults, NoMixtureOfFaultsLeadsToAFalseSuccess)
{
    const QStringList kinds = {
        "silent",      "duplicate-message", "damage-message", "cut-message", "insert-message",
        "refuse",      "bad-ack",           "failed-ack",     "power-cut",   "bad-write",
        "drop-reply",  "duplicate-reply",   "damage-reply",   "cut-reply",   "insert-reply",
        "delay-reply", "late-reply",        "swap-reply",     "noise",       "wrong-model"};
    std::mt19937 random(300041);
    const auto below = [&](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    int succeeded = 0;
    for (int i = 0; i < 1500; ++i) {
        QStringList faults;
        for (int count = 2 + below(3); count > 0; --count) {
            const int first = 1 + below(exchanges);
            faults << QString("%1:%2-%3")
                          .arg(kinds.at(below(saturated(kinds.size()))))
                          .arg(first)
                          .arg(first + below(3));
        }
        succeeded += updateWith(faults).succeeded() ? 1 : 0;
    }
    EXPECT_GT(succeeded, 100); // the mixtures are not all hopeless
    EXPECT_LT(succeeded, 1400);
}

TEST(UpdateFaults, AcknowledgementsThatAreAlwaysLateStillLeadToATrueResult)
{
    for (int milliseconds : {2000, 2199, 2201, 2300, 2500, 3000, 4300, 6000}) {
        const UpdateResult result = updateWith({QString("delay-reply:3-7:%1").arg(milliseconds)});
        EXPECT_TRUE(result.succeeded() || milliseconds > 2199) << milliseconds;
    }
}

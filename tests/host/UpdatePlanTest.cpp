#include "host/update/UpdatePlan.h"

#include "tests/host/ImageSamples.h"
#include "tests/host/ProductSession.h"
#include "tests/host/StubPlugin.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

using namespace hx;

namespace {

QString onlyRefusal(const UpdatePlan& plan)
{
    EXPECT_EQ(plan.refusals.size(), 1) << plan.refusals.join("\n").toStdString();
    return plan.refusals.value(0);
}

} // namespace

TEST(UpdatePlan, AcceptsAGoodImageAndSendsNothing)
{
    ProductSession session;
    for (CodeType kind : {CodeType::Fwu, CodeType::Fwd}) {
        const UpdateImage image = samples::image(300, kind);
        const UpdatePlan plan = planUpdate(session.device(), image);
        EXPECT_TRUE(plan.ok()) << plan.refusals.join("\n").toStdString();
        EXPECT_EQ(plan.messages, 5);
        EXPECT_EQ(plan.bytes, image.bytes);
        EXPECT_EQ(plan.wireMicroseconds, image.bytes * 320);
        EXPECT_EQ(plan.protocol.fidpid, 0x300041);
        EXPECT_EQ(plan.protocol.codeType, kind);
        EXPECT_EQ(plan.protocol.timeoutMs, 2200);
    }
    EXPECT_EQ(session.port.clock().now(), 0);
}

TEST(UpdatePlan, RefusesADamagedImageWithEveryProblemAndDoesNotAskThePlugin)
{
    QList<HxMidiData> messages = samples::messages();
    messages.removeAt(1);
    messages.removeLast();
    StubPlugin plugin;
    const UpdatePlan plan =
        planUpdate(plugin, parseUpdateImage(imageFileOf(messages), samples::product()));
    EXPECT_EQ(plan.refusals.size(), 2);
    EXPECT_TRUE(plan.refusals.first().startsWith("message 2, byte 154 of the file: "));
    EXPECT_EQ(plugin.asked, 0);
}

TEST(UpdatePlan, RefusesAnImageWhoseKindThePluginDoesNotKnow)
{
    StubPlugin plugin;
    plugin.protocol = FwUpdateProtocol();
    plugin.error = "Update data mismatch";
    EXPECT_EQ(onlyRefusal(planUpdate(plugin, samples::image())),
              "The plugin does not know this kind of image "
              "(deviceinterface/DeviceInterface.h:322 - Update data mismatch). Use the image that "
              "belongs to the plugin.");
}

TEST(UpdatePlan, RefusesAnImageForAProductThatThePluginDoesNotServe)
{
    StubPlugin plugin;
    plugin.supported = 0x300042;
    EXPECT_EQ(onlyRefusal(planUpdate(plugin, samples::image())),
              "The image is for the product 0x300041, which the plugin does not serve. Get the "
              "image for Stub.");
}

TEST(UpdatePlan, RefusesAKindThatIsNotTheImages)
{
    StubPlugin plugin;
    plugin.protocol.codeType = CodeType::Fwd;
    EXPECT_EQ(onlyRefusal(planUpdate(plugin, samples::image())),
              "The plugin takes the image for kind \"fwd\", but its messages are of kind \"fwu\". "
              "Get the image again.");
}

TEST(UpdatePlan, RefusesADescriptionWithoutUsablePatterns)
{
    for (const char* pattern : {"", "F0 ("}) {
        StubPlugin plugin;
        plugin.protocol.responseGood = ResponceData(pattern);
        EXPECT_TRUE(onlyRefusal(planUpdate(plugin, samples::image())).contains("lacks a pattern"));
    }
}

TEST(UpdatePlan, RefusesADescriptionWithoutATimeout)
{
    StubPlugin plugin;
    plugin.protocol.timeoutMs = 0;
    EXPECT_TRUE(onlyRefusal(planUpdate(plugin, samples::image())).contains("timeout 0 ms"));
}

TEST(UpdatePlan, RefusesAFileCheckThatThePluginDoesNotExpect)
{
    StubPlugin plugin;
    plugin.protocol.fileCheck = ResponceData("F0 00 6B 2D 30 41 42 0C");
    EXPECT_TRUE(onlyRefusal(planUpdate(plugin, samples::image())).contains("not the file check"));
}

#include "host/product/ProductDescription.h"

#include "host/image/ImageBuilder.h"
#include "host/image/UpdateImage.h"
#include "tests/host/Bytes.h"
#include "tests/host/ImageSamples.h"
#include "tests/host/StubPlugin.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

using namespace hx;

namespace {

// A plugin whose maker has an identifier of one byte.
class ShortMaker : public StubPlugin {
public:
    ShortMaker()
    {
        identifier = 0x120005;
        texts = {{"version.read.user", "F07B120502F7"},
                 {"version.read.user.crc", "F07B120503F7"},
                 {"version.read.user.crc.response", "F07B120503..........F7"},
                 {"fwupdate.fwd.filecheck", "F07B12..5001....................................F7"}};
    }
};

QString problemOf(StubPlugin& plugin)
{
    const ImageFile file = imageFileOf(samples::messages());
    return imageProblemLine(parseUpdateImage(file, describeProduct(plugin)).problems.front());
}

} // namespace

TEST(ReplyLayout, IsTheLastOpenBytesOfTheFirstAlternative)
{
    const struct {
        const char* pattern;
        int position;
        int count;
    } layouts[] = {
        {"F0006B2D304130........", 7, 4},
        {"F0006B2D304121................F7", 7, 8},
        {"(F0006B2D30..2E........F7|F0006B2D30..2E46F7)", 7, 4},
        {"F0 00 6B 2D 30 41 42 0[89] .. .. F7", 8, 2},
        {"F0112233..44F7", 6, 0},
        {"F0006B2D30414208..*F7", 0, 0},
        {"F0006B2D30412F00vv00vvF7", 0, 0},
        {"F0[12", 0, 0},
        {"F0.", 0, 0},
        {"", 0, 0},
    };
    for (const auto& layout : layouts) {
        const ReplyLayout found = replyLayout(layout.pattern);
        EXPECT_EQ(found.position, layout.position) << layout.pattern;
        EXPECT_EQ(found.count, layout.count) << layout.pattern;
        EXPECT_EQ(found.isKnown(), layout.count > 0) << layout.pattern;
    }
    EXPECT_EQ(replyLayout("F0006B2D304130........").replyBytes(), 12);
}

TEST(ProductDescription, ComesOutOfThePluginsDictionary)
{
    const ProductDescription& product = samples::product();
    EXPECT_EQ(product.name, "Valdrin");
    EXPECT_EQ(product.identifier, 0x300041u);
    EXPECT_EQ(product.headerIdentifier(), 0x300041u);
    EXPECT_EQ(product.header, hex("F0006B2D3041"));
    EXPECT_EQ(product.manufacturer(), hex("006B2D"));
    ASSERT_EQ(product.updateKinds.size(), 2u);
    EXPECT_EQ(product.updateKind(CodeType::Fwu)->command, 0x43);
    EXPECT_EQ(product.updateKind(CodeType::Fwd)->command, 0x42);
    EXPECT_EQ(product.updateKind(CodeType::Fwd)->fileCheck, 0x0C);
    EXPECT_EQ(product.updateKind(CodeType::Unknown), nullptr);
    EXPECT_EQ(product.checksumGroups(), 4);
    EXPECT_EQ(product.replies.value("id.dsp*.response").replyBytes(), 22);
    EXPECT_TRUE(product.missingProofText().isEmpty());
}

TEST(ProductDescription, KnowsMakersOfOneByte)
{
    ShortMaker plugin;
    const ProductDescription product = describeProduct(plugin);
    EXPECT_EQ(product.header, hex("F07B1205"));
    EXPECT_EQ(product.manufacturer(), hex("7B"));
    EXPECT_EQ(product.checksumGroups(), 5);
    EXPECT_EQ(product.updateKind(CodeType::Fwu), nullptr);

    const Result<BuiltImage> built = buildImage(product, hex("F07E81"), CodeType::Fwd, "1.0.2.4");
    ASSERT_TRUE(built) << built.problem().what.toStdString();
    EXPECT_EQ(built->messages.first().bytes, hex("F07B1205500A000000000000000350707E0142F7"));
    EXPECT_EQ(built->messages.last().bytes, hex("F07B1205F7"));
    const UpdateImage image = parseUpdateImage(imageFileOf(built->messages), product);
    EXPECT_TRUE(image.ok()) << imageProblemLine(image.problems.front()).toStdString();
    EXPECT_EQ(image.kind, CodeType::Fwd);
    EXPECT_EQ(image.version, "1.0.2.4");
    EXPECT_EQ(image.identifier, 0x120005u);
    EXPECT_EQ(image.expectedChecksum().size(), 5);
}

TEST(ProductDescription, WithoutCommandsHasNoHeader)
{
    StubPlugin plugin;
    const ProductDescription product = describeProduct(plugin);
    EXPECT_EQ(product.header, QByteArray());
    EXPECT_EQ(product.headerIdentifier(), unknownIdentifier);
    EXPECT_TRUE(product.updateKinds.empty());
}

TEST(ProductDescription, TakesItsHeaderOnlyFromCommandsThatFixIt)
{
    for (const char* other : {"F07B12..04F7", "F07E7F0601F7", "F07F7F0601F7", "904001", "F0", ""}) {
        ShortMaker plugin;
        plugin.texts["esn.read"] = other;
        EXPECT_EQ(describeProduct(plugin).header, hex("F07B1205")) << other;
    }
}

TEST(ProductDescription, AFileCheckThatDoesNotFixItsCommandIsOfNoKind)
{
    for (const char* check :
         {"F07B1205..01........F7", "F07B120550..........F7", "F07B120550", "F07B1205[5"}) {
        ShortMaker plugin;
        plugin.texts["fwupdate.fwd.filecheck"] = check;
        EXPECT_EQ(describeProduct(plugin).updateKind(CodeType::Fwd), nullptr) << check;
    }
}

TEST(ProductDescription, WithoutAFileCheckOfTheKindNoImageIsBuilt)
{
    ShortMaker plugin;
    EXPECT_EQ(buildImage(describeProduct(plugin), "x", CodeType::Fwu, "1.0.2.4").problem().what,
              "the plugin names no file check of kind \"fwu\"");
}

TEST(ProductDescription, WithoutAFileCheckNoImageIsTaken)
{
    ShortMaker plugin;
    plugin.texts.remove("fwupdate.fwd.filecheck");
    EXPECT_EQ(problemOf(plugin), "the plugin names no file check, by which images of its product "
                                 "are known. Install a complete plugin.");
}

TEST(ProductDescription, WhoseCommandsBeginDifferentlyTakesNoImage)
{
    ShortMaker plugin;
    plugin.texts["esn.read"] = "F07B120604F7";
    EXPECT_EQ(problemOf(plugin),
              "the plugin does not say how the messages of its product begin: the commands of its "
              "dictionary differ there. Install a complete plugin.");
}

TEST(ProductDescription, WhoseCommandsAreForAnotherIdentifierTakesNoImage)
{
    ShortMaker plugin;
    plugin.identifier = 0x120006;
    EXPECT_EQ(
        problemOf(plugin),
        "the commands of the plugin's dictionary are for the product 0x120005, the plugin for "
        "0x120006. Install a complete plugin.");
}

TEST(ProductDescription, SaysWhatItLacksToVerifyAnUpdateWith)
{
    StubPlugin plugin;
    for (const char* key :
         {"identify", "version.read.user", "version.read.user.crc", "version.calc.user.crc"}) {
        plugin.texts[key] = "F07B120502F7";
        plugin.texts[key + QStringLiteral(".response")] = "F07B120502....F7";
    }
    EXPECT_EQ(describeProduct(plugin).missingProofText(), "");
    plugin.texts.remove("version.calc.user.crc.response");
    EXPECT_EQ(describeProduct(plugin).missingProofText(),
              "this plugin names no calculated checksum: the update can be sent, not verified");
    plugin.texts.remove("version.read.user.crc");
    EXPECT_EQ(describeProduct(plugin).missingProofText(),
              "this plugin names no stored checksum and no calculated checksum: the update can be "
              "sent, not verified");
    plugin.texts.remove("identify");
    EXPECT_EQ(describeProduct(plugin).missingProofText(),
              "this plugin names no identity request and no stored checksum and no calculated "
              "checksum: the product cannot be identified, and no update is sent");
}

// hxhost check: sound plugins keep every rule, broken ones break the rule that they are made to.
#include "contract/ContractCheck.h"
#include "contract/PatternSample.h"
#include "tests/hxhost/HxHost.h"

#include <QJsonArray>

#include <gmock/gmock.h>

namespace {

QString contractPlugin(const char* name)
{
    return QStringLiteral(HX_CONTRACT_PLUGIN_FOLDER "/lib%1" HX_MODULE_SUFFIX)
        .arg(QLatin1String(name));
}

class CheckCommand : public HxHostTest {
protected:
    // The rules in this state, as the document of a check names them.
    static QStringList rulesIn(const char* state, const QJsonObject& document)
    {
        QStringList rules;
        const QJsonArray rows = document.value("result").toObject().value("rules").toArray();
        for (const QJsonValue& row : rows) {
            if (row.toObject().value("state").toString() == QLatin1String(state))
                rules << row.toObject().value("rule").toString();
        }
        return rules;
    }

    // The plugin breaks this rule and no other, and is told why.
    static void expectBroken(const QString& rule, const char* plugin, const char* finding)
    {
        const QJsonObject document = json({"check", contractPlugin(plugin)});
        EXPECT_EQ(document.value("exitCode").toInt(), 13);
        EXPECT_EQ(rulesIn("failed", document), QStringList(rule));
        EXPECT_EQ(rulesIn("skipped", document), QStringList());
        const QJsonArray rows = document.value("result").toObject().value("rules").toArray();
        for (const QJsonValue& row : rows) {
            const QJsonObject result = row.toObject();
            if (result.value("rule").toString() == rule) {
                EXPECT_EQ(result.value("finding").toString().toStdString(), finding);
            }
        }
    }
};

class BrokenRule : public CheckCommand, public testing::WithParamInterface<const char*> {};

struct Misbehaving {
    const char* wish;
    const char* rule; // in which the check notices
    int skipped;      // rules after it
    const char* what; // a pattern of what is said
};

void PrintTo(const Misbehaving& plugin, std::ostream* out)
{
    *out << '"' << plugin.wish << '"';
}

class Misbehaviour : public CheckCommand, public testing::WithParamInterface<Misbehaving> {};

const char* const breakable[] = {"names.present",
                                 "names.constant",
                                 "identifier.form",
                                 "identifier.served",
                                 "maps.inverse",
                                 "maps.served",
                                 "defaults",
                                 "lasterror",
                                 "dictionary.keys",
                                 "dictionary.missing",
                                 "dictionary.views",
                                 "dictionary.compact",
                                 "dictionary.commands",
                                 "dictionary.patterns",
                                 "dictionary.pairs",
                                 "dictionary.timeouts",
                                 "update.described",
                                 "update.answers",
                                 "update.short",
                                 "update.unknown",
                                 "refusal",
                                 "replies.none",
                                 "replies.short",
                                 "version",
                                 "serial-number",
                                 "code-check",
                                 "commands"};

} // namespace

TEST_F(CheckCommand, OurPluginKeepsEveryRuleButForItsQuirks)
{
    const QJsonObject document = json({"check", HX_PLUGIN_FILE});
    EXPECT_EQ(document.value("exitCode").toInt(), 0);
    EXPECT_EQ(rulesIn("failed", document), QStringList());
    EXPECT_EQ(rulesIn("skipped", document), QStringList());
    EXPECT_EQ(rulesIn("quirk", document),
              (QStringList{"dictionary.patterns", "serial-number", "code-check", "commands"}));
}

TEST_F(CheckCommand, DefaultIsThePluginOfThisProgram)
{
    const QJsonObject plugin =
        json({"check"}).value("result").toObject().value("plugin").toObject();
    EXPECT_EQ(plugin.value("className").toString(), "ValdrinBootInterface");
}

TEST_F(CheckCommand, SoundPluginKeepsEveryRule)
{
    const QJsonObject document = json({"check", contractPlugin("BreaksOne")});
    EXPECT_EQ(document.value("exitCode").toInt(), 0);
    const QJsonObject summary = document.value("result").toObject().value("summary").toObject();
    EXPECT_EQ(summary.value("passed").toInt(), 33);
    EXPECT_EQ(rulesIn("passed", document).size(), 33);
}

TEST_P(BrokenRule, FailsAndNoOther)
{
    const ProgramResult ended =
        hxhost({"check", contractPlugin("BreaksOne"), "--json"}, {{"HX_BREAKS", GetParam()}});
    EXPECT_EQ(ended.exitCode, 13) << ended.err.toStdString();
    const QJsonObject document = QJsonDocument::fromJson(ended.out).object();
    EXPECT_EQ(rulesIn("failed", document), QStringList(GetParam())) << ended.out.toStdString();
    EXPECT_EQ(rulesIn("quirk", document), QStringList());
}

INSTANTIATE_TEST_SUITE_P(Rules, BrokenRule, testing::ValuesIn(breakable));

TEST_F(CheckCommand, InterfaceIdentifierOfAnotherClassBreaksARule)
{
    expectBroken("metadata.interface", "BreaksInterfaceId",
                 "the interface identifier is \"com.tarv.qtio.DeviceInterface.AnotherClass\", "
                 "expected \"com.tarv.qtio.DeviceInterface.BreaksInterfaceId\"");
}

TEST_F(CheckCommand, ObjectOfAnotherClassThanTheMetadataNamesBreaksARule)
{
    expectBroken("metadata.class", "BreaksClassName",
                 "the object's class is \"AnotherClass\", the metadata says \"BreaksClassName\"");
}

TEST_F(CheckCommand, KeysNamedTwiceOrWithBlanksBreakARule)
{
    expectBroken("metadata.keys", "BreaksKeys",
                 "the key \"contractPlugin\" is named twice; "
                 "the key \"contract plugin\" has blanks");
}

TEST_F(CheckCommand, CastsThatIgnoreCaseBreakARule)
{
    expectBroken("casts", "BreaksCasts",
                 "the cast to \"deviceinterface\" gives something: names are case-sensitive");
}

TEST_F(CheckCommand, SecondInstanceBreaksARule)
{
    const QJsonObject document = json({"check", contractPlugin("BreaksSingleInstance")});
    EXPECT_EQ(rulesIn("failed", document), QStringList("instance.single"));
    EXPECT_EQ(rulesIn("skipped", document), QStringList("instance.again"));
}

TEST_F(CheckCommand, NoInstanceAfterDestructionBreaksARule)
{
    EXPECT_EQ(rulesIn("failed", json({"check", contractPlugin("BreaksDestruction")})),
              QStringList("instance.again"));
}

TEST_P(Misbehaviour, IsABrokenRuleAndEndsTheCheck)
{
    const ProgramResult ended = hxhost({"check", contractPlugin("BreaksOne"), "--json"},
                                       {{"HX_MISBEHAVES", GetParam().wish}});
    EXPECT_EQ(ended.exitCode, 13) << ended.err.toStdString();
    const QJsonObject document = QJsonDocument::fromJson(ended.out).object();
    EXPECT_EQ(rulesIn("failed", document), QStringList(GetParam().rule));
    EXPECT_EQ(rulesIn("skipped", document).size(), GetParam().skipped);
    EXPECT_EQ(rulesIn("passed", document).size(), 33 - 1 - GetParam().skipped);
    EXPECT_THAT(ended.err.toStdString(),
                testing::HasSubstr(std::string("error: the plugin breaks 1 of 33 rules: ") +
                                   GetParam().rule + "; in the last one it "));
    EXPECT_THAT(ended.err.toStdString(), testing::ContainsRegex(GetParam().what));
}

// Under the address sanitizer a segmentation fault ends the program with exit code 1.
INSTANTIATE_TEST_SUITE_P(
    Check, Misbehaviour,
    testing::Values(
        Misbehaving{"segfault versionNumber", "replies.none", 6,
                    "it (crashed .Segmentation fault|ended the program with exit code 1)"},
        Misbehaving{"abort versionNumber", "replies.none", 6, "it crashed .Abort"},
        Misbehaving{"throw versionNumber", "replies.none", 6, "it crashed .Abort"},
        Misbehaving{"exit versionNumber", "replies.none", 6,
                    "it ended the program with exit code 0"},
        Misbehaving{"hang versionNumber", "replies.none", 6, "it did not return within 5 seconds"},
        Misbehaving{"abort destructor", "instance.again", 0, "it crashed .Abort"},
        Misbehaving{"abort unloading", "instance.again", 0, "it crashed .Abort"}));

TEST_F(CheckCommand, RuleThatAPluginCrashedInSaysSo)
{
    const ProgramResult ended =
        hxhost({"check", contractPlugin("BreaksOne")}, {{"HX_MISBEHAVES", "exit versionNumber"}});
    EXPECT_TRUE(
        ended.out.contains("  failed   replies.none         it ended the program with exit code 0\n"
                           "  skipped  replies.short        replies.none was the last rule that "
                           "could be run\n"))
        << ended.out.toStdString();
}

TEST_F(CheckCommand, PluginThatCrashesAsItIsLoadedIsSaidTo)
{
    const ProgramResult ended = hxhost({"check", contractPlugin("BreaksOne"), "--json"},
                                       {{"HX_MISBEHAVES", "abort constructor"}});
    EXPECT_EQ(ended.exitCode, 13);
    EXPECT_THAT(ended.err.toStdString(),
                testing::ContainsRegex("^error: the plugin at .*BreaksOne.* cannot be loaded: it "
                                       "crashed .Abort"));
    EXPECT_EQ(QJsonDocument::fromJson(ended.out).object().value("exitCode").toInt(), 13);
}

TEST_F(CheckCommand, ErrorNamesTheRulesAndWhatToRead)
{
    const ProgramResult ended =
        hxhost({"check", contractPlugin("BreaksOne")}, {{"HX_BREAKS", "maps.inverse"}});
    EXPECT_EQ(ended.err.toStdString(),
              "error: the plugin breaks 1 of 33 rules: maps.inverse\n"
              "  expected: a plugin that keeps all rules\n"
              "  next: see docs/developer/writing-a-plugin.md for what hosts rely on\n");
    EXPECT_TRUE(
        ended.out.contains("  failed  maps.inverse         0x110022 is named \"SoundBoot\", "
                           "but that name does not lead back to it\n"))
        << ended.out.toStdString();
}

TEST_F(CheckCommand, ImageGivenMustBeOneThatThePluginKnows)
{
    EXPECT_EQ(json({"check", HX_PLUGIN_FILE, "--image", image()}).value("exitCode").toInt(), 0);
    const QString odd = write("odd.syx", QByteArray::fromHex("F0006B2D30410102030405F7"));
    const QJsonObject document = json({"check", HX_PLUGIN_FILE, "--image", odd});
    EXPECT_EQ(rulesIn("failed", document), (QStringList{"update.described", "update.answers"}));
    EXPECT_EQ(hxhost({"check", HX_PLUGIN_FILE, "--image", path("none")}).exitCode, 10);
}

TEST_F(CheckCommand, AnImageForAnotherProductBreaksNoRule)
{
    const QString other = write("other.syx", QByteArray::fromHex("F00021 7F010102030405F7"));
    const ProgramResult ended = hxhost({"check", HX_PLUGIN_FILE, "--image", other});
    EXPECT_EQ(ended.exitCode, 9);
    EXPECT_EQ(ended.err.toStdString(),
              "error: the image \"" + other.toStdString() +
                  "\" is for another product: its messages begin with F0 00 21 7F 01 01, not with "
                  "F0 00 6B 2D 30 41\n"
                  "  expected: an update image of the product that the plugin serves\n"
                  "  next: give another file with --image, or none\n");
}

TEST_F(CheckCommand, NoPluginIsNoBrokenContract)
{
    EXPECT_EQ(hxhost({"check", write("text.so", "no library")}).exitCode, 3);
}

TEST_F(CheckCommand, VerboseNamesEachRuleBeforeItRuns)
{
    const ProgramResult ended = hxhost({"check", HX_PLUGIN_FILE, "-v"});
    EXPECT_TRUE(ended.err.contains("rule metadata.interface\n")) << ended.err.toStdString();
    EXPECT_TRUE(ended.err.contains("rule instance.again\n")) << ended.err.toStdString();
}

TEST(PatternSample, IsAMessageThatThePatternFits)
{
    EXPECT_EQ(hx::sampleMessage("F0 .. 4[23] .. F7", "1").toHex(), "f0314231f7");
    EXPECT_EQ(hx::sampleMessage("F0..4[23]..F7", QByteArray("\x01\x02")).toHex(), "f0014202f7");
    EXPECT_EQ(hx::sampleMessage("(F02E....F7|F02E46F7)", "12").toHex(), "f02e3132f7");
    EXPECT_EQ(hx::sampleMessage("F03041 30 ....", "1").toHex(), "f03041303131f7");
    EXPECT_EQ(hx::sampleMessage("F04208..*F7", "1").toHex(), "f0420831f7");
}

TEST(PatternSample, OfADamagedPatternIsEmpty)
{
    for (const char* pattern : {"", "F0(.F7", "F00", "F0vvF7", "no hex"})
        EXPECT_EQ(hx::sampleMessage(pattern, "1"), QByteArray()) << pattern;
}

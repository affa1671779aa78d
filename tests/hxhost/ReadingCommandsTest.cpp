// identify, info, verify, recover: what is read from the product and how it is said.
#include "tests/hxhost/HxHost.h"

#include <QJsonArray>

namespace {

class ReadingCommands : public HxHostTest {};

const char note[] =
    "the checksum bytes above agree, and they decide; their replies differ in the command byte "
    "that they echo, so that a plugin which compares that byte too answers false for intact code";

} // namespace

TEST_F(ReadingCommands, IdentifyShowsIdentifierVersionAndProduct)
{
    const ProgramResult result = hxhost({"identify", "--port", "simulator"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out.toStdString(), "port                   simulator\n"
                                        "identity.identifier    0x300041\n"
                                        "identity.manufacturer  00 6B 2D\n"
                                        "identity.version       1.0.2.3\n"
                                        "identity.served        true\n"
                                        "product                Valdrin\n");
    EXPECT_EQ(result.err.toStdString(), "");
}

TEST_F(ReadingCommands, InfoShowsAllReadingsAndThePluginsAnswersWhenAskedForDetails)
{
    const ProgramResult result = hxhost({"info", "--port", "simulator"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out.toStdString(), std::string("port                       simulator\n"
                                                    "identity.identifier        0x300041\n"
                                                    "identity.manufacturer      00 6B 2D\n"
                                                    "identity.version           1.0.2.3\n"
                                                    "gender.identifier          0x300041\n"
                                                    "version.version            1.0.2.3\n"
                                                    "esn.text                   30410001\n"
                                                    "dsp0.present               true\n"
                                                    "dsp0.version               1023\n"
                                                    "dsp0.size                  256\n"
                                                    "dsp0.responseFlag          0\n"
                                                    "dsp0.bankStatus            1\n"
                                                    "dsp1.present               false\n"
                                                    "checksum.stored.bytes      76 5E 46 50\n"
                                                    "checksum.calculated.bytes  76 5E 46 50\n"));
    EXPECT_EQ(result.err.toStdString(), "");
    const ProgramResult detailed = hxhost({"info", "--port", "simulator", "-v"});
    EXPECT_TRUE(detailed.out.endsWith(QByteArray("plugin.versionNumber       1023\n"
                                                 "plugin.esn                 (none)\n"
                                                 "plugin.isCodeValid.fwu     false\n"
                                                 "plugin.isCodeValid.fwd     false\n"
                                                 "plugin.isCodeValid.note    ") +
                                      note + "\n"))
        << detailed.out.toStdString();
}

TEST_F(ReadingCommands, VerifyTakesTheChecksumsForTheTruthAndNotThePluginsAnswer)
{
    const QJsonObject document = json({"verify", "--port", "simulator"});
    const QJsonObject result = document.value("result").toObject();
    EXPECT_EQ(document.value("exitCode").toInt(), 0);
    EXPECT_EQ(result.value("outcome").toString(), "succeeded");
    const QJsonObject checksum = result.value("checksum").toObject();
    EXPECT_EQ(checksum.value("stored").toObject().value("bytes").toString(), "76 5E 46 50");
    EXPECT_EQ(checksum.value("calculated").toObject().value("bytes").toString(), "76 5E 46 50");
    const QJsonObject valid = result.value("plugin").toObject().value("isCodeValid").toObject();
    EXPECT_FALSE(valid.value("fwu").toBool(true));
    EXPECT_FALSE(valid.value("fwd").toBool(true));
    EXPECT_EQ(valid.value("note").toString(), note);
    EXPECT_TRUE(result.value("plugin").toObject().value("esn").isNull());
}

TEST_F(ReadingCommands, VerifyFailsForAnImageThatTheProductDoesNotHold)
{
    const ProgramResult result = hxhost({"verify", image(), "--port", "simulator"});
    EXPECT_EQ(result.exitCode, 8);
    EXPECT_TRUE(result.err.startsWith("error: The instrument reports version 1.0.2.3; the image "
                                      "carries 1.0.2.4.\n"))
        << result.err.toStdString();
}

TEST_F(ReadingCommands, VerifyComparesTheKindThatTheProductTellsWithTheImages)
{
    const QString port = "simulator:" + path("state");
    ASSERT_EQ(hxhost({"update", image(), "--port", port, "-q"}).exitCode, 0);
    const QJsonObject same = json({"verify", image(), "--port", port});
    EXPECT_EQ(same["exitCode"].toInt(), 0);
    EXPECT_EQ(same["result"].toObject()["product"].toObject()["kind"].toString(), "fwu");
    EXPECT_EQ(same["warnings"].toArray().size(), 0);
    const ProgramResult other = hxhost({"verify", image(1000, "fwd"), "--port", port});
    EXPECT_EQ(other.exitCode, 8);
    EXPECT_TRUE(other.err.contains("The product holds code of kind \"fwu\"; the image is of kind "
                                   "\"fwd\"."))
        << other.err.toStdString();
    ASSERT_EQ(hxhost({"update", image(1000, "fwd"), "--port", port, "-q"}).exitCode, 0);
    EXPECT_EQ(hxhost({"verify", image(1000, "fwd"), "--port", port}).exitCode, 0);
    EXPECT_EQ(hxhost({"verify", image(), "--port", port}).exitCode, 8);
}

// The identity, the version and both checksums come first.
TEST_F(ReadingCommands, VerifySaysThatTheProductTellsNoKind)
{
    const QString port = "simulator:" + path("state");
    ASSERT_EQ(hxhost({"update", image(), "--port", port, "-q"}).exitCode, 0);
    for (const char* fault : {"refuse:5-6", "silent:5-10"}) {
        const QJsonObject document = json({"verify", image(), "--port", port, "--fault", fault});
        EXPECT_EQ(document["exitCode"].toInt(), 0) << fault;
        const QJsonObject product = document["result"].toObject()["product"].toObject();
        EXPECT_TRUE(product.contains("kind") && product["kind"].isNull()) << fault;
        EXPECT_EQ(document["warnings"].toArray(),
                  QJsonArray({"The product does not tell the kind of its code: it was not compared "
                              "with the image's."}))
            << fault;
    }
    const QJsonObject lost = json({"verify", image(), "--port", port, "--fault", "vanish:5"});
    EXPECT_EQ(lost["exitName"].toString(), "no-port");
}

TEST_F(ReadingCommands, VerifyFailsWhenTheCodeInTheProductIsDamaged)
{
    const QString state = path("state");
    ASSERT_EQ(
        hxhost({"update", image(), "--port", "simulator:" + state, "--fault", "bad-write:3", "-q"})
            .exitCode,
        7);
    const ProgramResult result = hxhost({"verify", "--port", "simulator:" + state});
    EXPECT_EQ(result.exitCode, 8) << result.err.toStdString();
}

TEST_F(ReadingCommands, RecoverFindsNothingToDoForAHealthyProduct)
{
    const ProgramResult result = hxhost({"recover", "--port", "simulator"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.out.contains("Verified: the instrument answers, its code is intact, and "
                                    "nothing needs to be done. Simulated: no instrument was "
                                    "changed.\n"))
        << result.out.toStdString();
    EXPECT_EQ(json({"recover", "--port", "simulator"})["result"].toObject()["condition"].toString(),
              "code intact");
}

TEST_F(ReadingCommands, RecoverSaysWhatBringsAnUnfinishedProductBack)
{
    const QString state = path("state");
    const QString syx = image();
    ASSERT_EQ(
        hxhost({"update", syx, "--port", "simulator:" + state, "--fault", "failed-ack:4"}).exitCode,
        7);
    const ProgramResult result = hxhost({"recover", "--port", "simulator:" + state});
    EXPECT_EQ(result.exitCode, 8);
    EXPECT_TRUE(result.err.contains("  next: Run the update again: \"hxhost update IMAGE\"; it "
                                    "starts afresh whatever was done before.\n"))
        << result.err.toStdString();
    EXPECT_EQ(hxhost({"update", syx, "--port", "simulator:" + state}).exitCode, 0);
    EXPECT_EQ(hxhost({"recover", "--port", "simulator:" + state}).exitCode, 0);
}

TEST_F(ReadingCommands, NoAnswerIsSaidInAMusiciansWords)
{
    for (const char* command : {"identify", "info", "verify", "recover"}) {
        const ProgramResult result = hxhost({command, "--port", "simulator", "--fault", "silent"});
        EXPECT_EQ(result.err.toStdString(),
                  "error: The instrument did not answer. Is it switched on? Are both MIDI cables "
                  "in?\n"
                  "  expected: an answer to \"identify\"\n"
                  "  next: 'hxhost ports --probe' asks on every port who is there; --port chooses "
                  "one.\n")
            << command;
    }
}

// The numbers are those of the messages that each command sends.
TEST_F(ReadingCommands, OneLostMessageFailsNoCommand)
{
    const QString syx = image(300);
    const QList<QPair<QStringList, int>> commands = {{{"identify"}, 1},
                                                     {{"info"}, 11},
                                                     {{"verify"}, 8},
                                                     {{"recover"}, 4},
                                                     {{"update", syx}, 16}};
    for (const auto& command : commands) {
        for (int message = 1; message <= command.second; ++message) {
            for (const char* fault : {"silent", "drop-reply"}) {
                const QString lost = QStringLiteral("%1:%2").arg(fault).arg(message);
                const ProgramResult result =
                    hxhost(command.first + QStringList{"--port", "simulator", "--fault", lost});
                EXPECT_EQ(result.exitCode, 0)
                    << command.first.first().toStdString() << " " << lost.toStdString();
            }
        }
    }
}

TEST_F(ReadingCommands, EachReadsTheSilenceOfTheProductAsNoAnswer)
{
    for (const char* command : {"identify", "info", "verify", "recover"}) {
        const ProgramResult result = hxhost({command, "--port", "simulator", "--fault", "silent"});
        EXPECT_EQ(result.exitCode, 5) << command;
        EXPECT_TRUE(result.err.contains("  expected: ")) << command;
        EXPECT_TRUE(result.err.contains("  next: ")) << command;
    }
}

TEST_F(ReadingCommands, InfoFailsWhenAQuestionIsNotAnsweredAndShowsTheOthers)
{
    const QList<QPair<QString, int>> faults = {
        {"drop-reply:2-", 5}, {"silent:8-", 5}, {"vanish:3", 4}, {"refuse:2-8", 0}};
    for (const auto& fault : faults) {
        const ProgramResult result =
            hxhost({"info", "--port", "simulator", "--fault", fault.first});
        EXPECT_EQ(result.exitCode, fault.second) << fault.first.toStdString();
        EXPECT_TRUE(result.out.contains("identity.version           1.0.2.3\n"))
            << result.out.toStdString();
        EXPECT_EQ(result.err.contains("error: The "), fault.second != 0)
            << result.err.toStdString();
    }
}

TEST_F(ReadingCommands, EachTellsAnotherProductFromTheRightOne)
{
    for (const char* command : {"identify", "info", "verify", "recover"}) {
        const ProgramResult result =
            hxhost({command, "--port", "simulator", "--fault", "wrong-model"});
        EXPECT_EQ(result.exitCode, 9) << command << result.err.toStdString();
    }
}

TEST_F(ReadingCommands, EachSaysThatThePortWentAway)
{
    for (const char* command : {"identify", "info", "verify", "recover"}) {
        const ProgramResult result =
            hxhost({command, "--port", "simulator", "--fault", "vanish:1"});
        EXPECT_EQ(result.exitCode, 4) << command << result.err.toStdString();
    }
}

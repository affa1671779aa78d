// hxhost update: every way in which an update ends.
#include "tests/hxhost/HxHost.h"

#include <QJsonArray>

namespace {

class UpdateCommand : public HxHostTest {
protected:
    // Updates the product in a state file and returns the document.
    QJsonObject update(const QStringList& more = {})
    {
        return json(QStringList{"update", m_image, "--port", port()} + more);
    }

    QString port() const { return "simulator:" + path("state"); }
    const QString& imageFile() const { return m_image; }

    static QString what(const QJsonObject& document)
    {
        return document.value("error").toObject().value("what").toString();
    }

    static QJsonObject result(const QJsonObject& document)
    {
        return document.value("result").toObject();
    }

private:
    QString m_image = image();
};

} // namespace

TEST_F(UpdateCommand, SaysWhyAnImageFileCannotBeRead)
{
    const auto whyOf = [this](const QString& name) {
        const QJsonObject document = json({"update", name, "--port", port()});
        EXPECT_EQ(document.value("exitName").toString(), "file-error");
        return what(document).section("cannot be read: ", 1);
    };
    EXPECT_EQ(whyOf(path("missing.syx")), "No such file or directory");
    EXPECT_EQ(whyOf(path(".")), "it is a folder");
    EXPECT_EQ(whyOf("/dev/null"), "it is not a regular file");
}

TEST_F(UpdateCommand, SucceedsWhenChecksumsAgreeAndTheProductAnswersAgain)
{
    const QJsonObject document = update();
    EXPECT_EQ(document.value("exitName").toString(), "success");
    EXPECT_TRUE(document.value("error").isNull());
    const QJsonObject found = result(document);
    EXPECT_EQ(found.value("outcome").toString(), "succeeded");
    EXPECT_EQ(found.value("messages").toObject().value("acknowledged").toInt(), 11);
    EXPECT_EQ(found.value("messages").toObject().value("retries").toInt(), 0);
    const QJsonObject checksum = found.value("checksum").toObject();
    const QString image = checksum.value("image").toString();
    EXPECT_EQ(checksum.value("stored").toObject().value("bytes").toString(), image);
    EXPECT_EQ(checksum.value("calculated").toObject().value("bytes").toString(), image);
    EXPECT_EQ(found.value("after").toObject().value("version").toObject().value("version"),
              "1.0.2.4");
    EXPECT_EQ(hxhost({"verify", imageFile(), "--port", port()}).exitCode, 0);
}

TEST_F(UpdateCommand, SendsADamagedMessageAgain)
{
    const QJsonObject document = update({"--fault", "bad-ack:5"});
    EXPECT_EQ(document.value("exitCode").toInt(), 0);
    EXPECT_EQ(result(document).value("messages").toObject().value("retries").toInt(), 1);
}

TEST_F(UpdateCommand, EndsWhenTheProductStaysSilent)
{
    const QJsonObject document = update({"--fault", "silent:6-"});
    EXPECT_EQ(document.value("exitName").toString(), "update-failed");
    EXPECT_TRUE(result(document).value("product").toObject().value("touched").toBool());
}

TEST_F(UpdateCommand, ASlowHostWaitsForAnswersThatComeLate)
{
    const QStringList late = {"update",    image(),   "--port",
                              "simulator", "--fault", "delay-reply:1-:7000"};
    EXPECT_EQ(hxhost(late).exitCode, 5);
    const ProgramResult patient = hxhost(QStringList(late) << "--slow-host");
    EXPECT_EQ(patient.exitCode, 0) << patient.err.toStdString();
    EXPECT_TRUE(patient.out.contains("Verified")) << patient.out.toStdString();
}

TEST_F(UpdateCommand, EndsWhenTheProductRefusesForGood)
{
    const QJsonObject document = update({"--fault", "failed-ack:5"});
    EXPECT_EQ(document.value("exitName").toString(), "update-failed");
    EXPECT_EQ(what(document), "The instrument refused message 5 of 11 and ended the update.");
    EXPECT_EQ(update().value("exitCode").toInt(), 0) << "a second run recovers the product";
}

TEST_F(UpdateCommand, EndsWhenThePortGoesAwayAndASecondRunRecovers)
{
    const QJsonObject document = update({"--fault", "vanish:8"});
    EXPECT_EQ(document.value("exitName").toString(), "no-port");
    EXPECT_TRUE(result(document).value("product").toObject().value("touched").toBool());
    EXPECT_EQ(update().value("exitCode").toInt(), 0);
}

TEST_F(UpdateCommand, SendsNothingToAnotherProduct)
{
    const QJsonObject document = update({"--fault", "wrong-model"});
    EXPECT_EQ(document.value("exitName").toString(), "wrong-product");
    EXPECT_FALSE(result(document).value("product").toObject().value("touched").toBool(true));
}

TEST_F(UpdateCommand, SendsNothingOfADamagedImage)
{
    QByteArray content = read(imageFile());
    content[200] = char(content.at(200) ^ 1);
    const QString damaged = write("damaged.syx", content);
    const QString trace = path("trace");
    const ProgramResult ended =
        hxhost({"update", damaged, "--port", "simulator", "--trace", trace});
    EXPECT_EQ(ended.exitCode, 6);
    EXPECT_FALSE(read(trace).contains(" sent "));
    EXPECT_TRUE(ended.err.contains("message 2, byte ")) << ended.err.toStdString();
}

TEST_F(UpdateCommand, DryRunShowsThePlanAndOpensNoPort)
{
    const ProgramResult ended =
        hxhost({"update", imageFile(), "--port", "no such port", "--dry-run"});
    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_EQ(ended.err.toStdString(), "Dry run: nothing was sent.\n");
    EXPECT_TRUE(ended.out.contains("plan.kind           fwu\n"
                                   "plan.product        0x300041\n"
                                   "plan.messages       11\n"))
        << ended.out.toStdString();
}

TEST_F(UpdateCommand, IsRefusedWhileAnotherHostUpdatesTheProduct)
{
    const QString heard =
        write("heard", "# hxtrace 1\n"
                       "     0.100000 ignored     F0 00 6B 2D 30 41 43 0C 00 F7\n"
                       "     0.200000 ignored     F0 00 6B 2D 30 41 43 0C 01 F7\n");
    const QStringList command = {"update", imageFile(), "--port", "replay:" + heard};
    const ProgramResult ended = hxhost(command);
    EXPECT_EQ(ended.exitCode, 4);
    EXPECT_TRUE(ended.err.contains("error: another program is updating this product: 2 "
                                   "acknowledgements of an update were heard\n"
                                   "  expected: a product that no other program uses\n"
                                   "  next: nothing was sent; "))
        << ended.err.toStdString();
    const ProgramResult unheard = hxhost(command + QStringList{"--no-listen"});
    EXPECT_EQ(unheard.exitCode, 11) << "it sends what the record does not hold";
}

TEST_F(UpdateCommand, WarnsOfOtherTrafficBeforeItStarts)
{
    const ProgramResult ended =
        hxhost({"update", imageFile(), "--port", "simulator", "--fault", "noise"});
    EXPECT_EQ(ended.exitCode, 0) << ended.err.toStdString();
    EXPECT_TRUE(ended.err.contains("warning: MIDI clock is running (")) << ended.err.toStdString();
    EXPECT_TRUE(ended.err.contains("warning: An instrument sends active sensing ("))
        << ended.err.toStdString();
    const QJsonObject document = update({"--fault", "noise"});
    EXPECT_EQ(document.value("warnings").toArray().size(), 2);
}

TEST_F(UpdateCommand, ReportsTheVersionAndKindOfAnFwdImageToo)
{
    const QString fwd = image(500, "fwd");
    const QJsonObject document = json({"update", fwd, "--port", "simulator"});
    EXPECT_EQ(document.value("exitCode").toInt(), 0);
    EXPECT_EQ(result(document).value("plan").toObject().value("kind").toString(), "fwd");
}

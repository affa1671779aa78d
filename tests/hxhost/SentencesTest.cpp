// What a musician reads: three lines when all is good, one sentence and what to do when it is not.
#include "tests/hxhost/HxHost.h"

#include <QRegularExpression>

namespace {

class Sentences : public HxHostTest {
protected:
    // What an update of a simulated product says on standard error, without progress.
    std::string updateSays(const QStringList& more, int exitCode,
                           const QString& port = "simulator") const
    {
        const ProgramResult ended = hxhost(
            QStringList{"update", m_image, "--port", port, "--no-listen", "--progress", "none"} +
            more);
        EXPECT_EQ(ended.exitCode, exitCode) << ended.err.toStdString();
        EXPECT_EQ(ended.out.toStdString(), "");
        return ended.err.toStdString();
    }

    const QString& imageFile() const { return m_image; }

    // The trace of an update up to the message of this number of the image, and the moment when that
    // was sent.
    QByteArrayList recordedUpTo(int message, QByteArray* time) const
    {
        const QString trace = path("whole.trace");
        EXPECT_EQ(
            hxhost({"update", m_image, "--port", "simulator", "--no-listen", "--trace", trace})
                .exitCode,
            0);
        const QByteArrayList lines = read(trace).split('\n');
        constexpr int questions = 3;
        const int end = sentLines(lines).at(questions + message - 1);
        *time = lines.at(end).left(lines.at(end).indexOf(" sent"));
        return lines.mid(0, end + 1);
    }

    static QList<int> sentLines(const QByteArrayList& lines)
    {
        QList<int> found;
        for (int i = 0; i < lines.size(); ++i) {
            if (lines.at(i).contains(" sent "))
                found << i;
        }
        return found;
    }

private:
    QString m_image = image();
};

const char simulated[] = " Simulated: no instrument was changed.";

} // namespace

TEST_F(Sentences, SuccessIsThreeLinesAndTheRestIsForVerbose)
{
    const QStringList update = {"update", imageFile(), "--port", "simulator"};
    EXPECT_EQ(hxhost(update).out.toStdString(),
              std::string("Valdrin, serial number 30410001.") + simulated +
                  "\nVersion 1.0.2.4; before the update: 1.0.2.3." + simulated +
                  "\nVerified: the instrument answers, and its code is that of the image." +
                  simulated + "\n");
    const QByteArray all = hxhost(update + QStringList{"-v"}).out;
    for (const char* detail : {"\noutcome ", "\nsteps:\n", "\nplugin.isCodeValid.fwu ",
                               "\nplugin.esn ", "\nchecksum.stored.bytes ", "\nVerified: "})
        EXPECT_TRUE(all.contains(detail)) << detail;
}

TEST_F(Sentences, EveryLineOfSuccessOnAMadeUpPortSaysThatNoInstrumentWasChanged)
{
    const QString trace = path("trace");
    const QString syx = imageFile();
    ASSERT_EQ(hxhost({"update", syx, "--port", "simulator", "--trace", trace}).exitCode, 0);
    const QList<QStringList> commands = {{"update", syx, "--port", "simulator"},
                                         {"update", syx, "--port", "simulator:" + path("state")},
                                         {"update", syx, "--port", "replay:" + trace},
                                         {"verify", "--port", "simulator"},
                                         {"recover", "--port", "simulator"}};
    for (const QStringList& command : commands) {
        const QByteArray out = hxhost(command).out;
        EXPECT_EQ(out.count('\n'), 3) << out.toStdString();
        EXPECT_EQ(out.count(simulated), 3) << out.toStdString();
    }
}

TEST_F(Sentences, AnInstrumentThatDoesNotAnswer)
{
    EXPECT_EQ(updateSays({"--fault", "silent"}, 5),
              "error: The instrument did not answer. Is it switched on? Are both MIDI cables in?\n"
              "  expected: an answer to \"identify\"\n"
              "  next: 'hxhost ports --probe' asks on every port who is there; --port chooses "
              "one.\n");
}

TEST_F(Sentences, AConnectionThatIsLost)
{
    EXPECT_EQ(updateSays({"--fault", "vanish:9"}, 4),
              "error: The connection to simulator was lost at message 6 of 11.\n"
              "  expected: a connection that stays\n"
              "  next: Connect it again. Run the same update again: it starts afresh.\n");
}

TEST_F(Sentences, AnotherInstrumentBehindAPortThatCameBack)
{
    QByteArray time;
    QByteArrayList lines = recordedUpTo(3, &time);
    lines.removeLast();
    const auto again = [&](int line) { return time + lines.at(line).mid(time.size()); };
    const int identity = sentLines(lines).at(0);
    const int serial = sentLines(lines).at(2);
    lines << time + " back : as another" << again(identity) << again(identity + 1);
    for (int i = 0; i < 2; ++i) { // it is believed when it says so twice
        lines << again(serial) << again(serial + 1).replace("30 31 F7", "30 32 F7");
    }
    const QString replay = "replay:" + write("edited.trace", lines.join('\n') + '\n');
    EXPECT_EQ(updateSays({}, 9, replay),
              "error: " + replay.toStdString() +
                  ": another product is on the port since it is back: serial number 33 30 34 31 30 "
                  "30 30 32; expected serial number 33 30 34 31 30 30 30 31. Nothing of the update "
                  "was sent to it.\n"
                  "  expected: the instrument with which the command began\n"
                  "  next: Connect that one again. Run the same update again: it starts afresh.\n");
}

TEST_F(Sentences, AMessageThatTheDriverDidNotTake)
{
    QByteArray time;
    QByteArrayList lines = recordedUpTo(3, &time);
    lines << lines.takeLast().replace(" sent  ", " unsent") + " : the driver gave it up";
    const QString replay = "replay:" + write("edited.trace", lines.join('\n') + '\n');
    const QString said = QString::fromStdString(updateSays({}, 4, replay));
    EXPECT_TRUE(said.startsWith("error: message 3 of 11: F0 00 6B 2D 30 41 43 "))
        << said.toStdString();
    EXPECT_TRUE(said.contains(" could not be sent: the driver gave it up\n"
                              "  expected: a port that takes every message\n"
                              "  next: Run the same update again with --slow-host: "))
        << said.toStdString();
}

TEST_F(Sentences, BadAcknowledgementsAdviseToSendMoreSlowly)
{
    EXPECT_EQ(updateSays({"--fault", "bad-ack:5-"}, 7),
              "error: The instrument received message 5 of 11 damaged. Bytes are lost on the way "
              "to it.\n"
              "  expected: a good acknowledgement of the message, which was sent 4 times\n"
              "  next: Send more slowly: run the same update again with --rate 2000 --gap 20.\n");
}

TEST_F(Sentences, ARefusalSaysWhatTheInstrumentHoldsAndWhatBringsItBack)
{
    EXPECT_EQ(updateSays({"--fault", "failed-ack:5"}, 7),
              "error: The instrument refused message 5 of 11 and ended the update.\n"
              "  expected: a good acknowledgement of every message\n"
              "  next: The instrument is in its boot loader and holds no valid code. Run the same "
              "update again: it starts afresh.\n");
}

TEST_F(Sentences, BytesOfMessagesAreLeftToTheTraceAndToVeryVerbose)
{
    const QRegularExpression bytes("([0-9A-F]{2} ){3}");
    for (const char* fault : {"silent", "silent:6-", "bad-ack:5-", "failed-ack:5", "vanish:9",
                              "wrong-model", "noise", "damage-reply:5:8:01"}) {
        for (const char* command : {"update", "verify", "info", "identify", "recover"}) {
            QStringList words{command, "--port", "simulator", "--fault", fault};
            if (words.first() == "update")
                words << imageFile() << "--no-listen";
            const QString said = QString::fromUtf8(hxhost(words).err);
            EXPECT_FALSE(bytes.match(said).hasMatch()) << said.toStdString();
        }
    }
    const QString shown = QString::fromUtf8(
        hxhost({"identify", "--port", "simulator", "--fault", "wrong-model", "-vv"}).err);
    EXPECT_TRUE(bytes.match(shown).hasMatch()) << shown.toStdString();
}

TEST_F(Sentences, AWebPageOrAnArchiveInThePlaceOfAnUpdate)
{
    struct Foreign {
        const char* name;
        QByteArray content;
        const char* like;
    };
    const QByteArray tar = QByteArray("update.syx").leftJustified(257, '\0') + "ustar";
    const QList<Foreign> files = {
        {"page.syx", "\n<!DOCTYPE html>\n<html><body>404</body></html>", "a web page"},
        {"old-page.syx", "<HTML><HEAD></HEAD></HTML>", "a web page"},
        {"marked-page.syx", "\xEF\xBB\xBF<!DOCTYPE html>", "a web page"},
        {"zip.syx", QByteArray("PK\x03\x04\x14\x00\x00\x00", 8), "an archive"},
        {"gzip.syx", QByteArray("\x1F\x8B\x08\x00", 4), "an archive"},
        {"tar.syx", tar, "an archive"}};
    for (const Foreign& file : files) {
        const QString name = write(file.name, file.content);
        for (const char* command : {"update", "verify", "image inspect", "check --image"}) {
            const QStringList words = QString(command).split(' ') + QStringList{name};
            const ProgramResult ended = hxhost(words);
            EXPECT_EQ(ended.exitCode, 6) << command;
            const QByteArray expected =
                "error: This is a web page (or an archive), not an update. \"" + name.toUtf8() +
                "\" looks like " + file.like + ".\n";
            EXPECT_TRUE(ended.err.startsWith(expected)) << ended.err.toStdString();
        }
    }
}

TEST_F(Sentences, AnUpdateWhoseTraceCannotBeKeptHasSucceeded)
{
    if (!QFile::exists("/dev/full"))
        GTEST_SKIP() << "there is no /dev/full here";
    const ProgramResult ended = hxhost({"update", imageFile(), "--port", "simulator", "--trace",
                                        "/dev/full", "--no-listen", "--progress", "none"});
    EXPECT_EQ(ended.exitCode, 10);
    EXPECT_EQ(ended.err.toStdString(),
              "error: The update succeeded; only its record is incomplete.\n"
              "  expected: room on the disk for the trace\n"
              "  next: free some before the next run\n");
    EXPECT_TRUE(ended.out.contains("Verified: ")) << ended.out.toStdString();
}

TEST_F(Sentences, AnImageForAnotherProductSaysSo)
{
    QByteArray content = read(imageFile());
    content.replace(QByteArray("\xF0\x00\x6B\x2D\x30\x41", 6),
                    QByteArray("\xF0\x00\x6B\x2D\x30\x42", 6));
    const QString other = write("other.syx", content);
    for (const char* command : {"update", "verify"}) {
        const ProgramResult ended = hxhost({command, other, "--port", "simulator"});
        EXPECT_EQ(ended.exitCode, 9) << ended.err.toStdString();
        EXPECT_TRUE(ended.err.contains("  next: It is made for another product: get the image for "
                                       "this one.\n"))
            << ended.err.toStdString();
    }
}

// The library's own words for it came twice, once for the input and once for the output.
TEST_F(Sentences, ABackendThatCannotBeUsedSaysItsReasonOnce)
{
    const ProgramResult ended =
        hxhost({"simulate", "--backend", "jack"},
               {{"JACK_DEFAULT_SERVER", "no-such-server"}, {"JACK_NO_START_SERVER", "1"}});
    EXPECT_EQ(ended.exitCode, 4);
    EXPECT_TRUE(ended.err.startsWith(
        "error: no virtual port can be made: jack: no JACK server is running\n"))
        << ended.err.toStdString();
}

// hxhost support: what the report holds, and what it leaves out.
#include "tests/hxhost/HxHost.h"

#include <QCryptographicHash>
#include <QDir>
#include <QJsonArray>

namespace {

class SupportCommand : public HxHostTest {
protected:
    // The report of a run that must succeed.
    QByteArray report(const QStringList& more) const
    {
        const QString name = path("report.txt");
        const ProgramResult ended =
            hxhost(QStringList{"support", "-o", name, "--port", "simulator"} + more);
        EXPECT_EQ(ended.exitCode, 0) << ended.err.toStdString();
        return read(name);
    }
};

} // namespace

TEST_F(SupportCommand, BeginsWithAListOfWhatIsInIt)
{
    const QByteArray text = report({});
    EXPECT_TRUE(text.startsWith(
        "hxhost support report 1\n\n"
        "It holds:\n"
        "- the versions of the program, of Qt and of the system\n"
        "- the names of the MIDI ports\n"
        "- what the plugin says of itself\n"
        "- what the instrument and the plugin answer, or why not\n\n"
        "It holds no names of people, computers or folders. The names of MIDI ports and the serial "
        "number of the instrument are in it.\n\n"
        "== Versions ==\nhxhost  "))
        << text.left(700).toStdString();
    for (const char* piece :
         {"\n== Ports ==\n", "\n== Plugin ==\n", "\n== Instrument ==\n", "\ndevice.productName ",
          "\nidentity.version           1.0.2.3\n", "\nplugin.isCodeValid.fwu     false\n"})
        EXPECT_TRUE(text.contains(piece)) << piece;
}

TEST_F(SupportCommand, HoldsTheChecksumOfTheImageAndTheLastTrace)
{
    const QString syx = image();
    const QString trace = path("session.trace");
    ASSERT_EQ(
        hxhost({"update", syx, "--port", "simulator", "--rate", "5000", "--trace", trace}).exitCode,
        0);
    const QByteArray text = report({"--image", syx, "--last-trace", trace});
    const QByteArray hash = QCryptographicHash::hash(read(syx), QCryptographicHash::Sha256).toHex();
    EXPECT_TRUE(text.contains("\n== Image ==\nSHA-256   " + hash + "\n")) << text.toStdString();
    EXPECT_TRUE(text.contains("\nversion   1.0.2.4\nmessages  11\n")) << text.toStdString();
    EXPECT_TRUE(text.contains("\n- the checksum of the image, and what it says of itself\n"
                              "- the last trace, with every byte that travelled\n"));
    EXPECT_TRUE(text.contains("\n# hxhost update ... --port ... --rate 5000 --trace ...\n"))
        << text.toStdString();
    EXPECT_TRUE(text.contains(" sent        F0 7E 7F 06 01 F7 = identify\n"));
    EXPECT_TRUE(text.contains(" decided     : outcome: succeeded\n"));
}

TEST_F(SupportCommand, NamesNoFolderNorThePersonWhoWorksThere)
{
    const QString syx = image();
    const QString trace = path("session.trace");
    ASSERT_EQ(
        hxhost({"identify", "--port", "simulator:" + path("state"), "--trace", trace}).exitCode, 0);
    const QByteArray text =
        report({"--image", syx, "--last-trace", trace, "--plugin", HX_PLUGIN_FILE});
    EXPECT_FALSE(text.contains(QFileInfo(trace).path().toUtf8())) << text.toStdString();
    EXPECT_FALSE(text.contains(QFileInfo(HX_PLUGIN_FILE).path().toUtf8())) << text.toStdString();
    EXPECT_FALSE(text.contains(QDir::homePath().toUtf8() + '/')) << text.toStdString();
    EXPECT_FALSE(text.contains(QSysInfo::machineHostName().toUtf8())) << text.toStdString();
}

TEST_F(SupportCommand, IsWrittenWithoutAnInstrumentToo)
{
    for (const char* fault : {"silent", "vanish:1", "wrong-model"})
        EXPECT_TRUE(report({"--fault", fault}).contains("\nerror: ")) << fault;
    const QString name = path("alone.txt");
    EXPECT_EQ(hxhost({"support", "-o", name, "--port", "no such port"}).exitCode, 0);
    EXPECT_TRUE(read(name).contains("\nerror: no MIDI output port fits \"no such port\"\n"));
}

TEST_F(SupportCommand, TakesNothingForATraceThatIsNone)
{
    const QString name = path("report.txt");
    const QString secret = write("secret", "password");
    const ProgramResult ended =
        hxhost({"support", "-o", name, "--port", "simulator", "--last-trace", secret});
    EXPECT_EQ(ended.exitCode, 10);
    EXPECT_FALSE(QFile::exists(name));
}

TEST_F(SupportCommand, SaysWhatIsInIt)
{
    const QString name = path("report.txt");
    const QJsonObject result =
        json({"support", "-o", name, "--port", "simulator"})["result"].toObject();
    EXPECT_EQ(result["file"].toString(), name);
    EXPECT_EQ(result["bytes"].toInt(), read(name).size());
    EXPECT_EQ(result["contents"].toArray().size(), 4);
}

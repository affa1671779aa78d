// hxhost batch, over simulated products in files: each has a serial number of its own.
#include "tests/hxhost/HxHost.h"

#include <QDir>
#include <QJsonArray>
#include <QMap>

namespace {

class BatchCommand : public HxHostTest {
protected:
    // A port with a fresh product.
    QString product(const QString& file, const QString& serial) const
    {
        const QString port = "simulator:" + path(file);
        EXPECT_EQ(hxhost({"identify", "--port", port, "--serial", serial}).exitCode, 0);
        return port;
    }

    QStringList batch(const QStringList& more) const
    {
        return QStringList{"batch", image(), "--traces", path("traces")} + more;
    }

    QJsonObject json(const QStringList& more) const { return HxHostTest::json(batch(more)); }

    // The units by the file at the end of their port's name.
    static QMap<QString, QJsonObject> unitsIn(const QJsonObject& document)
    {
        QMap<QString, QJsonObject> units;
        for (const QJsonValue& unit : document["result"].toObject()["units"].toArray())
            units[unit.toObject()["port"].toString().section('/', -1)] = unit.toObject();
        return units;
    }

    static QString codeOf(const QString& port)
    {
        return HxHostTest::json({"info", "--port", port})["result"]
            .toObject()["version"]
            .toObject()["version"]
            .toString();
    }
};

} // namespace

TEST_F(BatchCommand, UpdatesEveryProductAndTellsWhatBecameOfEach)
{
    const QString first = product("p1", "Unit0001");
    const QString second = product("p2", "Unit0002");
    const QJsonObject document = json({"--ports", "simulator:" + path("p?")});
    EXPECT_EQ(document["exitCode"], 0);
    const auto units = unitsIn(document);
    ASSERT_EQ(units.keys(), (QStringList{"p1", "p2"}));
    const QJsonObject unit = units["p2"];
    EXPECT_EQ(unit["port"], second);
    EXPECT_EQ(unit["serial"], "Unit0002");
    EXPECT_EQ(unit["identity"], "0x300041");
    EXPECT_EQ(unit["versionBefore"], "1.0.2.3");
    EXPECT_EQ(unit["versionAfter"], "1.0.2.4");
    EXPECT_EQ(unit["outcome"], "succeeded");
    EXPECT_EQ(unit["reason"], "");
    EXPECT_EQ(unit["retries"], 0);
    EXPECT_GT(unit["durationMs"].toInt(), 0);
    EXPECT_TRUE(read(unit["trace"].toString()).contains("esn.read"));
    EXPECT_EQ(document["result"].toObject()["count"],
              (QJsonObject{{"succeeded", 2}, {"failed", 0}, {"skipped", 0}}));
    for (const QString& port : {first, second})
        EXPECT_EQ(codeOf(port), "1.0.2.4");
}

TEST_F(BatchCommand, TraceOfAUnitReplaysWithTheImageBesideIt)
{
    product("p1", "Unit0001");
    const QString trace =
        unitsIn(json({"--ports", "simulator:" + path("p1")}))["p1"]["trace"].toString();
    const QStringList images = QDir(path("traces")).entryList({"*-image.syx"});
    ASSERT_EQ(images.size(), 1);
    EXPECT_EQ(QDir(path("traces")).entryList(QDir::Files).size(), 2)
        << "nothing is kept of the questions before the update";
    EXPECT_EQ(
        hxhost({"update", path("traces/") + images.first(), "--port", "replay:" + trace}).exitCode,
        0);
}

TEST_F(BatchCommand, ProductThatTwoPortsLeadToIsUpdatedOnceAndThatIsSaid)
{
    product("p1", "Unit0001");
    product("p2", "Unit0001");
    const QJsonObject document = json({"--ports", "simulator:" + path("p?")});
    EXPECT_EQ(document["exitCode"], 0);
    EXPECT_EQ(document["result"].toObject()["count"],
              (QJsonObject{{"succeeded", 1}, {"failed", 0}, {"skipped", 1}}));
    const auto units = unitsIn(document);
    const bool isFirst = units["p1"]["outcome"] == "succeeded";
    const QJsonObject& updated = isFirst ? units["p1"] : units["p2"];
    const QJsonObject& skipped = isFirst ? units["p2"] : units["p1"];
    EXPECT_EQ(updated["outcome"], "succeeded");
    EXPECT_EQ(skipped["outcome"], "same-product");
    EXPECT_EQ(skipped["reason"], "the same product as on " + updated["port"].toString() +
                                     ", by its serial number: it is updated there");
    EXPECT_EQ(codeOf(skipped["port"].toString()), "1.0.2.3");
}

TEST_F(BatchCommand, UnitThatFailsChangesNothingForTheOthersAndEndsWith14)
{
    product("p1", "Unit0001");
    write("p2", "not a state file\n");
    product("p3", "Unit0003");
    const QJsonObject document = json({"--ports", "simulator:" + path("p?")});
    EXPECT_EQ(document["exitCode"], 14);
    EXPECT_EQ(document["exitName"], "not-all-updated");
    EXPECT_EQ(document["error"].toObject()["what"], "1 of 3 products were not updated");
    const auto units = unitsIn(document);
    EXPECT_EQ(units["p1"]["outcome"], "succeeded");
    EXPECT_EQ(units["p2"]["outcome"], "file-error");
    EXPECT_TRUE(units["p2"]["reason"].toString().contains("is not a state file"));
    EXPECT_TRUE(read(units["p2"]["trace"].toString()).contains("hxhost info "));
    EXPECT_EQ(units["p3"]["outcome"], "succeeded");
}

TEST_F(BatchCommand, OneAtATimeUpdatesThemAllToo)
{
    for (int i = 1; i <= 3; ++i)
        product(QString("p%1").arg(i), QString("Unit000%1").arg(i));
    const QJsonObject document = json({"--ports", "simulator:" + path("p?"), "--jobs", "1"});
    EXPECT_EQ(document["result"].toObject()["count"],
              (QJsonObject{{"succeeded", 3}, {"failed", 0}, {"skipped", 0}}));
}

TEST_F(BatchCommand, EachRunGetsTheOptionsOfTheBatch)
{
    const QString port = product("p1", "Unit0001");
    const auto unit = unitsIn(json(
        {"--ports", port, "--rate", "2000", "--gap", "7", "--slow-host", "--no-listen"}))["p1"];
    const QByteArray trace = read(unit["trace"].toString());
    for (const char* option : {" --rate 2000 --gap 7", " --slow-host", " --no-listen"})
        EXPECT_TRUE(
            trace.left(trace.indexOf('\n', trace.indexOf("hxhost update"))).contains(option))
            << option;
}

TEST_F(BatchCommand, ProductWithoutValidCodeIsRecovered)
{
    const QString port = product("p1", "Unit0001");
    EXPECT_EQ(hxhost({"update", image(), "--port", port, "--fault", "failed-ack:4"}).exitCode, 7);
    const auto unit = unitsIn(json({"--ports", port}))["p1"];
    EXPECT_EQ(unit["outcome"], "succeeded");
    EXPECT_EQ(unit["versionBefore"], "");
    EXPECT_EQ(unit["versionAfter"], "1.0.2.4");
    EXPECT_EQ(unit["serial"], "Unit0001");
}

TEST_F(BatchCommand, ImageMayComeFromStandardInputOnlyAsAWhole)
{
    product("p1", "Unit0001");
    const ProgramResult ended =
        hxhost({"batch", "-", "--ports", "simulator:" + path("p1"), "--traces", path("traces")});
    EXPECT_EQ(ended.exitCode, 6) << ended.err.toStdString(); // standard input is empty
    EXPECT_FALSE(QFile::exists(path("traces")));
}

TEST_F(BatchCommand, ReportThatCannotBeWrittenIsRefusedBeforeAnythingIsSent)
{
    const QString port = product("p1", "Unit0001");
    const QJsonObject document = json({"--ports", port, "--report", path("no/folder/r.csv")});
    EXPECT_EQ(document["exitCode"], 10);
    EXPECT_TRUE(document["error"].toObject()["what"].toString().contains("no/folder/r.csv"));
    EXPECT_EQ(codeOf(port), "1.0.2.3");
}

TEST_F(BatchCommand, FolderOfTracesThatCannotBeMadeIsRefusedBeforeAnythingIsSent)
{
    const QString port = product("p1", "Unit0001");
    const QString file = write("file", "x");
    const QJsonObject document =
        HxHostTest::json({"batch", image(), "--ports", port, "--traces", file + "/traces"});
    EXPECT_EQ(document["exitCode"], 10);
    EXPECT_TRUE(document["error"].toObject()["next"].toString().contains("--traces"));
    EXPECT_EQ(codeOf(port), "1.0.2.3");
}

TEST_F(BatchCommand, ReportOfNoKnownFormIsRefused)
{
    for (const char* name : {"report", "report.txt", "report.XML.gz", "-"})
        EXPECT_EQ(hxhost(batch({"--ports", "simulator", "--report", name})).exitCode, 2) << name;
    EXPECT_EQ(hxhost(batch({"--ports", "simulator", "--report", path("image.syx")})).exitCode, 2);
}

TEST_F(BatchCommand, ProgressIsJsonLinesWhereNobodyWatchesErrorsIncluded)
{
    write("p1", "not a state file\n");
    product("p2", "Unit0002");
    const ProgramResult ended = hxhost(batch({"--ports", "simulator:" + path("p?")}));
    EXPECT_EQ(ended.exitCode, 14);
    int units = 0;
    for (const QByteArray& line : ended.err.trimmed().split('\n')) {
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        EXPECT_FALSE(object.isEmpty()) << line.toStdString();
        units += object.contains("unit") ? 1 : 0;
    }
    EXPECT_EQ(units, 2);
    EXPECT_TRUE(ended.err.contains("\"percent\":100,\"port\":\"simulator:"))
        << ended.err.toStdString();
    EXPECT_TRUE(ended.out.contains("1 updated, 1 failed, 0 of the same product as another port."));
}

TEST_F(BatchCommand, PlainProgressNamesTheProductAndCounts)
{
    const QString port = product("p1", "Unit0001");
    const ProgramResult ended = hxhost(batch({"--ports", port, "--progress", "plain"}));
    EXPECT_TRUE(ended.err.contains(QString("Unit0001 on %1: 100%: ").arg(port).toUtf8()))
        << ended.err.toStdString();
    EXPECT_TRUE(ended.err.contains(QString("Unit0001 on %1: succeeded, version 1.0.2.4\n"
                                           "1 updated, 0 failed\n")
                                       .arg(port)
                                       .toUtf8()))
        << ended.err.toStdString();
}

TEST_F(BatchCommand, QuietSaysNothingButTheResult)
{
    const ProgramResult ended = hxhost(batch({"--ports", product("p1", "Unit0001"), "-q"}));
    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_EQ(ended.err, "");
}

TEST_F(BatchCommand, NoPortThatFitsIsAnErrorThatNamesThePatterns)
{
    const QJsonObject document = json({"--ports", "nowhere", "--ports", "device:/no/such/*"});
    EXPECT_EQ(document["exitCode"], 4);
    EXPECT_EQ(document["error"].toObject()["what"],
              "no port fits \"nowhere\" or \"device:/no/such/*\"");
    EXPECT_FALSE(QFile::exists(path("traces")));
}

TEST_F(BatchCommand, TwoNamesOfOneFileAreOnePort)
{
    const QString port = product("p1", "Unit0001");
    ASSERT_TRUE(QFile::link(path("p1"), path("p2")));
    const QJsonObject document = json({"--ports", "simulator:" + path("p?")});
    EXPECT_EQ(document["exitCode"], 0);
    const auto units = unitsIn(document);
    EXPECT_EQ(units["p1"]["outcome"], "succeeded");
    EXPECT_EQ(units["p2"]["outcome"], "same-product");
    EXPECT_EQ(units["p2"]["reason"], "the same file as " + port + ": it is updated there");
    EXPECT_EQ(units["p2"]["serial"], "");
}

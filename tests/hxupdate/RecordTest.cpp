// The record of an update: what stands in it, and where it can be saved.
#include "tests/hxupdate/Bench.h"
#include "tests/support/FileSizeLimit.h"

using namespace hxupdate;

namespace {

QByteArray recordOf(Bench& bench)
{
    const QByteArray record = bench.model->end().record;
    EXPECT_TRUE(hx::parseTrace(record));
    return record;
}

QByteArray recordWith(const QString& fault)
{
    Bench bench;
    bench.goTo(Step::Review);
    bench.product->setFaults(faults({fault}));
    bench.model->startUpdate();
    EXPECT_TRUE(bench.isAt(Step::Verdict));
    return recordOf(bench);
}

Notice noticeOfSaving(Bench& bench, const QString& path)
{
    bench.notices.clear();
    bench.model->saveRecord(path);
    EXPECT_TRUE(waitUntil([&] { return !bench.notices.isEmpty(); }));
    return bench.notices.value(0);
}

} // namespace

TEST(Record, TellsProgramPluginProductAndImage)
{
    Bench bench;
    bench.goTo(Step::Updating);
    bench.finish();
    const QByteArray record = recordOf(bench);
    EXPECT_TRUE(record.startsWith("# hxtrace 1\n# program: hxupdate "));
    EXPECT_TRUE(record.contains("# plugin: ValdrinBootInterface, com.tarv."))
        << record.left(400).toStdString();
    EXPECT_TRUE(record.contains("# product: Valdrin, serial number 30410001, version 1.0.2.3, port "
                                "alsa:Valdrin Update 20:0\n"));
    EXPECT_TRUE(record.contains("# image: version 1.0.2.4, "));
    EXPECT_TRUE(record.contains("# outcome: succeeded."));
}

TEST(Record, EveryMessageThatTravelledIsInIt)
{
    Bench bench;
    bench.goTo(Step::Updating);
    bench.finish();
    const auto trace = hx::parseTrace(recordOf(bench));
    ASSERT_TRUE(trace);
    QList<QByteArray> sent;
    for (const hx::TraceEvent& event : *trace) {
        if (hx::busEventWord(event.event.kind) == "sent")
            sent << event.event.bytes;
    }
    for (const HxMidiData& message : samples::messages())
        EXPECT_EQ(sent.count(message.bytes), 1);
}

TEST(Record, IsThereAfterEachFailureAndSaysWhich)
{
    EXPECT_TRUE(recordWith("silent").contains("# outcome: no answer."));
    EXPECT_TRUE(recordWith("silent:5-").contains("# outcome: no answer."));
    EXPECT_TRUE(recordWith("failed-ack:2").contains("# outcome: failed."));
    EXPECT_TRUE(recordWith("wrong-model").contains("# outcome: wrong product."));
    EXPECT_TRUE(recordWith("vanish:5").contains("# outcome: port lost."));
}

TEST(Record, AProductWithoutSerialNumberAndVersionIsToldSo)
{
    Bench bench;
    bench.product = bench.ports->plug(productPort);
    bench.goTo(Step::Updating);
    bench.product->isDeadEnd = true;
    bench.finish();
    Bench next;
    next.product = std::make_shared<TestProduct>(hx::sim::FaultyProduct(bench.product->product()));
    next.ports->plug(productPort, next.product);
    next.goTo(Step::Updating);
    next.finish();
    EXPECT_TRUE(recordOf(next).contains("version not known"));
}

TEST(Record, TheSecondUpdateHasARecordOfItsOwn)
{
    Bench bench;
    bench.goTo(Step::Updating);
    bench.model->stop();
    bench.finish();
    EXPECT_TRUE(recordOf(bench).contains("# outcome: interrupted."));
    bench.model->startAgain();
    ASSERT_TRUE(waitUntil([&] { return bench.model->connection().product() != nullptr; }));
    bench.model->useProduct();
    ASSERT_TRUE(bench.isAt(Step::Review));
    bench.model->startUpdate();
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_FALSE(recordOf(bench).contains("interrupted"));
    EXPECT_EQ(recordOf(bench).count("# outcome: "), 1);
}

TEST(Record, SavingItReplacesAFileAndKeepsItWhenThatFails)
{
    Bench bench;
    bench.goTo(Step::Updating);
    bench.finish();
    const QString path = bench.files.write("update.trace", "an older record");
    {
        const FileSizeLimit limit(100);
        EXPECT_EQ(noticeOfSaving(bench, path), Notice::RecordNotSaved);
        EXPECT_FALSE(bench.noticed.isEmpty());
    }
    EXPECT_EQ(TestFiles::contentOf(path), "an older record");
    EXPECT_EQ(noticeOfSaving(bench, path), Notice::RecordSaved);
    EXPECT_EQ(TestFiles::contentOf(path), bench.model->end().record);
}

TEST(Record, AFullDiskAFolderAndAMissingFolderAreTold)
{
    Bench bench;
    bench.goTo(Step::Updating);
    bench.finish();
    for (const QString& path :
         {QString("/dev/full"), bench.files.folder(), bench.files.path("no/such/folder/x.trace")}) {
        EXPECT_EQ(noticeOfSaving(bench, path), Notice::RecordNotSaved) << path.toStdString();
        EXPECT_FALSE(bench.noticed.isEmpty());
    }
    EXPECT_EQ(bench.model->step(), Step::Verdict);
}

// Which files are taken for images, and when.
#include "tests/hxupdate/Bench.h"

using namespace hxupdate;

TEST(UpdateModel, AGoodImageLeadsToTheReview)
{
    Bench bench;
    bench.goTo(Step::Review);
    EXPECT_TRUE(bench.model->image().isGood());
    EXPECT_EQ(bench.model->image().version, "1.0.2.4");
    EXPECT_EQ(bench.model->image().kind, CodeType::Fwu);
    EXPECT_EQ(bench.model->image().wireMicroseconds, bench.model->image().bytes * 320);
    EXPECT_EQ(bench.model->change(), Change::Upgrade);
}

TEST(UpdateModel, AnOlderImageIsADowngradeAndTheSameAReinstallation)
{
    Bench bench;
    bench.goTo(Step::ChooseImage);
    bench.model->takeFile(bench.image(QStringLiteral("1.0.2.3")));
    ASSERT_TRUE(bench.isAt(Step::Review));
    EXPECT_EQ(bench.model->change(), Change::Reinstall);
    bench.model->takeFile(bench.image(QStringLiteral("0.9.9.9")));
    ASSERT_TRUE(waitUntil([&] { return bench.model->image().version == "0.9.9.9"; }));
    EXPECT_EQ(bench.model->step(), Step::Review);
    EXPECT_EQ(bench.model->change(), Change::Downgrade);
}

TEST(UpdateModel, ADamagedImageStaysWhereImagesAreChosen)
{
    Bench bench;
    bench.goTo(Step::ChooseImage);
    QByteArray damaged = samples::content(samples::messages());
    damaged[20] = char(damaged[20] ^ 1);
    bench.model->takeFile(bench.files.write("damaged.syx", damaged));
    ASSERT_TRUE(waitUntil([&] { return bench.model->image().isChosen(); }));
    EXPECT_EQ(bench.model->step(), Step::ChooseImage);
    ASSERT_FALSE(bench.model->image().problems.isEmpty());
    EXPECT_TRUE(bench.model->image().problems.first().contains("message 1"));
    bench.model->useImage();
    EXPECT_EQ(bench.model->step(), Step::ChooseImage);
}

TEST(UpdateModel, ABadImageInTheReviewLeadsBack)
{
    Bench bench;
    bench.goTo(Step::Review);
    bench.model->takeFile(bench.files.write("empty.syx", {}));
    ASSERT_TRUE(bench.isAt(Step::ChooseImage));
    EXPECT_FALSE(bench.model->image().isGood());
}

TEST(UpdateModel, AnImageFromTheCommandLineIsUsedOnceAProductIsFound)
{
    Bench bench;
    bench.model->takeFile(bench.image());
    ASSERT_TRUE(waitUntil([&] { return !bench.notices.isEmpty(); }));
    EXPECT_EQ(bench.notices.first(), Notice::ImageKept);
    EXPECT_EQ(bench.model->step(), Step::Connect);
    bench.product = bench.ports->plug(productPort);
    bench.look();
    bench.model->useProduct();
    EXPECT_TRUE(bench.isAt(Step::Review));
}

TEST(UpdateModel, ABadImageFromTheCommandLineIsTold)
{
    Bench bench;
    bench.model->takeFile(QStringLiteral("/no/such/file.syx"));
    ASSERT_TRUE(waitUntil([&] { return !bench.notices.isEmpty(); }));
    EXPECT_EQ(bench.notices.first(), Notice::ImageBad);
    EXPECT_EQ(bench.noticed, "file.syx");
    EXPECT_EQ(bench.model->image().fault, ImageFault::Unreadable);
}

TEST(UpdateModel, ReplacingTheFileAfterwardsChangesNothing)
{
    Bench bench;
    bench.goTo(Step::Review);
    bench.files.write("1.0.2.4.syx", "something else");
    bench.model->startUpdate();
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.model->end().ending, Ending::Succeeded);
    EXPECT_EQ(bench.product->product().codeBytes(), samples::code(300));
}

TEST(UpdateModel, NothingIsSentWhileAFileIsRead)
{
    Bench bench;
    bench.goTo(Step::Review);
    bench.model->takeFile(bench.image(QStringLiteral("1.0.2.5")));
    bench.model->startUpdate();
    EXPECT_EQ(bench.model->step(), Step::Review);
}

TEST(UpdateModel, ATraceIsToldApartFromAnImage)
{
    Bench bench;
    int events = 0;
    QObject::connect(
        bench.model.get(), &UpdateModel::traceTaken,
        [&](const QString&, const hx::TraceEvents& trace) { events = int(trace.size()); });
    bench.model->takeFile(QStringLiteral(HX_DOCS_FOLDER "/user/update-sequence.trace"));
    EXPECT_TRUE(waitUntil([&] { return events > 0; }));
    bench.model->takeFile(bench.files.write("bad.trace", "# hxtrace 1\nnonsense\n"));
    ASSERT_TRUE(waitUntil([&] { return !bench.notices.isEmpty(); }));
    EXPECT_EQ(bench.notices.last(), Notice::TraceBad);
    EXPECT_EQ(bench.noticed, "bad.trace:2");
}

TEST(UpdateModel, NothingIsSentWhileTheImageIsBad)
{
    Bench bench;
    bench.goTo(Step::ChooseImage);
    bench.model->takeFile(bench.files.write("empty.syx", {}));
    ASSERT_TRUE(waitUntil([&] { return bench.model->image().isChosen(); }));
    bench.model->useImage();
    bench.model->startUpdate();
    EXPECT_EQ(bench.model->step(), Step::ChooseImage);
    EXPECT_FALSE(bench.product->product().isUpdating());
}

TEST(UpdateModel, NoFileIsTakenWhileAnUpdateRuns)
{
    Bench bench;
    bench.goTo(Step::Updating);
    bench.model->takeFile(bench.image(QStringLiteral("1.0.2.5")));
    EXPECT_EQ(bench.notices.last(), Notice::FileNotNow);
    bench.finish();
    EXPECT_EQ(bench.model->image().version, "1.0.2.4");
}

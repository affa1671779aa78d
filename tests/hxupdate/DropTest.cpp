// What is dropped on the window, in each step.
#include "tests/hxupdate/Scenes.h"

#include <QDialog>
#include <QDropEvent>
#include <QMimeData>

using namespace hxupdate;

namespace {

QString noticeOf(const WindowBench& bench)
{
    return bench.window.findChild<QLabel*>("notice")->text();
}

bool isTaken(const WindowBench& bench)
{
    return waitUntil([&] { return bench.model->image().isChosen(); });
}

} // namespace

TEST(Drop, ALinkToTheWebIsNoFile)
{
    WindowBench bench;
    bench.goTo(Step::ChooseImage);
    bench.dropUrls({QUrl("https://example.org/update.syx")});
    EXPECT_EQ(noticeOf(bench),
              "That is not a file on this computer. Download it first, then drop the file.");
    EXPECT_FALSE(bench.model->image().isChosen());
}

TEST(Drop, TextIsNotAccepted)
{
    const WindowBench bench;
    QMimeData text;
    text.setText("F0 7E F7");
    QDragEnterEvent enter(QPoint(), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QCoreApplication::sendEvent(const_cast<UpdateWindow*>(&bench.window), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST(Drop, NothingAtAllIsNotOneFile)
{
    WindowBench bench;
    bench.dropUrls({QUrl(), QUrl()});
    EXPECT_EQ(noticeOf(bench), "Drop one file at a time.");
}

TEST(Drop, BeforeAProductIsFoundABadFileIsToldWithItsReason)
{
    WindowBench bench;
    bench.drop({bench.files.write("page.syx", "<!DOCTYPE html><html></html>")});
    ASSERT_TRUE(isTaken(bench));
    EXPECT_EQ(noticeOf(bench), "The file page.syx cannot be used. A browser has saved it in the "
                               "place of the update image.");
    EXPECT_EQ(bench.model->step(), Step::Connect);
}

TEST(Drop, BeforeAProductIsFoundAGoodFileIsKept)
{
    WindowBench bench;
    bench.drop({bench.image()});
    ASSERT_TRUE(isTaken(bench));
    EXPECT_EQ(noticeOf(bench), "The image 1.0.2.4.syx is kept for the next update.");
}

TEST(Drop, InTheReviewAnotherFileIsReviewed)
{
    WindowBench bench;
    bench.goTo(Step::Review);
    bench.drop({bench.image(QStringLiteral("1.0.0.1"))});
    ASSERT_TRUE(waitUntil([&] { return bench.model->image().version == "1.0.0.1"; }));
    EXPECT_EQ(bench.model->step(), Step::Review);
    EXPECT_EQ(bench.button("start")->text(), "&Downgrade Valdrin");
    EXPECT_TRUE(bench.allText().contains("1.0.0.1.syx"));
}

TEST(Drop, WhileAnUpdateRunsNoFileIsTaken)
{
    for (const Step step : {Step::Updating, Step::Verifying}) {
        WindowBench bench;
        bench.goTo(step);
        bench.drop({bench.image(QStringLiteral("1.0.2.5"))});
        EXPECT_EQ(noticeOf(bench), "No file can be taken while an update runs.");
        bench.finish();
        EXPECT_EQ(bench.textOf("title"), "Valdrin was updated");
        EXPECT_EQ(bench.model->image().version, "1.0.2.4");
    }
}

TEST(Drop, AtTheVerdictTheFileIsKeptForTheNextUpdate)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    bench.finish();
    bench.drop({bench.image(QStringLiteral("1.0.2.5"))});
    ASSERT_TRUE(waitUntil([&] { return bench.model->image().version == "1.0.2.5"; }));
    EXPECT_EQ(bench.textOf("title"), "Valdrin was updated");
    bench.click("again");
    ASSERT_TRUE(waitUntil([&] { return bench.model->connection().product() != nullptr; }));
    bench.click("continue");
    ASSERT_TRUE(bench.isAt(Step::Review));
    EXPECT_EQ(bench.button("start")->text(), "&Upgrade Valdrin");
}

TEST(Drop, ADamagedTraceIsToldWithItsLine)
{
    WindowBench bench;
    bench.drop({bench.files.write("bad.trace", "# hxtrace 1\nnonsense\n")});
    ASSERT_TRUE(waitUntil([&] { return !bench.notices.isEmpty(); }));
    EXPECT_EQ(noticeOf(bench), "The trace cannot be read. It is damaged in this line: bad.trace:2");
    EXPECT_EQ(bench.window.findChild<QDialog*>("traceWindow"), nullptr);
}

TEST(Drop, ARecordThatWasSavedIsShown)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    bench.finish();
    const QString path = bench.files.path("mail.trace");
    bench.model->saveRecord(path);
    ASSERT_TRUE(waitUntil([&] { return bench.notices.contains(Notice::RecordSaved); }));
    bench.drop({path});
    EXPECT_EQ(bench.dialog<QDialog>("traceWindow")->windowTitle(), "Trace mail.trace");
    EXPECT_EQ(bench.model->step(), Step::Verdict);
}

TEST(Drop, CharactersThatWouldSteerTheTextAreWrittenOut)
{
    WindowBench bench;
    bench.drop({bench.files.write(QStringLiteral("up\u202Edate\n.syx"), {})});
    ASSERT_TRUE(isTaken(bench));
    EXPECT_TRUE(noticeOf(bench).startsWith("The file up\\u202Edate\\x0A.syx cannot be used."))
        << noticeOf(bench).toStdString();
}

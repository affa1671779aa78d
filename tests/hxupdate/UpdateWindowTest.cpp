// The window, worked through its buttons, its keys and by dropping files on it.
#include "tests/hxupdate/WindowBench.h"

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QSettings>
#include <QTableView>
#include <QTest>

using namespace hxupdate;

namespace {

// Types the path into the file dialog that is open, and confirms it.
void typePath(QFileDialog* dialog, const QString& path)
{
    auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
    edit->setText(path);
    QTest::keyClick(edit, Qt::Key_Return);
}

} // namespace

TEST(UpdateWindow, LooksAtOnceAndThenEverySecond)
{
    WindowBench bench;
    bench.ports->plug(productPort);
    bench.window.startLooking();
    EXPECT_TRUE(isProductFound(bench));
    bool isActive = false;
    for (const QTimer* timer : bench.window.findChildren<QTimer*>())
        isActive = isActive || (timer->isActive() && timer->interval() == 1000);
    EXPECT_TRUE(isActive);
}

TEST(UpdateWindow, AWholeUpdateByMouseAlone)
{
    WindowBench bench;
    bench.goTo(Step::Connect);
    EXPECT_EQ(bench.textOf("title"), "Valdrin was found");
    bench.click("continue");
    bench.click("choose");
    auto* dialog = bench.dialog<QFileDialog>("imageDialog");
    dialog->setDirectory(bench.files.folder());
    dialog->selectFile(bench.image());
    static_cast<QDialog*>(dialog)->accept();
    ASSERT_TRUE(bench.isAt(Step::Review));
    EXPECT_EQ(bench.button("start")->text(), "&Upgrade Valdrin");
    bench.click("start");
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.textOf("title"), "Valdrin was updated");
    EXPECT_EQ(bench.product->product().codeBytes(), samples::code(300));
}

TEST(UpdateWindow, AWholeUpdateByKeyboardAlone)
{
    WindowBench bench;
    bench.goTo(Step::Connect);
    bench.key(Qt::Key_Return); // Continue has the keyboard
    ASSERT_EQ(bench.model->step(), Step::ChooseImage);
    bench.key(Qt::Key_F, Qt::AltModifier);
    typePath(bench.dialog<QFileDialog>("imageDialog"), bench.image());
    ASSERT_TRUE(bench.isAt(Step::Review));
    bench.activate();
    bench.key(Qt::Key_U, Qt::AltModifier);
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.textOf("title"), "Valdrin was updated");
    bench.key(Qt::Key_Space); // Update another product has the keyboard
    EXPECT_EQ(bench.model->step(), Step::Connect);
}

TEST(UpdateWindow, AWholeUpdateByDrop)
{
    WindowBench bench;
    bench.drop({bench.image()});
    ASSERT_TRUE(waitUntil([&] { return bench.model->image().isGood(); }));
    bench.goTo(Step::Connect);
    bench.click("continue");
    ASSERT_TRUE(bench.isAt(Step::Review));
    bench.click("start");
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.textOf("title"), "Valdrin was updated");
}

TEST(UpdateWindow, ACancelledFileDialogChangesNothing)
{
    WindowBench bench;
    bench.goTo(Step::ChooseImage);
    bench.click("choose");
    bench.dialog<QFileDialog>("imageDialog")->reject();
    EXPECT_EQ(bench.model->step(), Step::ChooseImage);
    EXPECT_FALSE(bench.model->image().isChosen());
}

TEST(UpdateWindow, RemembersTheLastFolderAndNothingElse)
{
    WindowBench bench;
    bench.goTo(Step::ChooseImage);
    bench.click("choose");
    typePath(bench.dialog<QFileDialog>("imageDialog"), bench.image());
    ASSERT_TRUE(bench.isAt(Step::Review));
    QSettings settings;
    settings.sync();
    EXPECT_EQ(settings.allKeys(), QStringList("lastFolder"));
    EXPECT_EQ(settings.value("lastFolder").toString(), bench.files.folder());
}

TEST(UpdateWindow, TheReviewTellsAllThatWillBeDone)
{
    WindowBench bench;
    bench.goTo(Step::Review);
    const QString text = bench.allText();
    for (const char* part :
         {"Valdrin", "30410001", "1.0.2.3", "1.0.2.4", "firmware, the first of two kinds (fwu)",
          "1.0.2.4.syx", "Upgrade: the image is newer than what is installed", "about 1 second"})
        EXPECT_TRUE(text.contains(part)) << part;
    EXPECT_TRUE(text.contains(QString("in %1 messages").arg(bench.model->image().messages)));
    bench.click("back");
    EXPECT_EQ(bench.textOf("title"), "The update image is good");
    bench.click("back");
    EXPECT_EQ(bench.model->step(), Step::Connect);
}

TEST(UpdateWindow, TheBarFollowsTheUpdate)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    const auto* bar = bench.page()->findChild<QProgressBar*>("progress");
    ASSERT_TRUE(waitUntil([&] { return bench.model->progress().message == 2; }));
    const hx::UpdateProgress& progress = bench.model->progress();
    EXPECT_EQ(bar->value(), progress.bytes * 1000 / progress.totalBytes);
    EXPECT_EQ(bench.window.windowTitle(), QString("%1 % - Valdrin is being updated - HxUpdate")
                                              .arg(progress.bytes * 100 / progress.totalBytes));
    EXPECT_EQ(bench.textOf("doing"),
              QString("Message 2 of %1 was acknowledged.").arg(progress.totalMessages));
    EXPECT_TRUE(bench.textOf("remaining").startsWith("about "));
    EXPECT_FALSE(bench.window.findChild<QLabel*>("sleepWarning")->isVisible());
    bench.finish();
}

TEST(UpdateWindow, SaysWhenTheComputerMayFallAsleep)
{
    WindowBench bench;
    bench.sleep->isThere = false;
    bench.goTo(Step::Updating);
    EXPECT_TRUE(bench.window.findChild<QLabel*>("sleepWarning")->isVisible());
    bench.finish();
}

TEST(UpdateWindow, TakesEventsWhileTheTransferIsBlocked)
{
    WindowBench bench;
    bench.goTo(Step::Updating); // the thread of work waits in a message
    bool isTaken = false;
    QTimer::singleShot(0, [&] { isTaken = true; });
    EXPECT_TRUE(waitUntil([&] { return isTaken; }));
    bench.click("stop");
    EXPECT_NE(bench.dialog<QMessageBox>("stopQuestion"), nullptr);
    bench.finish();
}

TEST(UpdateWindow, TheQuestionGoesWhenTheUpdateEnds)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    bench.click("stop");
    bench.dialog<QMessageBox>("stopQuestion");
    bench.finish();
    EXPECT_TRUE(waitUntil([&] { return !bench.window.findChild<QMessageBox*>("stopQuestion"); }));
    EXPECT_EQ(bench.textOf("title"), "Valdrin was updated");
}

TEST(UpdateWindow, StoppingAsksAndEndsBetweenTwoMessages)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    bench.click("stop");
    bench.dialog<QMessageBox>("stopQuestion");
    bench.click("stay");
    EXPECT_FALSE(bench.model->isStopping());
    ASSERT_TRUE(waitUntil([&] { return !bench.window.findChild<QMessageBox*>("stopQuestion"); }));
    bench.click("stop");
    bench.dialog<QMessageBox>("stopQuestion");
    bench.click("confirmStop");
    EXPECT_EQ(bench.textOf("remaining"), "Stopping after the message that is on its way...");
    EXPECT_FALSE(bench.button("stop")->isEnabled());
    bench.finish();
    EXPECT_EQ(bench.textOf("title"), "You stopped the update");
}

TEST(UpdateWindow, ClosingWhileBytesTravelAsksAndWaitsForTheMessage)
{
    for (const Step step : {Step::Updating, Step::Verifying}) {
        WindowBench bench;
        bench.goTo(step);
        EXPECT_FALSE(bench.window.close());
        EXPECT_FALSE(bench.window.close()); // the question is not asked twice
        EXPECT_EQ(bench.window.findChildren<QMessageBox*>("stopQuestion").size(), 1);
        bench.click("confirmStop");
        EXPECT_TRUE(bench.window.isVisible());
        bench.finish();
        EXPECT_FALSE(bench.window.isVisible());
        EXPECT_EQ(bench.model->end().ending,
                  step == Step::Updating ? Ending::StoppedMidway : Ending::StoppedUnverified);
    }
}

TEST(UpdateWindow, ClosesWithoutAskingWhileNothingTravels)
{
    WindowBench bench;
    bench.goTo(Step::Review);
    EXPECT_TRUE(bench.window.close());
}

TEST(UpdateWindow, UnpluggedInTheReviewIsTold)
{
    WindowBench bench;
    bench.goTo(Step::Review);
    bench.ports->unplug(productPort);
    bench.look();
    EXPECT_EQ(bench.textOf("title"), "No MIDI port was found");
    EXPECT_EQ(bench.window.findChild<QLabel*>("notice")->text(),
              "The product is no longer connected. Connect it again.");
}

TEST(UpdateWindow, TheProductThatComesBackWithItsOldVersionIsNoSuccess)
{
    WindowBench bench;
    bench.goTo(Step::Verifying);
    bench.product->product() = hx::sim::SimulatedProduct(hx::sim::valdrin());
    bench.finish();
    EXPECT_EQ(bench.textOf("title"), "The update is not proven");
    EXPECT_EQ(bench.textOf("sentence"), "Everything was sent, but the product does not report what "
                                        "it should. Do not take it for updated.");
    EXPECT_EQ(bench.page()->findChild<QLabel*>("mark")->accessibleName(), "No success");
    EXPECT_TRUE(bench.button("save")->isEnabled());
}

TEST(UpdateWindow, UnpluggedMidwayIsToldAndGoesOnWhenItIsBack)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    bench.ports->unplug(productPort);
    bench.finish();
    EXPECT_EQ(bench.textOf("title"), "The connection was lost");
    bench.ports->plug(productPort, std::make_shared<TestProduct>(
                                       hx::sim::FaultyProduct(bench.product->product())));
    bench.click("again");
    ASSERT_TRUE(isProductFound(bench));
    EXPECT_EQ(bench.textOf("title"), "Valdrin has to be recovered");
    bench.click("continue");
    ASSERT_TRUE(bench.isAt(Step::Review));
    bench.click("start");
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.textOf("title"), "Valdrin was updated");
}

TEST(UpdateWindow, SavingOnAFullDiskIsToldAndCanBeTriedAgain)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    bench.finish();
    bench.model->saveRecord(QStringLiteral("/dev/full"));
    ASSERT_TRUE(waitUntil([&] { return bench.notices.contains(Notice::RecordNotSaved); }));
    const QString notice = bench.window.findChild<QLabel*>("notice")->text();
    EXPECT_TRUE(notice.startsWith("The record was not saved: ")) << notice.toStdString();
    EXPECT_TRUE(notice.endsWith(". Choose another place.")) << notice.toStdString();
    EXPECT_TRUE(bench.button("save")->isEnabled());
    bench.click("save");
    const QString path = bench.files.path("again.trace");
    typePath(bench.dialog<QFileDialog>("recordDialog"), path);
    ASSERT_TRUE(waitUntil([&] { return bench.notices.contains(Notice::RecordSaved); }));
    EXPECT_EQ(TestFiles::contentOf(path), bench.model->end().record);
}

TEST(UpdateWindow, AnUpdateAfterAnInterruptedOne)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    bench.model->stop();
    bench.finish();
    bench.click("again");
    ASSERT_TRUE(isProductFound(bench));
    EXPECT_EQ(bench.textOf("title"), "Valdrin has to be recovered");
    bench.click("continue");
    ASSERT_TRUE(bench.isAt(Step::Review));
    EXPECT_EQ(bench.button("start")->text(), "&Recover Valdrin");
    bench.click("start");
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.textOf("title"), "Valdrin was updated");
}

TEST(UpdateWindow, TheRecordIsSavedWhereTheUserSays)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    bench.finish();
    bench.click("save");
    const QString path = bench.files.path("mail.trace");
    typePath(bench.dialog<QFileDialog>("recordDialog"), path);
    ASSERT_TRUE(waitUntil([&] { return bench.notices.contains(Notice::RecordSaved); }));
    EXPECT_TRUE(TestFiles::contentOf(path).startsWith("# hxtrace 1\n# program: hxupdate "));
    EXPECT_EQ(bench.window.findChild<QLabel*>("notice")->text(), "The record was saved: " + path);
}

TEST(UpdateWindow, WithoutARecordThereIsNoneToSave)
{
    WindowBench bench;
    bench.goTo(Step::Review);
    bench.product->isHeld = true;
    bench.click("start");
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.textOf("title"), "The port could not be opened");
    EXPECT_FALSE(bench.button("save")->isEnabled());
}

TEST(UpdateWindow, ATraceThatIsDroppedIsDrawnAndListed)
{
    WindowBench bench;
    bench.drop({QStringLiteral(HX_DOCS_FOLDER "/user/update-sequence.trace")});
    auto* trace = bench.dialog<QDialog>("traceWindow");
    EXPECT_EQ(trace->windowTitle(), "Trace update-sequence.trace");
    EXPECT_GT(trace->findChild<QWidget*>("drawing")->height(), 1000);
    const QAbstractItemModel* table = trace->findChild<QTableView*>("table")->model();
    const auto read = hx::readTrace(HX_DOCS_FOLDER "/user/update-sequence.trace");
    ASSERT_EQ(table->rowCount(), int(read->size()));
    EXPECT_EQ(table->columnCount(), 4);
    EXPECT_EQ(table->headerData(1, Qt::Horizontal).toString(), "Event");
    EXPECT_EQ(table->data(table->index(0, 1)).toString(), hx::busEventWord(read->at(0).event.kind));
}

TEST(UpdateWindow, TheSimulatedProductIsToldAtAllTimes)
{
    WindowBench bench(true);
    for (const Step step : {Step::Connect, Step::Review}) {
        bench.goTo(step);
        const auto* banner = bench.window.findChild<QLabel*>("simulated");
        ASSERT_NE(banner, nullptr);
        EXPECT_TRUE(banner->isVisible());
    }
    EXPECT_EQ(WindowBench(false).window.findChild<QLabel*>("simulated"), nullptr);
}

// What assistive technology is told, and when: each change once, by the name of what has come about.
#include "tests/hxupdate/Scenes.h"

using namespace hxupdate;

namespace {

QStringList newlyAnnounced(WindowBench& bench)
{
    QStringList names;
    names.swap(bench.announced);
    return names;
}

} // namespace

TEST(Announcement, EachStepOfAnUpdateIsTold)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    EXPECT_EQ(
        newlyAnnounced(bench),
        QStringList({"Looking for your product", "Valdrin was found", "Choose the update image",
                     "Review what will be done", "Valdrin is being updated"}));
    bench.finish();
    EXPECT_EQ(newlyAnnounced(bench),
              QStringList({"Valdrin is being verified", "Valdrin was updated"}));
}

TEST(Announcement, EachFindingIsTold)
{
    WindowBench bench;
    newlyAnnounced(bench);
    bench.look();
    const auto product = bench.ports->plug(productPort);
    product->isHeld = true;
    bench.look();
    product->isHeld = false;
    bench.look();
    bench.ports->plug(QStringLiteral("alsa:Valdrin Update 24:0"));
    bench.look();
    EXPECT_EQ(newlyAnnounced(bench),
              QStringList({"No MIDI port was found", "The port cannot be opened",
                           "Valdrin was found", "More than one product answered"}));
}

TEST(Announcement, WhatHasNotChangedIsNotToldAgain)
{
    WindowBench bench;
    bench.goTo(Step::Connect);
    newlyAnnounced(bench);
    bench.look();
    bench.look();
    EXPECT_EQ(newlyAnnounced(bench), QStringList());
}

TEST(Announcement, TextsThatHaveNotChangedStayTheSameLabels)
{
    WindowBench bench;
    bench.goTo(Step::Connect);
    const QList<QLabel*> before = bench.page()->findChildren<QLabel*>();
    bench.look();
    EXPECT_EQ(bench.page()->findChildren<QLabel*>(), before);
}

TEST(Announcement, TheProgressOfATransferIsNotToldMessageByMessage)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    newlyAnnounced(bench);
    ASSERT_TRUE(waitUntil([&] { return bench.model->progress().message == 2; }));
    EXPECT_EQ(newlyAnnounced(bench), QStringList());
    bench.finish();
}

TEST(Announcement, NoticesAreTold)
{
    WindowBench bench;
    bench.goTo(Step::ChooseImage);
    newlyAnnounced(bench);
    bench.model->tell(Notice::OneFileOnly);
    EXPECT_EQ(newlyAnnounced(bench), QStringList({"Drop one file at a time."}));
    bench.ports->unplug(productPort);
    bench.look();
    EXPECT_EQ(newlyAnnounced(bench),
              QStringList({"No MIDI port was found",
                           "The product is no longer connected. Connect it again."}));
}

TEST(Announcement, EachBadFileIsTold)
{
    WindowBench bench;
    bench.goTo(Step::ChooseImage);
    newlyAnnounced(bench);
    bench.model->takeFile(bench.files.folder());
    ASSERT_TRUE(waitUntil([&] { return bench.model->image().isChosen(); }));
    EXPECT_EQ(newlyAnnounced(bench), QStringList({"This is a folder"}));
}

TEST(Announcement, TheMarkOfTheVerdictSaysInWordsWhatItShows)
{
    WindowBench good;
    good.goTo(Step::Updating);
    good.finish();
    EXPECT_EQ(good.page()->findChild<QLabel*>("mark")->accessibleName(), "Success");
    WindowBench stopped;
    stopped.goTo(Step::Updating);
    stopped.model->stop();
    stopped.finish();
    EXPECT_EQ(stopped.page()->findChild<QLabel*>("mark")->accessibleName(), "No success");
}

TEST(Announcement, TheStepBarSaysWhichStepItIs)
{
    WindowBench bench;
    const auto* bar = bench.window.findChild<QLabel*>("stepBar");
    EXPECT_EQ(bar->accessibleName(), "Step 1 of 6: Connect");
    bench.goTo(Step::Review);
    EXPECT_EQ(bar->accessibleName(), "Step 3 of 6: Review");
    EXPECT_TRUE(bar->text().contains("<b>Review</b>"));
}

// What the window shows of products and files before an update.
#include "tests/hxupdate/WindowBench.h"

#include <QDialog>
#include <QListWidget>

using namespace hxupdate;

TEST(UpdateWindow, EachFindingHasItsPage)
{
    WindowBench bench;
    bench.look();
    EXPECT_EQ(bench.textOf("title"), "No MIDI port was found");
    EXPECT_FALSE(bench.button("otherPort")->isEnabled());
    const auto product = bench.ports->plug(productPort);
    product->isHeld = true;
    bench.look();
    EXPECT_EQ(bench.textOf("title"), "The port cannot be opened");
    EXPECT_TRUE(bench.allText().contains("another program holds it"));
    EXPECT_EQ(bench.textOf("step1"), "1. Close all other programs that use MIDI.");
    product->isHeld = false;
    bench.look();
    EXPECT_EQ(bench.textOf("title"), "Valdrin was found");
    EXPECT_TRUE(bench.allText().contains("30410001"));
    EXPECT_TRUE(bench.button("continue")->isEnabled());
    bench.ports->plug(QStringLiteral("alsa:Valdrin Update 24:0"));
    bench.look();
    EXPECT_EQ(bench.textOf("title"), "More than one product answered");
    EXPECT_FALSE(bench.button("continue")->isEnabled());
}

TEST(UpdateWindow, AnotherPortIsAskedOnlyWhenItIsChosen)
{
    WindowBench bench;
    const auto product = bench.ports->plug(QStringLiteral("alsa:Interface 20:0"));
    bench.look();
    EXPECT_EQ(bench.textOf("title"), "No product was found");
    bench.click("otherPort");
    bench.dialog<QDialog>("portDialog");
    bench.click("cancel");
    EXPECT_EQ(product->messages, 0);
    ASSERT_TRUE(waitUntil([&] { return !bench.window.findChild<QDialog*>("portDialog"); }));
    bench.click("otherPort");
    auto* dialog = bench.dialog<QDialog>("portDialog");
    EXPECT_EQ(dialog->findChild<QListWidget*>("ports")->count(), 1);
    bench.click("ask");
    EXPECT_TRUE(isProductFound(bench));
}

TEST(UpdateWindow, APortWhoseNameWouldSteerTheTextIsWrittenOutAndAskedByItsOwnName)
{
    const QString port = QStringLiteral("alsa:Inter\u202Eface\n20:0");
    WindowBench bench;
    bench.ports->plug(port);
    bench.look();
    bench.click("otherPort");
    const auto* dialog = bench.dialog<QDialog>("portDialog");
    EXPECT_EQ(dialog->findChild<QListWidget*>("ports")->item(0)->text(),
              "alsa:Inter\\u202Eface\\x0A20:0");
    bench.click("ask");
    ASSERT_TRUE(isProductFound(bench));
    EXPECT_EQ(bench.model->connection().product()->port, port);
    EXPECT_TRUE(bench.allText().contains("alsa:Inter\\u202Eface\\x0A20:0"));
}

TEST(UpdateWindow, TwoProductsAreToldApartByPickingOne)
{
    WindowBench bench;
    bench.ports->plug(productPort);
    const QString second = QStringLiteral("alsa:Valdrin Update 24:0");
    bench.ports->plug(second);
    bench.look();
    EXPECT_EQ(bench.textOf("title"), "More than one product answered");
    bench.click("otherPort");
    bench.dialog<QDialog>("portDialog")->findChild<QListWidget*>("ports")->setCurrentRow(1);
    bench.click("ask");
    ASSERT_TRUE(isProductFound(bench));
    EXPECT_EQ(bench.model->connection().product()->port, second);
}

TEST(UpdateWindow, ADamagedImageIsToldAsTheHostTellsIt)
{
    WindowBench bench;
    bench.goTo(Step::ChooseImage);
    QByteArray damaged = samples::content(samples::messages());
    damaged.chop(5);
    const QString path = bench.files.write("damaged.syx", damaged);
    bench.drop({path});
    ASSERT_TRUE(waitUntil([&] { return bench.model->image().isChosen(); }));
    EXPECT_EQ(bench.textOf("title"), "This update image is damaged");
    const hx::UpdateImage image = hx::loadUpdateImage(path, samples::product());
    ASSERT_FALSE(image.ok());
    EXPECT_TRUE(bench.allText().contains(imageProblemLine(image.problems.front())));
    EXPECT_FALSE(bench.button("continue")->isEnabled());
}

TEST(UpdateWindow, AFileWithManyProblemsShowsTheFirstAndHowManyMoreThereAre)
{
    WindowBench bench;
    bench.goTo(Step::ChooseImage);
    QList<HxMidiData> messages = samples::messages(2000);
    for (HxMidiData& message : messages)
        message.bytes[message.bytes.size() - 2] =
            char(message.bytes.at(message.bytes.size() - 2) ^ 1);
    bench.drop({bench.files.write("sums.syx", samples::content(messages))});
    ASSERT_TRUE(waitUntil([&] { return bench.model->image().isChosen(); }));
    const auto more = bench.model->image().problems.size() - 5;
    ASSERT_GT(more, 0);
    EXPECT_TRUE(bench.allText().contains(QString("and %1 more").arg(more)));
}

TEST(UpdateWindow, AFolderThatIsDroppedIsToldToBeNone)
{
    WindowBench bench;
    bench.goTo(Step::ChooseImage);
    bench.drop({bench.files.folder()});
    ASSERT_TRUE(waitUntil([&] { return bench.model->image().isChosen(); }));
    EXPECT_EQ(bench.textOf("title"), "This is a folder");
}

TEST(UpdateWindow, OneFileIsDroppedAtATime)
{
    WindowBench bench;
    bench.goTo(Step::ChooseImage);
    bench.drop({bench.image(), bench.files.folder()});
    EXPECT_EQ(bench.window.findChild<QLabel*>("notice")->text(), "Drop one file at a time.");
    EXPECT_FALSE(bench.model->image().isChosen());
}

// What stands on each page: its title, its sentence, its steps and its facts, word for word.
#include "tests/hxupdate/Scenes.h"

#include <QProgressBar>

using namespace hxupdate;

namespace {

struct PageWords {
    const char* scene;
    const char* title;
    const char* firstStep; // empty: none
};

const PageWords pages[] = {
    {"connect-searching", "Looking for your product", ""},
    {"connect-no-ports", "No MIDI port was found",
     "1. Connect your product, or the MIDI interface that it is connected to, to this computer."},
    {"connect-no-product", "No product was found",
     "1. Connect your product to this computer and switch it on."},
    {"connect-silent", "The product does not answer", "1. Check that the product is switched on."},
    {"connect-other-product", "Another product answered", "1. Disconnect what is connected now."},
    {"connect-port-held", "The port cannot be opened",
     "1. Close all other programs that use MIDI."},
    {"connect-two-products", "More than one product answered",
     "1. Disconnect all but the one that you want to update."},
    {"connect-ready", "Valdrin was found",
     "1. Press \"Continue\" if this is the product that you want to update."},
    {"connect-recovery", "Valdrin has to be recovered",
     "1. Leave the product switched on and connected."},
    {"image-none", "Choose the update image",
     "1. Press \"Choose file\", or drop the file anywhere on this window."},
    {"image-bad", "This is not an update image",
     "1. Get the file again, from the maker of your product."},
    {"image-good", "The update image is good", "1. Press \"Continue\" to see what will be done."},
    {"review", "Review what will be done",
     "1. Leave Valdrin switched on and connected until the end is told."},
    {"updating", "Valdrin is being updated", ""},
    {"verifying", "Valdrin is being verified",
     "1. The product identifies itself again, with the version of the image."},
    {"verdict-success", "Valdrin was updated",
     "1. You can use the product again, or switch it off."},
    {"verdict-stopped", "You stopped the update",
     "1. Leave the product switched on and connected."},
    {"verdict-not-opened", "The port could not be opened",
     "1. Close all other programs that use MIDI."},
};

QString sceneNameOf(const Scene& scene)
{
    return QString::fromLatin1(scene.name);
}

// Of the fact of this name: what stands beside it.
QString factOf(const WindowBench& bench, const QString& name)
{
    QCoreApplication::processEvents();
    const QList<QLabel*> labels = bench.page()->findChildren<QLabel*>();
    for (int i = 0; i + 1 < labels.size(); ++i) {
        if (labels.at(i)->text() == name + ':')
            return labels.at(i + 1)->text();
    }
    return {};
}

void failWith(WindowBench& bench, const QString& fault)
{
    bench.goTo(Step::Review);
    bench.product->setFaults(faults({fault}));
    bench.click("start");
    ASSERT_TRUE(bench.isAt(Step::Verdict));
}

} // namespace

TEST(Pages, EachSceneHasItsTitleAndItsFirstStep)
{
    ASSERT_EQ(scenes().size(), int(std::size(pages)));
    for (int i = 0; i < scenes().size(); ++i) {
        SCOPED_TRACE(scenes().at(i).name);
        ASSERT_EQ(sceneNameOf(scenes().at(i)), pages[i].scene);
        WindowBench bench;
        scenes().at(i).bringAbout(bench);
        EXPECT_EQ(bench.textOf("title"), pages[i].title);
        EXPECT_EQ(bench.textOf("step1"), pages[i].firstStep);
        EXPECT_FALSE(bench.textOf("sentence").isEmpty());
        endScene(bench);
    }
}

TEST(Pages, ConnectShowsAllThatIsKnownOfTheProduct)
{
    WindowBench bench;
    bench.goTo(Step::Connect);
    EXPECT_EQ(factOf(bench, "Product"), "Valdrin");
    EXPECT_EQ(factOf(bench, "Serial number"), "30410001");
    EXPECT_EQ(factOf(bench, "Installed version"), "1.0.2.3");
    EXPECT_EQ(factOf(bench, "Port"), productPort);
    EXPECT_EQ(factOf(bench, "Details"), QString());
}

TEST(Pages, ConnectShowsEachOfSeveralProducts)
{
    WindowBench bench;
    bench.ports->plug(QStringLiteral("alsa:Valdrin Update 24:0"));
    bench.goTo(Step::Connect);
    EXPECT_TRUE(bench.allText().contains("30410001, 1.0.2.3, " + productPort));
    EXPECT_TRUE(bench.allText().contains("30410001, 1.0.2.3, alsa:Valdrin Update 24:0"));
}

TEST(Pages, ConnectShowsThatAProductInRecoveryHasNoVersion)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    bench.model->stop();
    bench.finish();
    bench.click("again");
    ASSERT_TRUE(waitUntil([&] { return bench.model->connection().product() != nullptr; }));
    EXPECT_EQ(factOf(bench, "Installed version"), "none that is valid");
}

TEST(Pages, ConnectShowsTheHostsWordsOfWhatIsWrongAsDetails)
{
    WindowBench bench;
    bench.ports->plug(productPort)->isHeld = true;
    bench.look();
    EXPECT_EQ(factOf(bench, "Details"), "another program holds it");
}

TEST(Pages, ReviewShowsAllThatWillBeDone)
{
    WindowBench bench;
    bench.goTo(Step::Review);
    const ImageFacts& image = bench.model->image();
    EXPECT_EQ(factOf(bench, "Product"), "Valdrin");
    EXPECT_EQ(factOf(bench, "Serial number"), "30410001");
    EXPECT_EQ(factOf(bench, "Installed version"), "1.0.2.3");
    EXPECT_EQ(factOf(bench, "Version of the image"), "1.0.2.4");
    EXPECT_EQ(factOf(bench, "Kind of the image"), "firmware, the first of two kinds (fwu)");
    EXPECT_EQ(factOf(bench, "Size"),
              QString("%1 bytes in %2 messages").arg(image.bytes).arg(image.messages));
    EXPECT_EQ(factOf(bench, "File"), "1.0.2.4.syx");
    EXPECT_EQ(factOf(bench, "Signature"), "not signed: its origin is not known");
    EXPECT_EQ(factOf(bench, "What it does"), "Upgrade: the image is newer than what is installed");
    EXPECT_EQ(factOf(bench, "Time"), "about 1 second");
    EXPECT_EQ(bench.textOf("step2"),
              "2. Until then do not play, and do not use other programs that use MIDI.");
    EXPECT_EQ(bench.textOf("step3"),
              "3. Until then do not switch this computer off or close its lid.");
}

TEST(Pages, ReviewSaysWhatADowngradeAndAReinstallationAre)
{
    WindowBench bench;
    bench.goTo(Step::Review);
    bench.drop({bench.image(QStringLiteral("1.0.2.3"))});
    ASSERT_TRUE(waitUntil([&] { return bench.model->image().version == "1.0.2.3"; }));
    EXPECT_EQ(factOf(bench, "What it does"),
              "Reinstall: the image is the version that is installed");
    EXPECT_EQ(bench.button("start")->text(), "&Reinstall Valdrin");
    bench.drop({bench.image(QStringLiteral("1.0.2.2"))});
    ASSERT_TRUE(waitUntil([&] { return bench.model->image().version == "1.0.2.2"; }));
    EXPECT_EQ(factOf(bench, "What it does"),
              "Downgrade: the image is older than what is installed");
}

TEST(Pages, AVerdictOfSuccessShowsBothVersionsAndTheState)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    bench.finish();
    EXPECT_EQ(factOf(bench, "Version before"), "1.0.2.3");
    EXPECT_EQ(factOf(bench, "Version now"), "1.0.2.4");
    EXPECT_EQ(factOf(bench, "State of the product"), "It answers, and its code is intact.");
    EXPECT_EQ(factOf(bench, "Details"), QString());
    EXPECT_EQ(bench.button("again")->text(), "&Update another product");
}

TEST(Pages, AVerdictOfFailureShowsTheStateAndTheHostsReason)
{
    WindowBench bench;
    failWith(bench, "failed-ack:2");
    EXPECT_EQ(factOf(bench, "Version before"), "1.0.2.3");
    EXPECT_EQ(factOf(bench, "Version now"), QString());
    EXPECT_EQ(factOf(bench, "State of the product"), "It answers, and it holds no valid code.");
    EXPECT_EQ(factOf(bench, "Details"), bench.model->end().reason);
    EXPECT_EQ(bench.button("again")->text(), "Try &again");
}

TEST(Pages, AVerdictBeforeAnythingWasSentClaimsNothingOfTheState)
{
    WindowBench bench;
    failWith(bench, "silent");
    EXPECT_EQ(bench.textOf("sentence"), "Nothing was sent: the product is as it was.");
    EXPECT_EQ(factOf(bench, "State of the product"), QString());
}

TEST(Pages, AnotherUnitIsToldByItsSerialNumber)
{
    hx::sim::SimulatedProductSettings settings;
    settings.serialNumber = std::array<quint8, 8>{{'3', '0', '4', '1', '0', '0', '9', '9'}};
    WindowBench bench;
    bench.goTo(Step::Review);
    bench.ports->plug(productPort, hx::sim::FaultyProduct(
                                       hx::sim::SimulatedProduct(hx::sim::valdrin(), settings)));
    bench.click("start");
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.textOf("title"), "Another unit is connected");
    EXPECT_EQ(factOf(bench, "Serial number"), "30410001");
    EXPECT_EQ(factOf(bench, "Serial number that answers"), "30410099");
}

TEST(Pages, TheVerificationShowsABarWithoutAnEnd)
{
    WindowBench bench;
    bench.goTo(Step::Verifying);
    const auto* bar = bench.page()->findChild<QProgressBar*>("verification");
    EXPECT_EQ(bar->minimum(), bar->maximum());
    EXPECT_EQ(bench.textOf("step3"), "3. The checksum of the code that it holds is the same.");
    bench.finish();
}

TEST(Pages, NothingOfTheFirstUpdateIsLeftInTheSecond)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    bench.model->stop();
    bench.finish();
    bench.click("again");
    ASSERT_TRUE(waitUntil([&] { return bench.model->connection().product() != nullptr; }));
    bench.click("continue");
    ASSERT_TRUE(bench.isAt(Step::Review));
    bench.click("start");
    EXPECT_TRUE(bench.button("stop")->isEnabled());
    EXPECT_TRUE(bench.textOf("remaining").startsWith("about "));
    EXPECT_EQ(bench.textOf("doing"), "The product is asked who it is.");
    EXPECT_EQ(bench.page()->findChild<QProgressBar*>("progress")->value(), 0);
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.textOf("title"), "Valdrin was updated");
    EXPECT_EQ(factOf(bench, "Details"), QString());
}

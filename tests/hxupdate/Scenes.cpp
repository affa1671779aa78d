#include "tests/hxupdate/Scenes.h"
#include "tests/support/Valdrin.h"

using namespace hxupdate;

namespace {

const QString secondPort = QStringLiteral("alsa:Valdrin Update 24:0");

void findOtherModel(WindowBench& bench)
{
    hx::sim::SimulatedProduct product(hx::sim::valdrin());
    product.setModel(0x42);
    bench.ports->plug(productPort, hx::sim::FaultyProduct(product));
    bench.look();
}

void findSilent(WindowBench& bench)
{
    bench.ports->plug(
        productPort,
        hx::sim::FaultyProduct(hx::sim::SimulatedProduct(hx::sim::valdrin()), faults({"silent"})));
    bench.look();
}

void findHeld(WindowBench& bench)
{
    bench.ports->plug(productPort)->isHeld = true;
    bench.look();
}

void findTwo(WindowBench& bench)
{
    bench.ports->plug(secondPort);
    bench.goTo(Step::Connect);
}

void stopMidway(WindowBench& bench)
{
    bench.goTo(Step::Updating);
    bench.model->stop();
    bench.finish();
}

void findInRecovery(WindowBench& bench)
{
    stopMidway(bench);
    bench.model->startAgain();
    EXPECT_TRUE(waitUntil([&] { return bench.model->connection().product() != nullptr; }));
}

void takeBadImage(WindowBench& bench)
{
    bench.goTo(Step::ChooseImage);
    bench.model->takeFile(bench.files.write("empty.syx", {}));
    EXPECT_TRUE(waitUntil([&] { return bench.model->image().isChosen(); }));
}

void takeGoodImage(WindowBench& bench)
{
    bench.goTo(Step::Review);
    bench.model->goBack();
}

void failToOpen(WindowBench& bench)
{
    bench.goTo(Step::Review);
    bench.product->isHeld = true;
    bench.model->startUpdate();
    EXPECT_TRUE(bench.isAt(Step::Verdict));
}

} // namespace

const QList<Scene>& scenes()
{
    static const QList<Scene> all = {
        {"connect-searching", [](WindowBench&) {}},
        {"connect-no-ports", [](WindowBench& bench) { bench.look(); }},
        {"connect-no-product",
         [](WindowBench& bench) {
             bench.ports->plug(QStringLiteral("alsa:Interface 20:0"));
             bench.look();
         }},
        {"connect-silent", findSilent},
        {"connect-other-product", findOtherModel},
        {"connect-port-held", findHeld},
        {"connect-two-products", findTwo},
        {"connect-ready", [](WindowBench& bench) { bench.goTo(Step::Connect); }},
        {"connect-recovery", findInRecovery},
        {"image-none", [](WindowBench& bench) { bench.goTo(Step::ChooseImage); }},
        {"image-bad", takeBadImage},
        {"image-good", takeGoodImage},
        {"review", [](WindowBench& bench) { bench.goTo(Step::Review); }},
        {"updating", [](WindowBench& bench) { bench.goTo(Step::Updating); }},
        {"verifying", [](WindowBench& bench) { bench.goTo(Step::Verifying); }},
        {"verdict-success",
         [](WindowBench& bench) {
             bench.goTo(Step::Updating);
             bench.finish();
         }},
        {"verdict-stopped", stopMidway},
        {"verdict-not-opened", failToOpen},
    };
    return all;
}

void endScene(WindowBench& bench)
{
    if (bench.model->isRunning())
        bench.finish();
}

// What the first page says of the ports and of who answers on them.
#include "tests/hxupdate/Bench.h"
#include "tests/support/Valdrin.h"

using namespace hxupdate;

namespace {

hx::sim::FaultyProduct otherModel()
{
    hx::sim::SimulatedProduct product(hx::sim::valdrin());
    product.setModel(0x42);
    return hx::sim::FaultyProduct(product);
}

} // namespace

TEST(UpdateModel, StartsBySearching)
{
    const Bench bench;
    EXPECT_EQ(bench.model->step(), Step::Connect);
    EXPECT_EQ(bench.model->connection().finding, Finding::Searching);
    EXPECT_EQ(bench.model->connection().product(), nullptr);
}

TEST(UpdateModel, SaysWhenThereIsNoPlugin)
{
    Bench bench(QStringLiteral("/no/such/folder"));
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::NoPlugin);
    EXPECT_TRUE(bench.model->connection().detail.contains("/no/such/folder"));
}

TEST(UpdateModel, TakesEveryPluginOfAFolder)
{
    Bench bench(QStringLiteral(HX_PLUGIN_FOLDER));
    bench.goTo(Step::Connect);
    EXPECT_EQ(bench.model->connection().finding, Finding::Ready);
}

TEST(UpdateModel, SaysWhenThereIsNoPort)
{
    Bench bench;
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::NoPorts);
}

TEST(UpdateModel, SendsNothingToAPortOfAnotherName)
{
    Bench bench;
    const auto other = bench.ports->plug(QStringLiteral("alsa:Some Synth 20:0"));
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::NoProduct);
    EXPECT_EQ(other->messages, 0);
}

TEST(UpdateModel, FindsTheOneProductWithAllThatIsShownOfIt)
{
    Bench bench;
    bench.goTo(Step::Connect);
    const ProductFacts* product = bench.model->connection().product();
    ASSERT_NE(product, nullptr);
    EXPECT_EQ(bench.model->connection().finding, Finding::Ready);
    EXPECT_EQ(product->name, "Valdrin");
    EXPECT_EQ(product->serial, "30410001");
    EXPECT_EQ(product->version, "1.0.2.3");
    EXPECT_EQ(product->port, productPort);
}

TEST(UpdateModel, FindsAProductThatIsPluggedInLaterAndNoticesWhenItGoes)
{
    Bench bench;
    bench.look();
    bench.ports->plug(productPort);
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::Ready);
    bench.ports->unplug(productPort);
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::NoPorts);
}

TEST(UpdateModel, DoesNotAskAProductAgainThatHasAnswered)
{
    Bench bench;
    bench.goTo(Step::Connect);
    const int asked = bench.product->messages;
    bench.look();
    EXPECT_EQ(bench.product->messages, asked);
}

TEST(UpdateModel, AsksASilentProductAgainUntilItAnswers)
{
    Bench bench;
    bench.product = bench.ports->plug(
        productPort,
        hx::sim::FaultyProduct(hx::sim::SimulatedProduct(hx::sim::valdrin()), faults({"silent"})));
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::Silent);
    bench.product->setFaults({});
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::Ready);
}

TEST(UpdateModel, SaysWhenAnotherProductAnswers)
{
    Bench bench;
    bench.ports->plug(productPort, otherModel());
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::OtherProduct);
    EXPECT_TRUE(bench.model->connection().detail.contains("0x300042"));
    bench.model->useProduct();
    EXPECT_EQ(bench.model->step(), Step::Connect);
}

TEST(UpdateModel, SaysWhenAProductAnswersOnlyInPart)
{
    Bench bench;
    bench.ports->plug(productPort,
                      hx::sim::FaultyProduct(hx::sim::SimulatedProduct(hx::sim::valdrin()),
                                             faults({"silent:2-"})));
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::Unclear);
}

TEST(UpdateModel, SaysWhenThePortIsHeld)
{
    Bench bench;
    bench.ports->plug(productPort)->isHeld = true;
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::PortHeld);
    EXPECT_EQ(bench.model->connection().detail, "another program holds it");
}

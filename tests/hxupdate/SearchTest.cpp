// Looking for products: what is asked, what of several findings is told, and what interrupts it.
#include "tests/hxupdate/Bench.h"

using namespace hxupdate;

namespace {

const QString otherPort = QStringLiteral("alsa:Valdrin Update 24:0");

hx::sim::FaultyProduct productWith(const char* fault)
{
    return hx::sim::FaultyProduct(hx::sim::SimulatedProduct(hx::sim::valdrin()), faults({fault}));
}

} // namespace

TEST(Search, OfSeveralPortsTheOneThatTellsMostIsSpokenOf)
{
    Bench bench;
    bench.ports->plug(productPort)->isHeld = true;
    bench.ports->plug(otherPort, productWith("silent"));
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::PortHeld);
    bench.ports->plug(otherPort);
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::Ready);
}

TEST(Search, ASilentPortBesideTheProductIsNoSecondProduct)
{
    Bench bench;
    bench.ports->plug(otherPort, productWith("silent"));
    bench.goTo(Step::Review);
    EXPECT_EQ(bench.model->product().port, productPort);
}

TEST(Search, EveryPluginThatFitsThePortIsAsked)
{
    TestFiles folder;
    folder.copy(QStringLiteral(HX_PLUGIN_FILE), "one.so");
    folder.copy(QStringLiteral(HX_PLUGIN_FILE), "two.so");
    Bench bench(folder.folder());
    bench.product = bench.ports->plug(productPort, productWith("silent"));
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::Silent);
    const int askedByBoth = bench.product->messages;
    Bench single;
    single.product = single.ports->plug(productPort, productWith("silent"));
    single.look();
    EXPECT_EQ(askedByBoth, 2 * single.product->messages);
}

TEST(Search, TheFirstPluginThatServesTheProductIsTaken)
{
    TestFiles folder;
    folder.copy(QStringLiteral(HX_PLUGIN_FILE), "one.so");
    folder.copy(QStringLiteral(HX_PLUGIN_FILE), "two.so");
    Bench bench(folder.folder());
    bench.goTo(Step::Review);
    EXPECT_EQ(bench.model->product().plugin, 0);
    EXPECT_EQ(bench.model->connection().products.size(), 1);
}

TEST(Search, IsAskedForOnceHoweverOftenItIsDue)
{
    Bench bench;
    bench.product = bench.ports->plug(productPort);
    int told = 0;
    QObject::connect(bench.model.get(), &UpdateModel::connectionChanged, [&] { ++told; });
    for (int i = 0; i < 10; ++i)
        bench.model->look();
    ASSERT_TRUE(waitUntil([&] { return told > 0; }));
    bench.look();
    EXPECT_EQ(told, 2);
}

TEST(Search, IsNotDueWhileAFileIsRead)
{
    Bench bench;
    bench.product = bench.ports->plug(productPort);
    bench.model->takeFile(bench.image());
    bench.model->look();
    ASSERT_TRUE(waitUntil([&] { return bench.model->image().isChosen(); }));
    EXPECT_EQ(bench.model->connection().finding, Finding::Searching);
    EXPECT_EQ(bench.product->messages, 0);
}

TEST(Search, MakesRoomForWhatTheUserWantsAndItsHalfResultIsDropped)
{
    Bench bench;
    bench.product = bench.ports->plug(productPort);
    bench.product->gate.messages = 0;
    bench.model->look();
    bench.product->gate.reached.acquire(); // the search waits in its first question
    bench.model->pickPort(QString());
    bench.product->gate.opened.release();
    ASSERT_TRUE(waitUntil([&] { return bench.model->connection().product() != nullptr; }));
    EXPECT_TRUE(bench.model->connection().isWhole);
}

TEST(Search, AResultThatComesLateChangesNothingDuringTheUpdate)
{
    Bench bench;
    bench.goTo(Step::Review);
    bench.ports->unplug(productPort);
    bench.model->look(); // finds that it is gone
    bench.model->startUpdate();
    EXPECT_EQ(bench.model->step(), Step::Updating);
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.model->end().ending, Ending::NotOpened);
}

TEST(Search, AProductThatComesBackOnAnotherPortIsReviewedAgain)
{
    Bench bench;
    bench.goTo(Step::Review);
    bench.ports->unplug(productPort);
    bench.ports->plug(otherPort, bench.product);
    bench.look();
    EXPECT_EQ(bench.model->step(), Step::Connect);
    EXPECT_EQ(bench.notices.last(), Notice::ProductAway);
    bench.look();
    bench.model->useProduct();
    ASSERT_TRUE(bench.isAt(Step::Review));
    EXPECT_EQ(bench.model->product().port, otherPort);
}

TEST(Search, ASecondProductThatGoesLeavesTheOtherOneReady)
{
    Bench bench;
    bench.ports->plug(productPort);
    bench.ports->plug(otherPort);
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::SeveralProducts);
    bench.ports->unplug(productPort);
    bench.look();
    ASSERT_NE(bench.model->connection().product(), nullptr);
    EXPECT_EQ(bench.model->connection().product()->port, otherPort);
}

TEST(Search, TheSerialNumberThatAProductDoesNotTellIsNotKnown)
{
    Bench bench;
    bench.ports->plug(productPort, productWith("silent:5-"));
    bench.look();
    ASSERT_NE(bench.model->connection().product(), nullptr);
    EXPECT_EQ(bench.model->connection().product()->serial, QString());
}

TEST(Search, WhatIsShownOfAPortIsKeptUntilItIsAway)
{
    Bench bench;
    bench.goTo(Step::Connect);
    bench.product->isHeld = true; // by another program, from now on
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::Ready);
}

TEST(Search, ASerialNumberThatIsNoTextIsShownInHex)
{
    hx::sim::SimulatedProductSettings settings;
    settings.serialNumber = std::array<quint8, 8>{{0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x7F}};
    Bench bench;
    bench.ports->plug(productPort, hx::sim::FaultyProduct(
                                       hx::sim::SimulatedProduct(hx::sim::valdrin(), settings)));
    bench.look();
    ASSERT_NE(bench.model->connection().product(), nullptr);
    EXPECT_EQ(bench.model->connection().product()->serial, "01 02 03 04 05 06 07 7F");
}

TEST(Search, ProductsThatTellNoSerialNumberAreNotTakenForOne)
{
    Bench bench;
    bench.ports->plug(productPort, productWith("silent:5-"));
    bench.ports->plug(QStringLiteral("jack:Valdrin Update:in"), productWith("silent:5-"));
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::SeveralProducts);
}

TEST(Search, TwoUnitsOnTwoMidiSystemsAreTwoProducts)
{
    hx::sim::SimulatedProductSettings other;
    other.serialNumber = std::array<quint8, 8>{{'3', '0', '4', '1', '0', '0', '9', '9'}};
    Bench bench;
    bench.ports->plug(productPort);
    bench.ports->plug(QStringLiteral("jack:Valdrin Update:in"),
                      hx::sim::FaultyProduct(hx::sim::SimulatedProduct(hx::sim::valdrin(), other)));
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::SeveralProducts);
}

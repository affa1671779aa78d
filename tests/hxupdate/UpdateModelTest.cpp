// The states of the window and all ways between them, without a widget.
#include "tests/hxupdate/Bench.h"
#include "tests/support/Valdrin.h"

using namespace hxupdate;

namespace {

Ending endingWith(const QStringList& texts)
{
    Bench bench;
    bench.goTo(Step::Review);
    bench.product->setFaults(faults(texts));
    bench.model->startUpdate();
    EXPECT_TRUE(bench.isAt(Step::Verdict));
    return bench.model->end().ending;
}

} // namespace

TEST(UpdateModel, ChoosesNoneOfTwoProducts)
{
    Bench bench;
    bench.ports->plug(productPort, unit("30410001"));
    bench.ports->plug(QStringLiteral("alsa:Valdrin Update 24:0"), unit("30410002"));
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::SeveralProducts);
    EXPECT_EQ(bench.model->connection().products.size(), 2);
    bench.model->useProduct();
    EXPECT_EQ(bench.model->step(), Step::Connect);
}

TEST(UpdateModel, TakesOneProductOnTwoMidiSystemsForOne)
{
    Bench bench;
    bench.ports->plug(productPort);
    bench.ports->plug(QStringLiteral("jack:Valdrin Update:in"));
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::Ready);
}

TEST(UpdateModel, TakesTwoPortsOfOneMidiSystemForTwoProductsEvenWithTheSameSerialNumber)
{
    Bench bench;
    bench.ports->plug(productPort);
    bench.ports->plug(QStringLiteral("alsa:Valdrin Update 24:0"));
    bench.look();
    EXPECT_EQ(bench.model->connection().finding, Finding::SeveralProducts);
}

TEST(UpdateModel, AsksTheOnePortThatIsPickedAndNoOther)
{
    Bench bench;
    const auto fitting = bench.ports->plug(productPort, unit("30410001"));
    const auto picked = bench.ports->plug(QStringLiteral("alsa:Some Synth 24:0"));
    const auto neither = bench.ports->plug(QStringLiteral("alsa:Some Synth 28:0"));
    bench.model->pickPort(QStringLiteral("alsa:Some Synth 24:0"));
    ASSERT_TRUE(waitUntil([&] { return bench.model->connection().product() != nullptr; }));
    EXPECT_EQ(bench.model->connection().product()->port, "alsa:Some Synth 24:0");
    EXPECT_EQ(fitting->messages, 0);
    EXPECT_EQ(neither->messages, 0);
}

TEST(UpdateModel, APortIsPickedOnlyWhileAProductIsLookedFor)
{
    Bench bench;
    bench.goTo(Step::Review);
    bench.model->pickPort(QStringLiteral("alsa:Some Synth 24:0"));
    EXPECT_EQ(bench.model->connection().finding, Finding::Ready);
}

TEST(UpdateModel, FindsAProductInRecoveryAndInstallsTheImage)
{
    Bench bench;
    bench.product = bench.ports->plug(productPort);
    bench.goTo(Step::Updating);
    bench.product->isDeadEnd = true; // as if the program had been killed
    bench.finish();
    Bench next;
    next.product = std::make_shared<TestProduct>(hx::sim::FaultyProduct(bench.product->product()));
    next.ports->plug(productPort, next.product);
    next.goTo(Step::Review);
    EXPECT_EQ(next.model->connection().finding, Finding::Recovery);
    EXPECT_EQ(next.model->change(), Change::Recover);
    EXPECT_TRUE(next.model->product().version.isEmpty());
    next.model->startUpdate();
    ASSERT_TRUE(next.isAt(Step::Verdict));
    EXPECT_EQ(next.model->end().ending, Ending::Succeeded);
}

TEST(UpdateModel, GoesBackStepByStepAndOnAgain)
{
    Bench bench;
    bench.goTo(Step::Review);
    bench.model->goBack();
    EXPECT_EQ(bench.model->step(), Step::ChooseImage);
    bench.model->useImage();
    EXPECT_EQ(bench.model->step(), Step::Review);
    bench.model->goBack();
    bench.model->goBack();
    EXPECT_EQ(bench.model->step(), Step::Connect);
    bench.model->goBack();
    EXPECT_EQ(bench.model->step(), Step::Connect);
}

TEST(UpdateModel, NoStepCanBeSkipped)
{
    Bench bench;
    for (const auto step : {&UpdateModel::startUpdate, &UpdateModel::useImage, &UpdateModel::stop,
                            &UpdateModel::startAgain, &UpdateModel::useProduct}) {
        ((*bench.model).*step)();
        EXPECT_EQ(bench.model->step(), Step::Connect);
    }
    bench.goTo(Step::ChooseImage);
    bench.model->startUpdate();
    bench.model->useImage();
    EXPECT_EQ(bench.model->step(), Step::ChooseImage);
    EXPECT_FALSE(bench.product->product().isUpdating());
}

TEST(UpdateModel, UnpluggedBeforeTheUpdateLeadsBackToTheStart)
{
    for (const Step step : {Step::ChooseImage, Step::Review}) {
        Bench bench;
        bench.goTo(step);
        bench.ports->unplug(productPort);
        bench.look();
        EXPECT_EQ(bench.model->step(), Step::Connect);
        EXPECT_EQ(bench.notices.last(), Notice::ProductAway);
    }
}

TEST(UpdateModel, AnotherProductThatIsPluggedInDuringTheReviewIsNotAsked)
{
    Bench bench;
    bench.goTo(Step::Review);
    const auto other = bench.ports->plug(QStringLiteral("alsa:Valdrin Update 24:0"));
    bench.look();
    EXPECT_EQ(bench.model->step(), Step::Review);
    EXPECT_EQ(other->messages, 0);
}

TEST(UpdateModel, AWholeUpdateSucceedsByTheHostsRule)
{
    Bench bench;
    bench.goTo(Step::Verifying);
    EXPECT_EQ(bench.model->progress().message, bench.model->image().messages);
    bench.finish();
    const UpdateEnd& end = bench.model->end();
    EXPECT_EQ(end.ending, Ending::Succeeded);
    EXPECT_EQ(end.versionBefore, "1.0.2.3");
    EXPECT_EQ(end.versionAfter, "1.0.2.4");
    EXPECT_EQ(end.reason, QString());
    EXPECT_EQ(bench.product->product().codeBytes(), samples::code(300));
}

TEST(UpdateModel, UnpluggedMidwayIsALostConnection)
{
    for (const Step step : {Step::Updating, Step::Verifying}) {
        Bench bench;
        bench.goTo(step);
        bench.ports->unplug(productPort);
        bench.finish();
        EXPECT_EQ(bench.model->end().ending, Ending::LostMidway);
    }
}

TEST(UpdateModel, UnpluggedAtTheVerdictChangesNothing)
{
    Bench bench;
    bench.goTo(Step::Updating);
    bench.finish();
    bench.ports->unplug(productPort);
    bench.model->look();
    EXPECT_EQ(bench.model->step(), Step::Verdict);
    EXPECT_EQ(bench.model->end().ending, Ending::Succeeded);
}

TEST(UpdateModel, EachOutcomeOfTheHostHasItsEnding)
{
    EXPECT_EQ(endingWith({"silent"}), Ending::SilentBefore);
    EXPECT_EQ(endingWith({"wrong-model"}), Ending::WrongBefore);
    EXPECT_EQ(endingWith({"vanish:2"}), Ending::LostBefore);
    EXPECT_EQ(endingWith({"silent:5-"}), Ending::SilentMidway);
    EXPECT_EQ(endingWith({"failed-ack:2"}), Ending::RefusedMidway);
    EXPECT_EQ(endingWith({"bad-ack:2-"}), Ending::DamagedMidway);
    EXPECT_EQ(endingWith({"vanish:5"}), Ending::LostMidway);
    const auto last = samples::messages().size(); // of the image
    EXPECT_EQ(endingWith({QString("bad-write:%1").arg(last)}), Ending::NotProven);
}

TEST(UpdateModel, TheProductThatComesBackWithItsOldVersionIsNotProven)
{
    Bench bench;
    bench.goTo(Step::Verifying);
    bench.product->product() = hx::sim::SimulatedProduct(hx::sim::valdrin());
    bench.finish();
    EXPECT_EQ(bench.model->end().ending, Ending::NotProven);
    EXPECT_FALSE(bench.model->end().reason.isEmpty());
}

TEST(UpdateModel, AnotherUnitThanTheReviewedOneIsLeftAlone)
{
    Bench bench;
    bench.goTo(Step::Review);
    const auto other = std::make_shared<TestProduct>(unit("30410099"));
    bench.ports->plug(productPort, other);
    bench.model->startUpdate();
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.model->end().ending, Ending::OtherUnit);
    EXPECT_EQ(bench.model->end().otherSerial, "30410099");
    EXPECT_EQ(other->messages, 3); // identity, version, serial number
    EXPECT_FALSE(other->product().isUpdating());
    EXPECT_EQ(bench.sleep->held, bench.sleep->released);
}

TEST(UpdateModel, APortThatCannotBeOpenedAnyMoreIsNotAnUpdate)
{
    Bench bench;
    bench.goTo(Step::Review);
    bench.product->isHeld = true;
    bench.model->startUpdate();
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.model->end().ending, Ending::NotOpened);
    EXPECT_TRUE(bench.model->end().record.isEmpty());
}

TEST(UpdateModel, StopsBetweenTwoMessages)
{
    Bench bench;
    bench.goTo(Step::Updating);
    bench.model->stop();
    EXPECT_TRUE(bench.model->isStopping());
    EXPECT_EQ(bench.model->step(), Step::Updating);
    bench.finish();
    EXPECT_EQ(bench.model->end().ending, Ending::StoppedMidway);
    EXPECT_FALSE(bench.product->product().isCodeValid());
}

TEST(UpdateModel, EndsTheUpdateWhenItIsDestroyed)
{
    Bench bench;
    bench.goTo(Step::Updating);
    bench.product->gate.opened.release();
    bench.model.reset();
    EXPECT_EQ(bench.sleep->held, bench.sleep->released);
}

TEST(UpdateModel, TheComputerIsKeptAwakeWhileBytesTravelAndNoLonger)
{
    Bench bench;
    bench.goTo(Step::Updating);
    EXPECT_EQ(bench.sleep->held, 1);
    EXPECT_EQ(bench.sleep->released, 0);
    EXPECT_TRUE(waitUntil([&] { return bench.model->staysAwake(); }));
    bench.finish();
    EXPECT_EQ(bench.sleep->released, 1);
}

TEST(UpdateModel, KnowsWhenTheComputerCannotBeKeptAwake)
{
    Bench bench;
    bench.sleep->isThere = false;
    bench.goTo(Step::Updating);
    EXPECT_FALSE(bench.model->staysAwake());
    bench.finish();
}

TEST(UpdateModel, ASecondUpdateNeedsNoRestart)
{
    Bench bench;
    bench.goTo(Step::Updating);
    bench.finish();
    bench.model->startAgain();
    EXPECT_EQ(bench.model->step(), Step::Connect);
    ASSERT_TRUE(waitUntil([&] { return bench.model->connection().product() != nullptr; }));
    EXPECT_EQ(bench.model->connection().product()->version, "1.0.2.4");
    bench.model->useProduct();
    ASSERT_TRUE(bench.isAt(Step::Review));
    EXPECT_EQ(bench.model->change(), Change::Reinstall);
    bench.model->startUpdate();
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.model->end().ending, Ending::Succeeded);
}

TEST(UpdateModel, TheRecordIsATraceThatTellsTheVersions)
{
    Bench bench;
    bench.goTo(Step::Updating);
    bench.finish();
    const QString path = bench.files.path("record.trace");
    bench.model->saveRecord(path);
    ASSERT_TRUE(waitUntil([&] { return bench.notices.contains(Notice::RecordSaved); }));
    const QByteArray record = TestFiles::contentOf(path);
    EXPECT_TRUE(record.contains("serial number 30410001, version 1.0.2.3"));
    EXPECT_TRUE(record.contains("image: version 1.0.2.4"));
    EXPECT_TRUE(record.contains("outcome: succeeded"));
    const auto trace = hx::parseTrace(record);
    ASSERT_TRUE(trace) << trace.problem().what.toStdString();
    EXPECT_GT(trace->size(), 10U);
}

TEST(UpdateModel, AStepIsTakenOnceHoweverOftenItIsAskedFor)
{
    Bench bench;
    bench.goTo(Step::Review);
    int steps = 0;
    QObject::connect(bench.model.get(), &UpdateModel::stepChanged, [&] { ++steps; });
    bench.model->startUpdate();
    bench.model->startUpdate();
    EXPECT_EQ(steps, 1);
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.sleep->held, 1);
}

TEST(UpdateModel, ALongTransferIsToldByTheNewestProgressAlone)
{
    Bench bench;
    bench.goTo(Step::ChooseImage);
    bench.model->takeFile(bench.image(QStringLiteral("1.0.2.4"), 30000));
    ASSERT_TRUE(bench.isAt(Step::Review));
    const int messages = bench.model->image().messages;
    ASSERT_GT(messages, 250);
    bench.product->gate.messages = 3 + messages; // waits before the verification
    int told = 0;
    QObject::connect(bench.model.get(), &UpdateModel::progressed, [&] { ++told; });
    bench.model->startUpdate();
    bench.product->gate.reached.acquire(); // meanwhile nothing here takes an event
    EXPECT_EQ(told, 0);
    ASSERT_TRUE(bench.isAt(Step::Verifying));
    EXPECT_EQ(told, 2); // whether the computer stays awake, and all messages at once
    EXPECT_EQ(bench.model->progress().message, messages);
    bench.finish();
    EXPECT_EQ(bench.model->end().ending, Ending::Succeeded);
}

TEST(UpdateModel, TheConditionOfTheProductIsKnownAtTheEnd)
{
    Bench bench;
    bench.goTo(Step::Updating);
    bench.finish();
    EXPECT_EQ(bench.model->end().condition, hx::ProductCondition::CodeIntact);
    Bench stopped;
    stopped.goTo(Step::Updating);
    stopped.model->stop();
    stopped.finish();
    EXPECT_EQ(stopped.model->end().condition, hx::ProductCondition::NoValidCode);
    Bench lost;
    lost.goTo(Step::Updating);
    lost.ports->unplug(productPort);
    lost.finish();
    EXPECT_EQ(lost.model->end().condition, hx::ProductCondition::PortLost);
}

TEST(UpdateModel, AnUpdateOfAnotherProductAfterTheFirst)
{
    Bench bench;
    bench.goTo(Step::Updating);
    bench.finish();
    bench.ports->unplug(productPort);
    bench.ports->plug(productPort, unit("30410077"));
    bench.model->startAgain();
    ASSERT_TRUE(waitUntil([&] { return bench.model->connection().product() != nullptr; }));
    bench.model->useProduct();
    ASSERT_TRUE(bench.isAt(Step::Review));
    EXPECT_EQ(bench.model->product().serial, "30410077");
    EXPECT_EQ(bench.model->change(), Change::Upgrade);
    bench.model->startUpdate();
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.model->end().ending, Ending::Succeeded);
}

TEST(UpdateModel, IsDestroyedWhileASearchWaits)
{
    Bench bench;
    bench.product = bench.ports->plug(productPort);
    bench.product->gate.messages = 0;
    bench.model->look();
    bench.product->gate.reached.acquire();
    bench.product->gate.opened.release();
    bench.model.reset();
    EXPECT_FALSE(bench.product->product().isUpdating());
}

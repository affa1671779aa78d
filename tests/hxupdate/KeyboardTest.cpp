// The window by its keys alone: the order of the tab stops, what Return, Space and Escape do.
#include "tests/hxupdate/Scenes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QScrollArea>
#include <QTest>

using namespace hxupdate;

namespace {

QString nameOf(const QWidget* widget)
{
    const QString name = widget->objectName();
    return qobject_cast<const QScrollArea*>(widget) != nullptr ? QStringLiteral("text") : name;
}

// Where Tab leads, from where the keyboard is, until it is there again.
QStringList tabStops(WindowBench& bench)
{
    QStringList stops;
    const QWidget* first = QApplication::focusWidget();
    if (first == nullptr)
        return stops;
    do {
        stops << nameOf(QApplication::focusWidget());
        bench.key(Qt::Key_Tab);
    } while (QApplication::focusWidget() != first && stops.size() < 20);
    return stops;
}

struct Stops {
    const char* scene;
    QStringList names;
};

const QList<Stops>& stopsOfScenes()
{
    static const QList<Stops> all = {
        {"connect-no-product", {"otherPort", "text"}},
        {"connect-two-products", {"otherPort", "text"}},
        {"connect-ready", {"continue", "text", "otherPort"}},
        {"connect-recovery", {"continue", "text", "otherPort"}},
        {"image-none", {"choose", "text", "back"}},
        {"image-good", {"continue", "text", "back", "choose"}},
        {"review", {"start", "text", "back"}},
        {"updating", {"stop", "text"}},
        {"verifying", {"stop", "text"}},
        {"verdict-success", {"again", "text", "close", "save"}},
        {"verdict-not-opened", {"again", "text", "close"}},
    };
    return all;
}

const Scene& sceneOf(const QString& name)
{
    for (const Scene& scene : scenes()) {
        if (name == scene.name)
            return scene;
    }
    ADD_FAILURE() << "no scene " << name.toStdString();
    return scenes().first();
}

} // namespace

TEST(Keyboard, TabLeadsThroughEveryControlInTheOrderOfTheScreen)
{
    for (const Stops& stops : stopsOfScenes()) {
        SCOPED_TRACE(stops.scene);
        WindowBench bench;
        sceneOf(stops.scene).bringAbout(bench);
        EXPECT_EQ(tabStops(bench), stops.names) << tabStops(bench).join(' ').toStdString();
        endScene(bench);
    }
}

TEST(Keyboard, ReturnGoesOnAndNeverSkipsTheReview)
{
    WindowBench bench;
    bench.drop({bench.image()});
    ASSERT_TRUE(waitUntil([&] { return bench.model->image().isGood(); }));
    bench.goTo(Step::Connect);
    bench.key(Qt::Key_Return);
    ASSERT_TRUE(bench.isAt(Step::Review));
    EXPECT_FALSE(bench.product->product().isUpdating());
    bench.key(Qt::Key_Return);
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.textOf("title"), "Valdrin was updated");
}

TEST(Keyboard, BackIsReachedByItsLetter)
{
    WindowBench bench;
    bench.goTo(Step::Review);
    bench.key(Qt::Key_B, Qt::AltModifier);
    ASSERT_TRUE(bench.isAt(Step::ChooseImage));
    bench.key(Qt::Key_B, Qt::AltModifier);
    EXPECT_TRUE(bench.isAt(Step::Connect));
}

TEST(Keyboard, EscapeInTheQuestionGoesOnUpdating)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    bench.key(Qt::Key_S, Qt::AltModifier);
    auto* question = bench.dialog<QMessageBox>("stopQuestion");
    QTest::keyClick(question, Qt::Key_Escape);
    EXPECT_FALSE(bench.model->isStopping());
    bench.finish();
    EXPECT_EQ(bench.textOf("title"), "Valdrin was updated");
}

TEST(Keyboard, ReturnInTheQuestionGoesOnUpdating)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    bench.key(Qt::Key_Return); // "Stop" has the keyboard
    auto* question = bench.dialog<QMessageBox>("stopQuestion");
    EXPECT_EQ(question->defaultButton()->objectName(), "stay");
    QTest::keyClick(question->defaultButton(), Qt::Key_Return);
    EXPECT_FALSE(bench.model->isStopping());
    bench.finish();
    EXPECT_EQ(bench.textOf("title"), "Valdrin was updated");
}

TEST(Keyboard, EscapeDoesNotCloseTheWindow)
{
    for (const Step step : {Step::Connect, Step::Review, Step::Updating}) {
        WindowBench bench;
        bench.goTo(step);
        bench.key(Qt::Key_Escape);
        EXPECT_TRUE(bench.window.isVisible());
        EXPECT_EQ(bench.model->step(), step);
        endScene(bench);
    }
}

TEST(Keyboard, ThePortIsChosenByArrowsAndReturn)
{
    WindowBench bench;
    bench.ports->plug(QStringLiteral("alsa:Interface 20:0"));
    const auto second = bench.ports->plug(QStringLiteral("alsa:Interface 24:0"));
    bench.look();
    bench.key(Qt::Key_P, Qt::AltModifier);
    auto* dialog = bench.dialog<QDialog>("portDialog");
    auto* list = dialog->findChild<QWidget*>("ports");
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(dialog->findChild<QPushButton*>("ask"), Qt::Key_Return);
    ASSERT_TRUE(waitUntil([&] { return bench.model->connection().product() != nullptr; }));
    EXPECT_EQ(bench.model->connection().product()->port, "alsa:Interface 24:0");
    EXPECT_GT(second->messages, 0);
}

TEST(Keyboard, IsOnTheFirstPossibleButtonWhereNoneGoesOn)
{
    WindowBench bench;
    sceneOf("connect-no-product").bringAbout(bench);
    EXPECT_EQ(QApplication::focusWidget(), bench.button("otherPort"));
}

// What assistive technology and the keyboard find, on every page.
#include "tests/hxupdate/Looks.h"
#include "tests/hxupdate/Scenes.h"

#include "apps/hxupdate/window/TraceWindow.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleInterface>
#include <QApplication>
#include <QSet>

using namespace hxupdate;

namespace {

QString describe(QAccessibleInterface* item)
{
    const QObject* object = item->object();
    return object != nullptr
               ? QString("%1 \"%2\"").arg(object->metaObject()->className(), object->objectName())
               : QString("role %1").arg(item->role());
}

// The controls that can be reached, and the bars.
QList<QAccessibleInterface*> controlsOf(QAccessibleInterface* item)
{
    QList<QAccessibleInterface*> found;
    const QAccessible::State state = item->state();
    if (state.invisible)
        return found;
    const bool isBar = item->role() == QAccessible::ProgressBar;
    if (item->role() != QAccessible::Window && (state.focusable || isBar))
        found << item;
    for (int i = 0; i < item->childCount(); ++i) {
        if (item->child(i) != nullptr)
            found << controlsOf(item->child(i));
    }
    return found;
}

void expectNames(QWidget* window)
{
    QSet<QString> names;
    for (QAccessibleInterface* control :
         controlsOf(QAccessible::queryAccessibleInterface(window))) {
        const QString name = control->text(QAccessible::Name);
        EXPECT_FALSE(name.isEmpty()) << describe(control).toStdString();
        EXPECT_FALSE(names.contains(name)) << name.toStdString();
        EXPECT_NE(control->role(), QAccessible::NoRole) << name.toStdString();
        names << name;
    }
    EXPECT_FALSE(names.isEmpty());
}

QList<QPushButton*> visibleButtons(const QWidget& window)
{
    QList<QPushButton*> buttons;
    for (QPushButton* button : window.findChildren<QPushButton*>()) {
        if (button->isVisible())
            buttons << button;
    }
    return buttons;
}

void expectMnemonics(const QWidget& window)
{
    QSet<QString> letters;
    for (const QPushButton* button : visibleButtons(window)) {
        const QString letter = button->shortcut().toString();
        EXPECT_FALSE(letter.isEmpty()) << button->text().toStdString();
        EXPECT_FALSE(letters.contains(letter)) << button->text().toStdString();
        letters << letter;
    }
}

void expectTabReachesAll(const QWidget& window)
{
    QSet<QWidget*> reached;
    for (QWidget* next = window.nextInFocusChain(); !reached.contains(next);
         next = next->nextInFocusChain())
        reached << next;
    for (QPushButton* button : visibleButtons(window)) {
        EXPECT_TRUE(reached.contains(button)) << button->text().toStdString();
        EXPECT_TRUE(button->focusPolicy() & Qt::TabFocus) << button->text().toStdString();
    }
}

void expectWhiteOnBlack(QLabel* label)
{
    const QImage picture = label->grab().toImage();
    int white = 0;
    int black = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const int light = qGray(picture.pixel(x, y));
            white += light > 200 ? 1 : 0;
            black += light < 50 ? 1 : 0;
        }
    }
    EXPECT_GT(white, 0) << label->text().toStdString();
    EXPECT_GT(black, white) << label->text().toStdString();
}

} // namespace

TEST(Accessibility, EveryControlOnEveryPageHasAnOwnName)
{
    for (const Scene& scene : scenes()) {
        SCOPED_TRACE(scene.name);
        WindowBench bench;
        scene.bringAbout(bench);
        expectNames(&bench.window);
        endScene(bench);
    }
}

TEST(Accessibility, EveryButtonHasAnOwnMnemonicAndAPlaceInTheTabOrder)
{
    for (const Scene& scene : scenes()) {
        SCOPED_TRACE(scene.name);
        WindowBench bench;
        scene.bringAbout(bench);
        expectMnemonics(bench.window);
        expectTabReachesAll(bench.window);
        endScene(bench);
    }
}

TEST(Accessibility, TheKeyboardIsOnTheButtonThatGoesOn)
{
    WindowBench bench;
    bench.goTo(Step::Connect);
    EXPECT_EQ(QApplication::focusWidget(), bench.button("continue"));
    bench.click("continue");
    EXPECT_EQ(QApplication::focusWidget(), bench.button("choose"));
    bench.model->takeFile(bench.image());
    ASSERT_TRUE(bench.isAt(Step::Review));
    EXPECT_EQ(QApplication::focusWidget(), bench.button("start"));
    bench.click("start");
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(QApplication::focusWidget(), bench.button("again"));
}

TEST(Accessibility, EachPageAndTheWindowAreNamedByWhatHasComeAbout)
{
    for (const Scene& scene : scenes()) {
        SCOPED_TRACE(scene.name);
        WindowBench bench;
        scene.bringAbout(bench);
        EXPECT_EQ(bench.page()->accessibleName(), bench.textOf("title"));
        EXPECT_TRUE(bench.window.windowTitle().endsWith(bench.textOf("title") + " - HxUpdate"));
        endScene(bench);
    }
}

TEST(Accessibility, ColoursAreThoseOfTheDesktop)
{
    const WindowBench bench;
    for (const QWidget* widget : bench.window.findChildren<QWidget*>()) {
        EXPECT_TRUE(widget->styleSheet().isEmpty());
        EXPECT_FALSE(widget->testAttribute(Qt::WA_SetPalette))
            << widget->objectName().toStdString();
    }
}

TEST(Accessibility, InHighContrastEveryTextIsSeen)
{
    const HighContrast contrast;
    for (const Scene& scene : scenes()) {
        SCOPED_TRACE(scene.name);
        WindowBench bench(true);
        scene.bringAbout(bench);
        bench.settle();
        for (QLabel* label : bench.window.findChildren<QLabel*>()) {
            if (label->isVisible() && !label->text().isEmpty())
                expectWhiteOnBlack(label);
        }
        endScene(bench);
    }
}

TEST(Accessibility, DialogsHaveNamesAndMnemonicsToo)
{
    WindowBench bench;
    bench.goTo(Step::Connect);
    bench.click("otherPort");
    auto* ports = bench.dialog<QDialog>("portDialog");
    expectNames(ports);
    expectMnemonics(*ports);
    const auto events = hx::readTrace(HX_DOCS_FOLDER "/user/update-sequence.trace");
    ASSERT_TRUE(events);
    TraceWindow trace("update.trace", *events, nullptr);
    trace.setAttribute(Qt::WA_DeleteOnClose, false);
    trace.show();
    expectMnemonics(trace);
}

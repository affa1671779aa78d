#include "tests/hxupdate/WindowBench.h"

#include <QAccessible>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>

namespace {

QString pageName(hxupdate::Step step)
{
    static const QStringList names = {"connectPage",  "imagePage",     "reviewPage",
                                      "updatingPage", "verifyingPage", "verdictPage"};
    return names.at(int(step));
}

QString accessibleNameOf(QWidget* widget)
{
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

} // namespace

WindowBench::WindowBench(bool isSimulated)
    : window(*model, isSimulated,
             [this](QWidget* widget) { announced << accessibleNameOf(widget); })
{
    window.show();
    activate();
}

QWidget* WindowBench::page() const
{
    return window.findChild<QWidget*>(pageName(model->step()));
}

QString WindowBench::textOf(const QString& label) const
{
    const QLabel* found = page()->findChild<QLabel*>(label);
    return found != nullptr ? found->text() : QString();
}

QString WindowBench::allText() const
{
    QCoreApplication::processEvents(); // new labels are shown by an event
    QStringList texts;
    for (const QLabel* label : page()->findChildren<QLabel*>()) {
        if (label->isVisible())
            texts << label->text();
    }
    return texts.join('\n');
}

QPushButton* WindowBench::button(const QString& name) const
{
    for (QPushButton* found : window.findChildren<QPushButton*>(name)) {
        if (found->isVisible())
            return found;
    }
    ADD_FAILURE() << "no button " << name.toStdString();
    return nullptr;
}

void WindowBench::click(const QString& name) const
{
    QTest::mouseClick(button(name), Qt::LeftButton);
}

void WindowBench::activate()
{
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
}

void WindowBench::settle() const
{
    for (int i = 0; i < 5; ++i) // a label, its list, the page, the scroll area, the window
        QCoreApplication::processEvents();
}

void WindowBench::key(int key, Qt::KeyboardModifiers modifiers) const
{
    QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
}

void WindowBench::drop(const QStringList& paths)
{
    QList<QUrl> urls;
    for (const QString& path : paths)
        urls << QUrl::fromLocalFile(path);
    dropUrls(urls);
}

void WindowBench::dropUrls(const QList<QUrl>& urls)
{
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent dropped(QPointF(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &dropped);
}

// The window on test ports, worked as a person works it: through its buttons, by their names.
#pragma once

#include "tests/hxupdate/Bench.h"

#include "apps/hxupdate/window/UpdateWindow.h"

#include <QLabel>
#include <QPushButton>
#include <QUrl>

class WindowBench : public Bench {
public:
    explicit WindowBench(bool isSimulated = false);

    // The page that is shown, and what stands on it.
    QWidget* page() const;
    QString textOf(const QString& label) const;
    QString allText() const;

    // The button of this name on the page, or in a dialog that is open.
    QPushButton* button(const QString& name) const;
    void click(const QString& name) const;
    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    // As the desktop does when a dialog has gone.
    void activate();
    // Lets new texts find their places.
    void settle() const;
    void drop(const QStringList& paths);
    void dropUrls(const QList<QUrl>& urls);

    // Waits until a dialog or box of this name is open.
    template <typename Dialog>
    Dialog* dialog(const QString& name) const
    {
        EXPECT_TRUE(waitUntil([&] { return window.findChild<Dialog*>(name) != nullptr; }));
        return window.findChild<Dialog*>(name);
    }

    QStringList announced; // names that assistive technology was told
    hxupdate::UpdateWindow window;
};

inline bool isProductFound(const WindowBench& bench)
{
    return waitUntil([&] { return bench.model->connection().product() != nullptr; });
}

// The window: one page for each step, and what is the same on all of them.
#pragma once

#include "apps/hxupdate/model/UpdateModel.h"
#include "apps/hxupdate/parts/Announcement.h"

#include <QCoreApplication>
#include <QStackedWidget>
#include <QTimer>

#include <array>

class QLabel;

namespace hxupdate {

class Page;
class StepBar;

class UpdateWindow final : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(UpdateWindow)

public:
    // `isSimulated`: the window says at all times that no real product is at work.
    UpdateWindow(UpdateModel& model, bool isSimulated, Announce announce = tellAssistiveTechnology);

    // Looks at once, and then every second, which products are connected.
    void startLooking();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void addPages();
    void layOut(bool isSimulated);
    void connectModel();
    void showStep();
    void refresh();
    void showNotice(Notice notice, const QString& detail);
    QString titleText() const;
    void announce();
    void showTrace(const QString& path, const hx::TraceEvents& trace);
    Page* page() const;

    UpdateModel& m_model;
    Announce m_announce;
    StepBar* m_stepBar;
    QStackedWidget* m_stack;
    QLabel* m_notice;
    QTimer m_lookTimer;
    QString m_announced; // the last title that assistive technology was told
    bool m_closesAtTheEnd = false;
};

} // namespace hxupdate

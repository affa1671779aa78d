#include "apps/hxupdate/window/UpdateWindow.h"

#include "apps/hxupdate/pages/ConnectPage.h"
#include "apps/hxupdate/pages/ImagePage.h"
#include "apps/hxupdate/pages/ReviewPage.h"
#include "apps/hxupdate/pages/UpdatingPage.h"
#include "apps/hxupdate/pages/VerdictPage.h"
#include "apps/hxupdate/pages/VerifyingPage.h"
#include "apps/hxupdate/parts/Heading.h"
#include "apps/hxupdate/parts/StopQuestion.h"
#include "apps/hxupdate/window/StepBar.h"
#include "apps/hxupdate/window/TraceWindow.h"
#include "apps/hxupdate/words/ImageWords.h"
#include "apps/hxupdate/words/NoticeWords.h"

#include <QCloseEvent>
#include <QMimeData>
#include <QStyle>

namespace hxupdate {

namespace {

constexpr int lookEveryMs = 1000;
constexpr QSize firstWindowSize(680, 660);

} // namespace

UpdateWindow::UpdateWindow(UpdateModel& model, bool isSimulated, Announce announce)
    : m_model(model), m_announce(std::move(announce)), m_stepBar(new StepBar),
      m_stack(new QStackedWidget), m_notice(newTextLabel()), m_lookTimer(this)
{
    setObjectName(QStringLiteral("updateWindow"));
    setAcceptDrops(true);
    m_notice->setObjectName(QStringLiteral("notice"));
    m_lookTimer.setInterval(lookEveryMs);
    addPages();
    layOut(isSimulated);
    connectModel();
    resize(firstWindowSize);
    showStep();
}

// In the order of the steps.
void UpdateWindow::addPages()
{
    for (Page* page :
         {static_cast<Page*>(new ConnectPage(m_model)), static_cast<Page*>(new ImagePage(m_model)),
          static_cast<Page*>(new ReviewPage(m_model)),
          static_cast<Page*>(new UpdatingPage(m_model)),
          static_cast<Page*>(new VerifyingPage(m_model)),
          static_cast<Page*>(new VerdictPage(m_model, [this] { close(); }))})
        m_stack->addWidget(page);
}

void UpdateWindow::layOut(bool isSimulated)
{
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_stepBar);
    if (isSimulated) {
        QLabel* banner = newTextLabel(
            tr("Simulated product: this is a try. No real product is connected or changed."));
        banner->setObjectName(QStringLiteral("simulated"));
        banner->setFrameShape(QFrame::Box);
        banner->setMargin(style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing));
        layout->addWidget(banner);
    }
    layout->addWidget(m_stack, 1);
    layout->addWidget(m_notice);
    m_notice->hide();
}

void UpdateWindow::connectModel()
{
    connect(&m_lookTimer, &QTimer::timeout, &m_model, &UpdateModel::look);
    connect(&m_model, &UpdateModel::stepChanged, this, [this] { showStep(); });
    for (const auto changed : {&UpdateModel::connectionChanged, &UpdateModel::imageChanged,
                               &UpdateModel::progressed, &UpdateModel::stopping})
        connect(&m_model, changed, this, [this] { refresh(); });
    connect(&m_model, &UpdateModel::traceTaken, this,
            [this](const QString& path, const hx::TraceEvents& trace) { showTrace(path, trace); });
    connect(&m_model, &UpdateModel::noticed, this,
            [this](Notice notice, const QString& detail) { showNotice(notice, detail); });
}

void UpdateWindow::showNotice(Notice notice, const QString& detail)
{
    QString text = noticeText(notice, detail);
    if (notice == Notice::ImageBad)
        text += QLatin1Char(' ') + adviceOf(m_model.image().fault, {}).sentence;
    m_notice->setText(text);
    m_notice->show();
    m_announce(m_notice);
}

void UpdateWindow::startLooking()
{
    m_lookTimer.start();
    m_model.look();
}

Page* UpdateWindow::page() const
{
    return static_cast<Page*>(m_stack->currentWidget());
}

void UpdateWindow::showStep()
{
    if (m_model.step() == Step::Verdict && m_closesAtTheEnd) {
        close();
        return;
    }
    m_notice->hide();
    m_stepBar->show(m_model.step());
    m_stack->setCurrentIndex(int(m_model.step()));
    refresh();
}

void UpdateWindow::refresh()
{
    page()->refresh();
    setWindowTitle(titleText());
    announce();
}

// With the progress, which can be seen so while the window is small or behind others.
QString UpdateWindow::titleText() const
{
    const hx::UpdateProgress& progress = m_model.progress();
    if (m_model.step() == Step::Updating && progress.bytes > 0)
        return tr("%1 % - %2 - HxUpdate")
            .arg(progress.bytes * 100 / progress.totalBytes)
            .arg(page()->title());
    return tr("%1 - HxUpdate").arg(page()->title());
}

// Tells what has come about, once, and puts the keyboard where it goes on from there.
void UpdateWindow::announce()
{
    if (std::exchange(m_announced, page()->title()) == page()->title())
        return;
    page()->takeFocus();
    m_announce(page());
}

void UpdateWindow::showTrace(const QString& path, const hx::TraceEvents& trace)
{
    (new TraceWindow(path, trace, this))->show();
}

// An update ends between two messages: until then the window stays.
void UpdateWindow::closeEvent(QCloseEvent* event)
{
    if (!m_model.isRunning())
        return;
    event->ignore();
    askWhetherToStop(this, m_model, [this] { m_closesAtTheEnd = true; });
}

void UpdateWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void UpdateWindow::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() != 1)
        m_model.tell(Notice::OneFileOnly);
    else if (urls.first().isLocalFile())
        m_model.takeFile(urls.first().toLocalFile());
    else
        m_model.tell(Notice::NoFile);
}

} // namespace hxupdate

#include "apps/hxupdate/pages/UpdatingPage.h"

#include "apps/hxupdate/parts/Heading.h"
#include "apps/hxupdate/parts/StopQuestion.h"
#include "apps/hxupdate/words/Units.h"

#include <QLocale>
#include <QProgressBar>

namespace hxupdate {

UpdatingPage::UpdatingPage(UpdateModel& model)
    : Page(model, "updatingPage"), m_bar(new QProgressBar), m_remaining(newTextLabel()),
      m_doing(newTextLabel()), m_asleep(newTextLabel()),
      m_stop(addButton("stop", [this] { askWhetherToStop(this, this->model()); }))
{
    m_bar->setObjectName(QStringLiteral("progress"));
    m_bar->setRange(0, 1000);
    m_bar->setAccessibleName(tr("Progress of the update"));
    m_remaining->setObjectName(QStringLiteral("remaining"));
    m_doing->setObjectName(QStringLiteral("doing"));
    m_asleep->setObjectName(QStringLiteral("sleepWarning"));
    for (QWidget* widget : {static_cast<QWidget*>(m_bar), static_cast<QWidget*>(m_remaining),
                            static_cast<QWidget*>(m_doing), static_cast<QWidget*>(m_asleep)})
        add(widget);
    m_stop->setText(tr("&Stop..."));
    m_asleep->setText(tr("This computer cannot be kept from going to sleep by this program. See to "
                         "it that it stays awake."));
    refresh();
}

QString UpdatingPage::remainingText() const
{
    const hx::UpdateProgress& progress = model().progress();
    if (model().isStopping())
        return tr("Stopping after the message that is on its way...");
    if (progress.message == 0)
        return tr("about %1 left").arg(durationText(model().image().wireMicroseconds));
    return tr("about %1 left").arg(durationText(progress.remainingMicroseconds));
}

void UpdatingPage::refresh()
{
    const hx::UpdateProgress& progress = model().progress();
    const QString& name = model().product().name;
    say({tr("%1 is being updated").arg(name),
         tr("Leave it switched on and connected until the end is told."),
         {}});
    if (progress.totalBytes > 0)
        m_bar->setValue(int(progress.bytes * 1000 / progress.totalBytes));
    m_remaining->setText(remainingText());
    m_doing->setText(progress.message == 0 ? tr("The product is asked who it is.")
                                           : tr("Message %1 of %2 was acknowledged.")
                                                 .arg(QLocale().toString(progress.message),
                                                      QLocale().toString(progress.totalMessages)));
    m_asleep->setVisible(!model().staysAwake());
    m_stop->setEnabled(!model().isStopping());
}

} // namespace hxupdate

#include "apps/hxupdate/pages/VerifyingPage.h"

#include "apps/hxupdate/parts/StopQuestion.h"

#include <QProgressBar>

namespace hxupdate {

VerifyingPage::VerifyingPage(UpdateModel& model)
    : Page(model, "verifyingPage"),
      m_stop(addButton("stop", [this] { askWhetherToStop(this, this->model()); }))
{
    auto* bar = new QProgressBar;
    bar->setObjectName(QStringLiteral("verification"));
    bar->setRange(0, 0); // how long the product takes is not known
    bar->setAccessibleName(tr("Verification"));
    add(bar);
    m_stop->setText(tr("&Stop..."));
    refresh();
}

void VerifyingPage::refresh()
{
    say({tr("%1 is being verified").arg(model().product().name),
         tr("Everything was sent and acknowledged. The update counts only when these agree:"),
         {tr("The product identifies itself again, with the version of the image."),
          tr("The checksum that it has stored is that of the image."),
          tr("The checksum of the code that it holds is the same.")}});
    m_stop->setEnabled(!model().isStopping());
}

} // namespace hxupdate

#include "apps/hxupdate/pages/VerdictPage.h"

#include "apps/hxupdate/parts/FactList.h"
#include "apps/hxupdate/parts/FileDialogs.h"
#include "apps/hxupdate/words/ConditionWords.h"
#include "apps/hxupdate/words/EndingWords.h"

#include <QLabel>
#include <QStyle>

namespace hxupdate {

namespace {

QStyle::StandardPixmap markOf(Ending ending)
{
    if (ending == Ending::Succeeded)
        return QStyle::SP_DialogApplyButton;
    return isMidway(ending) ? QStyle::SP_MessageBoxCritical : QStyle::SP_MessageBoxWarning;
}

// Before anything is sent the product is as it was, which the sentence says.
QString stateText(const UpdateEnd& end)
{
    const bool isTold = end.ending == Ending::Succeeded || isMidway(end.ending);
    return isTold ? conditionText(end.condition) : QString();
}

} // namespace

VerdictPage::VerdictPage(UpdateModel& model, const std::function<void()>& close)
    : Page(model, "verdictPage"), m_mark(new QLabel), m_facts(new FactList),
      m_close(addButton("close", close)),
      m_save(addButton("save",
                       [this] {
                           chooseRecordFile(this, [this](const QString& path) {
                               this->model().saveRecord(path);
                           });
                       })),
      m_again(addButton("again", [this] { this->model().startAgain(); }))
{
    m_mark->setObjectName(QStringLiteral("mark"));
    add(m_mark);
    add(m_facts);
    m_close->setText(tr("&Close"));
    m_save->setText(tr("&Save record..."));
    refresh();
}

void VerdictPage::showFacts()
{
    const UpdateEnd& end = model().end();
    Facts facts = {{tr("Product"), model().product().name}};
    const QPair<QString, QString> more[] = {{tr("Serial number"), model().product().serial},
                                            {tr("Version before"), end.versionBefore},
                                            {tr("Version now"), end.versionAfter},
                                            {tr("Serial number that answers"), end.otherSerial},
                                            {tr("State of the product"), stateText(end)},
                                            {tr("Details"), end.reason}};
    for (const auto& fact : more) {
        if (!fact.second.isEmpty())
            facts << fact;
    }
    m_facts->show(facts);
}

void VerdictPage::refresh()
{
    const UpdateEnd& end = model().end();
    const bool succeeded = end.ending == Ending::Succeeded;
    say(adviceOf(end.ending, model().product().name));
    const int size = style()->pixelMetric(QStyle::PM_LargeIconSize, nullptr, this);
    m_mark->setPixmap(style()->standardIcon(markOf(end.ending)).pixmap(size));
    m_mark->setAccessibleName(succeeded ? tr("Success") : tr("No success"));
    showFacts();
    m_save->setEnabled(!end.record.isEmpty());
    m_again->setText(succeeded ? tr("&Update another product") : tr("Try &again"));
}

} // namespace hxupdate

#include "apps/hxupdate/parts/StepList.h"

#include "apps/hxupdate/parts/Heading.h"

#include <QLocale>

namespace hxupdate {

StepList::StepList() : m_rows(new QVBoxLayout(this))
{
    m_rows->setContentsMargins({});
}

void StepList::show(const QStringList& steps)
{
    if (steps == m_steps)
        return;
    m_steps = steps;
    qDeleteAll(findChildren<QLabel*>());
    int number = 0;
    for (const QString& step : steps) {
        ++number;
        QLabel* row = newTextLabel(QLocale().toString(number) + QLatin1String(". ") + step);
        row->setObjectName(QStringLiteral("step%1").arg(number));
        m_rows->addWidget(row);
    }
}

} // namespace hxupdate

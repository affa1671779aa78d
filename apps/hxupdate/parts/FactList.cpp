#include "apps/hxupdate/parts/FactList.h"

#include "apps/hxupdate/parts/Heading.h"

#include "host/base/PrintableText.h"

namespace hxupdate {

FactList::FactList() : m_rows(new QGridLayout(this))
{
    m_rows->setContentsMargins({});
    m_rows->setColumnStretch(1, 1);
}

void FactList::show(const Facts& facts)
{
    if (facts == m_facts) // a screen reader that reads one is not interrupted
        return;
    m_facts = facts;
    qDeleteAll(findChildren<QLabel*>());
    int row = 0;
    for (const auto& fact : facts) {
        auto* name = new QLabel(fact.first + QLatin1Char(':'));
        name->setTextFormat(Qt::PlainText);
        m_rows->addWidget(name, row, 0, Qt::AlignTop);
        m_rows->addWidget(newTextLabel(hx::printable(fact.second)), row, 1);
        ++row;
    }
}

} // namespace hxupdate

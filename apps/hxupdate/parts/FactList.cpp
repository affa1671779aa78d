#include "apps/hxupdate/parts/FactList.h"

#include "apps/hxupdate/parts/Heading.h"

#include "host/base/PrintableText.h"

#include <QCoreApplication>

namespace hxupdate {

namespace {

struct FactListWords {
    Q_DECLARE_TR_FUNCTIONS(FactList)
};

} // namespace

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
        auto* name = new QLabel(FactListWords::tr("%1:").arg(fact.first));
        name->setTextFormat(Qt::PlainText);
        m_rows->addWidget(name, row, 0, Qt::AlignTop);
        m_rows->addWidget(newTextLabel(hx::printable(fact.second)), row, 1);
        ++row;
    }
}

} // namespace hxupdate

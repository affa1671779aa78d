#include "apps/hxupdate/pages/ConnectPage.h"

#include "apps/hxupdate/parts/FactList.h"
#include "apps/hxupdate/parts/PortDialog.h"
#include "apps/hxupdate/words/ConnectWords.h"

namespace hxupdate {

ConnectPage::ConnectPage(UpdateModel& model)
    : Page(model, "connectPage"), m_facts(new FactList),
      m_otherPort(addButton("otherPort", [this] { choosePort(); })),
      m_continue(addButton("continue", [this] { this->model().useProduct(); }))
{
    add(m_facts);
    m_otherPort->setText(tr("My product is on another &port..."));
    m_continue->setText(tr("&Continue"));
    refresh();
}

void ConnectPage::refresh()
{
    const Connection& connection = model().connection();
    say(adviceOf(connection));
    showFacts();
    m_otherPort->setEnabled(!connection.ports.isEmpty());
    m_continue->setEnabled(connection.product() != nullptr);
}

void ConnectPage::showFacts()
{
    const Connection& connection = model().connection();
    Facts facts;
    for (const ProductFacts& product : connection.products) {
        const auto orUnknown = [](const QString& text) {
            return text.isEmpty() ? tr("not known") : text;
        };
        facts << qMakePair(tr("Product"), product.name)
              << qMakePair(tr("Serial number"), orUnknown(product.serial))
              << qMakePair(tr("Installed version"), orUnknown(product.version))
              << qMakePair(tr("Port"), product.port);
    }
    if (facts.isEmpty() && !connection.detail.isEmpty())
        facts << qMakePair(tr("Details"), connection.detail);
    m_facts->show(facts);
}

void ConnectPage::choosePort()
{
    choosePortOf(this, model().connection().ports,
                 [this](const QString& port) { model().pickPort(port); });
}

} // namespace hxupdate

#include "apps/hxupdate/pages/ConnectPage.h"

#include "apps/hxupdate/parts/PortDialog.h"
#include "apps/hxupdate/words/ConnectWords.h"

namespace hxupdate {

namespace {

// What tells one of several products from the others.
QString briefly(const ProductFacts& product)
{
    QStringList parts = {product.serial, product.version, product.port};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

} // namespace

ConnectPage::ConnectPage(UpdateModel& model)
    : Page(model, "connectPage"), m_facts(new FactList),
      m_otherPort(addButton("otherPort", [this] { choosePort(this, this->model()); })),
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
    for (const ProductFacts& product : connection.products)
        facts << qMakePair(product.name, briefly(product));
    if (const ProductFacts* product = connection.product())
        facts = factsOf(*product);
    if (facts.isEmpty() && !connection.detail.isEmpty())
        facts << qMakePair(tr("Details"), connection.detail);
    m_facts->show(facts);
}

Facts ConnectPage::factsOf(const ProductFacts& product) const
{
    const QString noVersion = product.needsRecovery ? tr("none that is valid") : tr("not known");
    const auto orElse = [](const QString& text, const QString& other) {
        return text.isEmpty() ? other : text;
    };
    return {{tr("Product"), product.name},
            {tr("Serial number"), orElse(product.serial, tr("not known"))},
            {tr("Installed version"), orElse(product.version, noVersion)},
            {tr("Port"), product.port}};
}

} // namespace hxupdate

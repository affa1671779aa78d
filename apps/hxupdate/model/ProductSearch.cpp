#include "apps/hxupdate/model/ProductSearch.h"

#include "host/base/HexText.h"
#include "ports/PortList.h"
#include "qt/Saturated.h"

#include <algorithm>

namespace hxupdate {

namespace {

bool isServed(Finding finding)
{
    return finding == Finding::Ready || finding == Finding::Recovery;
}

Finding findingOf(hx::ProductCondition condition)
{
    switch (condition) {
    case hx::ProductCondition::CodeIntact:
        return Finding::Ready;
    case hx::ProductCondition::NoValidCode:
    case hx::ProductCondition::CodeDamaged:
        return Finding::Recovery;
    case hx::ProductCondition::OtherProduct:
        return Finding::OtherProduct;
    case hx::ProductCondition::NoAnswer:
    case hx::ProductCondition::PortLost:
        return Finding::Silent;
    case hx::ProductCondition::Unclear:
        break;
    }
    return Finding::Unclear;
}

QString backendOf(const QString& port)
{
    return port.section(QLatin1Char(':'), 0, 0);
}

// One product may be reached through two of the machine's MIDI systems.
bool isSame(const ProductFacts& one, const ProductFacts& other)
{
    return !one.serial.isEmpty() && one.serial == other.serial && one.plugin == other.plugin &&
           backendOf(one.port) != backendOf(other.port);
}

// How much a finding tells: of several ports the one that tells most is spoken of.
int weight(Finding finding)
{
    static const QList<Finding> order = {Finding::Silent,       Finding::Unclear,
                                         Finding::OtherProduct, Finding::PortHeld,
                                         Finding::Recovery,     Finding::Ready};
    return hx::saturated(order.indexOf(finding));
}

} // namespace

// Its characters where all can be printed, else hex pairs.
QString serialText(const hx::EsnReading& reading)
{
    if (!reading.good())
        return QString();
    const QByteArray& number = reading.number;
    const bool isText =
        std::all_of(number.begin(), number.end(), [](char c) { return c > ' ' && c <= '~'; });
    return isText ? QString::fromLatin1(number) : hx::hexText(number);
}

void ProductSearch::pick(const QString& port)
{
    m_picked = port;
    forget();
}

bool ProductSearch::mayAsk(int plugin, const QString& port) const
{
    if (!m_picked.isEmpty())
        return port == m_picked;
    return hx::fitsProductPort(port, m_plugins.device(plugin).productOutPortName());
}

Connection ProductSearch::look()
{
    const QStringList ports = m_ports.list();
    for (const QString& known : m_answers.keys()) {
        if (!ports.contains(known))
            m_answers.remove(known);
    }
    return conclude(ports);
}

Connection ProductSearch::search(const std::atomic<bool>& ended)
{
    const QStringList ports = look().ports;
    for (const QString& port : ports) {
        if (!ended && !isServed(m_answers.value(port).finding))
            ask(port, ended);
    }
    Connection connection = conclude(ports);
    connection.isWhole = !ended;
    return connection;
}

void ProductSearch::ask(const QString& port, const std::atomic<bool>& ended)
{
    m_answers.remove(port);
    for (int plugin = 0; plugin < m_plugins.count() && !ended; ++plugin) {
        if (!mayAsk(plugin, port))
            continue;
        const Answer answer = answerOf(plugin, port, ended);
        const bool isBetter = isServed(answer.finding) || !m_answers.contains(port) ||
                              weight(answer.finding) > weight(m_answers[port].finding);
        if (isBetter)
            m_answers[port] = answer;
        if (isServed(answer.finding))
            return;
    }
}

ProductSearch::Answer ProductSearch::answerOf(int plugin, const QString& port,
                                              const std::atomic<bool>& ended)
{
    DeviceInterface& device = m_plugins.device(plugin);
    const auto opened = m_ports.open(port, device, nullptr);
    if (!opened)
        return {Finding::PortHeld, {}, opened.problem().what};
    hx::PortBus bus(**opened);
    bus.watchInterrupt(&ended);
    hx::ProductReader reader(device, bus);
    const hx::ProductAssessment assessment = hx::assessProduct(reader);
    const Finding finding = findingOf(assessment.condition);
    if (!isServed(finding))
        return {finding, {}, assessment.state};
    const bool needsRecovery = finding == Finding::Recovery;
    const QString version = needsRecovery ? QString() : assessment.version.version;
    return {finding,
            {plugin, device.productName(), port, serialText(reader.esn()), version, needsRecovery},
            assessment.state};
}

QList<ProductFacts> ProductSearch::products() const
{
    QList<ProductFacts> found;
    for (const Answer& answer : m_answers) {
        const auto isKnown = [&](const ProductFacts& known) {
            return isSame(known, answer.product);
        };
        if (isServed(answer.finding) && std::none_of(found.begin(), found.end(), isKnown))
            found << answer.product;
    }
    return found;
}

Connection ProductSearch::conclude(const QStringList& ports) const
{
    Connection connection;
    connection.ports = ports;
    connection.products = products();
    connection.finding = ports.isEmpty() ? Finding::NoPorts : Finding::NoProduct;
    for (const Answer& answer : m_answers) {
        if (weight(answer.finding) < weight(connection.finding))
            continue;
        connection.finding = answer.finding;
        connection.detail = answer.detail;
    }
    if (connection.products.size() > 1)
        connection.finding = Finding::SeveralProducts;
    return connection;
}

} // namespace hxupdate

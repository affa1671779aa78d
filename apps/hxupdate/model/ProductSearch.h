// Finds the products that are connected, without asking anybody else.
#pragma once

#include "apps/hxupdate/model/Connection.h"
#include "apps/hxupdate/model/Plugins.h"
#include "apps/hxupdate/model/PortSource.h"

#include <QMap>

#include <atomic>

namespace hxupdate {

// Only ports that have the name of a plugin's product are asked, or the one that was picked. A port
// whose product has answered is not asked again until it has been away or is forgotten.
class ProductSearch {
public:
    ProductSearch(const Plugins& plugins, PortSource& ports) : m_plugins(plugins), m_ports(ports) {}

    // From now on this port alone is asked, whatever its name; empty: those that fit again.
    void pick(const QString& port);
    void forget() { m_answers.clear(); }

    // Looks which ports there are and asks those that may be asked. Ends early, with `isWhole`
    // false, once `ended` is true.
    Connection search(const std::atomic<bool>& ended);

    // Looks which ports there are and asks nobody: what was known of the others stays.
    Connection look();

private:
    struct Answer {
        Finding finding = Finding::Silent;
        ProductFacts product; // when the finding is Ready or Recovery
        QString detail;
    };

    bool mayAsk(int plugin, const QString& port) const;
    void ask(const QString& port, const std::atomic<bool>& ended);
    Answer answerOf(int plugin, const QString& port, const std::atomic<bool>& ended);
    QList<ProductFacts> products() const;
    Connection conclude(const QStringList& ports) const;

    const Plugins& m_plugins;
    PortSource& m_ports;
    QString m_picked;
    QMap<QString, Answer> m_answers; // by port
};

// The serial number as it is shown; empty when the product does not tell it.
QString serialText(const hx::EsnReading& reading);

} // namespace hxupdate

#include "apps/hxupdate/model/ImageFacts.h"

#include <QVersionNumber>

namespace hxupdate {

Change changeOf(const QString& installed, const QString& version)
{
    if (installed.isEmpty())
        return Change::Recover;
    const int order = QVersionNumber::compare(QVersionNumber::fromString(version),
                                              QVersionNumber::fromString(installed));
    if (order == 0)
        return Change::Reinstall;
    return order > 0 ? Change::Upgrade : Change::Downgrade;
}

} // namespace hxupdate

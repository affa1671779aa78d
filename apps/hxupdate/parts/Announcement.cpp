#include "apps/hxupdate/parts/Announcement.h"

#include <QAccessible>

namespace hxupdate {

void tellAssistiveTechnology(QWidget* widget)
{
    QAccessibleEvent alert(widget, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

} // namespace hxupdate

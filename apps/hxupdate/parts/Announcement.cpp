#include "apps/hxupdate/parts/Announcement.h"

#include <QAccessible>
#include <QWidget>

namespace hxupdate {

// Qt passes no alert on to the accessibility bus of Linux, but a name.
void tellAssistiveTechnology(QWidget* widget)
{
    for (const auto type : {QAccessible::Alert, QAccessible::NameChanged}) {
        QAccessibleEvent event(widget, type);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace hxupdate

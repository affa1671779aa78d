// Tells assistive technology what has come about.
#pragma once

#include <functional>

class QWidget;

namespace hxupdate {

// Has the widget said, by its accessible name.
using Announce = std::function<void(QWidget*)>;

void tellAssistiveTechnology(QWidget* widget);

} // namespace hxupdate

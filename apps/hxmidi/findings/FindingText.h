// Findings as people read them on standard error, and as members of the JSON document.
#pragma once

#include "apps/hxmidi/findings/Finding.h"

#include <QJsonArray>

namespace hx::midi {

QString toText(const Findings& findings);

// The findings of one severity: objects with what, and where known expected, next, source, line,
// column and text.
QJsonArray toJson(const Findings& findings, Severity severity);

} // namespace hx::midi

// Values from outside as they may be in a JSON document.
#pragma once

#include "host/base/Problem.h"

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>

namespace hx::host {

// The value with the bytes of files' names that are not UTF-8 written out as "\xFF" in every text,
// for JSON has no way to hold them.
QJsonValue withoutStrayUnits(const QJsonValue& value);

// "what", "expected" and "next".
QJsonObject problemObject(const Problem& problem);

// The document as text, with every control character escaped, those that JSON lets stand included.
QByteArray jsonText(const QJsonObject& document);

} // namespace hx::host

// Sizes, times and changes in words.
#pragma once

#include "apps/hxupdate/model/ImageFacts.h"

namespace hxupdate {

// "65.5 kB", by the user's locale.
QString sizeText(qint64 bytes);

// "27 seconds", "3 minutes": rounded up, never less than a second.
QString durationText(qint64 microseconds);

// "Upgrade", "Downgrade", "Reinstallation", "Recovery".
QString changeText(Change change);

// "firmware, the first of two kinds (fwu)".
QString kindText(CodeType kind);

// "not signed: its origin is not known", or the key that it is signed with.
QString originText(const hx::SignatureVerdict& origin);

// What the button says that starts it: the verb, and the product's name.
QString verbText(Change change, const QString& product);

} // namespace hxupdate

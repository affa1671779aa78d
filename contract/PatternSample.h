// An example of the messages that a pattern fits.
#pragma once

#include <QByteArray>
#include <QString>

namespace hx {

// A whole message that `pattern` fits, where the pattern leaves bytes open filled with those of
// `fill`, over and over. Blanks in the pattern mean nothing, and an F7 that it leaves out is
// appended. Empty when no example can be made of the pattern: it is damaged, or not of the notation
// that dictionaries use (hex digits, '.', classes such as [23], alternatives in parentheses, '*').
QByteArray sampleMessage(const QString& pattern, const QByteArray& fill);

} // namespace hx

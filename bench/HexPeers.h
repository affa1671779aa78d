// What other libraries offer for hex text, each used as its documentation shows.
#pragma once

#include <QByteArray>

#include <string>

namespace hxbench {

#ifdef HXBENCH_ABSL
std::string abslWritten(const QByteArray& bytes);
std::string abslRead(const QByteArray& digits);
bool abslContains(const QByteArray& bytes, const QByteArray& part);
#endif

#ifdef HXBENCH_SODIUM
QByteArray sodiumWritten(const QByteArray& bytes);

/** Empty when the text is not hex. `blanks` are characters that may stand between the pairs; null for none. */
QByteArray sodiumRead(const QByteArray& text, const char* blanks);
#endif

} // namespace hxbench

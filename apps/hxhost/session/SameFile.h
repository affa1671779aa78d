// Whether two names lead to one file, so that nothing is written over what is to be read.
#pragma once

#include <QString>

namespace hx {

// By whatever links and detours. A device or a pipe is never the same: writing into it destroys
// nothing.
bool isSameFile(const QString& first, const QString& second);

} // namespace hx

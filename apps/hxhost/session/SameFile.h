// Whether two names lead to one file, so that nothing is written over what is to be read.
#pragma once

#include <QString>

namespace hx::host {

// Two names of one regular file, by whatever links and detours. A device or a pipe is never the
// same: writing into it destroys nothing.
bool isSameFile(const QString& first, const QString& second);

// The same for two files that are written, either of which may still be missing: names that differ
// in upper and lower case at most are one file on disks that ignore it.
bool becomeOneFile(const QString& first, const QString& second);

// Whether the stream with this number (0 to 2) leads to or comes from the regular file.
bool isStream(int stream, const QString& name);

} // namespace hx::host

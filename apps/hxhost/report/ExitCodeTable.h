// The exit codes in words: one table that the help, the man page and the tests share.
#pragma once

#include "host/base/ExitCode.h"

#include <QString>

#include <vector>

namespace hx::host {

struct ExitCodeRow {
    ExitCode code;
    const char* name;    // the word in "exitName" of the JSON document
    const char* meaning; // one clause, lower case, no full stop
};

// All rows, ascending by number.
const std::vector<ExitCodeRow>& exitCodeTable();

// The word for a code; every enumerator has one.
QString exitName(ExitCode code);

// The table as lines "number  name  meaning" for people to read.
QString exitCodeHelp();

} // namespace hx::host

// The files that the running program consists of.
#pragma once

#include <QStringList>

namespace hx::host {

// The program itself and every library that is loaded now.
QStringList loadedFiles();

} // namespace hx::host

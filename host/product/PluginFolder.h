// Where the device plugins of an installation lie.
#pragma once

#include <QString>

namespace hx {

// The folder installed with this program (hxmidikit/plugins under its library folder); where there
// is none, the folder of the build that this program lies in (../lib). Never the working directory.
QString pluginFolder();

} // namespace hx

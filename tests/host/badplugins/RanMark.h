// Leaves a mark when the library is loaded into a process.
#pragma once

#include <QByteArray>

namespace {

const bool ranMark = qputenv("HX_BAD_PLUGIN_RAN", QByteArrayLiteral("1"));

}

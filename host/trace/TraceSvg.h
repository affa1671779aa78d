// A trace as a picture: who sent what to whom and when, and the throughput over the time.
#pragma once

#include "host/trace/Trace.h"

#include <QByteArray>

#include <vector>

namespace hx {

// One SVG document; the same events give the same bytes. `title` is at its top.
QByteArray traceSvg(const QString& title, const TraceEvents& events);

} // namespace hx

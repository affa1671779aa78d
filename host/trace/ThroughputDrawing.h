// Draws the throughput of a trace as bars over its time.
#pragma once

#include "host/trace/SvgPage.h"
#include "host/trace/TraceThroughput.h"

namespace hx {

int throughputHeight(const Throughput& throughput);
void drawThroughput(SvgPage& page, int y, const Throughput& throughput);

} // namespace hx

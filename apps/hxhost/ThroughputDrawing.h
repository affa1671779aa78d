// Draws the throughput of a trace as bars over its time.
#pragma once

#include "apps/hxhost/SvgPage.h"
#include "apps/hxhost/TraceThroughput.h"

namespace hx {

int throughputHeight(const Throughput& throughput);
void drawThroughput(SvgPage& page, int y, const Throughput& throughput);

} // namespace hx

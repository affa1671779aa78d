// Draws the rows of a sequence: two lifelines, arrows between them, times and what was made of it.
#pragma once

#include "host/trace/SvgPage.h"
#include "host/trace/TraceSequence.h"

namespace hx {

int sequenceHeight(const std::vector<SequenceRow>& rows);
void drawSequence(SvgPage& page, int y, const std::vector<SequenceRow>& rows);

} // namespace hx

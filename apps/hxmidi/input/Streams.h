// The three standard streams of a run; tests give buffers.
#pragma once

#include <QIODevice>

namespace hx::midi {

struct Streams {
    QIODevice& input;
    QIODevice& output;
    QIODevice& errors;
};

} // namespace hx::midi

// What HxMidiData and its languages do with random input, as text: the same under every Qt.
#pragma once

#include "tests/mididata/Random.h"

#include <QByteArray>

#include <vector>

namespace qtresults {

struct Subject {
    const char* name;
    int cases;
    QByteArray (*result)(Random& random); // of one case, its log lines left out
};

// Among them all: hex text, builder, patterns, comparison, fields, renderings, streams, log lines.
const std::vector<Subject>& subjects();

// The result of one case and its log lines. Seed, subject and number make the case.
QByteArray resultOf(const Subject& subject, unsigned int seed, int number);

} // namespace qtresults

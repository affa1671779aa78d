#pragma once

#include "tests/mididata/Random.h"

#include <QByteArray>

#include <string>
#include <vector>

/** The message patterns of the boot loader's protocol, blanks removed. */
const std::vector<std::string>& dictionaryPatterns();

/** Bytes that fit a dictionary pattern; of several alternatives, the first. */
QByteArray replyTo(Random& random, const std::string& pattern);

/** Bytes that fit a dictionary pattern, or nearly. */
QByteArray replyNear(Random& random, const std::string& pattern);

/** A pattern made from the buffer's own digits, so that it often fits: digits are kept, turned into
    dots, classes, gaps and alternatives, or replaced. */
std::string patternLike(Random& random, const QByteArray& bytes);

/** A string of pattern characters without any sense to it, most of them no correct expression. */
std::string anyPattern(Random& random);

// A text without its blanks, and where each of its characters was.
#pragma once

#include "mididata/TextProblem.h"

#include <string>
#include <string_view>
#include <vector>

namespace hx {

class CompactText {
public:
    explicit CompactText(std::string_view text);

    const std::string& text() const { return m_text; }

    // A problem of the compact text, at its place in the text with blanks.
    TextProblem placed(const TextProblem& problem) const;

private:
    std::string m_text;
    std::vector<qint64> m_places; // of each character, and of the end
};

} // namespace hx

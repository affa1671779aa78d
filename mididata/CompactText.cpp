#include "mididata/CompactText.h"

namespace hx {

CompactText::CompactText(std::string_view text)
{
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] == ' ')
            continue;
        m_text += text[at];
        m_places.push_back(static_cast<qint64>(at));
    }
    m_places.push_back(static_cast<qint64>(text.size()));
}

TextProblem CompactText::placed(const TextProblem& problem) const
{
    const qint64 begin = m_places.at(static_cast<size_t>(problem.offset));
    if (problem.length == 0)
        return {problem.kind, begin, 0};
    const qint64 last = m_places.at(static_cast<size_t>(problem.offset + problem.length - 1));
    return {problem.kind, begin, last + 1 - begin};
}

} // namespace hx

#include "mididata/PatternScanner.h"

#include "qt/Saturated.h"

#include <algorithm>
#include <limits>

namespace hx {

namespace {

constexpr qint64 hugeSize = std::numeric_limits<qint32>::max();

bool isQuantifier(char c)
{
    return c == '*' || c == '+' || c == '?' || c == '{';
}

bool isDecimalDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isLowerCase(char c)
{
    return c >= 'a' && c <= 'z';
}

class PatternScanner {
public:
    explicit PatternScanner(std::string_view text) : m_text(text) {}

    PatternElements scan()
    {
        m_groups = {Group{-1, 0, 0}};
        while (!atEnd())
            scanElement();
        for (int i = 1; i < m_groups.size(); ++i)
            addMistake(TextProblemKind::ParenthesisNotClosed, m_groups.at(i).at);
        for (const Group& group : qAsConst(m_groups)) // the open ones too
            m_elements.size = std::min(m_elements.size + group.size, hugeSize);
        return m_elements;
    }

private:
    struct Group {
        qint64 at;   // of the opening parenthesis
        qint64 size; // of what is complete inside it
        qint64 atom; // of its last element, which a repetition would multiply; 0: there is none
    };

    bool atEnd() const { return m_at >= m_text.size(); }

    // The next character; 0 at the end.
    char peek() const { return atEnd() ? '\0' : m_text[m_at]; }

    // Goes to the next character and returns the place of this one.
    qint64 step() { return static_cast<qint64>(m_at++); }

    void scanElement()
    {
        const char c = peek();
        if (c == '(')
            openGroup();
        else if (c == ')')
            closeGroup();
        else if (c == '[')
            scanClass();
        else if (c == '\\')
            scanEscape();
        else if (isQuantifier(c))
            scanQuantifier();
        else
            scanCharacter(c);
    }

    void scanCharacter(char c)
    {
        const qint64 at = step();
        if (c == '|') {
            m_groups.last().atom = 0;
            return;
        }
        if (c != '.' && c != '^' && c != '$')
            m_elements.literals += {at, isLowerCase(c) ? static_cast<char>(c - 'a' + 'A') : c};
        addAtom(1);
    }

    void openGroup()
    {
        m_groups += Group{step(), 0, 0};
        m_elements.depth = std::max(m_elements.depth, hx::saturated(m_groups.size()) - 1);
        if (peek() == '?') // (?: (?= (?!
            m_at = std::min(m_at + 2, m_text.size());
    }

    void closeGroup()
    {
        const qint64 at = step();
        if (m_groups.size() == 1)
            return addMistake(TextProblemKind::ParenthesisNotOpen, at);
        const qint64 size = m_groups.last().size;
        m_groups.removeLast();
        addAtom(size);
    }

    // The first character of a class may be a bracket that does not close it.
    void scanClass()
    {
        const qint64 at = step();
        if (peek() == '^')
            step();
        bool first = true;
        for (; !atEnd() && (first || peek() != ']'); step()) {
            first = false;
            if (peek() == '\\')
                step();
        }
        if (atEnd())
            return addMistake(TextProblemKind::BracketNotClosed, at);
        step();
        addAtom(1);
    }

    void scanEscape()
    {
        const qint64 at = step();
        if (atEnd())
            return addMistake(TextProblemKind::NothingEscaped, at);
        if (isLowerCase(peek()))
            m_elements.escapes += at;
        step();
        addAtom(1);
    }

    void scanQuantifier()
    {
        const auto at = static_cast<qint64>(m_at);
        const qint64 factor = readFactor();
        Group& group = m_groups.last();
        if (group.atom == 0)
            return addMistake(TextProblemKind::NothingToRepeat, at);
        const qint64 more = group.atom * (std::max<qint64>(factor, 1) - 1);
        group.size = std::min(group.size + more, hugeSize);
        group.atom = 0; // a second quantifier may not follow
    }

    // How often the greatest number of a repetition writes its element out.
    qint64 readFactor()
    {
        if (m_text[m_at++] != '{')
            return 1;
        qint64 greatest = 0;
        while (!atEnd() && peek() != '}')
            greatest = std::max(greatest, readNumber());
        m_at += atEnd() ? 0 : 1;
        return greatest;
    }

    // Passes over any other character.
    qint64 readNumber()
    {
        if (!isDecimalDigit(peek())) {
            step();
            return 0;
        }
        qint64 number = 0;
        for (; isDecimalDigit(peek()); step())
            number = std::min(number * 10 + (peek() - '0'), hugeSize);
        return number;
    }

    void addAtom(qint64 size)
    {
        Group& group = m_groups.last();
        group.atom = std::max<qint64>(size, 1);
        group.size = std::min(group.size + group.atom, hugeSize);
    }

    void addMistake(TextProblemKind kind, qint64 at) { m_elements.mistakes += {kind, at, 1}; }

    std::string_view m_text;
    PatternElements m_elements;
    QVector<Group> m_groups;
    size_t m_at = 0;
};

} // namespace

PatternElements scanPattern(std::string_view pattern)
{
    return PatternScanner(pattern).scan();
}

} // namespace hx

#include "apps/hxmidi/findings/PatternScanner.h"

#include <algorithm>
#include <limits>

namespace hx {

namespace {

constexpr qint64 hugeSize = std::numeric_limits<qint32>::max();

bool isQuantifier(char c)
{
    return c == '*' || c == '+' || c == '?' || c == '{';
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

class PatternScanner {
public:
    PatternScanner(const SourceText& pattern, Findings& findings)
        : m_pattern(pattern), m_text(pattern.text), m_findings(findings)
    {
    }

    PatternElements scan()
    {
        m_groups = {Group{-1, 0, 0}};
        while (skipBlanks())
            scanElement();
        for (int i = 1; i < m_groups.size(); ++i)
            error(QStringLiteral("the parenthesis is not closed"), QStringLiteral("( and )"),
                  QStringLiteral("close it, or write none"), m_groups.at(i).at);
        for (const Group& group : m_groups) // the open ones too
            m_elements.size = std::min(m_elements.size + group.size, hugeSize);
        return m_elements;
    }

private:
    struct Group {
        int at;      // of the opening parenthesis
        qint64 size; // of what is complete inside it
        qint64 atom; // of its last element, which a repetition would multiply; 0: there is none
    };

    bool skipBlanks()
    {
        while (m_at < m_text.size() && m_text.at(m_at) == ' ')
            ++m_at;
        return m_at < m_text.size();
    }

    // The next character that is no blank, or 0.
    char peek() { return skipBlanks() ? m_text.at(m_at) : '\0'; }

    void scanElement()
    {
        const char c = m_text.at(m_at);
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
        const int at = m_at++;
        if (c == '|') {
            m_groups.last().atom = 0;
            return;
        }
        if (c != '.' && c != '^' && c != '$')
            m_elements.literals += {at, c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c};
        addAtom(1);
    }

    void openGroup()
    {
        m_groups += Group{m_at++, 0, 0};
        m_elements.depth = std::max(m_elements.depth, m_groups.size() - 1);
        if (peek() != '?')
            return;
        ++m_at; // (?: (?= (?!
        if (peek() != '\0')
            ++m_at;
    }

    void closeGroup()
    {
        const int at = m_at++;
        if (m_groups.size() == 1)
            return error(QStringLiteral("no parenthesis is open here"), QStringLiteral("( and )"),
                         QStringLiteral("take the closing one away"), at);
        const qint64 size = m_groups.last().size;
        m_groups.removeLast();
        addAtom(size);
    }

    // The first character of a class may be a bracket that does not close it.
    void scanClass()
    {
        const int at = m_at++;
        if (peek() == '^')
            ++m_at;
        bool first = true;
        for (; skipBlanks() && (first || m_text.at(m_at) != ']'); ++m_at) {
            first = false;
            if (m_text.at(m_at) == '\\')
                ++m_at;
        }
        if (m_at >= m_text.size())
            return error(QStringLiteral("the bracket is not closed"), QStringLiteral("[digits]"),
                         QStringLiteral("add the closing bracket"), at);
        ++m_at;
        addAtom(1);
    }

    void scanEscape()
    {
        const int at = m_at++;
        const char escaped = peek();
        if (escaped == '\0')
            return error(QStringLiteral("nothing follows the backslash"), QString(),
                         QStringLiteral("take it away"), at);
        if (escaped >= 'a' && escaped <= 'z')
            m_elements.escapes += at;
        ++m_at;
        addAtom(1);
    }

    void scanQuantifier()
    {
        const int at = m_at;
        const qint64 factor = readFactor();
        Group& group = m_groups.last();
        if (group.atom == 0)
            return error(QStringLiteral("there is nothing here that could be repeated"),
                         QStringLiteral("a digit, a dot, a class or a group before it"),
                         QStringLiteral("for any digits write .*"), at);
        const qint64 more = group.atom * (std::max<qint64>(factor, 1) - 1);
        group.size = std::min(group.size + more, hugeSize);
        group.atom = 0; // a second quantifier may not follow
    }

    // How often the greatest number of a repetition writes its element out.
    qint64 readFactor()
    {
        if (m_text.at(m_at++) != '{')
            return 1;
        qint64 greatest = 0;
        while (peek() != '\0' && peek() != '}')
            greatest = std::max(greatest, readDigits());
        m_at += m_at < m_text.size() ? 1 : 0;
        return greatest;
    }

    // Passes over any other character.
    qint64 readDigits()
    {
        if (!isDigit(peek())) {
            ++m_at;
            return 0;
        }
        qint64 number = 0;
        for (; isDigit(peek()); ++m_at)
            number = std::min(number * 10 + (m_text.at(m_at) - '0'), hugeSize);
        return number;
    }

    void addAtom(qint64 size)
    {
        Group& group = m_groups.last();
        group.atom = std::max<qint64>(size, 1);
        group.size = std::min(group.size + group.atom, hugeSize);
    }

    void error(const QString& what, const QString& expected, const QString& next, int at)
    {
        m_findings.error(what, expected, next, Place{m_pattern, {at, 1}});
    }

    const SourceText& m_pattern;
    const QByteArray& m_text;
    Findings& m_findings;
    PatternElements m_elements;
    QVector<Group> m_groups;
    int m_at = 0;
};

} // namespace

PatternElements scanPattern(const SourceText& pattern, Findings& findings)
{
    return PatternScanner(pattern, findings).scan();
}

} // namespace hx

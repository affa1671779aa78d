#include "apps/hxmidi/input/NumberList.h"

#include "apps/hxmidi/input/NumberText.h"
#include "qt/Saturated.h"

namespace hx::midi {

namespace {

bool isSeparator(char c)
{
    return c == ' ' || c == ',' || c == '\n';
}

Span nextWord(const QByteArray& text, int from, int end)
{
    while (from < end && isSeparator(text.at(from)))
        ++from;
    int stop = from;
    while (stop < end && !isSeparator(text.at(stop)))
        ++stop;
    return {from, stop - from};
}

QByteArray readNumbers(const SourceText& source, Span section, Findings& findings)
{
    QByteArray bytes;
    const int end = section.at + section.length;
    for (Span word = nextWord(source.text, section.at, end); word.length > 0;
         word = nextWord(source.text, word.at + word.length, end)) {
        const auto value = readNumber({source, word}, {0, 255}, QStringLiteral("a byte"), findings);
        bytes += static_cast<char>(value.value_or(0));
    }
    return bytes;
}

} // namespace

QByteArray readDecimalList(const SourceText& source, Findings& findings)
{
    return readNumbers(source, {0, saturated(source.text.size())}, findings);
}

QByteArray readCArray(const SourceText& source, Findings& findings)
{
    const int open = saturated(source.text.indexOf('{'));
    if (open < 0)
        return readNumbers(source, {0, saturated(source.text.size())}, findings);
    const int close = saturated(source.text.indexOf('}', open));
    if (close >= 0)
        return readNumbers(source, {open + 1, close - open - 1}, findings);
    findings.error(QStringLiteral("the array's brace is not closed"), QStringLiteral("{ numbers }"),
                   QStringLiteral("add the closing brace"), Place{source, {open, 1}});
    return QByteArray();
}

} // namespace hx::midi

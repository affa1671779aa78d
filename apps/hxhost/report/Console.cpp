#include "apps/hxhost/report/Console.h"

#include "apps/hxhost/report/Terminal.h"

#include <QTextStream>

#include <cstdio>

namespace hx {

namespace {

void writeError(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
    fflush(stderr);
}

constexpr char redCode[] = "31";
constexpr char yellowCode[] = "33";

} // namespace

Console::Console(Verbosity verbosity) : m_verbosity(verbosity), m_colour(colourAllowed()) {}

void Console::warning(const QString& text)
{
    say(Verbosity::Normal,
        coloured(yellowCode, QStringLiteral("warning:")) + QLatin1Char(' ') + text);
}

void Console::problem(const Problem& problem)
{
    line(coloured(redCode, QStringLiteral("error:")) + QLatin1Char(' ') + problem.what);
    if (!problem.expected.isEmpty())
        line(QStringLiteral("  expected: ") + problem.expected);
    if (!problem.next.isEmpty())
        line(QStringLiteral("  next: ") + problem.next);
}

QString Console::ask(const QString& question)
{
    endRedraw();
    writeError(question + QLatin1Char(' '));
    QTextStream input(stdin);
    const QString answer = input.readLine();
    return answer.isNull() ? answer : answer.trimmed();
}

void Console::redraw(const QString& text)
{
    m_redrawing = true;
    writeError(QStringLiteral("\r\033[K") + text);
}

void Console::endRedraw()
{
    if (m_redrawing)
        writeError(QStringLiteral("\n"));
    m_redrawing = false;
}

void Console::line(const QString& text)
{
    endRedraw();
    writeError(text + QLatin1Char('\n'));
}

void Console::say(Verbosity level, const QString& text)
{
    if (m_verbosity >= level)
        line(text);
}

QString Console::coloured(const char* code, const QString& text) const
{
    if (!m_colour)
        return text;
    return QStringLiteral("\033[%1m%2\033[0m").arg(QLatin1String(code), text);
}

} // namespace hx

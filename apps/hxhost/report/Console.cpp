#include "apps/hxhost/report/Console.h"

#include "apps/hxhost/report/JsonText.h"
#include "apps/hxhost/report/Terminal.h"
#include "host/base/PrintableText.h"
#include "qt/Saturated.h"

#include <QJsonDocument>

#include <cstdio>
#include <utility>

namespace hx::host {

namespace {

void writeError(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
    fflush(stderr);
}

QString jsonLine(const char* name, const QJsonValue& value)
{
    const QJsonObject object{{QString::fromLatin1(name), withoutStrayUnits(value)}};
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

constexpr char redCode[] = "31";
constexpr char yellowCode[] = "33";

} // namespace

Console::Console(Verbosity verbosity, bool isForPrograms)
    : m_verbosity(verbosity), m_isForPrograms(isForPrograms), m_colour(colourAllowed())
{
}

void Console::note(const QString& text)
{
    if (!m_isForPrograms)
        say(Verbosity::Normal, text);
}

void Console::warning(const QString& text)
{
    if (m_verbosity < Verbosity::Normal)
        return;
    if (m_isForPrograms)
        line(jsonLine("warning", text));
    else
        line(coloured(yellowCode, QStringLiteral("warning:")) + QLatin1Char(' ') + printable(text));
}

void Console::problem(const Problem& problem)
{
    if (m_isForPrograms)
        return line(jsonLine("error", problemObject(problem)));
    line(coloured(redCode, QStringLiteral("error:")) + QLatin1Char(' ') + printable(problem.what));
    if (!problem.expected.isEmpty())
        line(QStringLiteral("  expected: ") + printable(problem.expected));
    if (!problem.next.isEmpty())
        line(QStringLiteral("  next: ") + printable(problem.next));
}

QString Console::ask(const QString& question, const std::atomic<bool>& interrupted)
{
    endRedraw();
    if (!writeToTerminal(printableLines(question).toUtf8() + ' ')) {
        if (m_isForPrograms)
            return QString();
        writeError(printableLines(question) + QLatin1Char(' '));
    }
    const QByteArray line = readTypedLine(interrupted);
    return line.isNull() ? QString() : QString::fromLocal8Bit(line).trimmed();
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

void Console::redrawLines(const QStringList& lines)
{
    eraseLines();
    m_drawnLines = saturated(lines.size());
    writeError(lines.join(QLatin1Char('\n')));
}

void Console::eraseLines()
{
    const int above = std::exchange(m_drawnLines, 0) - 1;
    if (above > 0)
        writeError(QStringLiteral("\033[%1A").arg(above));
    if (above >= 0)
        writeError(QStringLiteral("\r\033[J"));
}

void Console::line(const QString& text)
{
    eraseLines();
    endRedraw();
    writeError(text + QLatin1Char('\n'));
}

void Console::say(Verbosity level, const QString& text)
{
    if (m_verbosity >= level)
        line(m_isForPrograms ? jsonLine("detail", text) : printable(text));
}

QString Console::coloured(const char* code, const QString& text) const
{
    if (!m_colour)
        return text;
    return QStringLiteral("\033[%1m%2\033[0m").arg(QLatin1String(code), text);
}

} // namespace hx::host

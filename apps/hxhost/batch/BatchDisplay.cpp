#include "apps/hxhost/batch/BatchDisplay.h"

#include "apps/hxhost/report/Terminal.h"
#include "qt/Saturated.h"

#include <QJsonDocument>

#include <algorithm>

namespace hx::host {

namespace {

QString jsonLineOf(const QJsonObject& object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

UpdateProgress progressOf(const QJsonObject& line)
{
    UpdateProgress progress;
    progress.message = line.value(QStringLiteral("message")).toInt();
    progress.totalMessages = line.value(QStringLiteral("messages")).toInt();
    progress.bytes = qint64(line.value(QStringLiteral("bytes")).toDouble());
    progress.totalBytes = qint64(line.value(QStringLiteral("totalBytes")).toDouble());
    progress.retries = line.value(QStringLiteral("retries")).toInt();
    progress.bytesPerSecond = line.value(QStringLiteral("bytesPerSecond")).toDouble();
    progress.remainingMicroseconds =
        qint64(line.value(QStringLiteral("remainingMs")).toDouble()) * microsecondsPerMillisecond;
    return progress;
}

QString unitName(const BatchUnit& unit)
{
    return unit.serial.isEmpty() ? unit.port : unit.serial + QStringLiteral(" on ") + unit.port;
}

QString endText(const BatchUnit& unit)
{
    QString text = unitName(unit) + QStringLiteral(": ") + unit.outcome;
    if (!unit.reason.isEmpty())
        text += QStringLiteral(": ") + unit.reason;
    else if (unit.succeeded())
        text += QStringLiteral(", version ") + unit.versionAfter;
    return unit.warnings.isEmpty() ? text : text + QStringLiteral(". Warning: ") + unit.warnings;
}

QJsonObject countObject(const BatchCount& count)
{
    return {{"succeeded", count.succeeded}, {"failed", count.failed}, {"skipped", count.skipped}};
}

QString countText(const BatchCount& count)
{
    return QStringLiteral("%1 updated, %2 failed").arg(count.succeeded).arg(count.failed);
}

} // namespace

ProgressMode batchMode(ProgressMode mode)
{
    const ProgressMode resolved = resolvedMode(mode);
    return mode == ProgressMode::Auto && resolved == ProgressMode::Plain ? ProgressMode::Json
                                                                         : resolved;
}

BatchDisplay::BatchDisplay(Console& console, ProgressMode mode) : m_console(console), m_mode(mode)
{
}

void BatchDisplay::show(const BatchUnit& unit, const QJsonObject& progress)
{
    if (m_mode == ProgressMode::None)
        return;
    if (m_mode == ProgressMode::Json) {
        QJsonObject line = progress;
        line.insert(QStringLiteral("port"), unit.port);
        line.insert(QStringLiteral("serial"), unit.serial);
        return m_console.line(jsonLineOf(line));
    }
    m_running[unit.port] = progressOf(progress);
    m_names[unit.port] = unitName(unit);
    if (m_mode == ProgressMode::Bar)
        return redraw();
    const int tenths = percentOf(m_running[unit.port]) / 10;
    const auto shown = m_shown.find(unit.port);
    if (shown != m_shown.end() && shown->second == tenths)
        return;
    m_shown[unit.port] = tenths;
    m_console.line(unitName(unit) + QStringLiteral(": ") + progressLine(m_running[unit.port]));
}

void BatchDisplay::end(const BatchUnit& unit, const BatchCount& count)
{
    m_running.erase(unit.port);
    m_shown.erase(unit.port);
    if (m_mode == ProgressMode::None)
        return;
    if (m_mode == ProgressMode::Json)
        return m_console.line(
            jsonLineOf({{"unit", batchObject(unit)}, {"count", countObject(count)}}));
    m_count = countText(count);
    m_console.line(endText(unit));
    if (m_mode == ProgressMode::Bar)
        redraw();
    else
        m_console.line(m_count);
}

void BatchDisplay::note(const QString& text)
{
    if (m_mode == ProgressMode::Json)
        m_console.line(jsonLineOf({{"note", text}}));
    else
        m_console.note(text);
}

// The last column would make some terminals go to the next line, and more lines than there are would
// scroll away.
void BatchDisplay::redraw()
{
    const int columns = terminalColumns() - 1;
    const int room = columns / 2;
    const size_t most = size_t(std::max(terminalRows() - 2, 1));
    QStringList lines;
    for (const auto& [port, progress] : m_running) {
        if (size_t(lines.size()) < most)
            lines << m_names[port].left(room).leftJustified(room) + QStringLiteral("  ") +
                         progressBar(progress, columns - room - 1);
    }
    const size_t hidden = m_running.size() - std::min(m_running.size(), most);
    QString last = m_count.isEmpty() ? QStringLiteral("none is done yet") : m_count;
    if (hidden > 0)
        last += QStringLiteral(", %1 more under way").arg(hidden);
    m_console.redrawLines(lines << last.left(columns));
}

void BatchDisplay::finish()
{
    m_running.clear();
    if (m_mode == ProgressMode::Bar)
        m_console.redrawLines({});
}

} // namespace hx::host

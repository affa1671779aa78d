#include "apps/hxhost/report/Progress.h"

#include "apps/hxhost/report/Terminal.h"
#include "qt/Saturated.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace hx::host {

namespace {

constexpr int widestBar = 40;
constexpr int narrowestBar = 8;

QString rateText(const UpdateProgress& progress)
{
    return QString::asprintf("%.1f kB/s", progress.bytesPerSecond / 1000.0);
}

QString timeText(const UpdateProgress& progress)
{
    if (progress.remainingMicroseconds <= 0 && progress.bytes < progress.totalBytes)
        return QStringLiteral("-:-- left");
    const qint64 left = (progress.remainingMicroseconds + 999999) / 1000000;
    return QString::asprintf("%lld:%02lld left", static_cast<long long>(left / 60),
                             static_cast<long long>(left % 60));
}

QString barOf(int width, int percent)
{
    const int filled = width * percent / 100;
    return QLatin1Char('[') + QString(filled, QLatin1Char('#')) +
           QString(width - filled, QLatin1Char('.')) + QLatin1Char(']');
}

} // namespace

ProgressMode resolvedMode(ProgressMode mode)
{
    const bool redraws = lineMayBeRedrawn();
    if (mode == ProgressMode::Auto || (mode == ProgressMode::Bar && !redraws))
        return redraws ? ProgressMode::Bar : ProgressMode::Plain;
    return mode;
}

int percentOf(const UpdateProgress& progress)
{
    return progress.totalBytes > 0 ? int(100 * progress.bytes / progress.totalBytes) : 0;
}

QString progressBar(const UpdateProgress& progress, int columns)
{
    const int room = columns - 1; // the last column would make some terminals go to the next line
    QString text = QString::asprintf("%3d%%", percentOf(progress));
    for (const QString& piece : {timeText(progress), rateText(progress)}) {
        if (text.size() + 2 + piece.size() <= room)
            text += QLatin1String("  ") + piece;
    }
    const int width = std::min(widestBar, room - saturated(text.size()) - 3);
    return width >= narrowestBar ? barOf(width, percentOf(progress)) + QLatin1Char(' ') + text
                                 : text;
}

QString progressLine(const UpdateProgress& progress)
{
    return QStringLiteral("%1%: %2 of %3 messages, %4 of %5 bytes, %6, %7")
        .arg(QString::number(percentOf(progress)), QString::number(progress.message),
             QString::number(progress.totalMessages), QString::number(progress.bytes),
             QString::number(progress.totalBytes), rateText(progress), timeText(progress));
}

QString progressJson(const UpdateProgress& progress)
{
    const qint64 remainingMs = progress.remainingMicroseconds / 1000;
    const QJsonObject object{{"percent", percentOf(progress)},
                             {"message", progress.message},
                             {"messages", progress.totalMessages},
                             {"bytes", double(progress.bytes)},
                             {"totalBytes", double(progress.totalBytes)},
                             {"retries", progress.retries},
                             {"bytesPerSecond", std::floor(progress.bytesPerSecond)},
                             {"remainingMs", double(remainingMs)}};
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

Progress::Progress(Console& console, ProgressMode mode)
    : m_console(console), m_mode(resolvedMode(mode))
{
}

void Progress::show(const UpdateProgress& progress)
{
    const int reached = percentOf(progress) / step();
    if (m_mode == ProgressMode::None || reached == m_shown)
        return;
    m_shown = reached;
    if (m_mode == ProgressMode::Bar)
        m_console.redraw(progressBar(progress, terminalColumns()));
    else
        m_console.line(m_mode == ProgressMode::Json ? progressJson(progress)
                                                    : progressLine(progress));
}

void Progress::finish()
{
    m_console.endRedraw();
}

} // namespace hx::host

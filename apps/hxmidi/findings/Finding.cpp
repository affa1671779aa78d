#include "apps/hxmidi/findings/Finding.h"

namespace hx::midi {

void Findings::add(const Finding& finding)
{
    int& count = m_counts[int(finding.severity)];
    if (++count <= keptOfEach)
        m_kept += finding;
}

void Findings::error(const QString& what, const QString& expected, const QString& next,
                     const std::optional<Place>& place)
{
    add({Severity::Error, what, expected, next, place});
}

void Findings::warning(const QString& what, const QString& next, const std::optional<Place>& place)
{
    add({Severity::Warning, what, QString(), next, place});
}

QString harmless(const QByteArray& text)
{
    QString shown = QString::fromUtf8(text);
    for (QChar& c : shown) {
        const QChar::Category category = c.category();
        if (category == QChar::Other_Control || category == QChar::Other_Format)
            c = QLatin1Char('?');
    }
    return shown;
}

QString quoted(const QByteArray& piece)
{
    constexpr int longest = 40;
    QString shown = harmless(piece);
    if (shown.size() > longest)
        shown = shown.left(longest) + QStringLiteral("...");
    return QLatin1Char('"') + shown + QLatin1Char('"');
}

} // namespace hx::midi

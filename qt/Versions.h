// All that the sources must ask Qt's version for: what 5 and 6 call by different names.
// docs/developer/qt-versions.md says of each how long it is meant to live.
#pragma once

#include <QRegExp>
#include <QString>

namespace hx {

// `text` with `with` in place of every match; "\\1" in `with` stands for what the first group matched.
inline QString replaced(const QString& text, const QRegExp& pattern, const QString& with)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return pattern.replaceIn(text, with);
#else
    return QString(text).replace(pattern, with);
#endif
}

// The second of the two functions that a plugin's library exports; the first is qt_plugin_instance.
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
constexpr char pluginMetadataFunction[] = "qt_plugin_query_metadata_v2";
#else
constexpr char pluginMetadataFunction[] = "qt_plugin_query_metadata";
#endif

} // namespace hx

// Which Qt a plugin file was made for, also where the Qt of this host sees no plugin in it.
#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

namespace hx {

struct QtVersion {
    int majorNumber = 0;
    int minorNumber = 0;

    // "6.4"
    QString text() const;
};

// The Qt that this process runs with.
QtVersion runningQt();

// What a library's metadata says, as Qt reads it or, where it reads none, as it is in the file: in an
// ELF note (Qt 6.3 and newer) or in a section of its own (older Qt, Mach-O). None of the library's code
// runs. Nothing when there is no metadata, or when it is cut off.
std::optional<QtVersion> qtVersionOfPlugin(const QJsonObject& metaData, const QString& path);

} // namespace hx

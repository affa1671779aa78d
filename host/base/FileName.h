// Names of files as the system has them: bytes, most often UTF-8 but not always, whatever the
// locale. A name travels as a QString from which its bytes can be had again.
#pragma once

#include <QByteArray>
#include <QString>

#include <filesystem>
#include <string>

namespace hx {

// The name as text. Each byte that is not UTF-8 becomes the lone surrogate U+DC00 plus the byte, so
// that two names never become one.
QString fileNameText(const std::string& bytes);

// The bytes again; of a text from elsewhere its UTF-8.
QByteArray fileNameBytes(const QString& name);

std::filesystem::path filePath(const QString& name);

// The absolute place that the name leads to, through symbolic links and whether or not there is a
// file yet.
std::filesystem::path resolvedPath(const QString& name);

} // namespace hx

#include "apps/hxhost/session/SameFile.h"

#include <QFile>

#include <filesystem>

namespace hx {

namespace {

std::filesystem::path pathOf(const QString& name)
{
    return QFile::encodeName(name).toStdString();
}

} // namespace

bool isSameFile(const QString& first, const QString& second)
{
    std::error_code error; // a file that is not there is not the same
    const std::filesystem::path path = pathOf(first);
    return std::filesystem::is_regular_file(path, error) &&
           std::filesystem::equivalent(path, pathOf(second), error);
}

} // namespace hx

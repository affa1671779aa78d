#include "apps/hxhost/session/SameFile.h"

#include "host/base/FileName.h"

#include <sys/stat.h>

namespace hx::host {

namespace {

namespace fs = std::filesystem;

QString foldedPlace(const QString& name)
{
    const QString place = fileNameText(resolvedPath(name).string());
    return place.normalized(QString::NormalizationForm_C).toCaseFolded();
}

} // namespace

bool isSameFile(const QString& first, const QString& second)
{
    std::error_code error; // a file that is not there is not the same
    const fs::path path = filePath(first);
    return fs::is_regular_file(path, error) && fs::equivalent(path, filePath(second), error);
}

bool becomeOneFile(const QString& first, const QString& second)
{
    std::error_code error; // what cannot be looked at cannot be written either
    const bool isThere = fs::exists(filePath(first), error) || fs::exists(filePath(second), error);
    return isThere ? isSameFile(first, second) : foldedPlace(first) == foldedPlace(second);
}

bool isStream(int stream, const QString& name)
{
    struct stat open = {};
    struct stat named = {};
    return fstat(stream, &open) == 0 && S_ISREG(open.st_mode) &&
           stat(fileNameBytes(name).constData(), &named) == 0 && open.st_dev == named.st_dev &&
           open.st_ino == named.st_ino;
}

} // namespace hx::host

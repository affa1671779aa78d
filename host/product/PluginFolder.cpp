#include "host/product/PluginFolder.h"

#include "host/base/FileName.h"

#include <QCoreApplication>

namespace hx {

namespace {

namespace fs = std::filesystem;

// Qt's own answer is of no use where the locale cannot write the folder's name.
fs::path programFolder()
{
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (error)
        return filePath(QCoreApplication::applicationDirPath());
    return program.parent_path();
}

} // namespace

QString pluginFolder()
{
    std::error_code error;
    const fs::path installed = (programFolder() / HX_PLUGIN_FOLDER).lexically_normal();
    if (fs::is_directory(installed, error))
        return fileNameText(installed.string());
    return fileNameText((programFolder() / "../lib").lexically_normal().string());
}

} // namespace hx

#include "apps/hxhost/session/LoadedFiles.h"

#include "host/base/FileName.h"

#include <QCoreApplication>

#if defined(Q_OS_LINUX)
#include <link.h>
#elif defined(Q_OS_MACOS)
#include <mach-o/dyld.h>
#endif

namespace hx::host {

namespace {

#if defined(Q_OS_LINUX)

int addLibrary(dl_phdr_info* info, size_t, void* list)
{
    const std::string name = info->dlpi_name; // empty for the program
    if (!name.empty())
        static_cast<QStringList*>(list)->append(fileNameText(name));
    return 0;
}

void addLibraries(QStringList& files)
{
    files << QStringLiteral("/proc/self/exe");
    dl_iterate_phdr(addLibrary, &files);
}

#elif defined(Q_OS_MACOS)

void addLibraries(QStringList& files)
{
    for (uint32_t i = 0; i < _dyld_image_count(); ++i)
        files << fileNameText(_dyld_get_image_name(i));
}

#else

void addLibraries(QStringList&) {}

#endif

} // namespace

QStringList loadedFiles()
{
    QStringList files{QCoreApplication::applicationFilePath()};
    addLibraries(files);
    return files;
}

} // namespace hx::host

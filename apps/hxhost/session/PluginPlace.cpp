#include "apps/hxhost/session/PluginPlace.h"

#include "host/base/FileName.h"
#include "host/product/PluginFolder.h"
#include "host/signature/TrustedKeys.h"

#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QTemporaryDir>

namespace hx::host {

namespace {

namespace fs = std::filesystem;

bool canBeNamed(const QString& place)
{
    return QFile::encodeName(place) == fileNameBytes(place);
}

// The keys that lie beside a plugin lie beside its copy too: without them it would take any image.
bool linkKeys(const fs::path& library, const fs::path& copy)
{
    const QString keys = keyFileBeside(fileNameText(library.string()));
    std::error_code error;
    if (!keys.isEmpty())
        fs::create_symlink(fs::absolute(filePath(keys)), fs::path(copy).replace_extension(".pub"),
                           error);
    return !error;
}

void copyLibrary(const fs::path& library, const QString& folder)
{
    const QString name = fileNameText(library.filename().string());
    if (!QLibrary::isLibrary(name))
        return;
    const QString copy =
        canBeNamed(name) ? name : QStringLiteral("plugin.") + QFileInfo(name).suffix();
    const fs::path place = filePath(QDir(folder).filePath(copy));
    std::error_code error; // what cannot be copied is not found then, and that is said
    if (linkKeys(library, place))
        fs::copy_file(library, place, error);
}

QString loadablePlace(const QString& place)
{
    std::error_code error;
    if (canBeNamed(place) || !fs::exists(filePath(place), error))
        return place;
    static const QTemporaryDir copies;
    if (!fs::is_directory(filePath(place), error))
        copyLibrary(filePath(place), copies.path());
    for (const fs::directory_entry& entry : fs::directory_iterator(filePath(place), error))
        copyLibrary(entry.path(), copies.path());
    return copies.path();
}

} // namespace

QString pluginSource(const PluginOptions& options)
{
    return options.plugin.empty() ? pluginFolder() : fileNameText(options.plugin);
}

QString pluginPlace(const PluginOptions& options)
{
    return loadablePlace(pluginSource(options));
}

void failWithoutPlugin(CommandContext& context, Problem problem)
{
    problem.code = ExitCode::NoPlugin;
    problem.next += QStringLiteral("; --plugin takes a plugin's file or folder");
    context.report.fail(problem);
}

std::unique_ptr<LoadedPlugin> loadChosenPlugin(CommandContext& context,
                                               const PluginOptions& options)
{
    const QString place = pluginPlace(options);
    PluginLoadResult result = loadPlugin(place);
    if (!result.ok()) {
        result.problem.what.replace(place, pluginSource(options));
        failWithoutPlugin(context, result.problem);
    }
    return std::move(result.plugin);
}

} // namespace hx::host

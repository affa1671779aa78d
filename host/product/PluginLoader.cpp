#include "host/product/PluginLoader.h"

#include "host/product/LibraryFile.h"
#include "host/product/PluginQtVersion.h"
#include "host/product/PluginTrial.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QLibrary>

namespace hx {

namespace {

const QString iidKey = QStringLiteral("IID");

struct Advice {
    const char* expected;
    const char* next;
};

PluginLoadResult failed(PluginFault fault, const QString& what, const Advice& advice)
{
    PluginLoadResult result;
    result.fault = fault;
    result.problem = {ExitCode::NoPlugin, what, QLatin1String(advice.expected),
                      QLatin1String(advice.next)};
    return result;
}

// Of a file that cannot be a plugin.
constexpr Advice wholePlugin = {"a whole device plugin, made for this machine",
                                "install the plugin again"};

constexpr Advice libraryOrFolder = {"a plugin's library file, or the folder that holds it",
                                    "check the path"};

// The first bytes of the platforms' shared libraries: ELF, Mach-O in its four forms, PE.
bool hasLibraryMagic(const QByteArray& head)
{
    static const char* const magics[] = {"7f454c46", "feedface", "feedfacf", "cefaedfe",
                                         "cffaedfe", "cafebabe", "4d5a"};
    for (const char* magic : magics) {
        if (head.startsWith(QByteArray::fromHex(magic)))
            return true;
    }
    return false;
}

QStringList keysOf(const QJsonObject& metaData)
{
    QStringList keys;
    const QJsonArray list = metaData.value(QStringLiteral("MetaData"))
                                .toObject()
                                .value(QStringLiteral("Keys"))
                                .toArray();
    for (const QJsonValue& key : list) {
        if (!key.toString().isEmpty())
            keys << key.toString();
    }
    return keys;
}

PluginLoadResult checkIsLibrary(const QString& path)
{
    QFile file(path);
    const bool isRegular = QFileInfo(path).isFile(); // opening a pipe could wait for ever
    if (isRegular && !file.open(QIODevice::ReadOnly))
        return failed(PluginFault::Missing,
                      QStringLiteral("%1 cannot be read: %2").arg(path, file.errorString()),
                      {"a file that this user may read", "check its permissions"});
    if (isRegular && hasLibraryMagic(file.read(4)))
        return {};
    return failed(
        PluginFault::NotALibrary,
        QStringLiteral("%1 (%2 bytes) is not a shared library").arg(path).arg(file.size()),
        libraryOrFolder);
}

PluginLoadResult otherQt(const QString& path, const QtVersion& made)
{
    return failed(PluginFault::OtherQt,
                  QStringLiteral("%1 is made for Qt %2, this host runs Qt %3")
                      .arg(path, made.text(), runningQt().text()),
                  {"a plugin made for the same major version of Qt",
                   "install that one, or use a host made for the plugin's Qt"});
}

// Looks at the metadata alone: no code of the plugin runs.
PluginLoadResult checkMetaData(const QPluginLoader& loader, const QString& path)
{
    const QJsonObject metaData = loader.metaData();
    const std::optional<QtVersion> made = qtVersionOfPlugin(metaData, path);
    if (made && made->majorNumber != runningQt().majorNumber)
        return otherQt(path, *made);
    if (metaData.isEmpty())
        return failed(
            PluginFault::NoMetadata,
            QStringLiteral("%1 carries no plugin metadata (%2)").arg(path, loader.errorString()),
            wholePlugin);
    if (isCutOff(path))
        return failed(PluginFault::NoMetadata,
                      QStringLiteral("%1 is cut off: it has %2 bytes and lacks its end")
                          .arg(path)
                          .arg(QFileInfo(path).size()),
                      wholePlugin);
    const QString iid = metaData.value(iidKey).toString();
    if (!iid.startsWith(deviceInterfacePrefix()))
        return failed(PluginFault::WrongInterface,
                      QStringLiteral("%1 is a plugin for \"%2\", not for \"%3\"")
                          .arg(path, iid, deviceInterfacePrefix()),
                      {"a device plugin", "name one"});
    if (keysOf(metaData).isEmpty())
        return failed(
            PluginFault::NoKeys, QStringLiteral("%1 names no key in its metadata").arg(path),
            {"a list \"Keys\" of at least one text", "ask its maker for a complete plugin"});
    return {};
}

PluginLoadResult instantiate(const QString& path, QLibrary::LoadHints hints)
{
    auto loader = std::make_unique<QPluginLoader>(path);
    loader->setLoadHints(QLibrary::ResolveAllSymbolsHint | hints);
    if (!loader->load())
        return failed(PluginFault::LoadFailed,
                      QStringLiteral("%1 cannot be loaded: %2").arg(path, loader->errorString()),
                      {"a whole plugin, made for this version of Qt and of the host",
                       "install the plugin again"});
    auto* device = qobject_cast<DeviceInterface*>(loader->instance());
    if (device == nullptr) {
        loader->unload();
        return failed(PluginFault::NoDeviceInterface,
                      QStringLiteral("%1 was loaded, but its object does not offer DeviceInterface")
                          .arg(path),
                      {"a device plugin made for this host", "ask its maker for one"});
    }
    PluginLoadResult result;
    result.plugin = std::make_unique<LoadedPlugin>(std::move(loader), device, path);
    return result;
}

PluginLoadResult fatal(const QString& path, const QString& what)
{
    return failed(PluginFault::Fatal,
                  QStringLiteral("%1 was tried in a process of its own, and %2").arg(path, what),
                  wholePlugin);
}

PluginLoadResult checkFile(const QString& path, PluginCare care)
{
    PluginLoadResult found = checkIsLibrary(path);
    if (found.fault != PluginFault::None)
        return found;
    const auto look = [&path] { return checkMetaData(QPluginLoader(path), path); };
    const QString problem = care == PluginCare::Tried ? trialProblem(look) : QString();
    return problem.isEmpty() ? look() : fatal(path, problem);
}

PluginLoadResult loadFile(const QString& path, PluginCare care)
{
    PluginLoadResult found = checkFile(path, care);
    if (found.fault != PluginFault::None)
        return found;
    if (care == PluginCare::Untried)
        return instantiate(path, {});
    const auto loadAndAsk = [&path] {
        const PluginLoadResult loaded = instantiate(path, {});
        if (loaded.ok())
            askEverything(loaded.plugin->device());
    };
    const QString problem = trialProblem(loadAndAsk);
    // A damaged library may leave a function of its own to be called at the end of the program.
    return problem.isEmpty() ? instantiate(path, QLibrary::PreventUnloadHint)
                             : fatal(path, problem);
}

// Files that are libraries by their name.
QStringList librariesIn(const QString& folder)
{
    QStringList paths;
    for (const QFileInfo& entry : QDir(folder).entryInfoList(QDir::Files, QDir::Name)) {
        if (QLibrary::isLibrary(entry.fileName()))
            paths << entry.filePath();
    }
    return paths;
}

// Why a folder holds no plugin: the reason of each library, or of the first of many.
QString whyNone(const QStringList& reasons)
{
    constexpr int mostListed = 3;
    if (reasons.isEmpty())
        return QStringLiteral("it holds no library");
    const QString listed = reasons.mid(0, mostListed).join(QStringLiteral("; "));
    const auto more = reasons.size() - mostListed;
    return more > 0
               ? listed + QStringLiteral("; %1 more libraries are not plugins either").arg(more)
               : listed;
}

PluginLoadResult loadFromFolder(const QString& folder, PluginCare care)
{
    QStringList plugins;
    QStringList others;
    for (const QString& path : librariesIn(folder)) {
        const PluginLoadResult found = checkFile(path, care);
        if (found.fault == PluginFault::None)
            plugins << path;
        else
            others << found.problem.what;
    }
    if (plugins.size() == 1)
        return loadFile(plugins.first(), care);
    if (plugins.size() > 1)
        return failed(PluginFault::SeveralInFolder,
                      QStringLiteral("the folder %1 holds %2 device plugins: %3")
                          .arg(folder)
                          .arg(plugins.size())
                          .arg(plugins.join(QStringLiteral(", "))),
                      {"one plugin", "name one of them"});
    return failed(
        PluginFault::NoneInFolder,
        QStringLiteral("the folder %1 holds no device plugin: %2").arg(folder, whyNone(others)),
        libraryOrFolder);
}

} // namespace

QString deviceInterfacePrefix()
{
    return QString::fromLatin1(qobject_interface_iid<DeviceInterface*>()) + QLatin1Char('.');
}

LoadedPlugin::LoadedPlugin(std::unique_ptr<QPluginLoader> loader, DeviceInterface* device,
                           const QString& givenPath)
    : m_loader(std::move(loader)), m_device(device), m_givenPath(givenPath)
{
}

LoadedPlugin::~LoadedPlugin()
{
    m_loader->unload(); // deletes the object, then closes the library
}

QString LoadedPlugin::interfaceId() const
{
    return metaData().value(iidKey).toString();
}

QString LoadedPlugin::className() const
{
    return metaData().value(QStringLiteral("className")).toString();
}

QStringList LoadedPlugin::keys() const
{
    return keysOf(metaData());
}

PluginLoadResult loadPlugin(const QString& path, PluginCare care)
{
    const QFileInfo info(path);
    if (!info.exists())
        return failed(PluginFault::Missing,
                      QStringLiteral("there is no file or folder %1").arg(path), libraryOrFolder);
    const QString absolute = info.absoluteFilePath(); // Qt's loader seeks others in system folders
    return info.isDir() ? loadFromFolder(absolute, care) : loadFile(absolute, care);
}

} // namespace hx

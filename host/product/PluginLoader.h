/** @file
 * Loads a device plugin through Qt's plugin loader, or says why it cannot be loaded.
 */
#pragma once

#include "deviceinterface/DeviceInterface.h"
#include "host/base/Problem.h"

#include <QJsonObject>
#include <QObject>
#include <QPluginLoader>
#include <QString>
#include <QStringList>

#include <memory>

namespace hx {

/**
 * What is wrong with a plugin file. Everything before LoadFailed is found without running any code
 * of the plugin: by looking at the file and at the metadata embedded in it.
 */
enum class PluginFault {
    None,
    Missing,           /**< no such file or folder, or it cannot be read */
    NotALibrary,       /**< the file is not a shared library: a text, a zero-length file */
    NoMetadata,        /**< a library, cut off or whole, that carries no Qt plugin metadata */
    OtherQt,           /**< made for another major version of Qt than the host runs with */
    WrongInterface,    /**< metadata of a plugin made for something else */
    NoKeys,            /**< the interface fits, but the metadata names no key */
    NoneInFolder,      /**< a folder without a plugin for this host */
    SeveralInFolder,   /**< a folder with more than one: the host does not guess */
    LoadFailed,        /**< unresolved symbol, other Qt version, damaged code */
    NoDeviceInterface, /**< loaded, but its object does not answer to DeviceInterface */
    Fatal,             /**< it crashed, hung or ended the process in which it was tried */
};

enum class PluginCare {
    /** in a process of its own first: a damaged file does not take this process with it */
    Tried,
    Untried, /**< for a process that may crash */
};

/** Start of the interface identifier of every plugin that this host takes. */
QString deviceInterfacePrefix();

/**
 * A plugin that is loaded and usable. Its object is destroyed when this goes away; texts and values
 * obtained from it may point into the library's memory and must be gone by then. The library itself
 * stays in memory to the end of a process that tried it first.
 */
class LoadedPlugin {
public:
    LoadedPlugin(std::unique_ptr<QPluginLoader> loader, DeviceInterface* device,
                 const QString& givenPath);
    ~LoadedPlugin();
    LoadedPlugin(const LoadedPlugin&) = delete;
    LoadedPlugin& operator=(const LoadedPlugin&) = delete;

    DeviceInterface& device() const { return *m_device; }
    QObject& object() const { return *m_loader->instance(); }
    /** The metadata as Qt embeds it: IID, className, MetaData, version, debug. */
    QJsonObject metaData() const { return m_loader->metaData(); }
    QString interfaceId() const;
    QString className() const;
    QStringList keys() const;
    /** The file, through all links. */
    QString filePath() const { return m_loader->fileName(); }
    /** The name that led to it, which may be a link. */
    QString givenPath() const { return m_givenPath; }

private:
    std::unique_ptr<QPluginLoader> m_loader;
    DeviceInterface* m_device;
    QString m_givenPath;
};

/** Either `plugin`, or the kind of fault, and what is wrong in one line. */
struct PluginLoadResult {
    std::unique_ptr<LoadedPlugin> plugin;
    PluginFault fault = PluginFault::None;
    Problem problem;

    bool ok() const { return plugin != nullptr; }
};

/**
 * Loads the plugin in the file `path`, or the only one in the folder `path` (subfolders are not
 * searched). Interface identifier and keys are checked in the metadata before any code of the
 * plugin runs; unless the caller may crash, that happens in a child process first.
 */
PluginLoadResult loadPlugin(const QString& path, PluginCare care = PluginCare::Tried);

} // namespace hx

#include "apps/hxupdate/model/Plugins.h"

#include <QDir>

namespace hxupdate {

namespace {

QStringList filesOf(const QString& place)
{
    const QDir folder(place);
    if (!folder.exists())
        return {place};
    QStringList files;
    for (const QString& name : folder.entryList(QDir::Files, QDir::Name))
        files << folder.filePath(name);
    return files;
}

} // namespace

void Plugins::load(const QString& place)
{
    for (const QString& file : filesOf(place)) {
        hx::PluginLoadResult result = hx::loadPlugin(file);
        if (!result.ok())
            continue;
        m_keys.push_back(hx::keysOf(*result.plugin));
        m_plugins.push_back(std::move(result.plugin));
    }
    const hx::Problem problem = isEmpty() ? hx::loadPlugin(place).problem : hx::Problem();
    m_error = isEmpty() ? problem.what + QStringLiteral("; ") + problem.next : QString();
}

} // namespace hxupdate

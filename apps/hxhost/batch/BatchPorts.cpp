#include "apps/hxhost/batch/BatchPorts.h"

#include "host/base/FileName.h"
#include "ports/PortSelector.h"

#include <QRegularExpression>

#include <algorithm>

namespace hx::host {

namespace {

namespace fs = std::filesystem;

const QString simulatorWord = QStringLiteral("simulator");

bool hasWildcards(const QString& pattern)
{
    return pattern.contains(QLatin1Char('*')) || pattern.contains(QLatin1Char('?'));
}

bool isWild(const QString& text, const QString& pattern, QRegularExpression::PatternOptions options)
{
    QString expression = QRegularExpression::escape(pattern);
    expression.replace(QStringLiteral("\\*"), QStringLiteral(".*"))
        .replace(QStringLiteral("\\?"), QStringLiteral("."));
    const QRegularExpression whole(QStringLiteral("\\A(?:") + expression + QStringLiteral(")\\z"),
                                   options | QRegularExpression::DotMatchesEverythingOption);
    return whole.match(text).hasMatch();
}

// "simulator:" or "device:"; empty for a pattern of names of ports.
QString filePrefix(const QString& pattern)
{
    for (const QString& prefix : {QStringLiteral("simulator:"), QStringLiteral("device:")}) {
        if (pattern.startsWith(prefix))
            return prefix;
    }
    return QString();
}

// Files whose last part fits that of `pattern`; the pattern itself where it has no wildcards.
QStringList filesThatFit(const QString& pattern)
{
    if (!hasWildcards(pattern))
        return {pattern};
    const auto slash = pattern.lastIndexOf(QLatin1Char('/')) + 1;
    const QString folder = pattern.left(slash);
    QStringList files;
    std::error_code error; // a folder that cannot be read has nothing that fits
    const fs::path place = folder.isEmpty() ? fs::path(".") : filePath(folder);
    for (const fs::directory_entry& entry : fs::directory_iterator(place, error)) {
        const QString name = fileNameText(entry.path().filename().string());
        if (isWild(name, pattern.mid(slash), QRegularExpression::NoPatternOption))
            files << folder + name;
    }
    return files;
}

QString inputName(const PortAddress& address)
{
    return address.backend + QLatin1Char(':') + address.input;
}

BatchPort backendPort(const QList<MidiBackend>& backends, const QString& name)
{
    BatchPort port{name, {}};
    const Result<PortSelection> selection = selectPort(backends, name, QString());
    if (!selection)
        return port; // what is wrong with it is said when it is opened
    port.inputs << inputName(selection->address);
    for (const PortAddress& other : selection->others)
        port.inputs << inputName(other);
    return port;
}

QStringList outputsThatFit(const QList<MidiBackend>& backends, const QString& pattern)
{
    QStringList names;
    for (const MidiBackend& backend : backends) {
        for (const QString& output : backend.outputs) {
            const QString name = backend.name + QLatin1Char(':') + output;
            if (fitsBatchPattern(name, pattern) || fitsBatchPattern(output, pattern))
                names << name;
        }
    }
    return names;
}

QString stableNameOf(const BatchPort& port)
{
    return stablePortName(port.name.section(QLatin1Char(':'), 1));
}

QString backendOf(const BatchPort& port)
{
    return port.name.section(QLatin1Char(':'), 0, 0);
}

} // namespace

bool fitsBatchPattern(const QString& text, const QString& pattern)
{
    return hasWildcards(pattern) ? isWild(text, pattern, QRegularExpression::CaseInsensitiveOption)
                                 : text.contains(pattern, Qt::CaseInsensitive);
}

bool namesBackends(const QStringList& patterns)
{
    return std::any_of(patterns.begin(), patterns.end(), [](const QString& pattern) {
        return pattern != simulatorWord && filePrefix(pattern).isEmpty();
    });
}

QList<BatchPort> batchPorts(const QList<MidiBackend>& backends, const QStringList& patterns)
{
    QList<BatchPort> ports;
    for (const QString& pattern : patterns) {
        const QString prefix = filePrefix(pattern);
        if (pattern == simulatorWord)
            ports << BatchPort{pattern, {}};
        else if (!prefix.isEmpty())
            for (const QString& file : filesThatFit(pattern.mid(prefix.size())))
                ports << BatchPort{prefix + file, {}};
        else
            for (const QString& name : outputsThatFit(backends, pattern))
                ports << backendPort(backends, name);
    }
    const auto byName = [](const BatchPort& a, const BatchPort& b) { return a.name < b.name; };
    const auto isOne = [](const BatchPort& a, const BatchPort& b) { return a.name == b.name; };
    std::sort(ports.begin(), ports.end(), byName);
    ports.erase(std::unique(ports.begin(), ports.end(), isOne), ports.end());
    return ports;
}

bool areOneFile(const BatchPort& first, const BatchPort& second)
{
    const QString prefix = filePrefix(first.name);
    return !prefix.isEmpty() && prefix == filePrefix(second.name) &&
           resolvedPath(first.name.mid(prefix.size())) ==
               resolvedPath(second.name.mid(prefix.size()));
}

bool areOnePort(const BatchPort& first, const BatchPort& second)
{
    return first.isOfBackend() && second.isOfBackend() && backendOf(first) != backendOf(second) &&
           stableNameOf(first) == stableNameOf(second);
}

} // namespace hx::host

#include "apps/hxhost/commands/OutputCheck.h"

#include "apps/hxhost/commands/Options.h"
#include "apps/hxhost/session/LoadedFiles.h"
#include "apps/hxhost/session/PluginPlace.h"
#include "apps/hxhost/session/SameFile.h"
#include "host/base/FileLock.h"
#include "host/base/FileName.h"
#include "host/signature/ImageSignature.h"

#include <QLibrary>

#include <algorithm>
#include <array>
#include <vector>

#include <unistd.h>

namespace hx::host {

namespace {

const QString statePrefix = QStringLiteral("simulator:");

// A file with the words that tell a person why it is of this run.
struct NamedFile {
    QString name;
    QString role;   // "the file that IMAGE names"
    QString option; // that names it; empty for what no option names
};

using NamedFiles = std::vector<NamedFile>;

QString optionName(const GivenOption& option)
{
    return QString::fromStdString(option.name);
}

NamedFile namedBy(const GivenOption& option, const QString& name)
{
    return {name, QStringLiteral("the file that %1 names").arg(optionName(option)),
            optionName(option)};
}

// What follows "replay:", "simulator:" or a backend's name; all of it without these.
QString afterColon(const QString& value)
{
    return value.mid(value.indexOf(QLatin1Char(':')) + 1);
}

void addValue(const GivenOption& option, const QString& value, NamedFiles& files)
{
    files.push_back(namedBy(option, value));
    if (option.isArgument)
        files.push_back({signatureNameOf(value),
                         QStringLiteral("the signature of what %1 names").arg(optionName(option)),
                         QString()});
    if (value.contains(QLatin1Char(':')))
        files.push_back(namedBy(option, afterColon(value)));
}

// Flags take no value, and the values of the other output options are words.
bool mayNameInput(const GivenOption& option)
{
    return !option.isFlag && option.group != outputGroup && !namesOutput(option);
}

QStringList valuesOf(const GivenOption& option)
{
    QStringList values;
    for (const std::string& value : option.values)
        values << fileNameText(value);
    return values;
}

void addPlugin(const QString& name, NamedFiles& files)
{
    files.push_back({name, QStringLiteral("a plugin"), QString()});
    const QString keys = keyFileBeside(name);
    if (!keys.isEmpty())
        files.push_back({keys, QStringLiteral("the public keys of a plugin"), QString()});
}

void addPlugins(const QString& place, NamedFiles& files)
{
    if (QLibrary::isLibrary(place))
        addPlugin(place, files);
    std::error_code error; // a value that names no folder has no plugins in it
    for (const auto& entry : std::filesystem::directory_iterator(filePath(place), error)) {
        const QString name = fileNameText(entry.path().string());
        if (QLibrary::isLibrary(name))
            addPlugin(name, files);
    }
}

// What the run reads or loads, by whatever way it is found.
NamedFiles inputsOf(const Command& command)
{
    NamedFiles files;
    for (const QString& file : loadedFiles())
        files.push_back({file, QStringLiteral("a part of this program"), QString()});
    addPlugins(pluginSource({}), files);
    for (const GivenOption& option : command.given()) {
        if (!mayNameInput(option))
            continue;
        for (const QString& value : valuesOf(option)) {
            addValue(option, value, files);
            addPlugins(value, files);
        }
    }
    return files;
}

// The memory of a simulated product is written too, and locked.
void addState(const GivenOption& option, const QString& name, NamedFiles& files)
{
    files.push_back(namedBy(option, name));
    files.push_back({lockName(name),
                     QStringLiteral("the lock of the file that %1 names").arg(optionName(option)),
                     optionName(option)});
}

void addOutput(const GivenOption& option, const QString& value, NamedFiles& files)
{
    if (option.name == "--state")
        addState(option, value, files);
    else if (namesOutput(option) && value != QLatin1String("-"))
        files.push_back(namedBy(option, value));
    else if (mayNameInput(option) && value.startsWith(statePrefix))
        addState(option, value.mid(statePrefix.size()), files);
}

NamedFiles outputsOf(const Command& command)
{
    NamedFiles files;
    for (const GivenOption& option : command.given()) {
        for (const QString& value : valuesOf(option))
            addOutput(option, value, files);
    }
    return files;
}

bool readsStandardInput(const Command& command)
{
    for (const GivenOption& option : command.given()) {
        if (mayNameInput(option) && valuesOf(option).contains(QStringLiteral("-")))
            return true;
    }
    return false;
}

// Whether `name` is where an older trace is kept when `trace` is written: "NAME.1", "NAME.2", ...
bool keepsOlder(const NamedFile& trace, const QString& name)
{
    if (trace.option != QLatin1String("--trace"))
        return false;
    const QString stem = QString::fromStdString(resolvedPath(trace.name).string()) + '.';
    const QString place = QString::fromStdString(resolvedPath(name).string());
    bool isNumber = false;
    place.mid(stem.size()).toUInt(&isNumber);
    return isNumber && place.startsWith(stem);
}

Problem overwrites(const NamedFile& output, const QString& role)
{
    return {ExitCode::Usage,
            QStringLiteral("%1 \"%2\" would overwrite %3").arg(output.option, output.name, role),
            QStringLiteral("a file of its own for all that is written"),
            QStringLiteral("give another name with %1").arg(output.option)};
}

std::optional<Problem> overwritten(const NamedFile& output, const NamedFiles& inputs)
{
    for (const NamedFile& input : inputs) {
        if (input.option != output.option &&
            (isSameFile(output.name, input.name) || keepsOlder(output, input.name)))
            return overwrites(output, input.role);
    }
    return std::nullopt;
}

std::optional<Problem> writtenTwice(const NamedFile& output, const NamedFiles& outputs)
{
    for (const NamedFile& other : outputs) {
        if (other.option != output.option &&
            (becomeOneFile(output.name, other.name) || keepsOlder(output, other.name)))
            return overwrites(output, other.role);
    }
    return std::nullopt;
}

std::optional<Problem> streamProblem(const NamedFile& output, bool readsInput)
{
    if (readsInput && isStream(STDIN_FILENO, output.name))
        return overwrites(output, QStringLiteral("what standard input reads"));
    if (isStream(STDOUT_FILENO, output.name))
        return overwrites(output, QStringLiteral("what standard output writes"));
    if (isStream(STDERR_FILENO, output.name))
        return overwrites(output, QStringLiteral("what standard error writes"));
    return std::nullopt;
}

} // namespace

bool namesOutput(const GivenOption& option)
{
    static constexpr std::array<const char*, 5> names = {"--trace", "--output", "--svg", "--state",
                                                         "--report"};
    return std::find(names.begin(), names.end(), option.name) != names.end();
}

std::optional<Problem> outputProblem(const Command& command)
{
    const NamedFiles inputs = inputsOf(command);
    const NamedFiles outputs = outputsOf(command);
    const bool readsInput = readsStandardInput(command);
    for (const NamedFile& output : outputs) {
        std::optional<Problem> problem = overwritten(output, inputs);
        if (!problem)
            problem = writtenTwice(output, outputs);
        if (!problem)
            problem = streamProblem(output, readsInput);
        if (problem)
            return problem;
    }
    return std::nullopt;
}

std::optional<Problem> standardOutputProblem(const Command& command)
{
    for (const NamedFile& input : inputsOf(command)) {
        if (isStream(STDOUT_FILENO, input.name))
            return Problem{ExitCode::Usage,
                           QStringLiteral("standard output would be written into \"%1\", %2")
                               .arg(input.name, input.role),
                           QStringLiteral("another place for the result"),
                           QStringLiteral("send standard output elsewhere")};
    }
    return std::nullopt;
}

} // namespace hx::host

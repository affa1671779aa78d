#include "apps/hxhost/commands/ArgumentCheck.h"

#include "apps/hxhost/commands/Options.h"
#include "apps/hxhost/session/SameFile.h"

namespace hx {

namespace {

// Flags take no value, and the values of output options are words; --trace is one of them.
bool mayNameFile(const CLI::Option& option)
{
    return option.get_expected_max() > 0 && option.get_group() != outputGroup;
}

// "PATH", or the path in "replay:PATH" and "simulator:PATH".
bool namesFile(const std::string& value, const QString& path)
{
    const size_t colon = value.find(':');
    return isSameFile(QString::fromStdString(value), path) ||
           (colon != std::string::npos &&
            isSameFile(QString::fromStdString(value.substr(colon + 1)), path));
}

Problem emptyValue(const std::string& option)
{
    return {ExitCode::Usage, QStringLiteral("the value of %1 is empty").arg(option.c_str()),
            QStringLiteral("a text of at least one character"),
            QStringLiteral("give one, or leave out what is optional")};
}

Problem traceOverwrites(const std::string& trace, const std::string& option)
{
    return {ExitCode::Usage,
            QStringLiteral("the trace \"%1\" would overwrite the file that %2 names")
                .arg(QString::fromStdString(trace), option.c_str()),
            QStringLiteral("two different files"),
            QStringLiteral("give another name with --trace")};
}

} // namespace

std::optional<Problem> argumentProblem(const CLI::App& command, const std::string& trace)
{
    const QString path = QString::fromStdString(trace);
    for (const CLI::Option* option : command.get_options()) {
        for (const std::string& value : option->results()) {
            if (value.empty())
                return emptyValue(option->get_name());
            if (mayNameFile(*option) && namesFile(value, path))
                return traceOverwrites(trace, option->get_name());
        }
    }
    return std::nullopt;
}

} // namespace hx

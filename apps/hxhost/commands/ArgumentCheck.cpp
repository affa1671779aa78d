#include "apps/hxhost/commands/ArgumentCheck.h"

#include "apps/hxhost/commands/OutputCheck.h"
#include "apps/hxhost/report/Terminal.h"

namespace hx::host {

namespace {

Problem emptyValue(const QString& option)
{
    return {ExitCode::Usage, QStringLiteral("the value of %1 is empty").arg(option),
            QStringLiteral("a text of at least one character"),
            QStringLiteral("give one, or leave out what is optional")};
}

Problem noStream(const QString& option)
{
    return {ExitCode::Usage,
            QStringLiteral("%1 cannot go to standard output, which carries the result").arg(option),
            QStringLiteral("the name of a file"),
            QStringLiteral("give one with %1; \"./-\" is the file of that name").arg(option)};
}

Problem takenByFile(const QString& option)
{
    return {ExitCode::Usage,
            QStringLiteral("--json and --field cannot be used with \"%1 -\": standard output "
                           "carries the file")
                .arg(option),
            QStringLiteral("one thing on standard output"),
            QStringLiteral("give the name of a file with %1").arg(option)};
}

Problem typedImage()
{
    return {ExitCode::Usage, QStringLiteral("\"-\" is read from standard input, a terminal"),
            QStringLiteral("a file or a pipe on standard input"),
            QStringLiteral("write '< FILE' or 'COMMAND |', or name the file")};
}

// "-" for a standard stream.
std::optional<Problem> streamProblem(const GivenOption& option, const OutputOptions& output)
{
    const QString name = QString::fromStdString(option.name);
    if (!namesOutput(option))
        return inputIsTerminal() && option.isArgument ? std::optional(typedImage()) : std::nullopt;
    if (name == QLatin1String("--trace") || name == QLatin1String("--state") ||
        name == QLatin1String("--report"))
        return noStream(name);
    if (output.json || !output.field.empty())
        return takenByFile(name);
    return std::nullopt;
}

std::optional<Problem> valueProblem(const GivenOption& option, const OutputOptions& output)
{
    for (const std::string& value : option.values) {
        if (value.empty())
            return emptyValue(QString::fromStdString(option.name));
        if (value == "-") {
            if (std::optional<Problem> problem = streamProblem(option, output))
                return problem;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<Problem> argumentProblem(const Command& command, const OutputOptions& output)
{
    for (const GivenOption& option : command.given()) {
        if (std::optional<Problem> problem = valueProblem(option, output))
            return problem;
    }
    return outputProblem(command);
}

} // namespace hx::host

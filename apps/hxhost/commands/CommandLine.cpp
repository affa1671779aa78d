#include "apps/hxhost/commands/CommandLine.h"

#include "apps/hxhost/commands/ArgumentCheck.h"
#include "apps/hxhost/commands/OptionCheck.h"
#include "apps/hxhost/commands/OutputCheck.h"
#include "apps/hxhost/report/ExitCodeTable.h"
#include "apps/hxhost/report/Terminal.h"
#include "host/base/FileName.h"
#include "host/base/PrintableText.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace hx::host {

namespace {

void writeOut(const QByteArray& bytes)
{
    fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
}

// Whether everything reached standard output, what a command printed as it went included.
bool allWritten()
{
    return fflush(stdout) == 0 && ferror(stdout) == 0;
}

Problem outputLost()
{
    return {ExitCode::FileError, QStringLiteral("standard output could not be written to its end"),
            QStringLiteral("an open standard output, and room where it leads"),
            QStringLiteral("send it elsewhere; only the result is lost, what was done is done")};
}

bool asksFor(const char* wanted, int argc, char** argv)
{
    return std::any_of(argv, argv + argc,
                       [wanted](const char* word) { return std::strcmp(word, wanted) == 0; });
}

QString joined(const std::vector<std::string>& words, const QString& separator)
{
    QStringList list;
    for (const std::string& word : words)
        list << fileNameText(word);
    return list.join(separator);
}

} // namespace

CommandLine::CommandLine()
    : m_parser("hxhost", "Update the firmware of MIDI products through device plugins")
{
    m_parser.setVersion(HXHOST_VERSION);
    m_parser.explain("'hxhost COMMAND --help' lists a command's options.\n\n" +
                     exitCodeHelp().toStdString());
}

Command CommandLine::add(const std::string& name, const std::string& description)
{
    const Command command = m_parser.add(name, description);
    addOutputOptions(command, m_output);
    return command;
}

Command CommandLine::addTo(const Command& parent, const std::string& name,
                           const std::string& description)
{
    const Command command = m_parser.addTo(parent, name, description);
    addOutputOptions(command, m_output);
    return command;
}

Command CommandLine::addGroup(const std::string& name, const std::string& description)
{
    return m_parser.addGroup(name, description);
}

void CommandLine::setRun(const Command& command, const Run& run)
{
    m_runs[command.fullName()] = run;
}

int CommandLine::run(int argc, char** argv)
{
    m_words = QStringLiteral("hxhost");
    for (int i = 1; i < argc; ++i)
        m_words += QLatin1Char(' ') + fileNameText(argv[i]);
    const ParseResult parsed = m_parser.parse(argc, argv);
    if (parsed.state == ParseResult::State::Chosen)
        return runChosen(*m_parser.innermost());
    if (parsed.state == ParseResult::State::Help)
        return showHelp(parsed.text);
    return refuse(parsed, argc, argv);
}

// --help and --version.
int CommandLine::showHelp(const std::string& text)
{
    writeOut(QByteArray::fromStdString(text));
    if (allWritten())
        return int(ExitCode::Success);
    const Problem problem = outputLost();
    Console(Verbosity::Normal).problem(problem);
    return int(problem.code);
}

Problem CommandLine::usageProblem(const ParseResult& parsed) const
{
    const auto innermost = m_parser.innermost();
    const std::string path = innermost ? "hxhost " + innermost->fullName() : "hxhost";
    const QString help = QStringLiteral("see '%1 --help'").arg(path.c_str());
    const QString anyWords = QStringLiteral("a command, then its arguments and options");
    const QString text = fileNameText(parsed.text);
    switch (parsed.state) {
    case ParseResult::State::NoCommand:
        return {ExitCode::Usage, QStringLiteral("no command is given"),
                QStringLiteral("one of: ") + joined(parsed.words, QStringLiteral(", ")), help};
    case ParseResult::State::UnknownCommand:
        return {ExitCode::Usage, QStringLiteral("\"%1\" is not a command").arg(text),
                QStringLiteral("one of: ") + joined(parsed.words, QStringLiteral(", ")), help};
    case ParseResult::State::Surplus:
        return {ExitCode::Usage,
                QStringLiteral("not expected here: \"%1\"")
                    .arg(joined(parsed.words, QStringLiteral("\" \""))),
                anyWords, help};
    default:
        return {ExitCode::Usage, text, anyWords, help};
    }
}

// Empty where no command is given, or only the group of one.
QString CommandLine::chosenName() const
{
    const auto innermost = m_parser.innermost();
    const std::string name = innermost ? innermost->fullName() : std::string();
    return m_runs.count(name) == 0 ? QString() : QString::fromStdString(name);
}

int CommandLine::refuse(const ParseResult& parsed, int argc, char** argv)
{
    Report report;
    const Problem problem = usageProblem(parsed);
    report.fail(problem);
    const bool hasDocument = asksFor("--json", argc, argv);
    const bool hasObjects = asksFor("json", argc, argv) || asksFor("--progress=json", argc, argv);
    if (hasDocument)
        writeOut(report.toJson(chosenName()));
    if (!hasDocument || !hasObjects || !allWritten())
        Console(Verbosity::Normal, hasObjects).problem(problem);
    return int(report.exitCode());
}

int CommandLine::runChosen(const Command& command)
{
    Report report;
    Console console(m_output.verbosity(), m_output.progress == ProgressMode::Json);
    Recorder recorder(console);
    CommandContext context{
        m_output, report, console, recorder, QStringLiteral("The command succeeded"), std::nullopt};
    if (const std::optional<Problem> problem = standardOutputProblem(command)) {
        console.problem(*problem);
        return int(problem->code);
    }
    if (const std::optional<Problem> problem = argumentProblem(command, m_output))
        report.fail(*problem);
    else if (const std::optional<Problem> wrong = optionProblem(command))
        report.fail(*wrong);
    else if (context.openTrace(m_words))
        runGuarded(command, context);
    return finish(command, context);
}

void CommandLine::runGuarded(const Command& command, CommandContext& context)
{
    try {
        m_runs.at(command.fullName())(context);
    } catch (const std::exception& error) {
        context.fail(ExitCode::Internal,
                     QStringLiteral("an unexpected fault: ") + QString::fromLocal8Bit(error.what()),
                     QStringLiteral("none"),
                     QStringLiteral("report it with the trace that --trace writes; 'hxhost "
                                    "recover' says what state the product is in"));
    }
}

int CommandLine::finish(const Command& command, CommandContext& context)
{
    Report& report = context.report;
    if (context.replayProblem)
        report.fail(*context.replayProblem);
    if (!report.failed())
        context.startTrace();
    if (!context.recorder.ok() && !report.failed())
        context.fail(ExitCode::FileError,
                     context.success + QStringLiteral("; only its record is incomplete."),
                     QStringLiteral("room on the disk for the trace"),
                     QStringLiteral("free some before the next run"));
    printResult(command, context);
    const bool isWritten = allWritten();
    if (!isWritten && !report.failed())
        report.fail(outputLost());
    if (report.problem() && (!isWritten || !m_output.isDocumentEnough()))
        context.console.problem(*report.problem());
    return int(report.exitCode());
}

void CommandLine::printResult(const Command& command, CommandContext& context)
{
    Report& report = context.report;
    if (context.isOutputTaken)
        return;
    if (m_output.json)
        return writeOut(report.toJson(QString::fromStdString(command.fullName())));
    if (m_output.field.empty())
        return writeOut(report.toText(m_output.verbosity() >= Verbosity::Detail).toUtf8());
    const QString name = QString::fromStdString(m_output.field);
    const std::optional<QString> value = report.field(name);
    if (!value && report.failed())
        return;
    const QString text = value.value_or(QString());
    writeOut((outputIsTerminal() ? printableLines(text).toUtf8() : fileNameBytes(text)) + '\n');
}

} // namespace hx::host

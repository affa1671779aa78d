#include "apps/hxhost/commands/CommandLine.h"

#include "apps/hxhost/commands/ArgumentCheck.h"
#include "apps/hxhost/commands/OutputCheck.h"
#include "apps/hxhost/report/Terminal.h"
#include "host/base/FileName.h"
#include "host/base/PrintableText.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iostream>

namespace hx {

namespace {

void writeOut(const QByteArray& bytes)
{
    fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
}

// Whether everything reached standard output, what a command printed as it went included.
bool allWritten()
{
    const bool streamed = bool(std::cout.flush());
    return fflush(stdout) == 0 && ferror(stdout) == 0 && streamed;
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

QString fullName(const CLI::App* command)
{
    const QString name = QString::fromStdString(command->get_name());
    const CLI::App* parent = command->get_parent();
    return parent == nullptr || parent->get_parent() == nullptr
               ? name
               : fullName(parent) + QLatin1Char(' ') + name;
}

QStringList commandNames(const CLI::App& app)
{
    QStringList names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        names << QString::fromStdString(command->get_name());
    return names;
}

// "hxhost image build" when the words read so far lead there.
QString innermostCommand(const CLI::App& app)
{
    const std::vector<CLI::App*> chosen = app.get_subcommands();
    const QString name = QString::fromStdString(app.get_name());
    return chosen.empty() ? name : name + QLatin1Char(' ') + innermostCommand(*chosen.front());
}

// CLI11 lists surplus words last first.
QString parserText(const CLI::App& app, const CLI::ParseError& error)
{
    if (error.get_exit_code() != int(CLI::ExitCodes::ExtrasError))
        return fileNameText(error.what());
    QStringList surplus;
    for (const std::string& word : app.remaining(true))
        surplus << QStringLiteral("\"%1\"").arg(fileNameText(word));
    return QStringLiteral("not expected here: ") + surplus.join(QLatin1Char(' '));
}

// What the words of the command line lack or have too much, in our words where the parser's own
// leave the reason out.
Problem usageProblem(const CLI::App& app, const CLI::ParseError& error)
{
    const QString help = QStringLiteral("see '%1 --help'").arg(innermostCommand(app));
    const CLI::App* innermost = &app;
    while (!innermost->get_subcommands().empty())
        innermost = innermost->get_subcommands().front();
    const std::vector<std::string> left = innermost->remaining();
    const QStringList known = commandNames(*innermost);
    if (known.isEmpty() || left.empty() || left.front().rfind('-', 0) == 0)
        return {ExitCode::Usage, parserText(app, error),
                QStringLiteral("a command, its arguments and its options"), help};
    return {ExitCode::Usage,
            QStringLiteral("\"%1\" is not a command").arg(fileNameText(left.front())),
            QStringLiteral("one of: ") + known.join(QLatin1String(", ")), help};
}

} // namespace

QString CommandContext::traceName() const
{
    return fileNameText(output.trace);
}

void CommandContext::failTrace(const QString& error)
{
    fail(ExitCode::FileError,
         QStringLiteral("the trace \"%1\" cannot be written: %2").arg(traceName(), error),
         QStringLiteral("a file name in a folder that may be written to"),
         QStringLiteral("give another name with --trace"));
}

bool CommandContext::startTrace()
{
    QString error;
    const bool isStarted = recorder.startTrace(&error);
    if (!isStarted)
        failTrace(error);
    return isStarted;
}

CommandLine::CommandLine() : m_app("Updates the firmware of MIDI products through device plugins")
{
    m_app.name("hxhost");
    m_app.set_version_flag("--version", HXHOST_VERSION);
    m_app.require_subcommand(1);
    m_app.footer("'hxhost COMMAND --help' lists a command's options.\n\n" +
                 exitCodeHelp().toStdString());
}

CLI::App* CommandLine::add(const std::string& name, const std::string& description)
{
    return addTo(&m_app, name, description);
}

CLI::App* CommandLine::addTo(CLI::App* parent, const std::string& name,
                             const std::string& description)
{
    CLI::App* command = parent->add_subcommand(name, description);
    addOutputOptions(*command, m_output);
    return command;
}

CLI::App* CommandLine::addGroup(const std::string& name, const std::string& description)
{
    CLI::App* group = m_app.add_subcommand(name, description);
    group->require_subcommand(1);
    return group;
}

void CommandLine::setRun(CLI::App* command, const Run& run)
{
    command->callback([this, command, run] {
        m_chosen = command;
        m_run = run;
    });
}

int CommandLine::run(int argc, char** argv)
{
    m_words = QStringLiteral("hxhost");
    for (int i = 1; i < argc; ++i)
        m_words += QLatin1Char(' ') + fileNameText(argv[i]);
    try {
        m_app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return refuse(error, argc, argv);
    }
    return runChosen();
}

// --help and --version.
int CommandLine::showHelp(const CLI::ParseError& request)
{
    m_app.exit(request, std::cout, std::cerr);
    if (allWritten())
        return int(ExitCode::Success);
    const Problem problem = outputLost();
    Console(Verbosity::Normal).problem(problem);
    return int(problem.code);
}

int CommandLine::refuse(const CLI::ParseError& error, int argc, char** argv)
{
    if (error.get_exit_code() == int(CLI::ExitCodes::Success))
        return showHelp(error);
    Report report;
    const Problem problem = usageProblem(m_app, error);
    report.fail(problem);
    const bool hasDocument = asksFor("--json", argc, argv);
    const bool hasObjects = asksFor("json", argc, argv) || asksFor("--progress=json", argc, argv);
    if (hasDocument)
        writeOut(report.toJson(QString()));
    if (!hasDocument || !hasObjects || !allWritten())
        Console(Verbosity::Normal, hasObjects).problem(problem);
    return int(report.exitCode());
}

int CommandLine::runChosen()
{
    Report report;
    Console console(m_output.verbosity(), m_output.progress == ProgressMode::Json);
    Recorder recorder(console);
    CommandContext context{m_output, report, console, recorder, std::nullopt};
    if (const std::optional<Problem> problem = standardOutputProblem(*m_chosen)) {
        console.problem(*problem);
        return int(problem->code);
    }
    QString error;
    if (const std::optional<Problem> problem = argumentProblem(*m_chosen, m_output))
        report.fail(*problem);
    else if (m_output.trace.empty() || recorder.openTrace(context.traceName(), m_words, &error))
        runGuarded(context);
    else
        context.failTrace(error);
    return finish(context);
}

void CommandLine::runGuarded(CommandContext& context)
{
    try {
        m_run(context);
    } catch (const std::exception& error) {
        context.fail(ExitCode::Internal,
                     QStringLiteral("an unexpected fault: ") + QString::fromLocal8Bit(error.what()),
                     QStringLiteral("none"),
                     QStringLiteral("report it with the trace that --trace writes; 'hxhost "
                                    "recover' says what state the product is in"));
    }
}

int CommandLine::finish(CommandContext& context)
{
    Report& report = context.report;
    if (context.replayProblem)
        report.fail(*context.replayProblem);
    if (!report.failed())
        context.startTrace();
    if (!context.recorder.ok() && !report.failed())
        context.fail(ExitCode::FileError,
                     QStringLiteral("the trace could not be written to its end"),
                     QStringLiteral("room on the disk"), QStringLiteral("free some, run again"));
    printResult(context);
    const bool isWritten = allWritten();
    if (!isWritten && !report.failed())
        report.fail(outputLost());
    if (report.problem() && (!isWritten || !m_output.isDocumentEnough()))
        context.console.problem(*report.problem());
    return int(report.exitCode());
}

void CommandLine::printResult(CommandContext& context)
{
    Report& report = context.report;
    if (context.isOutputTaken)
        return;
    if (m_output.json)
        return writeOut(report.toJson(fullName(m_chosen)));
    if (m_output.field.empty())
        return writeOut(report.toText().toUtf8());
    const QString name = QString::fromStdString(m_output.field);
    const std::optional<QString> value = report.field(name);
    if (value)
        writeOut((outputIsTerminal() ? printableLines(*value).toUtf8() : fileNameBytes(*value)) +
                 '\n');
    else if (!report.failed())
        context.fail(ExitCode::Usage, QStringLiteral("the result has no value \"%1\"").arg(name),
                     QStringLiteral("one of: ") + report.fieldNames().join(QLatin1String(", ")),
                     QStringLiteral("give one of these with --field"));
}

} // namespace hx

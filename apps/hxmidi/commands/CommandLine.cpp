#include "apps/hxmidi/commands/CommandLine.h"

#include "apps/hxmidi/findings/FindingText.h"

#include <QJsonDocument>

#include <algorithm>
#include <cstring>
#include <sstream>

namespace hx {

namespace {

bool asksForJson(int argc, const char* const* argv)
{
    return std::any_of(argv, argv + argc,
                       [](const char* word) { return std::strcmp(word, "--json") == 0; });
}

constexpr char dataHelp[] =
    R"(DATA is hex text, @FILE for a file, or @- for standard input; several are joined, and
without any the standard input is read. 'hxmidi COMMAND --help' lists a command's options;
'man hxmidi' explains them with examples.
)";

constexpr char exitCodeHelp[] =
    R"(Exit codes:
  0  done; the pattern matched; the two are the same
  1  the pattern did not match; the two differ
  2  an error in the command line or in the data
)";

// Put before a word, this character makes CLI11 take the word as it is: in brackets it would be
// a list. It also does the work of "--", which CLI11 ignores where no argument is required.
constexpr char guard = '\x01';

std::string unguarded(const std::string& word)
{
    return !word.empty() && word.front() == guard ? word.substr(1) : word;
}

bool needsGuard(const std::string& word)
{
    return !word.empty() && (word.front() == '[' || word.front() == guard);
}

// The words after the program's name, last first, as CLI11 wants them.
std::vector<std::string> guardedWords(int argc, const char* const* argv)
{
    std::vector<std::string> words;
    bool optionsEnded = false;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "--" && !optionsEnded)
            optionsEnded = true;
        else
            words.push_back(optionsEnded || needsGuard(word) ? guard + word : word);
    }
    std::reverse(words.begin(), words.end());
    return words;
}

// CLI11 lists surplus words last first.
QString messageOf(const CLI::App& app, const CLI::ParseError& error)
{
    if (error.get_exit_code() != int(CLI::ExitCodes::ExtrasError))
        return QString::fromStdString(error.what()).remove(QLatin1Char(guard));
    QStringList surplus;
    for (const std::string& word : app.remaining(true))
        surplus << quoted(QByteArray::fromStdString(unguarded(word)));
    return QStringLiteral("not expected here: ") + surplus.join(QLatin1Char(' '));
}

QString commandNames(const CLI::App& app)
{
    QStringList names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        names << QString::fromStdString(command->get_name());
    return QStringLiteral("one of: ") + names.join(QLatin1String(", "));
}

// The first word where a command should stand and none does; empty when it is an option.
QString unknownCommand(const CLI::App& app)
{
    const std::vector<std::string> left = app.remaining();
    if (!app.get_subcommands().empty() || left.empty() || left.front().rfind('-', 0) == 0)
        return {};
    return QString::fromStdString(unguarded(left.front()));
}

const QString anyCommandLine = QStringLiteral("a command, its arguments and its options");

constexpr int mostJsonRows = 100000;

// Compact JSON on one line.
QByteArray jsonDocument(const std::string& command, const Outcome& outcome)
{
    const QJsonObject document{
        {QStringLiteral("command"), QString::fromStdString(command)},
        {QStringLiteral("ok"), outcome.code != ExitCode::Refused},
        {QStringLiteral("exitCode"), int(outcome.code)},
        {QStringLiteral("result"),
         outcome.code == ExitCode::Refused ? QJsonObject() : outcome.result()},
        {QStringLiteral("errors"), toJson(outcome.findings, Severity::Error)},
        {QStringLiteral("warnings"), toJson(outcome.findings, Severity::Warning)},
        {QStringLiteral("notes"), toJson(outcome.findings, Severity::Note)}};
    return QJsonDocument(document).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace

CommandLine::CommandLine(const Streams& streams)
    : m_streams(streams), m_app("Reads, builds, matches and shows MIDI bytes as hex text")
{
    m_app.name("hxmidi");
    m_app.set_version_flag("--version", "hxmidi " HXMIDI_VERSION);
    m_app.require_subcommand(0, 1); // of none at all run() complains
    m_app.footer(std::string(dataHelp) + '\n' + exitCodeHelp);
}

CLI::App* CommandLine::add(const std::string& name, const std::string& description, JsonForm json)
{
    CLI::App* command = m_app.add_subcommand(name, description);
    command->add_flag("--strict", m_strict, "Take warnings as errors")->group("Output");
    if (json == JsonForm::Available)
        command->add_flag("--json", m_json, "Print exactly one JSON document, errors included")
            ->group("Output");
    return command;
}

void CommandLine::explain(CLI::App* command, const std::string& text)
{
    command->footer(text + '\n' + exitCodeHelp);
}

void CommandLine::setRun(CLI::App* command, const Run& run)
{
    command->callback([this, command, run] {
        m_name = command->get_name();
        m_run = run;
    });
}

int CommandLine::run(int argc, const char* const* argv)
{
    try {
        m_app.parse(guardedWords(argc, argv));
    } catch (const CLI::Success& request) {
        return help(request);
    } catch (const CLI::ParseError& error) {
        m_json = asksForJson(argc, argv); // which may not have been reached
        const QString unknown = unknownCommand(m_app);
        if (!unknown.isEmpty())
            return refuse(QStringLiteral("\"%1\" is not a command").arg(unknown),
                          commandNames(m_app));
        return refuse(messageOf(m_app, error), anyCommandLine);
    }
    if (!m_run)
        return refuse(QStringLiteral("no command is given"), commandNames(m_app));
    Outcome outcome(m_streams.input);
    m_run(outcome);
    return finish(outcome);
}

int CommandLine::help(const CLI::Success& request)
{
    std::ostringstream text;
    m_app.exit(request, text, text);
    Outcome outcome(m_streams.input);
    outcome.text = QByteArray::fromStdString(text.str());
    return finish(outcome);
}

int CommandLine::refuse(const QString& what, const QString& expected)
{
    if (!m_app.get_subcommands().empty())
        m_name = m_app.get_subcommands().front()->get_name();
    Outcome outcome(m_streams.input);
    outcome.findings.error(what, expected,
                           QStringLiteral("see 'hxmidi --help' and 'hxmidi COMMAND --help'"));
    return finish(outcome);
}

int CommandLine::finish(Outcome& outcome)
{
    Findings& findings = outcome.findings;
    const int warnings = findings.count(Severity::Warning);
    if (m_strict && warnings > 0)
        findings.error(
            QStringLiteral("with --strict a warning is an error, and there is %1")
                .arg(warnings == 1 ? QStringLiteral("one") : QStringLiteral("more than one")),
            QString(), QStringLiteral("mend what is warned of, or drop --strict"));
    if (m_json && outcome.rows > mostJsonRows)
        findings.error(QStringLiteral("%1 rows are too many for a JSON document").arg(outcome.rows),
                       QStringLiteral("at most %1").arg(mostJsonRows),
                       QStringLiteral("cut the data into parts, or leave --json out"));
    if (findings.hasErrors())
        outcome.code = ExitCode::Refused;
    m_streams.errors.write(toText(findings).toUtf8());
    if (print(outcome))
        return int(outcome.code);
    m_streams.errors.write("error: standard output could not be written to its end\n");
    return int(ExitCode::Refused);
}

bool CommandLine::print(const Outcome& outcome)
{
    QByteArray text = outcome.text;
    if (m_json)
        text = jsonDocument(m_name, outcome);
    else if (outcome.code == ExitCode::Refused)
        text.clear();
    return m_streams.output.write(text) == text.size();
}

CLI::Option* addWords(CLI::App& command, const std::string& name, std::vector<std::string>& words,
                      const std::string& description)
{
    return command
        .add_option(
            name,
            [&words](const CLI::results_t& typed) {
                words.clear();
                for (const std::string& word : typed)
                    words.push_back(unguarded(word));
                return true;
            },
            description)
        ->expected(0, -1)
        ->allow_extra_args()
        ->type_name("");
}

CLI::Option* addWord(CLI::App& command, const std::string& name, std::string& word,
                     const std::string& description)
{
    return command
        .add_option(
            name,
            [&word](const CLI::results_t& typed) {
                word = unguarded(typed.at(0));
                return true;
            },
            description)
        ->required()
        ->type_name("");
}

} // namespace hx

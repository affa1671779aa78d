#include "apps/hxmidi/commands/CommandLine.h"

#include "apps/hxmidi/findings/FindingText.h"

#include <QJsonDocument>

#include <algorithm>
#include <cstring>

namespace hx::midi {

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

QString commandNames(const std::vector<std::string>& commands)
{
    QStringList names;
    for (const std::string& name : commands)
        names << QString::fromStdString(name);
    return QStringLiteral("one of: ") + names.join(QLatin1String(", "));
}

QString surplusText(const std::vector<std::string>& words)
{
    QString text = QStringLiteral("not expected here:");
    for (const std::string& word : words)
        text += QLatin1Char(' ') + quoted(QByteArray::fromStdString(word));
    return text;
}

const QString anyCommandLine = QStringLiteral("a command, then its arguments and options");

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
    : m_streams(streams), m_parser("hxmidi", "Read, build, match and show MIDI bytes as hex text")
{
    m_parser.setVersion("hxmidi " HXMIDI_VERSION);
    m_parser.explain(std::string(dataHelp) + '\n' + exitCodeHelp);
}

Command CommandLine::add(const std::string& name, const std::string& description, JsonForm json)
{
    const Command command = m_parser.add(name, description);
    command.addFlag("--strict", m_strict, "Take warnings as errors").group("Output");
    if (json == JsonForm::Available)
        command.addFlag("--json", m_json, "Print exactly one JSON document, errors included")
            .group("Output");
    return command;
}

void CommandLine::explain(const Command& command, const std::string& text)
{
    command.explain(text + '\n' + exitCodeHelp);
}

void CommandLine::setRun(const Command& command, const Run& run)
{
    m_runs[command.name()] = run;
}

int CommandLine::run(int argc, const char* const* argv)
{
    const ParseResult parsed = m_parser.parse(argc, argv);
    if (parsed.state == ParseResult::State::Help)
        return help(parsed.text);
    if (const auto command = m_parser.innermost())
        m_name = command->name();
    if (parsed.state != ParseResult::State::Chosen) {
        m_json = asksForJson(argc, argv); // which may not have been reached
        return refuse(parsed);
    }
    Outcome outcome(m_streams.input);
    m_runs.at(m_name)(outcome);
    return finish(outcome);
}

int CommandLine::help(const std::string& text)
{
    Outcome outcome(m_streams.input);
    outcome.text = QByteArray::fromStdString(text);
    return finish(outcome);
}

int CommandLine::refuse(const ParseResult& parsed)
{
    const QString text = QString::fromStdString(parsed.text);
    switch (parsed.state) {
    case ParseResult::State::NoCommand:
        return refuse(QStringLiteral("no command is given"), commandNames(parsed.words));
    case ParseResult::State::UnknownCommand:
        return refuse(QStringLiteral("\"%1\" is not a command").arg(text),
                      commandNames(parsed.words));
    case ParseResult::State::Surplus:
        return refuse(surplusText(parsed.words), anyCommandLine);
    default:
        return refuse(text, anyCommandLine);
    }
}

int CommandLine::refuse(const QString& what, const QString& expected)
{
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

} // namespace hx::midi

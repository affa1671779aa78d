#include "apps/commandline/CommandParser.h"

#include "apps/commandline/GuardedWord.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <sstream>

namespace hx {

namespace {

std::vector<std::string> commandNames(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    return names;
}

bool isOption(const std::string& word)
{
    return word.rfind('-', 0) == 0;
}

// Whether one of the app's commands has an option of that name, with a value.
bool takesValue(const CLI::App& app, const std::string& name)
{
    const auto commands = app.get_subcommands([](const CLI::App*) { return true; });
    return std::any_of(commands.begin(), commands.end(), [&name](const CLI::App* command) {
        const CLI::Option* option = command->get_option_no_throw(name);
        return option != nullptr && option->get_items_expected_max() > 0;
    });
}

// The first of `words` that is neither an option nor an option's value: where a command should be.
std::optional<std::string> firstPlainWord(const CLI::App& app,
                                          const std::vector<std::string>& words)
{
    for (size_t i = 0; i < words.size(); ++i) {
        if (!isOption(words[i]))
            return words[i];
        if (takesValue(app, words[i]))
            ++i;
    }
    return std::nullopt;
}

// The parser lists them last first.
std::vector<std::string> surplusWords(const CLI::App& app)
{
    std::vector<std::string> words = app.remaining(true);
    std::transform(words.begin(), words.end(), words.begin(), unguarded);
    return words;
}

} // namespace

CommandParser::CommandParser(const std::string& program, const std::string& description)
    : m_app(std::make_unique<CLI::App>(description))
{
    m_app->name(program);
    m_app->require_subcommand(1);
}

CommandParser::~CommandParser() = default;

void CommandParser::setVersion(const std::string& text)
{
    m_app->set_version_flag("--version", text);
}

void CommandParser::explain(const std::string& text)
{
    m_app->footer(text);
}

Command CommandParser::add(const std::string& name, const std::string& description)
{
    return Command(m_app->add_subcommand(name, description));
}

Command CommandParser::addTo(const Command& group, const std::string& name,
                             const std::string& description)
{
    return Command(group.m_app->add_subcommand(name, description));
}

Command CommandParser::addGroup(const std::string& name, const std::string& description)
{
    CLI::App* group = m_app->add_subcommand(name, description);
    group->require_subcommand(1);
    return Command(group);
}

ParseResult CommandParser::parse(int argc, const char* const* argv)
{
    std::vector<std::string> words = guardedWords(argc, argv);
    std::reverse(words.begin(), words.end()); // as the parser wants them
    try {
        m_app->parse(words);
    } catch (const CLI::Success& request) {
        std::ostringstream text;
        m_app->exit(request, text, text);
        return {ParseResult::State::Help, text.str(), {}};
    } catch (const CLI::ParseError& error) {
        return problem(error);
    }
    return {ParseResult::State::Chosen, {}, {}};
}

ParseResult CommandParser::problem(const CLI::ParseError& error) const
{
    const std::vector<std::string> commands = commandNames(innermostApp());
    const std::vector<std::string> left = innermostApp().remaining();
    if (!commands.empty() && left.empty())
        return {ParseResult::State::NoCommand, {}, commands};
    const std::optional<std::string> word = firstPlainWord(innermostApp(), left);
    if (!commands.empty() && word)
        return {ParseResult::State::UnknownCommand, unguarded(*word), commands};
    const std::vector<std::string> surplus = surplusWords(*m_app);
    if (!surplus.empty())
        return {ParseResult::State::Surplus, {}, surplus};
    return {ParseResult::State::Refused, withoutGuards(error.what()), {}};
}

const CLI::App& CommandParser::innermostApp() const
{
    const CLI::App* app = m_app.get();
    while (!app->get_subcommands().empty())
        app = app->get_subcommands().front();
    return *app;
}

std::optional<Command> CommandParser::innermost() const
{
    CLI::App* app = nullptr;
    for (auto chosen = m_app->get_subcommands(); !chosen.empty(); chosen = app->get_subcommands())
        app = chosen.front();
    return app == nullptr ? std::nullopt : std::optional<Command>(app);
}

} // namespace hx

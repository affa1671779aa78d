// Reads the words of a command line: which command is chosen, and the values of its options.
#pragma once

#include "apps/commandline/Command.h"

#include <memory>
#include <optional>

namespace CLI {
class ParseError;
}

namespace hx {

struct ParseResult {
    enum class State {
        Chosen,         // a command
        Help,           // `text` was asked for
        NoCommand,      // where one of `words` should be
        UnknownCommand, // `text`, where one of `words` should be
        Surplus,        // `words`
        Refused,        // `text` says why
    };
    State state;
    std::string text;
    std::vector<std::string> words;
};

class CommandParser {
public:
    CommandParser(const std::string& program, const std::string& description);
    ~CommandParser();

    // What --version prints.
    void setVersion(const std::string& text);

    // What the help says below the commands.
    void explain(const std::string& text);

    Command add(const std::string& name, const std::string& description);
    Command addTo(const Command& group, const std::string& name, const std::string& description);

    // A command that only groups others.
    Command addGroup(const std::string& name, const std::string& description);

    // May be called once.
    ParseResult parse(int argc, const char* const* argv);

    // The command that was read last, a group where no command of it follows.
    std::optional<Command> innermost() const;

private:
    const CLI::App& innermostApp() const;
    ParseResult problem(const CLI::ParseError& error) const;

    std::unique_ptr<CLI::App> m_app;
};

} // namespace hx

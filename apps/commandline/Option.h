// One option or argument of a command, as its declaration goes on: its group, what its value is
// called, which values are refused.
#pragma once

#include <functional>
#include <string>

namespace CLI {
class Option;
}

namespace hx {

class Option {
public:
    explicit Option(CLI::Option* option) : m_option(option) {}

    // What the help calls the value: FILE, N.
    Option& valueName(const std::string& name);

    // The heading under which the help lists the option.
    Option& group(const std::string& name);

    Option& required();

    // The help shows the value that holds when none is given: that of the target, or this text.
    Option& showDefault();
    Option& showDefault(const std::string& text);

    // Refuses a number that is less or more.
    Option& range(long long least, long long most);

    // Refuses a value for which `problem` returns a text, and says that text.
    Option& check(const std::function<std::string(const std::string&)>& problem);

    // Refuses the two together.
    Option& excludes(const Option& other);

private:
    CLI::Option* m_option;
};

} // namespace hx

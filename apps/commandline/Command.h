// One command of a command line: what it is called, and its options and arguments. Names are
// written as they are typed, "-q,--quiet"; a name without a dash is an argument's. Targets must
// live as long as the command line; each keeps its value unless the option is given.
#pragma once

#include "apps/commandline/Option.h"

#include <map>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace hx {

// An option or argument, and what was typed for it.
struct GivenOption {
    std::string name; // without its short form: --trace
    std::string group;
    bool isFlag;
    bool isArgument;
    std::vector<std::string> values;
};

class Command {
public:
    explicit Command(CLI::App* app) : m_app(app) {}

    // What the help says below the options.
    void explain(const std::string& text) const;

    Option addFlag(const std::string& names, bool& target, const std::string& help) const;

    // A flag that chooses what holds anyway.
    Option addFlag(const std::string& names, const std::string& help) const;

    // Counts how often it is given.
    Option addCount(const std::string& names, int& target, const std::string& help) const;

    Option addOption(const std::string& names, std::string& target, const std::string& help) const;
    Option addOption(const std::string& names, int& target, const std::string& help) const;
    Option addOption(const std::string& names, long long& target, const std::string& help) const;
    Option addOption(const std::string& names, double& target, const std::string& help) const;

    // Calls `take` with the number when one is given.
    Option addNumber(const std::string& names, const std::function<void(int)>& take,
                     const std::string& help) const;

    // May be given several times, with one value each time.
    Option addRepeated(const std::string& names, std::vector<std::string>& target,
                       const std::string& help) const;

    // An argument of any number of words; each may be empty.
    Option addWords(const std::string& name, std::vector<std::string>& target,
                    const std::string& help) const;

    // One of a few words, each of which stands for a value. The help calls the value "one|other".
    template <typename Value>
    Option addChoice(const std::string& names, const std::map<std::string, Value>& words,
                     Value& target, const std::string& help) const
    {
        std::vector<std::string> known;
        known.reserve(words.size());
        for (const auto& word : words)
            known.push_back(word.first);
        return addWord(
            names, known, [words, &target](const std::string& word) { target = words.at(word); },
            help);
    }

    std::string name() const;

    // All words that lead to the command, without the program's name: "image build".
    std::string fullName() const;

    // All options and arguments, in the order of their declaration.
    std::vector<GivenOption> given() const;

private:
    friend class CommandParser;

    Option addWord(const std::string& names, const std::vector<std::string>& known,
                   const std::function<void(const std::string&)>& take,
                   const std::string& help) const;

    CLI::App* m_app;
};

} // namespace hx

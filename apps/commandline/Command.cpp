#include "apps/commandline/Command.h"

#include "apps/commandline/GuardedWord.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace hx {

namespace {

std::vector<std::string> unguardedAll(const std::vector<std::string>& typed)
{
    std::vector<std::string> words(typed.size());
    std::transform(typed.begin(), typed.end(), words.begin(), unguarded);
    return words;
}

} // namespace

void Command::explain(const std::string& text) const
{
    m_app->footer(text);
}

Option Command::addFlag(const std::string& names, bool& target, const std::string& help) const
{
    return Option(m_app->add_flag(names, target, help));
}

Option Command::addFlag(const std::string& names, const std::string& help) const
{
    return Option(m_app->add_flag(names, help));
}

Option Command::addCount(const std::string& names, int& target, const std::string& help) const
{
    return Option(m_app->add_flag(names, target, help));
}

Option Command::addOption(const std::string& names, std::string& target,
                          const std::string& help) const
{
    const auto take = [&target](const CLI::results_t& typed) {
        target = typed.at(0);
        return true;
    };
    return Option(m_app->add_option(names, take, help, false, [&target] { return target; })
                      ->transform(unguarded)
                      ->type_name("TEXT"));
}

Option Command::addOption(const std::string& names, int& target, const std::string& help) const
{
    return Option(m_app->add_option(names, target, help));
}

Option Command::addOption(const std::string& names, long long& target,
                          const std::string& help) const
{
    return Option(m_app->add_option(names, target, help));
}

Option Command::addOption(const std::string& names, double& target, const std::string& help) const
{
    return Option(m_app->add_option(names, target, help));
}

Option Command::addNumber(const std::string& names, const std::function<void(int)>& take,
                          const std::string& help) const
{
    return Option(m_app->add_option_function<int>(names, take, help));
}

Option Command::addRepeated(const std::string& names, std::vector<std::string>& target,
                            const std::string& help) const
{
    const auto take = [&target](const CLI::results_t& typed) {
        target = typed;
        return true;
    };
    return Option(m_app->add_option(names, take, help)
                      ->expected(CLI::detail::expected_max_vector_size)
                      ->allow_extra_args(false)
                      ->transform(unguarded)
                      ->type_name("TEXT ..."));
}

Option Command::addWords(const std::string& name, std::vector<std::string>& target,
                         const std::string& help) const
{
    const auto take = [&target](const CLI::results_t& typed) {
        target = unguardedAll(typed);
        return true;
    };
    return Option(
        m_app->add_option(name, take, help)->expected(0, -1)->allow_extra_args()->type_name(""));
}

Option Command::addWord(const std::string& names, const std::vector<std::string>& known,
                        const std::function<void(const std::string&)>& take,
                        const std::string& help) const
{
    const auto takeFirst = [take](const CLI::results_t& typed) {
        take(typed.at(0));
        return true;
    };
    const auto problem = [known](const std::string& word) {
        const bool isKnown = std::find(known.begin(), known.end(), word) != known.end();
        return isKnown ? std::string()
                       : '"' + word + "\" is not one of: " + CLI::detail::join(known, ", ");
    };
    return Option(m_app->add_option(names, takeFirst, help)
                      ->type_name(CLI::detail::join(known, "|"))
                      ->transform(unguarded)
                      ->check(problem));
}

std::string Command::name() const
{
    return m_app->get_name();
}

std::string Command::fullName() const
{
    const CLI::App* parent = m_app->get_parent();
    if (parent == nullptr || parent->get_parent() == nullptr)
        return name();
    return parent->get_name() + ' ' + name();
}

std::vector<GivenOption> Command::given() const
{
    std::vector<GivenOption> all;
    for (const CLI::Option* option : m_app->get_options())
        all.push_back({option->get_name(), option->get_group(), option->get_expected_max() == 0,
                       option->get_positional(), unguardedAll(option->results())});
    return all;
}

} // namespace hx

#include "apps/commandline/Option.h"

#include <CLI/CLI.hpp>

namespace hx {

Option& Option::valueName(const std::string& name)
{
    m_option->type_name(name);
    return *this;
}

Option& Option::group(const std::string& name)
{
    m_option->group(name);
    return *this;
}

Option& Option::required()
{
    m_option->required();
    return *this;
}

Option& Option::showDefault()
{
    m_option->capture_default_str();
    return *this;
}

Option& Option::showDefault(const std::string& text)
{
    m_option->default_str(text);
    return *this;
}

Option& Option::range(long long least, long long most)
{
    const CLI::Range range(least, most);
    return check([range, least, most](const std::string& word) {
        return range(word).empty() ? std::string()
                                   : '"' + word + "\" is not a number from " +
                                         std::to_string(least) + " to " + std::to_string(most);
    });
}

Option& Option::check(const std::function<std::string(const std::string&)>& problem)
{
    m_option->check(problem);
    return *this;
}

Option& Option::excludes(const Option& other)
{
    m_option->excludes(other.m_option);
    return *this;
}

} // namespace hx

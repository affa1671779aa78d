#include "apps/commandline/GuardedWord.h"

#include <algorithm>

namespace hx {

namespace {

constexpr char guard = '\x01';

bool needsGuard(const std::string& word)
{
    return !word.empty() && (word.front() == '[' || word.front() == guard);
}

} // namespace

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
    return words;
}

std::string unguarded(const std::string& word)
{
    return !word.empty() && word.front() == guard ? word.substr(1) : word;
}

std::string withoutGuards(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), guard), text.end());
    return text;
}

} // namespace hx

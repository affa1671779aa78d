// Words of a command line, kept from the parser's own readings: of "[1,2]" it would make a list,
// and "--" it overlooks where no argument is required.
#pragma once

#include <string>
#include <vector>

namespace hx {

// The words after the program's name. Those in brackets and those after "--" are guarded: they
// reach their option or argument exactly as they were typed.
std::vector<std::string> guardedWords(int argc, const char* const* argv);

// The word as it was typed.
std::string unguarded(const std::string& word);

// A text of the parser's, with the words in it as they were typed.
std::string withoutGuards(std::string text);

} // namespace hx

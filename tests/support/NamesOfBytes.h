// For tests of file names that are not UTF-8, which the file systems of macOS refuse.
#pragma once

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

#include <fcntl.h>
#include <unistd.h>

inline bool takesNamesOfBytes(const std::string& folder)
{
    const std::string name = folder + "/\xE9";
    const int file = open(name.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    if (file < 0)
        return errno != EILSEQ;
    close(file);
    unlink(name.c_str());
    return true;
}

#define SKIP_WHERE_NAMES_ARE_TEXT(folder)                                                          \
    do {                                                                                           \
        if (!takesNamesOfBytes(folder))                                                            \
            GTEST_SKIP() << "names of files are UTF-8 here";                                       \
    } while (false)

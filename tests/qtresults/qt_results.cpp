// Writes what random input gives, one number a case; compares it with what the build with another Qt wrote.
// Usage: qt_results write FILE [SEED] | compare FILE OTHER | show SUBJECT NUMBER [SEED]
#include "tests/qtresults/Subjects.h"

#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

using namespace qtresults;

constexpr int shownDifferences = 10;
constexpr int numberSize = sizeof(quint64);

// FNV-1a, the same on every machine and under every Qt.
quint64 numberOf(const QByteArray& result)
{
    quint64 number = 0xCBF29CE484222325;
    for (const char byte : result)
        number = (number ^ static_cast<quint8>(byte)) * 0x100000001B3;
    return number;
}

int writeResults(const char* path, unsigned int seed)
{
    QFile file(QFile::decodeName(path));
    if (!file.open(QIODevice::WriteOnly)) {
        std::fprintf(stderr, "%s cannot be written\n", path);
        return EXIT_FAILURE;
    }
    int cases = 0;
    for (const Subject& subject : subjects()) {
        for (int number = 0; number < subject.cases; ++number, ++cases) {
            const quint64 result = numberOf(resultOf(subject, seed, number));
            file.write(reinterpret_cast<const char*>(&result), numberSize);
        }
    }
    std::printf("Qt %s, seed %u: %d results\n", qVersion(), seed, cases);
    return file.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
}

QByteArray contentOf(const char* path)
{
    QFile file(QFile::decodeName(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// How many results of a subject differ; the first ones are named.
int differencesIn(const Subject& subject, const char* mine, const char* other)
{
    int differences = 0;
    for (int number = 0; number < subject.cases; ++number) {
        const int at = number * numberSize;
        if (std::memcmp(mine + at, other + at, numberSize) == 0)
            continue;
        if (++differences <= shownDifferences)
            std::printf("differs: qt_results show \"%s\" %d\n", subject.name, number);
    }
    std::printf("%-20s %7d cases, %d differences\n", subject.name, subject.cases, differences);
    return differences;
}

int compareResults(const char* path, const char* otherPath)
{
    const QByteArray mine = contentOf(path);
    const QByteArray other = contentOf(otherPath);
    qsizetype at = 0;
    for (const Subject& subject : subjects())
        at += qsizetype(subject.cases) * numberSize;
    if (mine.size() != at || other.size() != at) {
        std::fprintf(stderr, "%s or %s does not hold all results: write both again\n", path,
                     otherPath);
        return EXIT_FAILURE;
    }
    const qsizetype cases = at / numberSize;
    int differences = 0;
    at = 0;
    for (const Subject& subject : subjects()) {
        differences += differencesIn(subject, mine.constData() + at, other.constData() + at);
        at += qsizetype(subject.cases) * numberSize;
    }
    std::printf("all together: %lld cases, %d differences\n", static_cast<long long>(cases),
                differences);
    return differences == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

int showResult(const char* name, int number, unsigned int seed)
{
    for (const Subject& subject : subjects()) {
        if (std::strcmp(subject.name, name) == 0)
            return std::puts(resultOf(subject, seed, number).constData()) < 0 ? EXIT_FAILURE
                                                                              : EXIT_SUCCESS;
    }
    std::fprintf(stderr, "there is no subject \"%s\"\n", name);
    return EXIT_FAILURE;
}

unsigned int seedOf(int count, char** words, int at)
{
    return count > at ? static_cast<unsigned int>(std::strtoul(words[at], nullptr, 10)) : 1U;
}

} // namespace

int main(int count, char** words)
{
    const QByteArray command = count > 2 ? words[1] : "";
    if (command == "write")
        return writeResults(words[2], seedOf(count, words, 3));
    if (command == "compare" && count == 4)
        return compareResults(words[2], words[3]);
    if (command == "show" && count > 3)
        return showResult(words[2], std::atoi(words[3]), seedOf(count, words, 4));
    std::fputs(
        "usage: qt_results write FILE [SEED] | compare FILE OTHER | show SUBJECT NUMBER [SEED]\n",
        stderr);
    return 2;
}

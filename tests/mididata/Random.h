#pragma once

#include <QByteArray>

#include <random>
#include <string>
#include <vector>

/** Reproducible choices: the same seed gives the same cases on every machine. */
class Random {
public:
    explicit Random(unsigned int seed) : engine(seed) {}

    unsigned int word() { return static_cast<unsigned int>(engine()); }

    /** 0 to n - 1. */
    int below(qsizetype n) { return static_cast<int>(word() % static_cast<unsigned int>(n)); }

    /** `low` to `high`, both included. */
    int between(int low, qsizetype high) { return low + below(high - low + 1); }

    bool oneIn(int n) { return below(n) == 0; }

    template <typename T>
    const T& of(const std::vector<T>& choices)
    {
        return choices[static_cast<size_t>(below(static_cast<int>(choices.size())))];
    }

    /** Bytes of any value, often status bytes, ends of exclusive and zeros. */
    QByteArray bytes(int length)
    {
        static const std::vector<char> special = {'\x00', '\x7F', '\x7E', '\x80',
                                                  '\xF0', '\xF7', '\xF8', '\xFF'};
        QByteArray result(length, '\0');
        for (char& byte : result)
            byte = oneIn(4) ? of(special) : static_cast<char>(below(256));
        return result;
    }

    /** A number near an edge: of an int, of `size`, or of nothing. */
    int position(qsizetype size)
    {
        static const std::vector<int> extremes = {-2147483647 - 1, -2147483647, -1, 0, 1,
                                                  2147483646,      2147483647};
        return oneIn(6) ? of(extremes) : between(-3, size + 3);
    }

private:
    std::mt19937 engine;
};

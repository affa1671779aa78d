// hxgrowth: operations on inputs of 1 KiB to 16 MiB, each twice as long as the one before. Prints the CPU time
// of each and the factor from one to the next. Where an input no longer fits a cache the factor is above 2 for
// once, so what counts is the mean of all doublings: the program ends with 1 when that of a hostile input is
// above 2.2. Work that grew with the square of the size would have 4.
#include "bench/Inputs.h"
#include "mididata/HxMidiData.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr int smallest = 1 << 10;
constexpr int greatest = 1 << 24;
constexpr double mostGrowth = 2.2;

volatile qint64 kept;

using Operation = std::function<void()>;

struct Subject {
    const char* name;
    bool isHostile;
    std::function<Operation(int size)> prepared;
};

QByteArray repeated(const QByteArray& part, int size)
{
    return part.repeated(size / part.size() + 1).left(size);
}

double processorTime()
{
    return 1e9 * double(std::clock()) / CLOCKS_PER_SEC;
}

// Nanoseconds of one run: the least of nine times, each of as many runs as take a millisecond.
double timeOf(const Operation& operation)
{
    int runs = 1;
    double best = 0;
    for (int round = 0; round < 9;) {
        const double begin = processorTime();
        for (int i = 0; i < runs; ++i)
            operation();
        const double elapsed = processorTime() - begin;
        if (elapsed < 1e6) {
            runs *= 2;
            continue;
        }
        best = round++ == 0 ? elapsed / runs : std::min(best, elapsed / runs);
    }
    return best;
}

Operation search(const QByteArray& bytes, const char* pattern, bool atStart)
{
    return [data = HxMidiData(bytes), pattern, atStart] { kept = data.match(pattern, atStart); };
}

Operation textRead(const QByteArray& text)
{
    return [text] {
        HxMidiData data;
        data.setText(text.constData());
        kept = data.bytes.size();
    };
}

Operation cut(const QByteArray& bytes)
{
    return [data = HxMidiData(bytes)] { kept = data.splitOnStatus().size(); };
}

constexpr auto pattern = "F0006B2D30..4[23]0C";

const std::vector<Subject> subjects = {
    {"search, not there", false,
     [](int size) { return search(hxbench::mixedBytes(size), pattern, false); }},
    {"search, the literal everywhere", true,
     [](int size) {
         return search(repeated("\xF0" + QByteArray(1, 0) + "\x6B\x2D\x30", size), pattern, false);
     }},
    {"search, its first byte everywhere", true,
     [](int size) { return search(QByteArray(size, '\xF0'), pattern, false); }},
    {"search, its digits half a byte off everywhere", true,
     [](int size) {
         return search(repeated(QByteArray::fromHex("0F0006B2D304"), size), pattern, false);
     }},
    {"match, three gaps of which the last is missing", true,
     [](int size) {
         return search(repeated(QByteArray::fromHex("F012345678"), size), "F0.*1234.*5678.*9ABC",
                       true);
     }},
    {"contains, all but the last byte everywhere", true,
     [](int size) {
         const QByteArray part = QByteArray(31, '\x11') + '\x12';
         return Operation(
             [data = HxMidiData(QByteArray(size, '\x11')), part] { kept = data.contains(part); });
     }},
    {"setText, pairs", false,
     [](int size) { return textRead(hxbench::mixedBytes(size / 2).toHex()); }},
    {"setText, pairs with blanks", false,
     [](int size) { return textRead(hxbench::mixedBytes(size / 3).toHex(' ')); }},
    {"setText, blanks alone before one pair", true,
     [](int size) { return textRead(QByteArray(size, ' ') + "41"); }},
    {"splitOnStatus, 48-byte messages", false,
     [](int size) { return cut(hxbench::messageStream(size)); }},
    {"splitOnStatus, status bytes alone", true,
     [](int size) { return cut(QByteArray(size, '\xF8')); }},
    {"toString", false,
     [](int size) {
         return Operation(
             [data = HxMidiData(hxbench::mixedBytes(size))] { kept = data.toString(-1).size(); });
     }},
    {"toStringTable", false,
     [](int size) {
         return Operation([data = HxMidiData(hxbench::mixedBytes(size))] {
             kept = data.toStringTable(-1, 16).size();
         });
     }},
    {"toStringTable, one column", true,
     [](int size) {
         return Operation([data = HxMidiData(hxbench::mixedBytes(size / 4))] {
             kept = data.toStringTable(-1, 1).size();
         });
     }},
    {"sum32", false,
     [](int size) {
         return Operation(
             [data = HxMidiData(hxbench::mixedBytes(size)), size] { kept = data.sum32(0, size); });
     }},
};

struct Growth {
    double mean = 0; // factor of a doubling
    double greatest = 0;
};

// Prints one line a size.
Growth measure(const Subject& subject)
{
    std::printf("\n%s\n", subject.name);
    std::vector<double> times;
    Growth growth;
    for (int size = smallest; size <= greatest; size *= 2) {
        times.push_back(timeOf(subject.prepared(size)));
        const double factor = times.size() > 1 ? times.back() / times[times.size() - 2] : 0;
        std::printf("%8s %14.0f ns  x%.2f\n", hxbench::sizeName(size).c_str(), times.back(),
                    factor);
        std::fflush(stdout);
        growth.greatest = std::max(growth.greatest, factor);
    }
    growth.mean = std::pow(times.back() / times.front(), 1.0 / double(times.size() - 1));
    return growth;
}

} // namespace

int main()
{
    std::string summary;
    std::string complaint;
    for (const Subject& subject : subjects) {
        const Growth growth = measure(subject);
        const std::string name =
            std::string(subject.name) + (subject.isHostile ? " (hostile)" : "");
        char line[200];
        std::snprintf(line, sizeof(line), "| %s | %.2f | %.2f |\n", name.c_str(), growth.mean,
                      growth.greatest);
        summary += line;
        if (subject.isHostile && growth.mean > mostGrowth)
            complaint += "grew by more than allowed: " + name + "\n";
    }
    std::printf("\n| operation | mean factor of a doubling | greatest |\n|---|---|---|\n%s%s",
                summary.c_str(), complaint.c_str());
    return complaint.empty() ? 0 : 1;
}

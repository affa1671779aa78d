// hxgrowth: operations on inputs of 1 KiB to 16 MiB, each twice as long as the one before. Prints the CPU time
// of each and the factor from one to the next, beside those of its floor: what the memory needs for as many bytes,
// measured in turn with it. Ends with 1 when a doubling of a hostile input takes more than 2.2 times as long and
// this is not the memory's doing: when it is more than 1.1 times the floor's factor too, at this doubling and at
// those beside it. The floor's is above 2 where the bytes no longer fit a cache. Work that grew with the square of the size would have 4.
#include "bench/Inputs.h"
#include "mididata/HxMidiData.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr int smallest = 1 << 10;
constexpr int greatest = 1 << 24;
constexpr double mostGrowth = 2.2;      // of a doubling
constexpr double mostBesideFloor = 1.1; // times the floor's

volatile qint64 kept;

using Operation = std::function<void()>;

using Prepared = std::function<Operation(int size)>;

struct Subject {
    const char* name;
    bool isHostile;
    Prepared prepared;
    Prepared floor; // only what the memory needs
};

QByteArray repeated(const QByteArray& part, int size)
{
    return part.repeated(size / part.size() + 1).left(size);
}

double processorTime()
{
    return 1e9 * double(std::clock()) / CLOCKS_PER_SEC;
}

double timeOf(const Operation& operation, int runs)
{
    const double begin = processorTime();
    for (int i = 0; i < runs; ++i)
        operation();
    return (processorTime() - begin) / runs;
}

// How many runs take a millisecond; several, unless they are long, so that most find in a cache what the runs of
// the other one took out of it.
int enoughRuns(const Operation& operation)
{
    constexpr double longRun = 2e7;
    int runs = timeOf(operation, 1) > longRun ? 1 : 4;
    while (timeOf(operation, runs) * runs < 1e6)
        runs *= 2;
    return runs;
}

// Nanoseconds of one run of an operation and of its floor: the least of nine times, taken in turn.
struct Times {
    double own = 0;
    double floor = 0;
};

Times leastTimes(const Operation& own, const Operation& floor)
{
    const int runs = enoughRuns(own);
    Times least = {timeOf(own, runs), timeOf(floor, runs)};
    for (int round = 1; round < 9; ++round) {
        least.own = std::min(least.own, timeOf(own, runs));
        least.floor = std::min(least.floor, timeOf(floor, runs));
    }
    return least;
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

// Looks at each byte once.
Operation reading(int size)
{
    return [bytes = QByteArray(size, '\x11')] {
        kept = std::memchr(bytes.constData(), '\x12', size_t(bytes.size())) != nullptr;
    };
}

// Looks at each byte once, and fills new memory of `percent` hundredths of their number.
Prepared readingAndFilling(int percent)
{
    return [percent](int size) {
        return Operation([read = reading(size), written = int(qint64(size) * percent / 100)] {
            read();
            kept = QByteArray(written, 'F').size();
        });
    };
}

// Cuts where the cuts are known.
Prepared cuttingEvery(int length)
{
    return [length](int size) {
        return Operation([bytes = QByteArray(size, '\x11'), length] {
            QList<HxMidiData> pieces;
            for (int at = 0; at + length <= bytes.size(); at += length) {
                pieces.append(HxMidiData());
                pieces.last().bytes = QByteArray(bytes.constData() + at, length);
            }
            kept = pieces.size();
        });
    };
}

constexpr auto pattern = "F0006B2D30..4[23]0C";

const std::vector<Subject> subjects = {
    {"search, not there", false,
     [](int size) { return search(hxbench::mixedBytes(size), pattern, false); }, reading},
    {"search, the literal everywhere", true,
     [](int size) {
         return search(repeated("\xF0" + QByteArray(1, 0) + "\x6B\x2D\x30", size), pattern, false);
     },
     reading},
    {"search, its first byte everywhere", true,
     [](int size) { return search(QByteArray(size, '\xF0'), pattern, false); }, reading},
    {"search, its digits half a byte off everywhere", true,
     [](int size) {
         return search(repeated(QByteArray::fromHex("0F0006B2D304"), size), pattern, false);
     },
     reading},
    {"match, three gaps of which the last is missing", true,
     [](int size) {
         return search(repeated(QByteArray::fromHex("F012345678"), size), "F0.*1234.*5678.*9ABC",
                       true);
     },
     reading},
    {"contains, all but one byte everywhere", true,
     [](int size) {
         const QByteArray part = QByteArray(16, '\x11') + '\x12' + QByteArray(16, '\x11');
         return Operation(
             [data = HxMidiData(QByteArray(size, '\x11')), part] { kept = data.contains(part); });
     },
     reading},
    {"setText, pairs", false,
     [](int size) { return textRead(hxbench::mixedBytes(size / 2).toHex()); },
     readingAndFilling(50)},
    {"setText, pairs with blanks", false,
     [](int size) { return textRead(hxbench::mixedBytes(size / 3).toHex(' ')); },
     readingAndFilling(33)},
    {"setText, blanks alone before one pair", true,
     [](int size) { return textRead(QByteArray(size, ' ') + "41"); }, reading},
    {"splitOnStatus, 48-byte messages", false,
     [](int size) { return cut(hxbench::messageStream(size)); }, cuttingEvery(48)},
    {"splitOnStatus, status bytes alone", true,
     [](int size) { return cut(QByteArray(size, '\xF8')); }, cuttingEvery(1)},
    {"toString", false,
     [](int size) {
         return Operation(
             [data = HxMidiData(hxbench::mixedBytes(size))] { kept = data.toString(-1).size(); });
     },
     readingAndFilling(400)},
    {"toStringTable", false,
     [](int size) {
         return Operation([data = HxMidiData(hxbench::mixedBytes(size))] {
             kept = data.toStringTable(-1, 16).size();
         });
     },
     readingAndFilling(700)},
    {"toStringTable, one column", true,
     [](int size) {
         return Operation([data = HxMidiData(hxbench::mixedBytes(size / 4))] {
             kept = data.toStringTable(-1, 1).size();
         });
     },
     readingAndFilling(400)},
    {"sum32", false,
     [](int size) {
         return Operation(
             [data = HxMidiData(hxbench::mixedBytes(size)), size] { kept = data.sum32(0, size); });
     },
     reading},
};

// How the time of a subject grows.
struct Growth {
    double mean = 0;         // factor of a doubling
    double greatest = 0;     // of one
    double floors = 0;       // the floor's greatest at that doubling and those beside it
    bool isTooGreat = false; // one is more than allowed
};

// Prints one line a size.
std::vector<Times> measure(const Subject& subject)
{
    std::printf("\n%s\n", subject.name);
    std::vector<Times> times;
    for (int size = smallest; size <= greatest; size *= 2) {
        times.push_back(leastTimes(subject.prepared(size), subject.floor(size)));
        std::printf("%8s %14.0f ns   floor %14.0f ns\n", hxbench::sizeName(size).c_str(),
                    times.back().own, times.back().floor);
        std::fflush(stdout);
    }
    return times;
}

// A cache may be full one doubling sooner or later than for the floor.
double floorsFactorBeside(const std::vector<Times>& times, size_t at)
{
    double factor = 0;
    for (size_t i = std::max<size_t>(at, 2) - 1; i < std::min(at + 2, times.size()); ++i)
        factor = std::max(factor, times[i].floor / times[i - 1].floor);
    return factor;
}

Growth growthOf(const std::vector<Times>& times)
{
    Growth growth;
    for (size_t i = 1; i < times.size(); ++i) {
        const double own = times[i].own / times[i - 1].own;
        const double floor = floorsFactorBeside(times, i);
        growth.isTooGreat |= own > mostGrowth && own > mostBesideFloor * floor;
        if (own > growth.greatest) {
            growth.greatest = own;
            growth.floors = floor;
        }
    }
    growth.mean = std::pow(times.back().own / times.front().own, 1.0 / double(times.size() - 1));
    return growth;
}

} // namespace

int main()
{
    std::string summary;
    std::string complaint;
    for (const Subject& subject : subjects) {
        const Growth growth = growthOf(measure(subject));
        const std::string name =
            std::string(subject.name) + (subject.isHostile ? " (hostile)" : "");
        char line[200];
        std::snprintf(line, sizeof(line), "| %s | %.2f | %.2f | %.2f |\n", name.c_str(),
                      growth.mean, growth.greatest, growth.floors);
        summary += line;
        if (subject.isHostile && growth.isTooGreat)
            complaint += "grew by more than allowed: " + name + "\n";
    }
    std::printf("\n| operation | mean factor of a doubling | greatest | its floor's there |\n"
                "|---|---|---|---|\n%s%s",
                summary.c_str(), complaint.c_str());
    return complaint.empty() ? 0 : 1;
}

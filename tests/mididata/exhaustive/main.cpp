// hxpatterns [--every N --first K]: every pattern of up to five items against every buffer of up to three
// bytes, at the start and anywhere, beside the regular expression that it stands for. The items tell the
// digits 0, F and 7 from each other and from all others, so one of the others stands for all of them.
#include "mididata/HxMidiData.h"
#include "tests/mididata/ShortPatterns.h"

#include <QRegExp>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

struct Subject {
    HxMidiData data;
    QString text;
};

std::vector<Subject> subjects()
{
    std::vector<QByteArray> texts = {QByteArray()};
    for (size_t i = 0; i < texts.size(); ++i) {
        const QByteArray text = texts[i]; // the list grows
        for (const char* digit : {"0", "F", "7", "3"}) {
            if (text.size() < 6)
                texts.push_back(text + digit);
        }
    }
    std::vector<Subject> all;
    for (const QByteArray& text : texts) {
        if (text.size() % 2 == 0)
            all.push_back({HxMidiData(QByteArray::fromHex(text)), QString::fromLatin1(text)});
    }
    return all;
}

// Counts the comparisons that hold, and returns the number of those that do not.
int compare(const std::string& pattern, const std::vector<Subject>& subjects, qint64& passed)
{
    const QRegExp rx(expressionOfItems(pattern));
    int failed = 0;
    for (const Subject& subject : subjects) {
        const int position = rx.indexIn(subject.text);
        const bool holds = subject.data.match(pattern.c_str(), false) == (position >= 0) &&
                           subject.data.match(pattern.c_str(), true) == (position == 0);
        if (!holds && ++failed == 1)
            std::printf("\"%s\" on %s\n", pattern.c_str(), qPrintable(subject.text));
    }
    passed += 2 * (qint64(subjects.size()) - failed);
    return 2 * failed;
}

size_t numberAfter(int argc, char** argv, const char* option, size_t otherwise)
{
    for (int i = 1; i + 1 < argc; ++i) {
        if (std::strcmp(argv[i], option) == 0)
            return static_cast<size_t>(std::atoi(argv[i + 1]));
    }
    return otherwise;
}

} // namespace

int main(int argc, char** argv)
{
    const size_t every = numberAfter(argc, argv, "--every", 1);
    const std::vector<Subject> all = subjects();
    const std::vector<std::string> patterns = shortPatterns(5);
    qint64 passed = 0;
    qint64 failed = 0;
    for (size_t i = numberAfter(argc, argv, "--first", 0); i < patterns.size(); i += every)
        failed += compare(patterns[i], all, passed);
    std::printf("%lld passed, %lld failed\n", passed, failed);
    return failed == 0 ? 0 : 1;
}

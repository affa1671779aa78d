// The program's answer to any pattern against HxMidiData::match(), and its refusals against
// QRegExp.
#include "apps/hxmidi/findings/MatchPlace.h"
#include "apps/hxmidi/findings/PatternFindings.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/Random.h"
#include "tests/support/LogCapture.h"
#include "tests/support/QtPrinting.h"

#include <QRegExp>

#include <gtest/gtest.h>

namespace {

const std::vector<std::string> elements = {"F0", "7E", "0",  "..", "xx", ".", "(",     ")",  "|",
                                           "*",  "+",  "?",  " ",  " ",  "[", "]",     "^",  "$",
                                           "VV", "X",  "08", "9",  "-",  ",", "{1,2}", "\\", "(?:"};

std::string randomPattern(Random& random)
{
    std::string pattern;
    const int count = random.below(8);
    for (int i = 0; i < count; ++i)
        pattern += random.of(elements);
    return pattern;
}

// As the library makes it, so that only QRegExp judges what is a regular expression.
bool isExpression(const std::string& pattern)
{
    QString text = QString::fromStdString(pattern).remove(QLatin1Char(' ')).toUpper();
    return QRegExp(text.replace(QLatin1String("XX"), QLatin1String(".."))).isValid();
}

void compare(const std::string& pattern, const HxMidiData& data, bool atStart)
{
    SCOPED_TRACE("pattern '" + pattern + "' on " + data.toString(-1).toStdString());
    const QByteArray typed = QByteArray::fromStdString(pattern);
    LogCapture log;
    hx::midi::Findings findings;
    EXPECT_EQ(hx::midi::checkPattern({QString(), typed}, findings), isExpression(pattern));
    EXPECT_EQ(findings.hasErrors(), !isExpression(pattern));
    const auto place = hx::midi::findMatch(data, typed, atStart);
    EXPECT_EQ(place.has_value(), data.match(pattern.c_str(), atStart));
    if (place) {
        EXPECT_GE(place->digit, 0);
        EXPECT_TRUE(!atStart || place->digit == 0);
        EXPECT_LE(place->firstByte() + place->byteCount(), data.bytes.size());
    }
    EXPECT_EQ(log.texts(), QStringList());
}

} // namespace

TEST(MatchAgainstLibrary, AnswersAsTheLibraryAndRefusesWhatIsNoExpression)
{
    Random random(3);
    const std::vector<char> likely = {'\xF0', '\x7E', '\x00', '\x08', '\x09', '\xF7'};
    for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i) {
        QByteArray bytes(random.below(6), '\0');
        for (char& byte : bytes)
            byte = random.of(likely);
        compare(randomPattern(random), HxMidiData(bytes), random.oneIn(2));
    }
}

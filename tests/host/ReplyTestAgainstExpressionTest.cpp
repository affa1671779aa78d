#include "host/bus/PortBus.h"
#include "qt/Saturated.h"

#include <gtest/gtest.h>

#include <random>

namespace hx {

namespace {

class RandomPatterns {
public:
    QString pattern()
    {
        static const QStringList pieces{"F0", "F7",  "00",   "41",   "0",     "F",   ".",
                                        "..", ".*",  "[23]", "[F0]", "XX",    "X",   " ",
                                        "(",  ")",   "|",    "*",    "+",     "?",   "^",
                                        "$",  "\\d", "\\D",  "f0",   "4[23]", "{2}", "G"};
        QString text;
        for (int count = number(0, 8); count > 0; --count)
            text += pieces.at(number(0, saturated(pieces.size()) - 1));
        return text;
    }

    HxMidiData message()
    {
        static const QByteArray bytes = QByteArray::fromHex("F0F7004142430C017F02");
        QByteArray content;
        for (int count = number(0, 6); count > 0; --count)
            content += bytes.at(number(0, saturated(bytes.size()) - 1));
        return HxMidiData(content);
    }

private:
    int number(int least, int most) { return std::uniform_int_distribution(least, most)(m_random); }

    std::mt19937 m_random{20260711};
};

} // namespace

TEST(ReplyTest, SaysOfEveryMessageWhatTheCompiledExpressionSays)
{
    RandomPatterns random;
    int fitting = 0;
    for (int i = 0; i < 20000; ++i) {
        const QString pattern = random.pattern();
        const ReplyTest fits = replyTest(ResponceData(pattern.toLatin1().constData()));
        const QRegExp expression(QString(pattern).remove(QLatin1Char(' ')));
        for (int j = 0; j < 10; ++j) {
            const HxMidiData message = random.message();
            const bool expected = message.match(expression, true);
            fitting += expected ? 1 : 0;
            ASSERT_EQ(fits(message), expected)
                << pattern.toStdString() << " on " << message.toString(-1).toStdString();
        }
    }
    EXPECT_GT(fitting, 20000);
    EXPECT_LT(fitting, 180000);
}

} // namespace hx

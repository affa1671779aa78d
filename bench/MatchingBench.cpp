#include "bench/Bench.h"
#include "bench/Expressions.h"
#include "mididata/HxMidiData.h"
#include "qt/Saturated.h"
#include "tests/mididata/Patterns.h"
#include "tests/mididata/transcription/Transcription.h"

#include <QRegExp>
#include <QRegularExpression>

#ifdef HXBENCH_RE2
#include <re2/re2.h>
#endif

#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace hxbench {

namespace {

/** A dictionary pattern, a message, and the engines' own forms of both. */
struct Exchange {
    Exchange(const std::string& text, const QByteArray& message)
        : pattern(text), reply(message), hexText(message.toHex().toUpper()),
          qtExpression(QLatin1Char('^') + QString::fromStdString(expressionText(text)))
    {
        qtExpression.optimize();
#ifdef HXBENCH_PCRE2
        jit = std::make_unique<JitExpression>(text);
#endif
#ifdef HXBENCH_RE2
        re2 = std::make_unique<re2::RE2>(expressionText(text));
#endif
    }

    std::string pattern;
    HxMidiData reply;
    QByteArray hexText;
    QRegularExpression qtExpression;
#ifdef HXBENCH_PCRE2
    std::unique_ptr<JitExpression> jit;
#endif
#ifdef HXBENCH_RE2
    std::unique_ptr<re2::RE2> re2;
#endif
};

using Exchanges = std::vector<std::shared_ptr<Exchange>>;

/** Each pattern with a reply that fits it. */
Exchanges hits()
{
    Random random(1);
    Exchanges exchanges;
    for (const std::string& pattern : dictionaryPatterns())
        exchanges.push_back(std::make_shared<Exchange>(pattern, replyTo(random, pattern)));
    return exchanges;
}

/** Each pattern with another product's reply of the same length; it fits none that fixes the byte. */
Exchanges misses()
{
    constexpr int commandByte = 6;
    Random random(1);
    Exchanges exchanges;
    for (const std::string& pattern : dictionaryPatterns()) {
        QByteArray reply = replyTo(random, pattern);
        const int at = qMin(commandByte, hx::saturated(reply.size()) - 2);
        reply[at] = static_cast<char>(reply.at(at) ^ 0x55);
        if (!HxMidiData(reply).match(pattern.c_str(), true))
            exchanges.push_back(std::make_shared<Exchange>(pattern, reply));
    }
    return exchanges;
}

bool own(const Exchange& e)
{
    return e.reply.match(e.pattern.c_str(), true);
}

bool steps(const Exchange& e)
{
    return transcription::match(e.reply.bytes, e.pattern.c_str(), true);
}

bool qtCompiled(const Exchange& e)
{
    return e.qtExpression.match(QString::fromLatin1(e.hexText)).hasMatch();
}

#ifdef HXBENCH_PCRE2
bool jit(const Exchange& e)
{
    return e.jit->fitsStart(e.hexText);
}

bool jitWithText(const Exchange& e)
{
    return e.jit->fitsStart(e.reply.bytes.toHex().toUpper());
}
#endif

#ifdef HXBENCH_RE2
bool re2Compiled(const Exchange& e)
{
    const re2::StringPiece text(e.hexText.constData(), static_cast<size_t>(e.hexText.size()));
    return e.re2->Match(text, 0, text.size(), re2::RE2::ANCHOR_START, nullptr, 0);
}
#endif

/** Matches all exchanges in turn, so that no engine finds its last pattern again. */
template <typename Match>
void addSweep(const std::string& operation, const Exchanges& exchanges, const char* contender,
              Match match)
{
    add(operation + "/dictionary in turn/" + contender, [exchanges, match] {
        int fitting = 0;
        for (const auto& exchange : exchanges)
            fitting += match(*exchange) ? 1 : 0;
        return fitting;
    });
}

template <typename Match>
void addEach(const std::string& operation, const Exchanges& exchanges, const char* contender,
             Match match)
{
    for (const auto& exchange : exchanges)
        add(operation + " one/" + exchange->pattern + "/" + contender,
            [exchange, match] { return match(*exchange); });
}

template <typename Match>
void addBoth(const std::string& operation, const Exchanges& exchanges, const char* contender,
             Match match)
{
    addSweep(operation, exchanges, contender, match);
    addEach(operation, exchanges, contender, match);
}

auto inTurn(const std::vector<std::string>& patterns)
{
    return [patterns, at = std::make_shared<size_t>(0)] {
        *at = (*at + 1) % patterns.size();
        return patterns[*at].c_str();
    };
}

/** Others that mean the same: QRegExp would find the expressions that ours keeps. */
std::vector<std::string> otherwise(std::vector<std::string> patterns)
{
    for (std::string& pattern : patterns) {
        const size_t at = pattern.find("[23]");
        if (at != std::string::npos)
            pattern.replace(at, 4, "[32]");
    }
    return patterns;
}

/** The patterns in turn, beside compiling them each time, and beside searching with what is compiled. */
void addExpressions(const std::string& name, const std::vector<std::string>& patterns)
{
    const HxMidiData data(QByteArray::fromHex("F0006B2D3041430C00F7"));
    add(name + "/own", [data, next = inTurn(patterns)] { return data.match(next(), true); });
    add(name + "/qregexp", [data, next = inTurn(otherwise(patterns))] {
        return transcription::match(data.bytes, next(), true);
    });
    if (patterns.size() > 1)
        return;
    const QRegExp compiled(QString::fromStdString(patterns[0]));
    const QString text = data.toString(-1);
    add(name + "/floor", [=] { return compiled.indexIn(text) == 0; });
}

/** Patterns that only a regular expression describes. */
void addExpressions()
{
    const std::vector<std::string> kinds = {"^F0006B2D30..4[23]0C00F7", "F0006B2D30.+0C00F7",
                                            "F0{1,}06B2D30", "F0006B2D30(41|42)430C00F7"};
    std::vector<std::string> many;
    for (int i = 0; i < 80; ++i)
        many.push_back(kinds[0] + ".{" + std::to_string(i) + ",}");
    for (const std::string& kind : kinds)
        addExpressions("expression again/" + kind, {kind});
    addExpressions("expression for the first time/80 in turn", many);
}

/** Three gaps of any length, of which the last one's end is not there. */
void addMissingGaps(int size)
{
    const std::string pattern = "F0.*1234.*5678.*9ABC";
    QByteArray bytes(size, '\x11');
    bytes.replace(0, 1, "\xF0");
    bytes.replace(size / 4, 2, "\x12\x34");
    bytes.replace(size / 2, 2, "\x56\x78");
    const std::string name = "match gaps/" + sizeName(size) + "/";
    const HxMidiData data(bytes);
    const QByteArray text = bytes.toHex().toUpper();
    add(name + "own", [=] { return data.match(pattern.c_str(), false); });
    if (size <= 1024) // its time grows with the square of the size
        add(name + "steps", [=] { return transcription::match(bytes, pattern.c_str(), false); });
#ifdef HXBENCH_PCRE2
    const auto jitExpression = std::make_shared<JitExpression>(pattern);
    if (size <= 1024)
        add(name + "pcre2jit", [=] { return jitExpression->fitsAnywhere(text); });
#endif
#ifdef HXBENCH_RE2
    const auto expression = std::make_shared<re2::RE2>(pattern);
    const re2::StringPiece piece(text.constData(), static_cast<size_t>(text.size()));
    add(name + "re2", [=] { return re2::RE2::PartialMatch(piece, *expression); });
#endif
    add(name + "floor", [=] { // one pass over the bytes for one value that is not there
        return std::memchr(bytes.constData(), 0x99, static_cast<size_t>(bytes.size())) != nullptr;
    });
}

} // namespace

void addMatching()
{
    const Exchanges exchanges = hits();
    const Exchanges others = misses();
    addBoth("match", exchanges, "own", own);
    addBoth("match", exchanges, "steps", steps);
    addBoth("miss", others, "own", own);
    addSweep("match", exchanges, "qregularexpression", qtCompiled);
#ifdef HXBENCH_PCRE2
    addBoth("match", exchanges, "pcre2jit", jit);
    addBoth("miss", others, "pcre2jit", jit);
    addSweep("match", exchanges, "pcre2jit with text", jitWithText);
#endif
#ifdef HXBENCH_RE2
    addSweep("match", exchanges, "re2", re2Compiled);
#endif
    addExpressions();
    for (const int size : {1024, 2048, 4096, 8192, 16384})
        addMissingGaps(size);
}

} // namespace hxbench

#include "tests/qtresults/Subjects.h"

#include "mididata/HxMidiData.h"
#include "tests/mididata/Patterns.h"
#include "tests/support/LogCapture.h"

#include <QDataStream>
#include <QIODevice>

#include <cstring>

namespace qtresults {

namespace {

const std::vector<std::string> tokens = {
    "F0",   "7e",       "00",     "F7",    "123",  "12345",    "0x7F",     "0x",
    "-1",   "+5",       "XX",     "..",    "G0",   "FFFFFFFF", "80000000", "-80000000",
    "\xE9", "\xB2\xB3", "\t1",    "1\n2",  "",     "7",        "0x123456", "AB",
    "0X1",  "V5",       "MSTR41", "CSTRX", "\xA0", "\x85"};
const std::vector<std::string> separators = {" ", ",", "", "  ", ", ", "\n", "\t"};
const std::vector<std::string> numberFields = {"VV", "V8",  "P8",  "P14",   "V14",
                                               "UT", "V32", "I32", "NIB24", "NIB32"};

std::string textOf(Random& random)
{
    std::string text;
    for (int left = random.below(7); left > 0; --left)
        text += random.of(tokens) + random.of(separators);
    return text;
}

QByteArray numbers(std::initializer_list<qint64> values)
{
    QByteArray text;
    for (const qint64 value : values)
        text += QByteArray::number(value) + ' ';
    return text;
}

// A text that is null is told from one that is empty.
QByteArray shown(const QString& text)
{
    return text.isNull() ? QByteArray("null") : '"' + text.toUtf8() + '"';
}

QByteArray hexText(Random& random)
{
    const std::string text = textOf(random);
    HxMidiData set;
    set.setText(text.c_str());
    const QString wide = QString::fromLatin1(text.c_str());
    return HxMidiData(text.c_str()).bytes.toHex() + ' ' + HxMidiData(wide).bytes.toHex() + ' ' +
           set.bytes.toHex();
}

QByteArray builder(Random& random)
{
    HxMidiData data(random.bytes(random.below(3)));
    const auto literal = [&random] { return random.of(tokens) + ' '; };
    const std::string format = literal() + random.of(numberFields) + ' ' + literal() +
                               random.of(numberFields) + " F32 MSTR CSTR " + literal();
    const std::string hex = textOf(random);
    const std::string characters = random.of(tokens);
    data.setData(format.c_str(), random.word() >> random.below(32),
                 random.word() >> random.below(32), random.position(100) / 7.0, hex.c_str(),
                 characters.c_str());
    return data.bytes.toHex();
}

QByteArray patterns(Random& random)
{
    const std::string known = random.of(dictionaryPatterns());
    const QByteArray bytes =
        random.oneIn(2) ? replyNear(random, known) : random.bytes(random.below(24));
    const std::string pattern = random.oneIn(3)   ? known
                                : random.oneIn(8) ? anyPattern(random)
                                                  : patternLike(random, bytes);
    const HxMidiData data(bytes);
    const QRegExp expression(QString::fromLatin1(pattern.c_str()));
    return numbers({data.match(pattern.c_str(), true), data.match(pattern.c_str(), false),
                    data.startsWith(QByteArray(pattern.c_str())), data.match(expression, true),
                    data.match(expression, false), expression.isValid()});
}

QByteArray similarTo(Random& random, QByteArray bytes)
{
    for (int left = random.below(3); left > 0 && !bytes.isEmpty(); --left)
        bytes[random.below(bytes.size())] = static_cast<char>(random.below(256));
    if (random.oneIn(6))
        bytes.chop(1);
    return bytes;
}

QByteArray comparison(Random& random)
{
    const QByteArray bytes = random.bytes(random.below(random.oneIn(50) ? 700 : 40));
    const HxMidiData mine(bytes);
    const HxMidiData other(similarTo(random, bytes));
    const int first = random.position(bytes.size());
    const int second = random.position(bytes.size());
    QByteArray result = numbers({mine.isSame(other), static_cast<qint64>(mine.hash()),
                                 mine.contains(other), mine.startsWith(other)});
    result += mine.diff(other, first, second).join(';').toUtf8();
    const auto differing = mine.diffToMap(other, {first, second});
    for (auto it = differing.begin(); it != differing.end(); ++it)
        result += ' ' + numbers({it.key(), it.value()});
    return result;
}

QByteArray fields(Random& random)
{
    const QByteArray bytes = random.bytes(random.below(24));
    HxMidiData data(bytes);
    const int at = random.position(bytes.size());
    const int length = random.position(bytes.size());
    const float real = data.getFloat32(at, 1.5F);
    quint32 bits = 0;
    std::memcpy(&bits, &real, sizeof bits);
    QByteArray result =
        numbers({data.get14bit(at, -7), data.getUtime(at, -7), bits, data.get32bit(at, -7),
                 data.get32bitLE(at, -7), data.toInt(at, random.below(7), -7),
                 data.sumOfSection(at, length), data.sum32(random.word() >> 24, length),
                 data.set14bit(random.below(30), random.position(20000))});
    result += data.bytes.toHex();
    if (length < 1000) // the bytes that are not there are zeros in the text
        result += shown(data.getString(at, length));
    return result + shown(data.toAsciiString(at, length));
}

QByteArray renderings(Random& random)
{
    const QByteArray bytes = random.bytes(random.below(random.oneIn(20) ? 200 : 16));
    const HxMidiData data(bytes);
    const int first = random.position(bytes.size());
    const int second = random.position(bytes.size());
    const char separator = static_cast<char>(random.below(256));
    return shown(data.toString(first)) + shown(data.toStringFromEnd(first)) +
           shown(data.toString(separator, first)) + shown(data.toString(separator, first, second)) +
           shown(data.toStringDec()) + shown(data.toStringTable(first, random.position(20)));
}

QByteArray streams(Random& random)
{
    QByteArray form;
    QDataStream writer(&form, QIODevice::WriteOnly);
    for (int left = 1 + random.below(3); left > 0; --left)
        writer << HxMidiData(random.bytes(random.below(20)));
    const QByteArray damaged = similarTo(random, form);
    QDataStream reader(damaged);
    QByteArray result = form.toHex();
    for (int left = 4; left > 0; --left) {
        HxMidiData data(7);
        reader >> data;
        result += ' ' + data.bytes.toHex() + numbers({reader.status(), data.bytes.isNull()});
    }
    return result;
}

QByteArray edits(Random& random)
{
    HxMidiData data(random.bytes(random.below(24)));
    const QByteArray replaced = data.replace(random.position(data.bytes.size()), random.below(30),
                                             random.bytes(random.below(5)));
    data.chomp(random.position(data.bytes.size()));
    QByteArray result = replaced.toHex() + ' ' + data.bytes.toHex();
    for (const HxMidiData& piece : data.splitOnStatus())
        result += ' ' + piece.bytes.toHex();
    for (const HxMidiData& piece : data.split(1 + random.below(9)))
        result += ' ' + piece.bytes.toHex();
    return result + ' ' + data.mid(random.position(30), random.position(30)).toHex();
}

// Nearly every text is wrong, and what is said of it is all that counts.
QByteArray logLines(Random& random)
{
    std::string text = textOf(random);
    text += static_cast<char>(1 + random.below(255));
    HxMidiData().setText(text.c_str());
    HxMidiData().setData((text + " MSTR").c_str(), text.c_str());
    return QByteArray();
}

} // namespace

const std::vector<Subject>& subjects()
{
    static const std::vector<Subject> all = {
        {"hex text", 300000, hexText},   {"builder", 200000, builder},
        {"patterns", 250000, patterns},  {"comparison", 200000, comparison},
        {"fields", 200000, fields},      {"renderings", 150000, renderings},
        {"streams", 100000, streams},    {"cutting and editing", 100000, edits},
        {"log lines", 100000, logLines},
    };
    return all;
}

QByteArray resultOf(const Subject& subject, unsigned int seed, int number)
{
    const auto place = static_cast<unsigned int>(&subject - subjects().data());
    Random random(seed * 100000007U + place * 10000019U + static_cast<unsigned int>(number));
    const LogCapture log;
    QByteArray result = subject.result(random);
    for (const LogLine& line : log.lines())
        result += '\n' + QByteArray::number(line.type) + ' ' + line.category.toUtf8() + ' ' +
                  line.text.toUtf8();
    return result;
}

} // namespace qtresults

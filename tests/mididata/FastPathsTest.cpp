// Operations that take several bytes at once, on every length around their blocks and on contents
// made to break them, beside the steps written out one by one. The buffers end where their memory
// ends, so that the address sanitizer sees a read past them.
#include "tests/mididata/Bytes.h"
#include "tests/mididata/Random.h"
#include "tests/mididata/transcription/Transcription.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

namespace {

QByteArray spaced(const QByteArray& bytes, const char* separator)
{
    QByteArray text;
    for (int i = 0; i < bytes.size(); ++i)
        text += (i > 0 ? separator : "") + bytes.mid(i, 1).toHex();
    return text;
}

// Bytes in which few are status bytes, so that pieces are longer than a block.
QByteArray fewStatusBytes(Random& random, int length)
{
    QByteArray bytes = random.bytes(length);
    for (char& byte : bytes) {
        if (!random.oneIn(40))
            byte = static_cast<char>(byte & 0x7F);
    }
    return bytes;
}

} // namespace

TEST(FastPaths, SumsOfEveryLengthAreThoseOfTheBytes)
{
    Random random(1);
    for (int length = 0; length < 1200; ++length) {
        const QByteArray bytes = random.bytes(length);
        const AdoptedBuffer buffer(bytes);
        const auto from = static_cast<unsigned int>(random.below(length + 1));
        ASSERT_EQ(buffer.data.sum32(from, length), transcription::sum32(bytes, from, length));
        ASSERT_EQ(buffer.data.sumOfSection(0, -1), transcription::sumOfSection(bytes, 0, -1));
    }
}

TEST(FastPaths, SumsOfTheGreatestBytesDoNotOverflow)
{
    for (const int length : {2047, 2048, 2049, 2064, 2080, 4096, 4112, 70000}) {
        const HxMidiData data(QByteArray(length, '\xFF'));
        ASSERT_EQ(data.sum32(0, length), 255u * static_cast<unsigned int>(length)) << length;
    }
}

TEST(FastPaths, BytesAreFoundAtEveryPlaceOfABlock)
{
    for (const int size : {1, 2, 3, 16, 31, 32, 33, 40}) {
        QByteArray part(size, '\x11');
        part[size / 2] = '\x12';
        for (int length = size; length < 120; ++length) {
            const QByteArray without(length, '\x11');
            ASSERT_FALSE(AdoptedBuffer(without).data.contains(part)) << size << " in " << length;
            for (int at = 0; at + size <= length; ++at) {
                QByteArray bytes = without;
                bytes.replace(at, size, part);
                ASSERT_TRUE(AdoptedBuffer(bytes).data.contains(part)) << size << " at " << at;
            }
        }
    }
}

// So many places begin and end like the part that the C library's search goes on.
TEST(FastPaths, BytesAreFoundAfterManyPlacesThatNearlyFit)
{
    Random random(11);
    for (int i = 0; i < 2000; ++i) {
        QByteArray bytes(random.below(5000), random.oneIn(4) ? '\x12' : '\x11');
        QByteArray part(random.between(1, 60), '\x11');
        part[random.below(part.size())] = '\x12';
        if (random.oneIn(2) && bytes.size() > part.size())
            bytes.replace(random.below(bytes.size() - part.size()), part.size(), part);
        ASSERT_EQ(AdoptedBuffer(bytes).data.contains(part),
                  transcription::containsRaw(bytes, part));
    }
}

TEST(FastPaths, MessagesOfEveryLengthAreCutAtTheirStatusBytes)
{
    for (int length = 1; length < 100; ++length) {
        for (int status = 0; status < length; ++status) {
            QByteArray bytes(length, '\x7F');
            bytes[status] = '\x80';
            ASSERT_EQ(bytesOf(AdoptedBuffer(bytes).data.splitOnStatus()),
                      transcription::splitOnStatus(bytes));
            bytes[status] = '\xF7';
            ASSERT_EQ(bytesOf(AdoptedBuffer(bytes).data.splitOnStatus()),
                      transcription::splitOnStatus(bytes));
        }
    }
}

TEST(FastPaths, LongStreamsAreCutAsStepByStep)
{
    Random random(2);
    for (int i = 0; i < 3000; ++i) {
        const QByteArray bytes = fewStatusBytes(random, random.below(300));
        ASSERT_EQ(bytesOf(AdoptedBuffer(bytes).data.splitOnStatus()),
                  transcription::splitOnStatus(bytes))
            << bytes.toHex().toStdString();
    }
}

TEST(FastPaths, DifferencesAreFoundAtEveryPlaceOfABlock)
{
    for (int length = 1; length < 200; length += 7) {
        const QByteArray mine(length, '\x55');
        for (int at = 0; at < length; ++at) {
            QByteArray other = mine;
            other[at] = '\x56';
            const AdoptedBuffer buffer(other);
            ASSERT_EQ(AdoptedBuffer(mine).data.diff(buffer.data, -1, -1),
                      transcription::diff(mine, other, -1, -1));
            ASSERT_EQ(AdoptedBuffer(mine).data.isSame(buffer.data),
                      transcription::isSame(mine, other));
        }
    }
}

TEST(FastPaths, RenderingsOfEveryLengthAreThoseOfTheSteps)
{
    Random random(3);
    for (int length = 0; length < 150; ++length) {
        const QByteArray bytes = random.bytes(length);
        const AdoptedBuffer buffer(bytes);
        ASSERT_EQ(buffer.data.toString(-1), transcription::toString(bytes, -1));
        ASSERT_EQ(buffer.data.toString(':', -1), transcription::toString(bytes, ':', -1));
        const QString text = buffer.data.toString('\xE9', -1);
        ASSERT_EQ(text, transcription::toString(bytes, '\xE9', -1));
        ASSERT_EQ(text.utf16()[text.size()], 0) << "something is written after the text";
        ASSERT_EQ(buffer.data.toStringDec(), transcription::toStringDec(bytes));
        for (const int columns : {1, 2, 3, 8, 15, 16, 17, 64, 1000})
            ASSERT_EQ(buffer.data.toStringTable(-1, columns),
                      transcription::toStringTable(bytes, -1, columns))
                << length << " bytes in " << columns << " columns";
    }
}

TEST(FastPaths, TablesOfManyRowsAreThoseOfTheSteps)
{
    for (const int length : {4095, 4096, 4097, 5000}) {
        const QByteArray bytes = Random(4).bytes(length);
        ASSERT_EQ(HxMidiData(bytes).toStringTable(-1, 16),
                  transcription::toStringTable(bytes, -1, 16));
    }
}

TEST(FastPaths, TextOfPairsIsReadAtEveryLengthWithEverySeparator)
{
    Random random(5);
    for (int length = 0; length < 300; ++length) {
        const QByteArray bytes = random.bytes(length);
        for (const char* separator : {"", " ", ","}) {
            QByteArray text = spaced(bytes, separator);
            HxMidiData data;
            data.setText(text.constData());
            ASSERT_EQ(data.bytes, transcription::setText(text.constData()));
            const QString same = QString::fromLatin1(text);
            ASSERT_EQ(HxMidiData(same).bytes, transcription::fromText(same));
        }
    }
}

TEST(FastPaths, OneWrongCharacterAnywhereInATextOfPairsIsReadAsTheStepsDo)
{
    const LogCapture log;
    Random random(6);
    for (int i = 0; i < 3000; ++i) {
        QByteArray text = spaced(random.bytes(1 + random.below(90)), i % 2 == 0 ? " " : "");
        text[random.below(text.size())] = "gG/:@` ,x-\xB0\xFF"[random.below(12)];
        HxMidiData data;
        data.setText(text.constData());
        ASSERT_EQ(data.bytes, transcription::setText(text.constData())) << text.constData();
    }
}

TEST(FastPaths, AWideCharacterIsNeverTakenForTheDigitOrBlankInItsLowerByte)
{
    const LogCapture log;
    Random random(8);
    constexpr char16_t wide[] = {0x0130, 0x0141, 0x0120, 0x8030, 0xFF20, 0xFF46, 0x00B0, 0x7F41};
    for (int i = 0; i < 5000; ++i) {
        QString text =
            QString::fromLatin1(spaced(random.bytes(1 + random.below(70)), i % 2 == 0 ? " " : ""));
        text[random.below(text.size())] = QChar(wide[random.below(8)]);
        ASSERT_EQ(HxMidiData(text).bytes, transcription::fromText(text)) << text.toStdString();
    }
}

TEST(FastPaths, SeparatorsOfBothKindsAreReadWhereverEachStands)
{
    Random random(9);
    for (int i = 0; i < 2000; ++i) {
        QByteArray text = spaced(random.bytes(1 + random.below(80)), " ");
        for (char& c : text)
            c = c == ' ' && random.oneIn(3) ? ',' : c;
        HxMidiData data;
        data.setText(text.constData());
        ASSERT_EQ(data.bytes, transcription::setText(text.constData())) << text.constData();
        text.replace(',', '\n');
        const QString lines = QString::fromLatin1(text);
        ASSERT_EQ(HxMidiData(lines).bytes, transcription::fromText(lines));
    }
}

TEST(FastPaths, PackingTakesEveryLength)
{
    Random random(7);
    for (int length = 0; length < 200; ++length) {
        const QByteArray source = random.bytes(length);
        QByteArray packed(length + (length + 6) / 7, '\0');
        const unsigned int size = HxMidiData().cvt8to7(packed.data(), source.constData(),
                                                       static_cast<unsigned int>(length));
        ASSERT_EQ(size, static_cast<unsigned int>(packed.size()));
        ASSERT_EQ(packed, transcription::cvt8to7(source));
    }
}

// Image files of hex text: the same messages and verdict as the bytes that the text stands for.
#include "fuzz/support/FuzzTarget.h"
#include "fuzz/support/ImageChecks.h"
#include "qt/Saturated.h"

namespace {

using namespace hx;
using namespace hx::fuzz;

// Any text, or bytes written out with any separators.
QByteArray textOf(FuzzInput& input)
{
    if (input.flag())
        return input.rest();
    static const char* const separators[] = {"", " ", ",", "\n", "\r\n", "\t", ", ", "  "};
    QByteArray text;
    while (!input.atEnd()) {
        const int how = input.byte();
        const QByteArray pair = QByteArray(1, static_cast<char>(input.byte())).toHex();
        text += (how & 8 ? pair.toUpper() : pair) + separators[how & 7];
    }
    return text;
}

// The bytes of a text of pairs; false when it is none.
bool readPairs(const QByteArray& text, QByteArray* bytes)
{
    const QByteArray digits("0123456789abcdef");
    int high = -1;
    for (const char character : text) {
        const int value = saturated(digits.indexOf(QByteArray(1, character).toLower()));
        if (value < 0 && (high >= 0 || !QByteArray(" ,\t\n\r").contains(character)))
            return false;
        if (value >= 0 && high >= 0)
            *bytes += static_cast<char>(high * 16 + value);
        high = value >= 0 && high < 0 ? value : -1;
    }
    return high < 0;
}

// Texts with a byte-order mark or two bytes a character are read as hex text too, but not here.
bool hasOtherEncoding(const QByteArray& text)
{
    return text.startsWith("\xEF\xBB\xBF") || text.startsWith("\xFF\xFE") ||
           text.startsWith("\xFE\xFF") ||
           (text.size() > 1 && (text.at(0) == 0) != (text.at(1) == 0));
}

void run(FuzzInput& input)
{
    const QByteArray text = textOf(input);
    if (text.isEmpty() || text.startsWith('\xF0') || text.startsWith("MThd") ||
        hasOtherEncoding(text))
        return;
    const ImageFile file = parseImageFile(text);
    checkImageFile(text, file);
    QByteArray bytes;
    const bool isHex = readPairs(text, &bytes);
    requireSame(file.format == ImageFormat::HexText, isHex, "the format");
    if (!isHex) {
        require(file.messages.empty() && !file.problems.empty(), "no hex text is refused");
        return;
    }
    const ScannedMessages expected = scanMessages(bytes);
    requireSame(messagesOf(file), expected.messages, "the messages of the text");
    requireSame(file.problems.empty(), expected.isClean && !expected.messages.isEmpty(),
                "whatever else there is, is a problem");
    for (const FileMessage& message : file.messages) {
        for (int i = 0; i < message.data.bytes.size(); ++i)
            requireSame(QByteArray::fromHex(text.mid(int(message.offsetOf(i)), 2)),
                        message.data.bytes.mid(i, 1), "a byte's place");
    }
}

const Target target("image_hex", run);

} // namespace

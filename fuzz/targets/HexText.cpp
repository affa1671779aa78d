// Hex text through every door, against the transcription: bytes and log lines.
#include "fuzz/support/FuzzTarget.h"
#include "fuzz/support/Logged.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/transcription/Transcription.h"

namespace {

using namespace hx::fuzz;

template <typename Read, typename Expected>
void compare(Read read, Expected expected, const char* what)
{
    QByteArray bytes;
    QByteArray expectedBytes;
    const QStringList lines = logged([&] { bytes = read(); });
    const QStringList expectedLines = logged([&] { expectedBytes = expected(); });
    requireSame(bytes, expectedBytes, what);
    requireSame(lines, expectedLines, what);
}

void compareNumber(unsigned int value)
{
    compare([&] { return HxMidiData(static_cast<int>(value)).bytes; },
            [&] { return transcription::numHexToByteArray(value); }, "HxMidiData(int)");
    compare([&] { return HxMidiData::numHexToByteArray(value); },
            [&] { return transcription::numHexToByteArray(value); }, "numHexToByteArray");
}

// What a buffer renders reads back as the same buffer.
void readBack(const QByteArray& bytes)
{
    const HxMidiData data(bytes);
    requireSame(HxMidiData(data.toString(-1)).bytes, bytes, "read back the compact form");
    requireSame(HxMidiData(data.toString(' ', -1)).bytes, bytes, "read back the spaced form");
}

void run(FuzzInput& input)
{
    compareNumber(static_cast<unsigned int>(input.number()));
    const bool isUtf8 = input.flag();
    const QByteArray text = input.rest();
    const char* const characters = text.constData();

    compare(
        [&] {
            HxMidiData data(QByteArray("old"));
            data.setText(characters);
            return data.bytes;
        },
        [&] { return transcription::setText(characters); }, "setText");
    compare([&] { return HxMidiData(characters).bytes; },
            [&] { return transcription::fromText(characters); }, "HxMidiData(const char*)");

    QString string = isUtf8 ? QString::fromUtf8(text) : QString::fromLatin1(text);
    const QString constant = string;
    compare([&] { return HxMidiData(constant).bytes; },
            [&] { return transcription::fromText(constant); }, "HxMidiData(const QString&)");
    requireSame(HxMidiData(string).bytes, HxMidiData(constant).bytes, "HxMidiData(QString&)");
    requireSame(string, constant, "the text is not changed");
    requireSame(HxMidiData::is0xHexStr(string),
                string.size() >= 3 && (string.startsWith(QLatin1String("0x")) ||
                                       string.startsWith(QLatin1String("0X"))),
                "is0xHexStr");
    readBack(text);
}

const Target target("hex_text", run);

} // namespace

// split, splitOnStatus and the copying operations, against the transcription and the whole.
#include "fuzz/support/FuzzTarget.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/transcription/Transcription.h"

namespace {

using namespace hx::fuzz;

QList<QByteArray> bytesOf(const QList<HxMidiData>& pieces)
{
    QList<QByteArray> all;
    for (const HxMidiData& piece : pieces)
        all.append(piece.bytes);
    return all;
}

QByteArray joined(const QList<HxMidiData>& pieces)
{
    HxMidiData whole;
    for (const HxMidiData& piece : pieces)
        whole.append(piece);
    return whole.bytes;
}

bool isStatus(char byte)
{
    return static_cast<unsigned char>(byte) >= 0x80;
}

// Holds for every piece, whatever the transcription says.
void checkPiece(const QByteArray& piece)
{
    require(!piece.isEmpty(), "no piece is empty");
    for (int i = 1; i < piece.size(); ++i) {
        const bool isEnd = i + 1 == piece.size() && piece.at(i) == '\xF7';
        require(!isStatus(piece.at(i)) || isEnd,
                "a status byte only begins or, as F7, ends a piece");
    }
}

void compareCutting(const HxMidiData& data, int n)
{
    const QList<HxMidiData> messages = data.splitOnStatus();
    requireSame(bytesOf(messages), transcription::splitOnStatus(data.bytes), "splitOnStatus");
    requireSame(joined(messages), data.bytes, "the messages make up the whole");
    for (const HxMidiData& message : messages)
        checkPiece(message.bytes);

    const QList<HxMidiData> pieces = data.split(n);
    requireSame(bytesOf(pieces), transcription::split(data.bytes, n), "split");
    if (n > 0 && !pieces.isEmpty())
        requireSame(joined(pieces), data.bytes, "the pieces make up the whole");
}

void compareCopying(HxMidiData data, int start, int count)
{
    const QByteArray expected = transcription::copied(data.bytes, start, count);
    const std::vector<unsigned char> expectedVector(expected.begin(), expected.end());
    std::vector<unsigned char> vector{1, 2, 3};
    data.copyToStdVec(vector, start, count);
    require(vector == expectedVector, "copyToStdVec");
    require(data.toStdVector(start, count) == expectedVector, "toStdVector");

    QByteArray mirror(data.bytes.size(), '\x55');
    QByteArray expectedMirror = mirror;
    if (!expected.isEmpty())
        expectedMirror.replace(start, expected.size(), expected);
    data.copyToBuffer(mirror.data(), start, count);
    requireSame(mirror, expectedMirror, "copyToBuffer");
}

void run(FuzzInput& input)
{
    const int first = input.number();
    const int second = input.number();
    const QByteArray bytes = input.rest();
    const HxMidiData data(bytes);
    compareCutting(data, first);
    compareCopying(data, first, second);
    requireSame(data.mid(first, second), bytes.mid(first, second), "mid");
    const HxMidiData fromVector(std::vector<unsigned char>(bytes.begin(), bytes.end()), nullptr);
    requireSame(fromVector.bytes, bytes, "HxMidiData(std::vector)");
}

const Target target("cutting", run);

} // namespace

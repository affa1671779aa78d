#include "simulator/StateChange.h"

#include "qt/Saturated.h"
#include "simulator/Crc32.h"
#include "simulator/StateText.h"

#include <QList>

namespace hx::sim {

namespace {

const QByteArray changeWord = "change ";

// Of one line: the marks as they are after it, and the code from an address on.
struct StateChange {
    StoredCode code;
    int address = 0;
};

// Words of a line, by their place.
constexpr int kindWord = 1;
constexpr int validWord = 2;
constexpr int versionWord = 3;
constexpr int checksumWord = 4;
constexpr int addressWord = 5;
constexpr int bytesWord = 6;
constexpr int wordsOfChange = 8; // the change word before them, the CRC-32 behind

QByteArray changeLine(const StateChange& change)
{
    const StoredCode& code = change.code;
    QByteArray line = changeWord;
    line += kindText(code.kind);
    line += code.valid ? " yes " : " no ";
    line += (code.valid ? versionText(code.version) : noStateValue) + ' ';
    line += (code.valid ? hexNumber(code.crc, crcDigits) : noStateValue) + ' ';
    line += hexNumber(static_cast<quint32>(change.address), addressDigits) + ' ';
    line += code.bytes.isEmpty() ? noStateValue : code.bytes.toHex().toUpper();
    return line + ' ' + hexNumber(productCrc32(line), crcDigits);
}

// False when the line is not exactly what such a change is written as.
bool readChange(const QByteArray& line, StateChange* change)
{
    const QList<QByteArray> words = line.split(' ');
    if (words.size() != wordsOfChange)
        return false;
    change->code.kind = words.at(kindWord) == kindText(kindFwu) ? kindFwu : kindFwd;
    change->code.valid = words.at(validWord) == "yes";
    change->code.version = versionOf(words.at(versionWord));
    change->code.crc = words.at(checksumWord).toUInt(nullptr, 16);
    change->code.bytes = QByteArray::fromHex(words.at(bytesWord));
    change->address = words.at(addressWord).toInt(nullptr, 16);
    return line == changeLine(*change);
}

bool applyChange(const StateChange& change, int memorySize, StoredCode* code)
{
    const auto size = change.address + change.code.bytes.size();
    if (change.address > code->bytes.size() || size > memorySize)
        return false;
    code->kind = change.code.kind;
    code->valid = change.code.valid;
    code->version = change.code.version;
    code->crc = change.code.crc;
    code->bytes.truncate(change.address);
    code->bytes += change.code.bytes;
    return true;
}

} // namespace

QByteArray writeStateChange(const StoredCode& code, int address)
{
    StateChange change;
    change.code = code;
    change.code.bytes = code.bytes.mid(address);
    change.address = address;
    return changeLine(change) + '\n';
}

bool looksLikeStateChanges(const QByteArray& text)
{
    const QByteArray head = text.left(changeWord.size());
    return head == changeWord.left(head.size());
}

bool applyStateChanges(const QByteArray& text, int firstLine, int memorySize, StoredCode* code,
                       int* line)
{
    const QList<QByteArray> lines = text.split('\n');
    for (int i = 0; i < lines.size() - 1; ++i) {
        StateChange change;
        *line = firstLine + i;
        if (!readChange(lines.at(i), &change) || !applyChange(change, memorySize, code))
            return false;
    }
    *line = firstLine + saturated(lines.size()) - 1;
    return looksLikeStateChanges(lines.last());
}

} // namespace hx::sim

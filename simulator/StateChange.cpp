#include "simulator/StateChange.h"

#include "simulator/Crc32.h"
#include "simulator/StateText.h"

#include <QList>

namespace hx {

namespace {

const QByteArray changeWord = "change ";

// Of one line: the marks as they are after it, and the code from an address on.
struct Change {
    StoredCode code;
    int address = 0;
};

enum Word { Name, Kind, Valid, Version, Crc, Address, Bytes, Check, WordCount };

QByteArray lineOf(const Change& change)
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
bool readChange(const QByteArray& line, Change* change)
{
    const QList<QByteArray> words = line.split(' ');
    if (words.size() != WordCount)
        return false;
    change->code.kind = words.at(Kind) == kindText(kindFwu) ? kindFwu : kindFwd;
    change->code.valid = words.at(Valid) == "yes";
    change->code.version = versionOf(words.at(Version));
    change->code.crc = words.at(Crc).toUInt(nullptr, 16);
    change->code.bytes = QByteArray::fromHex(words.at(Bytes));
    change->address = words.at(Address).toInt(nullptr, 16);
    return line == lineOf(*change);
}

bool apply(const Change& change, int memorySize, StoredCode* code)
{
    const int size = change.address + change.code.bytes.size();
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
    Change change;
    change.code = code;
    change.code.bytes = code.bytes.mid(address);
    change.address = address;
    return lineOf(change) + '\n';
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
        Change change;
        *line = firstLine + i;
        if (!readChange(lines.at(i), &change) || !apply(change, memorySize, code))
            return false;
    }
    *line = firstLine + lines.size() - 1;
    return looksLikeStateChanges(lines.last());
}

} // namespace hx

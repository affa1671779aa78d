// State files of the simulated product: a text is taken exactly when it is what the product writes.
#include "simulator/StateFile.h"
#include "qt/Saturated.h"
#include "simulator/StateChange.h"

#include "fuzz/support/FuzzTarget.h"
#include "simulator/Crc32.h"

namespace {

using namespace hx;
using namespace hx::fuzz;

constexpr int memorySize = 100;

QByteArray withEnd(const QByteArray& lines)
{
    return lines + "end " +
           QByteArray::number(sim::productCrc32(lines), 16).toUpper().rightJustified(8, '0') + '\n';
}

sim::StoredCode anyCode(FuzzInput& input, const QByteArray& bytes)
{
    sim::StoredCode code;
    code.bytes = bytes;
    code.kind = input.flag() ? sim::kindFwd : sim::kindFwu;
    code.valid = input.flag();
    if (code.valid) {
        for (quint8& digit : code.version)
            digit = static_cast<quint8>('0' + input.choice(10));
        code.crc = input.word();
    }
    return code;
}

// What is written for any code, whole or as a change of another one, is read back as it was.
void writeAndRead(FuzzInput& input)
{
    const QByteArray before = input.take(input.byte() % (memorySize + 1));
    QByteArray text = sim::writeStateFile(anyCode(input, before));
    const int address = input.choice(saturated(before.size()) + 1);
    const QByteArray added = input.take(input.byte() % (memorySize + 1 - address));
    const sim::StoredCode code = anyCode(input, before.left(address) + added);
    text = input.flag() ? text + sim::writeStateChange(code, address) : sim::writeStateFile(code);
    sim::StoredCode read;
    QString error;
    require(sim::readStateFile(text, memorySize, &read, &error), "what is written reads");
    require(read.bytes == code.bytes && read.kind == code.kind && read.valid == code.valid,
            "what is written reads back as it was");
    if (code.valid)
        require(read.version == code.version && read.crc == code.crc, "and so does its seal");
}

void readAnything(const QByteArray& text)
{
    sim::StoredCode read;
    read.crc = 12345;
    QString error;
    sim::SerialNumber serialNumber;
    const bool isTaken = sim::readStateFile(text, memorySize, &read, &error, &serialNumber);
    require(isTaken == error.isEmpty(), "a refusal has a reason");
    const auto changesAt = text.indexOf('\n', text.indexOf("\nend ") + 1) + 1;
    if (isTaken && changesAt == text.size())
        requireSame(sim::writeStateFile(read, serialNumber), text,
                    "only what the product writes is taken");
    else if (isTaken)
        require(sim::looksLikeStateChanges(text.mid(changesAt)),
                "changes follow, and nothing else");
    else
        require(read.crc == 12345 && read.bytes.isEmpty(), "a refused file changes nothing");
}

void run(FuzzInput& input)
{
    const int how = input.choice(4);
    if (how == 0)
        return writeAndRead(input);
    QByteArray text = input.rest();
    if (how >= 2)
        text = "simulated product state 1\n" + text;
    readAnything(how == 3 ? text : withEnd(text));
}

const Target target("state_file", run);

} // namespace

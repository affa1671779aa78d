#include "simulator/StateFile.h"

#include "qt/Saturated.h"
#include "simulator/Crc32.h"
#include "simulator/StateChange.h"
#include "simulator/StateText.h"

#include <QList>

#include <algorithm>

namespace hx::sim {

namespace {

const QByteArray title = "simulated product state 1";
constexpr int bytesPerLine = 32;
constexpr int longestQuote = 60;
constexpr int maxHeadSize = 256; // every line but those with code bytes, with room to spare

QByteArray codeLine(const QByteArray& code, int address)
{
    const QByteArray bytes = code.mid(address, bytesPerLine).toHex().toUpper();
    return hexNumber(static_cast<quint32>(address), addressDigits) + ' ' + bytes + '\n';
}

QByteArray serialLine(const SerialNumber& number)
{
    if (!number)
        return QByteArray();
    const QByteArray bytes(reinterpret_cast<const char*>(number->data()), int(number->size()));
    return "serial " + bytes.toHex().toUpper() + '\n';
}

QByteArray endLine(const QByteArray& textBefore)
{
    return "end " + hexNumber(productCrc32(textBefore), crcDigits) + '\n';
}

// The beginning of a text, in quotes, as far as it can be shown.
QString quoted(const QByteArray& text)
{
    QByteArray part = text.left(longestQuote);
    for (char& character : part)
        if (character < ' ' || character > '~')
            character = '?';
    return QLatin1Char('"') + QString::fromLatin1(part) + QLatin1Char('"');
}

// Goes through the lines of a state file; the first thing that does not fit ends the reading.
class StateReader {
public:
    StateReader(const QByteArray& text, int memorySize) : m_text(text), m_memorySize(memorySize) {}

    bool read(StoredCode* code, SerialNumber* serialNumber);
    QString error() const { return m_error; }

private:
    bool readWhole();
    bool readHead(StoredCode* code);
    bool readSeal(StoredCode* code);
    bool readSerialNumber(SerialNumber* number);
    bool readCode(QByteArray* code);
    bool readChanges(StoredCode* code);
    bool field(const QByteArray& name, const QByteArray& expected, QByteArray* value);
    bool choice(const QByteArray& name, const QByteArray& yes, const QByteArray& no, bool* isYes);
    bool fail(const QString& reason);
    bool failLine(const QByteArray& expected);

    QByteArray m_text;
    int m_memorySize;
    QList<QByteArray> m_lines;
    QByteArray m_changes; // behind the line "end"
    int m_line = 0;
    int m_length = 0;
    QString m_error;
};

bool StateReader::fail(const QString& reason)
{
    m_error = reason +
              QLatin1String("; use a copy of the file, or remove it to begin with a fresh product");
    return false;
}

bool StateReader::failLine(const QByteArray& expected)
{
    return fail(QString::fromLatin1("the state file has %1 in line %2, expected %3")
                    .arg(quoted(m_lines.value(m_line)))
                    .arg(m_line + 1)
                    .arg(QString::fromLatin1(expected)));
}

bool StateReader::read(StoredCode* code, SerialNumber* serialNumber)
{
    StoredCode found;
    SerialNumber number;
    if (!readWhole() || !readHead(&found) || !readSeal(&found) || !readSerialNumber(&number) ||
        !readCode(&found.bytes) || !readChanges(&found))
        return false;
    *code = found;
    *serialNumber = number;
    return true;
}

// The text as a whole: its title, its size, and the checksum that its line "end" carries.
bool StateReader::readWhole()
{
    if (!m_text.startsWith(title + '\n'))
        return fail(QString::fromLatin1("this is not a state file: it begins with %1, expected %2")
                        .arg(quoted(m_text.left(longestQuote).split('\n').first()), quoted(title)));
    constexpr qint64 textPerByte = 3;
    const auto endAt = m_text.indexOf("\nend ") + 1;
    const auto size = endAt > 0 ? endAt : m_text.size();
    if (size > maxHeadSize + textPerByte * m_memorySize)
        return fail(QString::fromLatin1("the state file has %1 bytes, too many for a product with "
                                        "room for %2 code bytes")
                        .arg(size)
                        .arg(m_memorySize));
    if (endAt == 0)
        return fail(QLatin1String("the state file is cut off: its last line, \"end\" and a "
                                  "checksum, is missing"));
    const QByteArray expected = endLine(m_text.left(endAt));
    m_changes = m_text.mid(endAt + expected.size());
    if (m_text.mid(endAt, expected.size()) != expected || !looksLikeStateChanges(m_changes))
        return fail(QString::fromLatin1("the state file is damaged: it ends with %1, its content "
                                        "gives %2")
                        .arg(quoted(m_text.mid(endAt).trimmed()), quoted(expected.trimmed())));
    m_lines = m_text.left(endAt - 1).split('\n');
    m_line = 1;
    return true;
}

bool StateReader::field(const QByteArray& name, const QByteArray& expected, QByteArray* value)
{
    const QByteArray line = m_lines.value(m_line);
    if (!line.startsWith(name + ' '))
        return failLine("\"" + name + "\" and " + expected);
    *value = line.mid(name.size() + 1);
    return true;
}

bool StateReader::choice(const QByteArray& name, const QByteArray& yes, const QByteArray& no,
                         bool* isYes)
{
    QByteArray value;
    const QByteArray expected = yes + " or " + no;
    if (!field(name, expected, &value))
        return false;
    *isYes = value == yes;
    if (!*isYes && value != no)
        return failLine("\"" + name + "\" and " + expected);
    ++m_line;
    return true;
}

bool StateReader::readHead(StoredCode* code)
{
    bool isFwu = false;
    QByteArray length;
    const QByteArray expected = "a number from 0 to " + QByteArray::number(m_memorySize);
    if (!choice("kind", "fwu", "fwd", &isFwu) || !choice("valid", "yes", "no", &code->valid) ||
        !field("length", expected, &length))
        return false;
    code->kind = isFwu ? kindFwu : kindFwd;
    m_length = length.toInt();
    if (QByteArray::number(m_length) != length || m_length < 0 || m_length > m_memorySize)
        return failLine("\"length\" and " + expected);
    ++m_line;
    return true;
}

// Version and checksum, which only valid code has.
bool StateReader::readSeal(StoredCode* code)
{
    const QByteArray versionForm =
        code->valid ? QByteArray("four digits, as in 1.0.2.3") : noStateValue;
    const QByteArray crcForm = code->valid ? QByteArray("eight hex digits") : noStateValue;
    QByteArray version;
    QByteArray crc;
    if (!field("version", versionForm, &version))
        return false;
    code->version = versionOf(version);
    if (version != (code->valid ? versionText(code->version) : noStateValue))
        return failLine("\"version\" and " + versionForm);
    ++m_line;
    if (!field("crc", crcForm, &crc))
        return false;
    code->crc = crc.toUInt(nullptr, 16);
    if (crc != (code->valid ? hexNumber(code->crc, crcDigits) : noStateValue))
        return failLine("\"crc\" and " + crcForm);
    ++m_line;
    return true;
}

// A line that need not be there.
bool StateReader::readSerialNumber(SerialNumber* number)
{
    const QByteArray line = m_lines.value(m_line);
    if (!line.startsWith("serial "))
        return true;
    const QByteArray bytes = QByteArray::fromHex(line.mid(line.indexOf(' ')));
    number->emplace();
    if (bytes.size() == int((*number)->size()))
        std::copy(bytes.begin(), bytes.end(), (*number)->begin());
    if (line + '\n' != serialLine(*number))
        return failLine("\"serial\" and sixteen hex digits");
    ++m_line;
    return true;
}

bool StateReader::readCode(QByteArray* code)
{
    for (; m_line < m_lines.size(); ++m_line) {
        const QByteArray line = m_lines.at(m_line);
        const int address = saturated(code->size());
        code->append(QByteArray::fromHex(line.mid(addressDigits + 1)));
        const int count = qMin(bytesPerLine, m_length - address);
        if (count <= 0)
            return failLine("the end of the code");
        if (line + '\n' != codeLine(*code, address) || code->size() != address + count)
            return failLine("the address " +
                            hexNumber(static_cast<quint32>(address), addressDigits) + " and " +
                            QByteArray::number(count) + " code bytes");
    }
    return code->size() == m_length || failLine("more code");
}

bool StateReader::readChanges(StoredCode* code)
{
    int line = 0;
    const int endLines = 1;
    if (applyStateChanges(m_changes, saturated(m_lines.size()) + endLines + 1, m_memorySize, code,
                          &line))
        return true;
    return fail(QString::fromLatin1("the state file is damaged in line %1, which records a change")
                    .arg(line));
}

} // namespace

QByteArray writeStateFile(const StoredCode& code, const SerialNumber& serialNumber)
{
    QByteArray text = title + '\n';
    text += "kind " + kindText(code.kind) + '\n';
    text += code.valid ? "valid yes\n" : "valid no\n";
    text += "length " + QByteArray::number(code.bytes.size()) + '\n';
    text += "version " + (code.valid ? versionText(code.version) : noStateValue) + '\n';
    text += "crc " + (code.valid ? hexNumber(code.crc, crcDigits) : noStateValue) + '\n';
    text += serialLine(serialNumber);
    for (int address = 0; address < code.bytes.size(); address += bytesPerLine)
        text += codeLine(code.bytes, address);
    return text + endLine(text);
}

bool readStateFile(const QByteArray& text, int memorySize, StoredCode* code, QString* error,
                   SerialNumber* serialNumber)
{
    StateReader reader(text, memorySize);
    SerialNumber unused;
    const bool isGood = reader.read(code, serialNumber != nullptr ? serialNumber : &unused);
    if (!isGood && error != nullptr)
        *error = reader.error();
    return isGood;
}

} // namespace hx::sim

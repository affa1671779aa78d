#include "host/image/ImageChecker.h"

#include "host/base/HexText.h"
#include "host/image/ImageGrammar.h"

#include <algorithm>

namespace hx {

namespace {

constexpr int headBytes = 6; // F0, manufacturer, family, model

const char damaged[] = "The file is damaged: get the update image again.";
const char incomplete[] = "The file is incomplete: get the update image again.";
const char otherProduct[] = "It is made for another product: get the image for this one.";

// The code bytes of a packed run; false when a header has a bit for a byte that is not there.
bool unpack(const QByteArray& packed, QByteArray* code)
{
    for (int start = 0; start < packed.size(); start += 8) {
        const int count = std::min(7, packed.size() - start - 1);
        const int header = static_cast<unsigned char>(packed.at(start));
        if ((header & ((1 << (7 - count)) - 1)) != 0)
            return false;
        for (int i = 0; i < count; ++i)
            code->append(static_cast<char>(packed.at(start + 1 + i) | (header << (i + 1) & 0x80)));
    }
    return true;
}

// Five 7-bit groups as one number. All 35 bits count: what stands above the 32 of an address,
// length or CRC-32 makes it another number, and the product reads it so.
qint64 fiveGroups(const HxMidiData& message, int position)
{
    qint64 value = 0;
    for (int i = position; i < position + 5; ++i)
        value = value << 7 | message.bytes.at(i);
    return value;
}

} // namespace

void ImageChecker::check()
{
    for (int index = 0; index < m_result.messages.size(); ++index)
        checkMessage(index);
    reportOtherHeads();
    if (static_cast<size_t>(m_otherHeads) < m_file.messages.size())
        checkEnd();
    checkTotals();
}

const HxMidiData& ImageChecker::message(int index) const
{
    return m_file.messages[static_cast<size_t>(index)].data;
}

quint8 ImageChecker::byteAt(int index, int position) const
{
    return static_cast<quint8>(message(index).bytes.at(position));
}

void ImageChecker::problem(int index, int position, const QString& text, const QString& advice)
{
    const FileMessage& place = m_file.messages[static_cast<size_t>(index)];
    addProblem(m_result.problems, {place.number, place.offsetOf(position), text,
                                   advice.isEmpty() ? QString::fromLatin1(damaged) : advice});
}

void ImageChecker::checkMessage(int index)
{
    if (m_closing >= 0)
        return problem(index, 0, QStringLiteral("it stands behind the closing message."));
    if (!checkHead(index))
        skipData();
    else if (message(index).bytes.size() == image::closingBytes)
        m_closing = index;
    else
        checkCommand(index);
}

bool ImageChecker::checkHead(int index)
{
    const QByteArray& bytes = message(index).bytes;
    const QByteArray head = image::prefix();
    for (int i = 0; i < headBytes; ++i) {
        if (i < bytes.size() - 1 && bytes.at(i) == head.at(i))
            continue;
        if (m_otherHeads++ == 0) {
            m_firstOtherHead = m_result.problems.size();
            problem(index, i,
                    QStringLiteral("it begins with %1; expected %2.")
                        .arg(hexText(bytes.left(headBytes)), hexText(head)),
                    QString::fromLatin1(otherProduct));
        }
        return false;
    }
    return true;
}

// An image for another product has another head in every message: that is one problem.
void ImageChecker::reportOtherHeads()
{
    if (m_otherHeads > 1 && m_firstOtherHead < m_result.problems.size())
        m_result.problems[m_firstOtherHead].text +=
            QStringLiteral(" %1 more messages have another head too.").arg(m_otherHeads - 1);
}

// After a data message that cannot be read, the next one is expected as if it had been good.
void ImageChecker::skipData()
{
    m_codeIsWhole = false;
    ++m_nextNumber;
    m_nextAddress += image::codeBytesPerMessage;
}

void ImageChecker::checkCommand(int index)
{
    const int subCommand = message(index).bytes.size() > image::sumStart
                               ? byteAt(index, image::subCommandPosition)
                               : -1;
    if (subCommand != image::dataSubCommand && subCommand != image::fileCheckSubCommand) {
        m_codeIsWhole = false;
        return problem(index, image::subCommandPosition,
                       QStringLiteral("it is neither a data message nor a file check nor the "
                                      "closing message: %1.")
                           .arg(hexTextShort(message(index).bytes)));
    }
    checkKind(index, byteAt(index, image::commandPosition));
    if (m_fileCheck >= 0)
        return problem(index, image::subCommandPosition,
                       QStringLiteral("it stands behind the file check; expected the closing "
                                      "message."));
    if (subCommand == image::dataSubCommand)
        return checkData(index);
    m_fileCheck = index;
    checkFileCheck(index);
}

void ImageChecker::checkKind(int index, quint8 command)
{
    if (command != image::fwuCommand && command != image::fwdCommand)
        return problem(
            index, image::commandPosition,
            QStringLiteral("its kind is %1; expected 43 (fwu) or 42 (fwd).").arg(hexByte(command)));
    const CodeType kind = command == image::fwuCommand ? CodeType::Fwu : CodeType::Fwd;
    if (m_result.kind == CodeType::Unknown)
        m_result.kind = kind;
    if (m_result.kind != kind)
        problem(index, image::commandPosition,
                QStringLiteral("its kind is \"%1\", that of the messages before \"%2\".")
                    .arg(codeTypeTag(kind), codeTypeTag(m_result.kind)));
}

void ImageChecker::checkData(int index)
{
    ++m_result.dataMessages;
    if (!checkDataShape(index))
        return skipData();
    const int count = byteAt(index, image::countPosition);
    checkNumber(index);
    checkAddress(index, count);
    takeCode(index, count);
}

// Length, count and sum: whatever else the message says counts only when these hold.
bool ImageChecker::checkDataShape(int index)
{
    const int size = message(index).bytes.size();
    if (size <= image::packedPosition + 2) {
        problem(index, size - 1,
                QStringLiteral("the data message has %1 bytes; expected 20 at least.").arg(size));
        return false;
    }
    const int count = byteAt(index, image::countPosition);
    if (count < 1 || count > image::codeBytesPerMessage) {
        problem(index, image::countPosition,
                QStringLiteral("it states %1 code bytes; expected 1 to 112.").arg(count));
        return false;
    }
    const int expected = image::packedPosition + image::packedSize(count) + 2;
    if (size != expected) {
        problem(index, size - 1,
                QStringLiteral("it has %1 bytes; expected %2 for the %3 code bytes it states.")
                    .arg(size)
                    .arg(expected)
                    .arg(count));
        return false;
    }
    return checkSum(index);
}

bool ImageChecker::checkSum(int index)
{
    const int position = message(index).bytes.size() - 2;
    const int sum = message(index).sumOfSection(image::sumStart, position - image::sumStart);
    const int stated = byteAt(index, position);
    if (sum == stated)
        return true;
    problem(index, position,
            QStringLiteral("its sum is %1, but %2 is stated: a byte from %3 on is wrong.")
                .arg(hexByte(static_cast<quint8>(sum)), hexByte(static_cast<quint8>(stated)))
                .arg(m_file.messages[static_cast<size_t>(index)].offsetOf(image::sumStart)));
    return false;
}

void ImageChecker::checkNumber(int index)
{
    const auto number = static_cast<quint32>(message(index).get14bit(image::numberPosition, 0));
    const quint32 expected = m_nextNumber;
    m_nextNumber = number + 1;
    if (number == expected)
        return;
    m_codeIsWhole = false;
    m_nextAddress = qint64(number) * image::codeBytesPerMessage;
    if (number < expected)
        return problem(
            index, image::numberPosition,
            QStringLiteral("data message number %1 stands behind number %2: the order is "
                           "wrong.")
                .arg(number)
                .arg(expected - 1));
    const QString missing =
        number - expected == 1
            ? QStringLiteral("number %1 is missing").arg(expected)
            : QStringLiteral("numbers %1 to %2 are missing").arg(expected).arg(number - 1);
    problem(index, image::numberPosition,
            QStringLiteral("data message number %1 stands where number %2 is expected: %3.")
                .arg(number)
                .arg(expected)
                .arg(missing),
            QString::fromLatin1(incomplete));
}

void ImageChecker::checkAddress(int index, int count)
{
    const qint64 address = fiveGroups(message(index), image::addressPosition);
    if (address != m_nextAddress)
        problem(index, image::addressPosition,
                QStringLiteral("its code belongs to address %1; expected %2.")
                    .arg(address)
                    .arg(m_nextAddress));
    m_nextAddress = address + count;
    if (m_shortMessage >= 0)
        problem(m_shortMessage, image::countPosition,
                QStringLiteral("it carries %1 code bytes; every data message but the last carries "
                               "112.")
                    .arg(byteAt(m_shortMessage, image::countPosition)));
    m_shortMessage = count < image::codeBytesPerMessage ? index : -1;
}

void ImageChecker::takeCode(int index, int count)
{
    const QByteArray packed =
        message(index).bytes.mid(image::packedPosition, image::packedSize(count));
    if (unpack(packed, &m_result.code))
        return;
    m_codeIsWhole = false;
    problem(index, image::packedPosition + (count - 1) / 7 * 8,
            QStringLiteral("its last header byte has a bit for a code byte that is not there."));
}

void ImageChecker::checkFileCheck(int index)
{
    const int size = message(index).bytes.size();
    if (size != image::fileCheckBytes)
        return problem(index, size - 1,
                       QStringLiteral("the file check has %1 bytes; expected %2.")
                           .arg(size)
                           .arg(image::fileCheckBytes));
    if (checkSum(index))
        checkFileCheckFields(index);
}

void ImageChecker::checkFileCheckFields(int index)
{
    const HxMidiData& fileCheck = message(index);
    m_result.hasFileCheck = true;
    m_result.statedLength = fiveGroups(fileCheck, image::lengthPosition);
    const qint64 crc = fiveGroups(fileCheck, image::crcPosition);
    m_result.statedCrc = static_cast<quint32>(crc);
    if (crc != m_result.statedCrc)
        problem(index, image::crcPosition,
                QStringLiteral("the CRC begins with %1; expected 0F at most, for 32 bits.")
                    .arg(hexByte(byteAt(index, image::crcPosition))));
    const QByteArray digits = fileCheck.bytes.mid(image::versionPosition, 4);
    for (int i = 0; i < digits.size(); ++i) {
        m_result.version += QLatin1Char(digits.at(i));
        if (i < digits.size() - 1)
            m_result.version += QLatin1Char('.');
        if (digits.at(i) < '0' || digits.at(i) > '9')
            problem(index, image::versionPosition + i,
                    QStringLiteral("the version byte %1 is no ASCII digit.")
                        .arg(hexByte(static_cast<quint8>(digits.at(i)))));
    }
    if (byteAt(index, image::layoutPosition) != image::layoutVersion)
        problem(index, image::layoutPosition,
                QStringLiteral("the layout is %1; expected 01.")
                    .arg(hexByte(byteAt(index, image::layoutPosition))),
                QStringLiteral("This image needs a newer host."));
}

void ImageChecker::checkEnd()
{
    const int last = static_cast<int>(m_file.messages.size()) - 1;
    const int position = message(last).bytes.size() - 1;
    if (m_result.dataMessages == 0)
        problem(last, position, QStringLiteral("the image has no data message."),
                QString::fromLatin1(incomplete));
    if (m_fileCheck < 0)
        problem(last, position, QStringLiteral("the image ends without a file check."),
                QString::fromLatin1(incomplete));
    if (m_closing < 0)
        problem(last, position,
                QStringLiteral("the image ends without the closing message %1.")
                    .arg(hexText(image::closingMessage())),
                QString::fromLatin1(incomplete));
}

// The file check speaks of the whole code, so it is compared only when all of that is there.
void ImageChecker::checkTotals()
{
    if (m_result.code.size() > image::maxCodeBytes)
        addProblem(m_result.problems,
                   {-1, -1,
                    QStringLiteral("the image carries %1 code bytes; the product "
                                   "holds %2.")
                        .arg(m_result.code.size())
                        .arg(image::maxCodeBytes),
                    QString::fromLatin1(otherProduct)});
    if (!m_codeIsWhole || !m_result.hasFileCheck || m_result.dataMessages == 0)
        return;
    if (m_result.statedLength != m_result.code.size())
        problem(m_fileCheck, image::lengthPosition,
                QStringLiteral("the file check states %1 code bytes, but the messages carry %2.")
                    .arg(m_result.statedLength)
                    .arg(m_result.code.size()));
    const quint32 crc = crc32(m_result.code);
    if (crc != m_result.statedCrc)
        problem(m_fileCheck, image::crcPosition,
                QStringLiteral("the file check states the CRC-32 %1, but the code has %2.")
                    .arg(m_result.statedCrc, 8, 16, QLatin1Char('0'))
                    .arg(crc, 8, 16, QLatin1Char('0')));
}

} // namespace hx

#include "host/image/ImageChecker.h"

#include "host/base/HexText.h"
#include "host/image/ImageGrammar.h"
#include "qt/Saturated.h"

#include <algorithm>

namespace hx {

namespace {

const char damaged[] = "The file is damaged: get the update image again.";
const char incomplete[] = "The file is incomplete: get the update image again.";
const char otherProduct[] = "It is made for another product: get the image for this one.";

// The code bytes of a packed run; false when a header has a bit for a byte that is not there.
bool unpack(const QByteArray& packed, QByteArray* code)
{
    for (int start = 0; start < packed.size(); start += image::packedRun) {
        const int count = std::min(image::packedRun - 1, saturated(packed.size()) - start - 1);
        const int header = static_cast<unsigned char>(packed.at(start));
        if ((header & ((1 << (7 - count)) - 1)) != 0)
            return false;
        for (int i = 0; i < count; ++i)
            code->append(static_cast<char>(packed.at(start + 1 + i) | (header << (i + 1) & 0x80)));
    }
    return true;
}

// Five 7-bit groups as one number. All 35 bits count: what is above the 32 of an address,
// length or CRC-32 makes it another number, and the product reads it so.
qint64 fiveGroups(const HxMidiData& message, int position)
{
    qint64 value = 0;
    for (int i = position; i < position + image::numberGroups; ++i)
        value = value << 7 | message.bytes.at(i);
    return value;
}

} // namespace

void ImageChecker::check()
{
    for (int index = 0; index < m_result.messages.size(); ++index)
        checkMessage(index);
    reportOtherHeads();
    m_result.isForOtherProduct = static_cast<size_t>(m_otherHeads) == m_file.messages.size();
    if (!m_result.isForOtherProduct)
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
    addProblem(m_result.problems, {place.number, place.offsetOf(position)}, text,
               advice.isEmpty() ? QString::fromLatin1(damaged) : advice);
}

void ImageChecker::checkMessage(int index)
{
    if (m_closing >= 0)
        return problem(index, 0, QStringLiteral("it comes after the closing message."));
    if (!checkHead(index))
        skipData();
    else if (message(index).bytes == image::closingMessage(m_product.header))
        m_closing = index;
    else
        checkCommand(index);
}

bool ImageChecker::checkHead(int index)
{
    const QByteArray& bytes = message(index).bytes;
    const QByteArray& head = m_product.header;
    for (int i = 0; i < head.size(); ++i) {
        if (i < bytes.size() - 1 && bytes.at(i) == head.at(i))
            continue;
        if (m_otherHeads++ == 0) {
            m_firstOtherHead = m_result.problems.size();
            problem(index, i,
                    QStringLiteral("it begins with %1; expected %2.")
                        .arg(hexText(bytes.left(head.size())), hexText(head)),
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
        m_result.problems[m_firstOtherHead].what +=
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
    const int subCommand = message(index).bytes.size() > at(image::fieldsOffset)
                               ? byteAt(index, at(image::subCommandOffset))
                               : -1;
    const bool isData = subCommand == image::dataSubCommand;
    if (!isData && !isFileCheck(index, subCommand)) {
        m_codeIsWhole = false;
        return problem(index, at(image::subCommandOffset),
                       QStringLiteral("it is neither a data message nor a file check nor the "
                                      "closing message: %1.")
                           .arg(hexTextShort(message(index).bytes)));
    }
    checkKind(index);
    if (m_fileCheck >= 0)
        return problem(index, at(image::subCommandOffset),
                       QStringLiteral("it comes after the file check; expected the closing "
                                      "message."));
    if (isData)
        return checkData(index);
    m_fileCheck = index;
    checkFileCheck(index);
}

// The kinds share one sub-command or have one each; in a message of no kind any of them counts.
bool ImageChecker::isFileCheck(int index, int subCommand) const
{
    const UpdateKind* own = kindOf(index);
    const std::vector<UpdateKind>& kinds = m_product.updateKinds;
    return own != nullptr ? subCommand == own->fileCheck
                          : std::any_of(kinds.begin(), kinds.end(), [=](const UpdateKind& kind) {
                                return kind.fileCheck == subCommand;
                            });
}

// Null for a command that belongs to no kind.
const UpdateKind* ImageChecker::kindOf(int index) const
{
    const quint8 command = byteAt(index, at(image::commandOffset));
    const std::vector<UpdateKind>& kinds = m_product.updateKinds;
    const auto found = std::find_if(kinds.begin(), kinds.end(), [=](const UpdateKind& kind) {
        return kind.command == command;
    });
    return found == kinds.end() ? nullptr : &*found;
}

// "43 (fwu) or 42 (fwd)".
QString ImageChecker::knownKinds() const
{
    QStringList known;
    for (const UpdateKind& kind : m_product.updateKinds)
        known << QStringLiteral("%1 (%2)").arg(hexByte(kind.command), codeTypeTag(kind.kind));
    return known.join(QStringLiteral(" or "));
}

void ImageChecker::checkKind(int index)
{
    const UpdateKind* kind = kindOf(index);
    const int position = at(image::commandOffset);
    if (kind == nullptr)
        return problem(index, position,
                       QStringLiteral("its kind is %1; expected %2.")
                           .arg(hexByte(byteAt(index, position)), knownKinds()));
    if (m_result.kind == CodeType::Unknown)
        m_result.kind = kind->kind;
    if (m_result.kind != kind->kind)
        problem(index, position,
                QStringLiteral("its kind is \"%1\", that of the messages before \"%2\".")
                    .arg(codeTypeTag(kind->kind), codeTypeTag(m_result.kind)));
}

void ImageChecker::checkData(int index)
{
    ++m_result.dataMessages;
    if (!checkDataShape(index))
        return skipData();
    const int count = byteAt(index, at(image::countOffset));
    checkNumber(index);
    checkAddress(index, count);
    takeCode(index, count);
}

// Length, count and sum: whatever else the message says counts only when these hold.
bool ImageChecker::checkDataShape(int index)
{
    const int size = saturated(message(index).bytes.size());
    const int shortest = at(image::packedOffset) + image::packedSize(1) + image::endBytes;
    if (size < shortest) {
        problem(index, size - 1,
                QStringLiteral("the data message has %1 bytes; expected %2 at least.")
                    .arg(size)
                    .arg(shortest));
        return false;
    }
    const int count = byteAt(index, at(image::countOffset));
    if (count < 1 || count > image::codeBytesPerMessage) {
        problem(index, at(image::countOffset),
                QStringLiteral("it states %1 code bytes; expected 1 to %2.")
                    .arg(count)
                    .arg(image::codeBytesPerMessage));
        return false;
    }
    const int expected = at(image::packedOffset) + image::packedSize(count) + image::endBytes;
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
    const int position = saturated(message(index).bytes.size()) - image::endBytes;
    const int sum =
        message(index).sumOfSection(at(image::fieldsOffset), position - at(image::fieldsOffset));
    const int stated = byteAt(index, position);
    if (sum == stated)
        return true;
    problem(
        index, position,
        QStringLiteral("its sum is %1, but %2 is stated: a byte from %3 on is wrong.")
            .arg(hexByte(static_cast<quint8>(sum)), hexByte(static_cast<quint8>(stated)))
            .arg(m_file.messages[static_cast<size_t>(index)].offsetOf(at(image::fieldsOffset))));
    return false;
}

void ImageChecker::checkNumber(int index)
{
    const auto number = static_cast<quint32>(message(index).get14bit(at(image::numberOffset), 0));
    const quint32 expected = m_nextNumber;
    m_nextNumber = number + 1;
    if (number == expected)
        return;
    m_codeIsWhole = false;
    m_nextAddress = qint64(number) * image::codeBytesPerMessage;
    if (number < expected)
        return problem(index, at(image::numberOffset),
                       QStringLiteral("data message number %1 comes after number %2: the order is "
                                      "wrong.")
                           .arg(number)
                           .arg(expected - 1));
    const QString missing =
        number - expected == 1
            ? QStringLiteral("number %1 is missing").arg(expected)
            : QStringLiteral("numbers %1 to %2 are missing").arg(expected).arg(number - 1);
    problem(index, at(image::numberOffset),
            QStringLiteral("data message number %1 is where number %2 should be: %3.")
                .arg(number)
                .arg(expected)
                .arg(missing),
            QString::fromLatin1(incomplete));
}

void ImageChecker::checkAddress(int index, int count)
{
    const qint64 address = fiveGroups(message(index), at(image::addressOffset));
    if (address != m_nextAddress)
        problem(index, at(image::addressOffset),
                QStringLiteral("its code belongs to address %1; expected %2.")
                    .arg(address)
                    .arg(m_nextAddress));
    m_nextAddress = address + count;
    if (m_shortMessage >= 0)
        problem(m_shortMessage, at(image::countOffset),
                QStringLiteral("it carries %1 code bytes; every data message but the last carries "
                               "%2.")
                    .arg(byteAt(m_shortMessage, at(image::countOffset)))
                    .arg(image::codeBytesPerMessage));
    m_shortMessage = count < image::codeBytesPerMessage ? index : -1;
}

void ImageChecker::takeCode(int index, int count)
{
    const QByteArray packed =
        message(index).bytes.mid(at(image::packedOffset), image::packedSize(count));
    if (unpack(packed, &m_result.code))
        return;
    m_codeIsWhole = false;
    problem(index,
            at(image::packedOffset) + (count - 1) / (image::packedRun - 1) * image::packedRun,
            QStringLiteral("its last header byte has a bit for a code byte that is not there."));
}

void ImageChecker::checkFileCheck(int index)
{
    const int size = saturated(message(index).bytes.size());
    if (size != at(image::fileCheckSize))
        return problem(index, size - 1,
                       QStringLiteral("the file check has %1 bytes; expected %2.")
                           .arg(size)
                           .arg(at(image::fileCheckSize)));
    if (checkSum(index))
        checkFileCheckFields(index);
}

void ImageChecker::checkFileCheckFields(int index)
{
    const HxMidiData& fileCheck = message(index);
    m_result.hasFileCheck = true;
    m_result.statedLength = fiveGroups(fileCheck, at(image::lengthOffset));
    const qint64 crc = fiveGroups(fileCheck, at(image::crcOffset));
    m_result.statedCrc = static_cast<quint32>(crc);
    if (crc != m_result.statedCrc)
        problem(index, at(image::crcOffset),
                QStringLiteral("the CRC begins with %1; expected 0F at most, for 32 bits.")
                    .arg(hexByte(byteAt(index, at(image::crcOffset)))));
    const QByteArray digits = fileCheck.bytes.mid(at(image::versionOffset), image::versionDigits);
    for (int i = 0; i < digits.size(); ++i) {
        m_result.version += QLatin1Char(digits.at(i));
        if (i < digits.size() - 1)
            m_result.version += QLatin1Char('.');
        if (digits.at(i) < '0' || digits.at(i) > '9')
            problem(index, at(image::versionOffset) + i,
                    QStringLiteral("the version byte %1 is not an ASCII digit.")
                        .arg(hexByte(static_cast<quint8>(digits.at(i)))));
    }
    if (byteAt(index, at(image::layoutOffset)) != image::layoutVersion)
        problem(index, at(image::layoutOffset),
                QStringLiteral("the layout is %1; expected %2.")
                    .arg(hexByte(byteAt(index, at(image::layoutOffset))),
                         hexByte(image::layoutVersion)),
                QStringLiteral("This image needs a newer host."));
}

void ImageChecker::checkEnd()
{
    const int last = static_cast<int>(m_file.messages.size()) - 1;
    const int position = saturated(message(last).bytes.size()) - 1;
    if (m_result.dataMessages == 0)
        problem(last, position, QStringLiteral("the image has no data message."),
                QString::fromLatin1(incomplete));
    if (m_fileCheck < 0)
        problem(last, position, QStringLiteral("the image ends without a file check."),
                QString::fromLatin1(incomplete));
    if (m_closing < 0)
        problem(last, position,
                QStringLiteral("the image ends without the closing message %1.")
                    .arg(hexText(image::closingMessage(m_product.header))),
                QString::fromLatin1(incomplete));
}

// The file check speaks of the whole code, so it is compared only when all of that is there.
void ImageChecker::checkTotals()
{
    if (m_result.code.size() > image::maxCodeBytes)
        addProblem(m_result.problems, {},
                   QStringLiteral("the image carries %1 code bytes; the product holds %2.")
                       .arg(m_result.code.size())
                       .arg(image::maxCodeBytes),
                   QString::fromLatin1(otherProduct));
    if (!m_codeIsWhole || !m_result.hasFileCheck || m_result.dataMessages == 0)
        return;
    if (m_result.statedLength != m_result.code.size())
        problem(m_fileCheck, at(image::lengthOffset),
                QStringLiteral("the file check states %1 code bytes, but the messages carry %2.")
                    .arg(m_result.statedLength)
                    .arg(m_result.code.size()));
    const quint32 crc = crc32(m_result.code);
    if (crc != m_result.statedCrc)
        problem(m_fileCheck, at(image::crcOffset),
                QStringLiteral("the file check states the CRC-32 %1, but the code has %2.")
                    .arg(m_result.statedCrc, 8, 16, QLatin1Char('0'))
                    .arg(crc, 8, 16, QLatin1Char('0')));
}

} // namespace hx

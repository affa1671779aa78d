#include "host/image/FileText.h"
#include "host/image/ImageFileReaders.h"
#include "host/image/SysExCutter.h"

namespace hx {

namespace {

bool isSeparator(char character)
{
    return character == ' ' || character == ',' || character == '\t' || character == '\n' ||
           character == '\r';
}

// The value of a hex digit, or -1.
int digitValue(char character)
{
    if (character >= '0' && character <= '9')
        return character - '0';
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace

qint64 firstNonTextByte(const QByteArray& content)
{
    const FileText text(content);
    bool half = false; // after the first digit of a pair
    for (int i = 0; i < text.size(); ++i) {
        const bool isDigit = digitValue(text.at(i)) >= 0;
        if (!isDigit && (half || !isSeparator(text.at(i))))
            return text.offsetOf(i);
        half = isDigit && !half;
    }
    return half ? text.offsetOf(text.size() - 1) : -1;
}

ImageFile readHexText(const QByteArray& content)
{
    ImageFile file;
    file.format = ImageFormat::HexText;
    SysExCutter cutter(file);
    const FileText text(content);
    for (int i = 0; i + 1 < text.size(); ++i) {
        if (isSeparator(text.at(i)))
            continue;
        const int value = digitValue(text.at(i)) * 16 + digitValue(text.at(i + 1));
        cutter.add(static_cast<quint8>(value), text.offsetOf(i));
        ++i;
    }
    cutter.finish();
    if (file.messages.empty() && file.problems.empty())
        addProblem(file.problems, {}, QStringLiteral("the file holds no message."),
                   QStringLiteral("Get the update image again."));
    return file;
}

ImageFile readRawSysEx(const QByteArray& content)
{
    ImageFile file;
    file.format = ImageFormat::RawSysEx;
    SysExCutter cutter(file);
    for (int i = 0; i < content.size(); ++i)
        cutter.add(static_cast<quint8>(content.at(i)), i);
    cutter.finish();
    return file;
}

} // namespace hx

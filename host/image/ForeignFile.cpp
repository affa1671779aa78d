#include "host/image/ForeignFile.h"

#include "host/image/FileText.h"

#include <algorithm>
#include <initializer_list>

namespace hx {

namespace {

constexpr int tarMarkPosition = 257;
constexpr int headLength = 512; // a page may begin with blanks and a comment

bool isArchive(const QByteArray& content)
{
    const std::initializer_list<const char*> beginnings = {
        "PK\x03\x04",         "PK\x05\x06", "\x1F\x8B",         "BZh", "\3757zXZ",
        "7z\xBC\xAF\x27\x1C", "Rar!\x1A",   "\x28\xB5\x2F\xFD", "MSCF"};
    return content.mid(tarMarkPosition, 5) == "ustar" ||
           std::any_of(beginnings.begin(), beginnings.end(),
                       [&content](const char* begin) { return content.startsWith(begin); });
}

// The first characters, whatever encoding they are saved in.
QByteArray headOf(const QByteArray& content)
{
    const FileText text(content);
    QByteArray head;
    for (int i = 0; i < std::min(text.size(), headLength); ++i)
        head += text.at(i);
    return head.trimmed().toLower();
}

bool isWebPage(const QByteArray& content)
{
    const QByteArray head = headOf(content);
    return head.startsWith("<!doctype html") || head.startsWith("<html") ||
           (head.startsWith('<') && (head.contains("<html") || head.contains("<head")));
}

} // namespace

ImageFormat foreignFormat(const QByteArray& content)
{
    if (isArchive(content))
        return ImageFormat::Archive;
    return isWebPage(content) ? ImageFormat::WebPage : ImageFormat::Unknown;
}

} // namespace hx

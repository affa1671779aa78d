#include "host/base/FileName.h"

namespace hx {

namespace {

constexpr size_t longestCharacter = 4;
constexpr int mostLinks = 40; // as many as systems follow
constexpr ushort firstByteStandIn = 0xDC80;
constexpr ushort lastByteStandIn = 0xDCFF;

// Bytes of the UTF-8 character that begins at `position`, 0 when none does.
size_t characterSize(const std::string& bytes, size_t position)
{
    for (size_t size = 1; size <= longestCharacter && position + size <= bytes.size(); ++size) {
        const std::string part = bytes.substr(position, size);
        if (QString::fromStdString(part).toStdString() == part)
            return size;
    }
    return 0;
}

bool standsForByte(const QString& text, int position)
{
    const ushort unit = text.at(position).unicode();
    const bool isPaired = position > 0 && text.at(position - 1).isHighSurrogate();
    return unit >= firstByteStandIn && unit <= lastByteStandIn && !isPaired;
}

} // namespace

QString fileNameText(const std::string& bytes)
{
    QString text;
    for (size_t i = 0; i < bytes.size();) {
        const size_t size = characterSize(bytes, i);
        text += size > 0 ? QString::fromStdString(bytes.substr(i, size))
                         : QString(QChar(0xDC00U + quint8(bytes.at(i))));
        i += size > 0 ? size : 1;
    }
    return text;
}

QByteArray fileNameBytes(const QString& name)
{
    QByteArray bytes;
    int begin = 0;
    for (int i = 0; i <= name.size(); ++i) {
        const bool isEnd = i == name.size();
        if (!isEnd && !standsForByte(name, i))
            continue;
        bytes += name.mid(begin, i - begin).toUtf8();
        if (!isEnd)
            bytes += char(name.at(i).unicode() & 0xFF);
        begin = i + 1;
    }
    return bytes;
}

std::filesystem::path filePath(const QString& name)
{
    return fileNameBytes(name).toStdString();
}

std::filesystem::path resolvedPath(const QString& name)
{
    std::error_code error; // a path that cannot be followed further stays as it is
    std::filesystem::path path = std::filesystem::absolute(filePath(name), error);
    for (int i = 0; i < mostLinks && std::filesystem::is_symlink(path, error); ++i)
        path = path.parent_path() / std::filesystem::read_symlink(path, error);
    const std::filesystem::path whole = std::filesystem::weakly_canonical(path, error);
    return whole.empty() ? path.lexically_normal() : whole;
}

} // namespace hx

#include "host/product/LibraryFile.h"

#include <QFile>
#include <QtEndian>

namespace hx {

namespace {

// Where the header of an ELF file says where its table of sections is, how large an entry is, how many.
struct HeaderLayout {
    int size;
    int table;
    int entrySize;
    int entries;
};

constexpr HeaderLayout layout32 = {52, 32, 46, 48};
constexpr HeaderLayout layout64 = {64, 40, 58, 60};
constexpr int classAt = 4;
constexpr int orderAt = 5;
constexpr char class64 = 2;
constexpr char bigEndian = 2;

template <typename Number>
quint64 numberAt(const QByteArray& header, int position)
{
    const char* const bytes = header.constData() + position;
    return header.at(orderAt) == bigEndian ? qFromBigEndian<Number>(bytes)
                                           : qFromLittleEndian<Number>(bytes);
}

} // namespace

bool isCutOff(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray header = file.read(layout64.size);
    if (!header.startsWith("\x7F"
                           "ELF"))
        return false;
    const bool isWide = header.size() > classAt && header.at(classAt) == class64;
    const HeaderLayout& layout = isWide ? layout64 : layout32;
    if (header.size() < layout.size)
        return true;
    const quint64 table =
        isWide ? numberAt<quint64>(header, layout.table) : numberAt<quint32>(header, layout.table);
    const quint64 size =
        numberAt<quint16>(header, layout.entrySize) * numberAt<quint16>(header, layout.entries);
    const auto fileSize = static_cast<quint64>(file.size());
    return table > fileSize || size > fileSize - table;
}

} // namespace hx

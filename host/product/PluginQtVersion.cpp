#include "host/product/PluginQtVersion.h"

#include "qt/Saturated.h"

#include <QByteArray>
#include <QFile>
#include <QStringList>
#include <QtEndian>

namespace hx {

namespace {

constexpr int mostLookedAt = 64 * 1024 * 1024;

// A mark, then the format's version, Qt's major and minor version, and what the plugin needs of the
// processor; then the metadata itself, a CBOR map.
constexpr int markSize = 12;
constexpr int majorAt = markSize + 1;
constexpr int minorAt = markSize + 2;
constexpr int mapAt = markSize + 4;

quint8 byteAt(const QByteArray& bytes, int position)
{
    return static_cast<quint8>(bytes.at(position));
}

// The header of an ELF note before its name: sizes of name and content, then its type.
bool isNote(const QByteArray& library, int name)
{
    constexpr quint32 type = 0x74510001;
    if (name < static_cast<int>(sizeof type))
        return false;
    const char* const typeOfThis = library.constData() + name - sizeof type;
    return qFromLittleEndian<quint32>(typeOfThis) == type ||
           qFromBigEndian<quint32>(typeOfThis) == type;
}

std::optional<QtVersion> versionBehind(const QByteArray& library, int mark)
{
    if (library.size() - mark <= mapAt)
        return std::nullopt;
    const quint8 map = byteAt(library, mark + mapAt);
    const QtVersion version = {byteAt(library, mark + majorAt), byteAt(library, mark + minorAt)};
    const bool isMap = map == 0xBF || (map & 0xE0) == 0xA0; // of any, or of a stated, length
    return isMap && version.majorNumber >= 5 ? std::optional<QtVersion>(version) : std::nullopt;
}

std::optional<QtVersion> versionIn(const QByteArray& library)
{
    const QByteArray noteName("qt-project!", markSize); // with its closing zero
    const QByteArray sectionMark("QTMETADATA !", markSize);
    for (const QByteArray& mark : {noteName, sectionMark}) {
        int at = -1;
        while ((at = saturated(library.indexOf(mark, at + 1))) >= 0) {
            const auto version = versionBehind(library, at);
            if (version && (mark == sectionMark || isNote(library, at)))
                return version;
        }
    }
    return std::nullopt;
}

} // namespace

QString QtVersion::text() const
{
    return QStringLiteral("%1.%2").arg(majorNumber).arg(minorNumber);
}

QtVersion runningQt()
{
    const QStringList numbers = QString::fromLatin1(qVersion()).split(QLatin1Char('.'));
    return {numbers.at(0).toInt(), numbers.at(1).toInt()};
}

std::optional<QtVersion> qtVersionOfPlugin(const QJsonObject& metaData, const QString& path)
{
    const int told = metaData.value(QStringLiteral("version")).toInt(); // 0x050F00 is 5.15
    if (told != 0)
        return QtVersion{told >> 16, told >> 8 & 0xFF};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return versionIn(file.read(mostLookedAt));
}

} // namespace hx

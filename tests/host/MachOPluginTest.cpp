// Plugins of macOS, made by hand: a Mach-O bundle with its metadata in the section "qtmetadata", alone or in a
// universal file. A host of any platform knows which Qt they are made for.
#include "host/product/PluginLoader.h"
#include "tests/host/TestFiles.h"
#include "tests/support/QtPrinting.h"

#include <QDataStream>

#include <gtest/gtest.h>

using namespace hx;

namespace {

constexpr int otherQtMajor = QT_VERSION_MAJOR == 5 ? 6 : 5;
constexpr quint32 intel = 0x01000007;
constexpr quint32 arm = 0x0100000C;
constexpr int headerSize = 32;
constexpr int segmentSize = 72;
constexpr int sectionSize = 80;
constexpr int contentAt = headerSize + segmentSize + sectionSize;

QByteArray paddedName(const char* text)
{
    return QByteArray(text).leftJustified(16, '\0');
}

void writeBytes(QDataStream& out, const QByteArray& bytes)
{
    out.writeRawData(bytes.constData(), int(bytes.size()));
}

void writeNumbers(QDataStream& out, std::initializer_list<quint32> numbers)
{
    for (const quint32 number : numbers)
        out << number;
}

// What Q_PLUGIN_METADATA puts there: its mark, the versions, and a CBOR map of one key, the identifier.
QByteArray qtMetadata(int qtMajor)
{
    const QByteArray versions = QByteArray::fromHex("00").append(char(qtMajor)).append("\x09\x80");
    return "QTMETADATA !" + versions + QByteArray::fromHex("BF0263") + "iid" +
           QByteArray::fromHex("FF");
}

QByteArray bundle(quint32 processor, const QByteArray& content)
{
    QByteArray file;
    QDataStream out(&file, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    constexpr quint32 ofBundle = 8;
    writeNumbers(out, {0xFEEDFACF, processor, 3, ofBundle, 1, segmentSize + sectionSize, 0, 0});
    const quint64 size = quint64(content.size());
    writeNumbers(out, {0x19, segmentSize + sectionSize});
    writeBytes(out, paddedName("__TEXT"));
    out << quint64(0) << contentAt + size << quint64(0) << contentAt + size;
    writeNumbers(out, {5, 5, 1, 0});
    writeBytes(out, paddedName("qtmetadata") + paddedName("__TEXT"));
    out << quint64(contentAt) << size;
    writeNumbers(out, {contentAt, 0, 0, 0, 0, 0, 0, 0});
    writeBytes(out, content);
    return file;
}

// Two bundles in one file, whose header is big-endian.
QByteArray universal(const QByteArray& first, const QByteArray& second)
{
    constexpr quint32 firstAt = 64;
    const quint32 secondAt = firstAt + quint32(first.size());
    QByteArray file;
    QDataStream out(&file, QIODevice::WriteOnly);
    writeNumbers(out, {0xCAFEBABE, 2});
    writeNumbers(out, {intel, 3, firstAt, quint32(first.size()), 0});
    writeNumbers(out, {arm, 0, secondAt, quint32(second.size()), 0});
    return file.leftJustified(int(firstAt), '\0') + first + second;
}

class MachOPlugin : public testing::Test {
protected:
    PluginLoadResult load(const QByteArray& content)
    {
        return loadPlugin(files.write("libtarv_valdrinboot_3041.dylib", content));
    }

    void expectOtherQt(const QByteArray& content)
    {
        const PluginLoadResult result = load(content);
        EXPECT_EQ(result.fault, PluginFault::OtherQt) << result.problem.what.toStdString();
        EXPECT_TRUE(result.problem.what.contains(
            QString("is made for Qt %1.9, this host").arg(otherQtMajor)))
            << result.problem.what.toStdString();
    }

    TestFiles files;
};

} // namespace

TEST_F(MachOPlugin, OneMadeForTheOtherQtIsRefusedWithItsVersion)
{
    expectOtherQt(bundle(intel, qtMetadata(otherQtMajor)));
    expectOtherQt(bundle(arm, qtMetadata(otherQtMajor)));
}

TEST_F(MachOPlugin, AUniversalOneMadeForTheOtherQtIsRefusedWithItsVersion)
{
    const QByteArray content = qtMetadata(otherQtMajor);
    expectOtherQt(universal(bundle(intel, content), bundle(arm, content)));
}

TEST_F(MachOPlugin, OneThatIsCutOffInItsMetadataHasNone)
{
    constexpr int markAndVersions = 16;
    const QByteArray whole = bundle(arm, qtMetadata(otherQtMajor));
    for (int length = contentAt; length <= contentAt + markAndVersions; ++length)
        EXPECT_EQ(load(whole.left(length)).fault, PluginFault::NoMetadata) << length;
    expectOtherQt(whole.left(contentAt + markAndVersions + 1));
}

TEST_F(MachOPlugin, OneWithoutMetadataHasNone)
{
    EXPECT_EQ(load(bundle(arm, QByteArray(64, 'x'))).fault, PluginFault::NoMetadata);
}

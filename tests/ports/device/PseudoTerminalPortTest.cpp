// The product's end of a cable that other programs open as a device.
#include "ports/device/PseudoTerminalPort.h"

#include "ports/device/DevicePort.h"
#include "tests/ports/device/DeviceBench.h"

#include <QFileInfo>

namespace hx {

namespace {

constexpr Pace withoutPause = {0, 0};
constexpr Microseconds longest = 20 * microsecondsPerSecond; // for what comes at once

class PseudoTerminal : public ::testing::Test {
protected:
    static std::unique_ptr<MidiPort> offer(const QString& link = QString())
    {
        auto port = PseudoTerminalPort::open(link, withoutPause);
        EXPECT_TRUE(port) << port.problem().what.toStdString();
        return port ? std::move(*port) : nullptr;
    }

    static std::unique_ptr<MidiPort> connectTo(const MidiPort& offered)
    {
        auto port = DevicePort::open({devicePath(offered.name()), QString()}, withoutPause);
        EXPECT_TRUE(port) << port.problem().what.toStdString();
        return port ? std::move(*port) : nullptr;
    }

    static QByteArray heard(MidiPort& port, int size)
    {
        QByteArray bytes;
        const Microseconds deadline = port.clock().now() + longest;
        while (bytes.size() < size && port.clock().now() < deadline)
            bytes += port.receive(deadline).bytes;
        return bytes;
    }

    QString inFolder(const QString& name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(PseudoTerminal, CarriesBytesBothWays)
{
    const auto product = offer();
    const auto host = connectTo(*product);
    EXPECT_EQ(host->send("\xF0\x0A\x0D\xF7"), 4);
    EXPECT_EQ(heard(*product, 4), "\xF0\x0A\x0D\xF7");
    EXPECT_EQ(product->send("\x03\x04\x0A\x7F"), 4);
    EXPECT_EQ(heard(*host, 4), "\x03\x04\x0A\x7F");
}

TEST_F(PseudoTerminal, WhatIsSentToNobodyIsLost)
{
    const auto product = offer();
    EXPECT_EQ(product->send("lost"), 4);
    EXPECT_EQ(product->receive(product->clock().now()).bytes, "");
    for (const char* text : {"one", "two"}) {
        const auto host = connectTo(*product);
        EXPECT_EQ(product->send(text), 3);
        EXPECT_EQ(heard(*host, 3), text);
    }
    EXPECT_EQ(product->send("lost"), 4);
    EXPECT_EQ(product->receive(product->clock().now() + 1).bytes, "");
    EXPECT_EQ(product->errorText, "");
}

TEST_F(PseudoTerminal, WhatNobodyReadsIsLostToo)
{
    const auto product = offer();
    const auto host = connectTo(*product);
    EXPECT_EQ(product->send(QByteArray(1000000, '\x01')), 1000000);
    const QByteArray read = heard(*host, 4096);
    EXPECT_GE(read.size(), 4096);
    EXPECT_EQ(read.count('\x01'), read.size());
}

TEST_F(PseudoTerminal, TheLinkLeadsToItAsLongAsItIsThere)
{
    const QString link = inFolder("link");
    {
        const auto product = offer(link);
        EXPECT_EQ(product->name(), "device:" + link);
        EXPECT_TRUE(QFileInfo(link).symLinkTarget().startsWith("/dev/"));
        const auto host = connectTo(*product);
        ASSERT_NE(host, nullptr);
        EXPECT_EQ(host->send("abc"), 3);
        EXPECT_EQ(heard(*product, 3), "abc");
    }
    EXPECT_FALSE(QFileInfo(link).isSymLink());
}

TEST_F(PseudoTerminal, ALinkThatAnEarlierRunLeftIsReplaced)
{
    const QString link = inFolder("link");
    ASSERT_TRUE(QFile::link("/dev/pts/no-such-terminal", link));
    EXPECT_NE(offer(link), nullptr);
}

TEST_F(PseudoTerminal, NothingElseIsReplacedByTheLink)
{
    QFile file(inFolder("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const auto port = PseudoTerminalPort::open(file.fileName(), withoutPause);
    ASSERT_FALSE(port);
    EXPECT_EQ(port.problem().code, ExitCode::FileError);
    EXPECT_EQ(port.problem().what,
              QStringLiteral("the link \"%1\" cannot be made: File exists").arg(file.fileName()));
    EXPECT_EQ(port.problem().next, "give another name after --device");
    EXPECT_FALSE(PseudoTerminalPort::open(inFolder("no/folder"), withoutPause));
}

} // namespace hx

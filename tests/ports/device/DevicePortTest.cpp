// A device as a MIDI port: bytes unchanged, at the pace, and clear words when it cannot be used.
#include "ports/device/DevicePort.h"

#include "host/bus/SysExAssembler.h"
#include "tests/ports/device/DeviceBench.h"

#include <csignal>

#include <sys/file.h>
#include <termios.h>

namespace hx {

namespace {

constexpr Microseconds byteTime = 320;
constexpr Pace unpaced = {0, 0};
constexpr uid_t nobody = 65534;

// Every byte value, so that those that a terminal would change are among them.
QByteArray everyByte()
{
    QByteArray bytes;
    for (int value = 0; value < 256; ++value)
        bytes.append(char(value));
    return bytes;
}

class DevicePortTest : public ::testing::Test {
protected:
    std::unique_ptr<MidiPort> open(const DeviceAddress& address, const Pace& pace = Pace())
    {
        auto port = DevicePort::open(address, pace, std::make_unique<TestWait>(clock));
        EXPECT_TRUE(port) << port.problem().what.toStdString();
        return port ? std::move(*port) : nullptr;
    }

    Problem problemOf(const DeviceAddress& address)
    {
        const auto port = DevicePort::open(address, Pace(), std::make_unique<TestWait>(clock));
        EXPECT_FALSE(port);
        return port.problem();
    }

    QString inFolder(const QString& name) const { return m_folder.filePath(name); }

    QString makeFifo(const QString& name)
    {
        EXPECT_EQ(mkfifo(QFile::encodeName(inFolder(name)).constData(), 0600), 0);
        return inFolder(name);
    }

    static DeviceEnd openEnd(const QString& path, int flags)
    {
        return DeviceEnd(::open(QFile::encodeName(path).constData(), flags | O_NONBLOCK));
    }

    TestWait::WatchedClock clock;
    TestTerminal terminal;

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(DevicePortTest, BytesPassUnchangedBothWays)
{
    const auto port = open({terminal.path, QString()});
    EXPECT_EQ(port->send(everyByte()), 256);
    EXPECT_EQ(terminal.end.read(), everyByte());
    terminal.end.write(everyByte());
    EXPECT_EQ(port->receive(clock.now()).bytes, everyByte());
    EXPECT_EQ(port->receive(clock.now()).bytes, "");
    EXPECT_EQ(port->errorText, "");
}

TEST_F(DevicePortTest, InputInAnyPiecesBecomesTheSameMessages)
{
    const QByteArray message = QByteArray::fromHex("F07E000602006B2D3000410031303233F7");
    for (int size = 1; size <= message.size(); ++size) {
        const auto port = open({terminal.path, QString()});
        SysExAssembler assembler;
        AssembledEvents events;
        for (int at = 0; at < message.size(); at += size) {
            terminal.end.write(message.mid(at, size));
            const MidiChunk chunk = port->receive(clock.now() + 1000);
            for (const AssembledEvent& event : assembler.feed(chunk.bytes, chunk.time))
                events.push_back(event);
        }
        ASSERT_EQ(events.size(), 1u) << size;
        EXPECT_EQ(events[0].bytes, message) << size;
    }
}

TEST_F(DevicePortTest, SendingTakesAsLongAsTheWire)
{
    const auto port = open({terminal.path, QString()});
    EXPECT_EQ(port->send(QByteArray(100, '\x01')), 100);
    EXPECT_EQ(clock.now(), 100 * byteTime);
}

TEST_F(DevicePortTest, TheGapComesBetweenMessages)
{
    const auto port = open({terminal.path, QString()}, Pace{1000, 5000});
    EXPECT_EQ(port->send(QByteArray(10, '\x01')), 10);
    EXPECT_EQ(clock.now(), 10000);
    EXPECT_EQ(port->send(QByteArray(10, '\x01')), 10);
    EXPECT_EQ(clock.now(), 25000);
}

TEST_F(DevicePortTest, NeverMoreThan32BytesAreAheadOfTheWire)
{
    qint64 arrived = 0;
    int looks = 0;
    clock.whileWaiting = [&](Microseconds) {
        arrived += terminal.end.read().size();
        EXPECT_LE(arrived, clock.now() / byteTime + 32);
        ++looks;
    };
    const auto port = open({terminal.path, QString()});
    EXPECT_EQ(port->send(QByteArray(1000, '\x01')), 1000);
    EXPECT_GE(looks, 1000 / 32);
    EXPECT_EQ(arrived + terminal.end.read().size(), 1000);
}

TEST_F(DevicePortTest, ADeviceThatTakesNoMoreIsToldWithWhatItTook)
{
    const auto port = open({terminal.path, QString()}, unpaced);
    const QByteArray message(1000000, '\x01');
    const qint64 accepted = port->send(message);
    EXPECT_GT(accepted, 0);
    EXPECT_LT(accepted, message.size());
    EXPECT_EQ(port->errorText,
              QStringLiteral("the device %1 took %2 of 1000000 bytes and no more for 2 seconds")
                  .arg(terminal.path)
                  .arg(accepted));
    EXPECT_FALSE(port->isGone());
    EXPECT_EQ(terminal.end.read().size(), accepted);
    EXPECT_EQ(port->send(QByteArray(10, '\x02')), 10);
    EXPECT_EQ(terminal.end.read(), QByteArray(10, '\x02'));
}

TEST_F(DevicePortTest, ASecondProgramIsKeptOutUntilTheFirstHasEnded)
{
    const QString link = inFolder("link");
    ASSERT_TRUE(QFile::link(terminal.path, link));
    auto port = open({terminal.path, QString()});
    const Problem problem = problemOf({link, QString()});
    EXPECT_EQ(problem.code, ExitCode::NoPort);
    EXPECT_EQ(problem.what,
              QStringLiteral("the device \"%1\" is in use by another program").arg(link));
    EXPECT_EQ(
        problem.next,
        QStringLiteral("close that program ('fuser -v %1' names it), then try again").arg(link));
    port.reset();
    EXPECT_NE(open({link, QString()}), nullptr);
}

TEST_F(DevicePortTest, ATerminalIsGivenBackAsItWas)
{
    const DeviceEnd user(::open(terminal.path.toLatin1().constData(), O_RDWR | O_NOCTTY));
    struct termios settings = {};
    open({terminal.path, QString()});
    ASSERT_EQ(tcgetattr(user.descriptor(), &settings), 0);
    EXPECT_NE(settings.c_lflag & ICANON, 0u);
    const auto port = open({terminal.path, QString()});
    ASSERT_EQ(tcgetattr(user.descriptor(), &settings), 0);
    EXPECT_EQ(settings.c_lflag & (ICANON | ECHO | ISIG), 0u);
}

TEST_F(DevicePortTest, ARemovedDeviceIsNoticedAtOnce)
{
    const auto port = open({terminal.path, QString()});
    terminal.end.close();
    const QString gone =
        QStringLiteral("the device %1 was removed, or its other end was closed").arg(terminal.path);
    EXPECT_EQ(port->receive(60 * microsecondsPerSecond).bytes, "");
    EXPECT_EQ(clock.now(), 0);
    EXPECT_EQ(port->errorText, gone);
    EXPECT_TRUE(port->isGone());
    port->errorText.clear();
    EXPECT_EQ(port->send("\xF0\xF7"), 0);
    EXPECT_EQ(port->errorText, gone);
    EXPECT_FALSE(port->drain(microsecondsPerSecond));
    EXPECT_EQ(port->errorText, gone);
}

TEST_F(DevicePortTest, ADeviceRemovedInAMessageEndsTheSending)
{
    const auto port = open({terminal.path, QString()});
    clock.whileWaiting = [&](Microseconds) {
        if (clock.now() > 50 * byteTime)
            terminal.end.close();
    };
    EXPECT_LT(port->send(QByteArray(1000, '\x01')), 1000);
    EXPECT_TRUE(port->isGone());
    EXPECT_LT(clock.now(), 200 * byteTime);
}

TEST_F(DevicePortTest, WhatIsNotADeviceIsToldByItsKind)
{
    QFile file(inFolder("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const Problem problem = problemOf({inFolder("file"), QString()});
    EXPECT_EQ(problem.code, ExitCode::NoPort);
    EXPECT_EQ(problem.what,
              QStringLiteral("\"%1\" is not a device: it is a file").arg(inFolder("file")));
    EXPECT_EQ(problem.expected, "a character device, a pseudo terminal or a FIFO");
    EXPECT_EQ(problem.next,
              "give a device, such as device:/dev/snd/midiC1D0; 'ls /dev/snd' lists them");
    EXPECT_EQ(problemOf({inFolder(""), QString()}).what,
              QStringLiteral("\"%1\" is not a device: it is a folder").arg(inFolder("")));
    EXPECT_EQ(problemOf({inFolder("none"), QString()}).what,
              QStringLiteral("there is no device \"%1\"").arg(inFolder("none")));
    EXPECT_EQ(problemOf({inFolder("file/none"), QString()}).next,
              "connect it; 'ls /dev/snd' lists the MIDI devices");
}

TEST_F(DevicePortTest, ADeviceOfAnotherUserNamesItsGroup)
{
    const QString fifo = makeFifo("fifo");
    ASSERT_EQ(chmod(QFile::encodeName(fifo).constData(), 0), 0);
    ASSERT_TRUE(QFile::setPermissions(inFolder(""), QFile::Permissions(0x7777)));
    const bool isRoot = geteuid() == 0;
    ASSERT_EQ(isRoot ? seteuid(nobody) : 0, 0);
    const Problem problem = problemOf({QString(), fifo});
    ASSERT_EQ(isRoot ? seteuid(0) : 0, 0);
    EXPECT_EQ(problem.what,
              QStringLiteral("the device \"%1\" may not be opened by this user").arg(fifo));
    EXPECT_EQ(problem.next,
              QStringLiteral("join the group that it belongs to ('sudo usermod -aG %1 "
                             "\"$USER\"'), then log in again")
                  .arg(QFileInfo(fifo).group()));
}

TEST_F(DevicePortTest, TwoFifosAreOnePort)
{
    const QString there = makeFifo("there");
    const QString back = makeFifo("back");
    DeviceEnd hears = openEnd(there, O_RDONLY);
    const auto port = open({there, back}, unpaced);
    EXPECT_EQ(port->name(), "device:" + there);
    EXPECT_EQ(port->receive(1000).bytes, "");
    EXPECT_EQ(port->errorText, "") << "nobody has opened the other end yet";
    clock.whileWaiting = [&](Microseconds) { EXPECT_EQ(hears.read(), everyByte()); };
    EXPECT_EQ(port->send(everyByte()), 256);
    clock.whileWaiting = nullptr;
    DeviceEnd answers = openEnd(back, O_WRONLY);
    answers.write("abc");
    answers.close();
    EXPECT_EQ(port->receive(clock.now()).bytes, "abc");
    EXPECT_EQ(port->receive(clock.now()).bytes, "");
    EXPECT_EQ(port->errorText,
              QStringLiteral("the device %1 was removed, or its other end was closed").arg(back));
}

TEST_F(DevicePortTest, WhatNobodyHasReadFromAFifoWasNotSent)
{
    const QString fifo = makeFifo("fifo");
    const QString back = makeFifo("back");
    DeviceEnd hears = openEnd(fifo, O_RDONLY);
    const auto port = open({fifo, back}, unpaced);
    EXPECT_EQ(port->send("abcdef"), 0);
    EXPECT_EQ(port->errorText,
              QStringLiteral("6 bytes have not left the device %1 in time").arg(fifo));
    EXPECT_EQ(clock.now(), 2 * microsecondsPerSecond);
    EXPECT_FALSE(port->drain(clock.now() + 1000));
    EXPECT_EQ(hears.read(), "abcdef");
    EXPECT_TRUE(port->drain(clock.now()));
}

TEST_F(DevicePortTest, AFifoThatNobodyReadsIsToldBeforeAndAfter)
{
    std::signal(SIGPIPE, SIG_IGN);
    const QString fifo = makeFifo("fifo");
    const QString back = makeFifo("back");
    const Problem problem = problemOf({fifo, back});
    EXPECT_EQ(problem.what, QStringLiteral("nobody reads from the FIFO \"%1\"").arg(fifo));
    EXPECT_EQ(problem.next, "start that program first");
    DeviceEnd hears = openEnd(fifo, O_RDONLY);
    const auto port = open({fifo, back}, unpaced);
    hears.close();
    EXPECT_EQ(port->send("abc"), 0);
    EXPECT_EQ(port->errorText,
              QStringLiteral("nobody reads from the device %1 any more").arg(fifo));
}

TEST_F(DevicePortTest, AReaderThatLeavesWithBytesUnreadEndsTheSending)
{
    const QString fifo = makeFifo("fifo");
    const QString back = makeFifo("back");
    DeviceEnd hears = openEnd(fifo, O_RDONLY);
    const auto port = open({fifo, back}, unpaced);
    clock.whileWaiting = [&](Microseconds) { hears.close(); };
    EXPECT_EQ(port->send("abc"), 0);
    EXPECT_TRUE(port->isGone());
}

TEST_F(DevicePortTest, OneFifoIsNotAPort)
{
    const QString fifo = makeFifo("fifo");
    const Problem problem = problemOf({fifo, QString()});
    EXPECT_EQ(problem.what, QStringLiteral("the FIFO \"%1\" carries bytes one way only").arg(fifo));
    EXPECT_EQ(problem.next, "name the one that answers come from with --in-port device:FILE");
    EXPECT_EQ(problemOf({fifo, fifo}).what, problem.what);
}

TEST_F(DevicePortTest, AnInputAloneHears)
{
    const auto port = open({QString(), terminal.path});
    terminal.end.write("abc");
    EXPECT_EQ(port->receive(clock.now()).bytes, "abc");
    EXPECT_EQ(port->name(), "device:" + terminal.path);
    EXPECT_TRUE(port->drain(0));
}

TEST_F(DevicePortTest, ADeviceThatEndsIsGone)
{
    const auto port = open({QStringLiteral("/dev/null"), QString()});
    EXPECT_EQ(port->receive(1000).bytes, "");
    EXPECT_TRUE(port->isGone());
}

TEST_F(DevicePortTest, ADeviceThatFailsSaysHow)
{
    const auto port = open({QStringLiteral("/dev/full"), QString()});
    EXPECT_EQ(port->send("abc"), 0);
    EXPECT_EQ(port->errorText,
              "the device /dev/full does not work any more: No space left on device");
}

TEST_F(DevicePortTest, IsKnownByItsPath)
{
    const PortIdentity identity = open({terminal.path, QString()})->identity();
    EXPECT_EQ(identity.backend, "device");
    EXPECT_EQ(identity.stableId, "");
    EXPECT_EQ(identity.name, terminal.path);
    EXPECT_EQ(identity.serialNumber, "");
    EXPECT_EQ(devicePath("device:/dev/x"), "/dev/x");
    EXPECT_TRUE(devicePath("alsa:x").isNull());
}

TEST_F(DevicePortTest, TheSystemsWaitEndsWithInputWithRoomAndWithTheDeadline)
{
    RealDeviceWait wait;
    const Microseconds now = wait.clock().now();
    wait.forRoom(terminal.end.descriptor(), now + 3600 * microsecondsPerSecond);
    wait.forInput(terminal.end.descriptor(), now);
    const auto port = open({terminal.path, QString()});
    ASSERT_EQ(port->send("abc"), 3);
    wait.forInput(terminal.end.descriptor(), now + 7200 * microsecondsPerSecond);
    EXPECT_EQ(terminal.end.read(), "abc");
}

} // namespace hx

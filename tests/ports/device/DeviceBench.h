// Devices whose other end the test holds, and a wait that takes no time.
#pragma once

#include "ports/device/DevicePort.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

// One end of a device. Closed with this object.
class DeviceEnd {
public:
    explicit DeviceEnd(int descriptor = -1) : m_descriptor(descriptor) {}
    DeviceEnd(DeviceEnd&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    DeviceEnd& operator=(DeviceEnd&& other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~DeviceEnd() { close(); }

    void close()
    {
        if (m_descriptor >= 0)
            ::close(std::exchange(m_descriptor, -1));
    }
    bool isOpen() const { return m_descriptor >= 0; }
    int descriptor() const { return m_descriptor; }

    void write(const QByteArray& bytes)
    {
        ASSERT_EQ(::write(m_descriptor, bytes.constData(), size_t(bytes.size())), bytes.size());
    }

    // All that is there.
    QByteArray read()
    {
        QByteArray all;
        char piece[4096];
        ssize_t count = 0;
        while ((count = ::read(m_descriptor, piece, sizeof piece)) > 0)
            all.append(piece, int(count));
        return all;
    }

private:
    int m_descriptor;
};

// A pseudo terminal: the port under test opens `path`, the test holds `end`.
struct TestTerminal {
    TestTerminal() : end(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
    {
        EXPECT_EQ(grantpt(end.descriptor()), 0);
        EXPECT_EQ(unlockpt(end.descriptor()), 0);
        path = QString::fromLatin1(ptsname(end.descriptor()));
    }

    DeviceEnd end;
    QString path;
};

// Time passes only by waiting. `whileWaiting` is called before it does, with the moment that is
// waited for.
class TestWait final : public hx::DeviceWait {
public:
    class WatchedClock final : public hx::Clock {
    public:
        hx::Microseconds now() override { return m_clock.now(); }
        void sleepUntil(hx::Microseconds until) override
        {
            if (whileWaiting)
                whileWaiting(until);
            m_clock.sleepUntil(until);
        }

        std::function<void(hx::Microseconds)> whileWaiting;

    private:
        hx::ManualClock m_clock;
    };

    explicit TestWait(WatchedClock& clock) : m_clock(clock) {}

    hx::Clock& clock() override { return m_clock; }
    void forInput(int, hx::Microseconds deadline) override { m_clock.sleepUntil(deadline); }
    void forRoom(int, hx::Microseconds deadline) override { m_clock.sleepUntil(deadline); }

private:
    WatchedClock& m_clock;
};

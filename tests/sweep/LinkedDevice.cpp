#include "tests/sweep/LinkedDevice.h"

#include "ports/device/DevicePort.h"

#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace sweep {

namespace {

// The end that the host does not see. Bytes pass it whenever the host waits.
class LinkEnd final : public hx::DeviceWait, public hx::Clock {
public:
    explicit LinkEnd(FaultyLink& link)
        : m_link(link), m_descriptor(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
    {
        if (grantpt(m_descriptor) != 0 || unlockpt(m_descriptor) != 0)
            close();
    }
    ~LinkEnd() override { close(); }
    LinkEnd(const LinkEnd&) = delete;
    LinkEnd& operator=(const LinkEnd&) = delete;

    QString path() const
    {
        return m_descriptor < 0 ? QString() : QString::fromLatin1(ptsname(m_descriptor));
    }

    hx::Clock& clock() override { return *this; }
    hx::Microseconds now() override { return m_link.clock().now(); }
    void sleepUntil(hx::Microseconds until) override
    {
        carryOut();
        m_link.clock().sleepUntil(until);
    }
    void forInput(int, hx::Microseconds deadline) override
    {
        const QByteArray bytes = isOpen() ? m_link.receive(deadline).bytes : QByteArray();
        if (!bytes.isEmpty() && write(m_descriptor, bytes.constData(), size_t(bytes.size())) < 0)
            close();
        closeWithLink();
    }
    void forRoom(int, hx::Microseconds deadline) override { sleepUntil(deadline); }

private:
    bool isOpen() const { return m_descriptor >= 0; }

    void carryOut()
    {
        QByteArray bytes;
        char piece[4096];
        ssize_t count = 0;
        while (isOpen() && (count = read(m_descriptor, piece, sizeof piece)) > 0)
            bytes.append(piece, static_cast<int>(count));
        if (bytes.isEmpty())
            return;
        m_link.send(bytes);
        closeWithLink();
    }

    void closeWithLink()
    {
        if (m_link.isGone())
            close();
    }

    void close()
    {
        if (isOpen())
            ::close(std::exchange(m_descriptor, -1));
    }

    FaultyLink& m_link;
    int m_descriptor;
};

} // namespace

std::unique_ptr<hx::MidiPort> deviceOver(FaultyLink& link)
{
    auto end = std::make_unique<LinkEnd>(link);
    const QString path = end->path();
    auto port = hx::DevicePort::open({path, QString()}, hx::Pace{0, 0}, std::move(end));
    return port ? std::move(*port) : nullptr;
}

} // namespace sweep

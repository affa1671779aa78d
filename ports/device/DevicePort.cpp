#include "ports/device/DevicePort.h"

#include "host/base/FileName.h"
#include "ports/PortIdentities.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cerrno>

#include <unistd.h>

namespace hx {

namespace {

const QString devicePrefix = QStringLiteral("device:");

constexpr qint64 pieceSize = 32; // of what is written ahead of the wire
constexpr int readSize = 4096;
constexpr Microseconds stallTime = 2 * microsecondsPerSecond;
constexpr Microseconds shortestLook = microsecondsPerMillisecond;

// The sound card of a raw MIDI device, told from its name; -1: it is another device.
int cardOf(const QString& path)
{
    static const QRegularExpression rawMidi(QStringLiteral("^midiC(\\d+)D\\d+$"));
    const QString target = QFileInfo(path).canonicalFilePath();
    const QRegularExpressionMatch match = rawMidi.match(QFileInfo(target).fileName());
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

bool isRemoval(int error)
{
    return error == EIO || error == ENODEV || error == ENXIO || error == 0;
}

} // namespace

QString deviceName(const QString& path)
{
    return devicePrefix + path;
}

QString devicePath(const QString& name)
{
    return name.startsWith(devicePrefix) ? name.mid(devicePrefix.size()) : QString();
}

Result<std::unique_ptr<MidiPort>> DevicePort::open(const DeviceAddress& address, const Pace& pace,
                                                   std::unique_ptr<DeviceWait> wait)
{
    std::unique_ptr<DevicePort> port(new DevicePort(address, pace, std::move(wait)));
    const Result<> opened = port->openFiles();
    if (!opened)
        return opened.problem();
    return std::unique_ptr<MidiPort>(std::move(port));
}

DevicePort::DevicePort(const DeviceAddress& address, const Pace& pace,
                       std::unique_ptr<DeviceWait> wait)
    : m_address(address), m_pace(pace), m_wait(std::move(wait))
{
}

Result<> DevicePort::openFiles()
{
    const bool isOneDevice = m_address.input.isEmpty() || m_address.input == m_address.output;
    if (!m_address.output.isEmpty()) {
        auto out =
            DeviceFile::open(m_address.output, isOneDevice ? DeviceUse::Both : DeviceUse::Output);
        if (!out)
            return out.problem();
        m_out = std::move(*out);
    }
    if (isOneDevice)
        return {};
    auto in = DeviceFile::open(m_address.input, DeviceUse::Input);
    if (!in)
        return in.problem();
    m_in = std::move(*in);
    return {};
}

const QString& DevicePort::inputPath() const
{
    return m_in ? m_address.input : m_address.output;
}

QString DevicePort::name() const
{
    return deviceName(m_out ? m_address.output : m_address.input);
}

PortIdentity DevicePort::identity() const
{
    return identityOfDevice(m_out ? m_address.output : m_address.input);
}

PortIdentity identityOfDevice(const QString& path, const QString& system)
{
    const int card = cardOf(path);
    const UsbDevice usb = card < 0 ? UsbDevice() : usbDeviceOfCard(card, system);
    return {QStringLiteral("device"), usb.socket, path, usb.serialNumber};
}

bool DevicePort::isUsable()
{
    errorText = m_loss;
    return !m_isGone;
}

qint64 DevicePort::send(const QByteArray& message)
{
    if (!isUsable())
        return 0;
    if (m_hasSent)
        clock().sleepUntil(m_wireFree + m_pace.gap);
    const qint64 taken = writeAtPace(message);
    m_hasSent = true;
    m_wireFree = clock().now();
    if (taken < message.size() || drain(m_wireFree + stallTime))
        return taken;
    return m_isGone ? 0 : taken - m_out->bytesWaiting();
}

qint64 DevicePort::writeAtPace(const QByteArray& message)
{
    const Microseconds start = clock().now();
    const bool isPaced = m_pace.bytesPerSecond > 0;
    qint64 taken = 0;
    while (taken < message.size()) {
        const qint64 left = message.size() - taken;
        const qint64 wrote =
            writeSome(message.constData() + taken, isPaced ? std::min(left, pieceSize) : left);
        if (wrote == 0) {
            if (!m_isGone)
                errorText = QStringLiteral("the device %1 took %2 of %3 bytes and no more for %4 "
                                           "seconds")
                                .arg(m_address.output)
                                .arg(taken)
                                .arg(message.size())
                                .arg(stallTime / microsecondsPerSecond);
            break;
        }
        taken += wrote;
        clock().sleepUntil(start + m_pace.wireTime(taken));
    }
    return taken;
}

// 0: it takes nothing, for too long or for good.
qint64 DevicePort::writeSome(const char* bytes, qint64 size)
{
    const Microseconds deadline = clock().now() + stallTime;
    for (;;) {
        const ssize_t wrote = write(m_out->descriptor(), bytes, size_t(size));
        if (wrote > 0)
            return wrote;
        if (wrote < 0 && errno != EAGAIN && errno != EINTR) {
            noteLoss(m_address.output, errno);
            return 0;
        }
        if (clock().now() >= deadline)
            return 0;
        m_wait->forRoom(m_out->descriptor(), deadline);
    }
}

bool DevicePort::drain(Microseconds deadline)
{
    if (!isUsable())
        return false;
    for (;;) {
        const qint64 waiting = m_out ? m_out->bytesWaiting() : 0;
        if (waiting == 0)
            return true;
        if (m_out->isHungUp()) {
            noteLoss(m_address.output, 0);
            return false;
        }
        const Microseconds now = clock().now();
        if (now >= deadline)
            break;
        clock().sleepUntil(
            std::min(deadline, now + std::max(shortestLook, m_pace.wireTime(waiting))));
    }
    errorText = QStringLiteral("%1 bytes have not left the device %2 in time")
                    .arg(m_out->bytesWaiting())
                    .arg(m_address.output);
    return false;
}

MidiChunk DevicePort::receive(Microseconds deadline)
{
    bool hasWaited = false;
    while (isUsable()) {
        QByteArray bytes(readSize, Qt::Uninitialized);
        const ssize_t count = read(input().descriptor(), bytes.data(), size_t(bytes.size()));
        if (count > 0) {
            bytes.truncate(int(count));
            return {bytes, clock().now()};
        }
        if (count == 0)
            noteEnd();
        else if (errno != EAGAIN && errno != EINTR)
            noteLoss(inputPath(), errno);
        if (m_isGone || (hasWaited && clock().now() >= deadline))
            break;
        m_wait->forInput(input().descriptor(), deadline);
        hasWaited = true;
    }
    return {};
}

// A FIFO that nobody has opened for writing yet reads as one at its end.
void DevicePort::noteEnd()
{
    if (!input().isFifo() || input().isHungUp())
        noteLoss(inputPath(), 0);
}

void DevicePort::noteLoss(const QString& path, int error)
{
    m_isGone = true;
    if (isRemoval(error))
        m_loss = QStringLiteral("the device %1 was removed, or its other end was closed").arg(path);
    else if (error == EPIPE)
        m_loss = QStringLiteral("nobody reads from the device %1 any more").arg(path);
    else
        m_loss = QStringLiteral("the device %1 does not work any more: %2")
                     .arg(path, qt_error_string(error));
    errorText = m_loss;
}

} // namespace hx

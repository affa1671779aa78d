/** @file
 * A character device, a pseudo terminal or a FIFO, open for this program alone.
 */
#pragma once

#include "host/base/Result.h"

#include <QString>

#include <memory>

namespace hx {

enum class DeviceUse { Both, Input, Output };

class DeviceFile {
public:
    /**
     * Opens without waiting. A terminal is set to pass bytes unchanged until it is closed. Fails,
     * with what to do about it, when there is no such device, it may not be opened or another
     * program has it. `path` is a name of host/base/FileName.h.
     */
    static Result<std::unique_ptr<DeviceFile>> open(const QString& path, DeviceUse use);

    /** Gives the device back as it was. */
    ~DeviceFile();
    DeviceFile(const DeviceFile&) = delete;
    DeviceFile& operator=(const DeviceFile&) = delete;

    int descriptor() const { return m_descriptor; }
    bool isFifo() const;

    /** Bytes that were written and have not left yet, as far as the kernel tells. */
    qint64 bytesWaiting() const;

    /** Whether the other end, or the device itself, is gone for good. */
    bool isHungUp() const;

private:
    struct Terminal;

    explicit DeviceFile(int descriptor);

    int m_descriptor;
    qint64 m_capacity;                    /**< of the kernel's buffer, where it tells its room */
    std::unique_ptr<Terminal> m_terminal; /**< as it was; of a terminal alone */
};

} // namespace hx

/** @file
 * The course of one code update, as the product follows it: what may come next, and what each
 * message is answered with.
 */
#pragma once

#include "simulator/ProductMemory.h"

namespace hx::sim {

class UpdateSession {
public:
    /** `memorySize`: code bytes that the product has room for. */
    explicit UpdateSession(int memorySize) : m_memorySize(memorySize) {}

    /** Whether a message, already known to be for this product, belongs to an update image. */
    static bool isUpdateMessage(const QByteArray& message);

    /** Acts on one update message and returns its acknowledgement. */
    QByteArray take(const QByteArray& message, ProductMemory& memory);

    /** Whether data has been taken and the closing message has not. */
    bool isRunning() const { return m_stage == Stage::Data || m_stage == Stage::Checked; }

    /** Ends the update, as a loss of power does. */
    void forget();

private:
    enum class Stage { None, Data, Checked, Closed };
    enum class Status : char { Good = 0, Bad = 1, Failed = 2 };

    Status judge(const QByteArray& message, ProductMemory& memory);
    Status takeData(const QByteArray& message, ProductMemory& memory);
    Status takeFileCheck(const QByteArray& message, const ProductMemory& memory);
    Status takeClosing(ProductMemory& memory);
    bool follows(int number, quint64 address, quint8 kind, const ProductMemory& memory) const;

    int m_memorySize;
    Stage m_stage = Stage::None;
    quint8 m_kind = kindFwu;
    int m_nextNumber = 0;
    bool m_tookShortData = false;
    /**
     * From its kind on. That it comes again is no reason to write again, but for the first message:
     * another run of the update may begin with it, over memory that has failed since.
     */
    QByteArray m_lastTaken;
    VersionDigits m_version = {};
    quint32 m_crc = 0;
};

} // namespace hx::sim

/** @file
 * The product, simulated: a boot loader that takes MIDI bytes and answers as the real one does.
 * What it answers to which message is listed in docs/formats/simulated-product.md.
 */
#pragma once

#include "simulator/StateFile.h"
#include "simulator/SysExReader.h"
#include "simulator/UpdateSession.h"

#include <QString>

#include <optional>

namespace hx::sim {

/** Which product it is. Bytes that go into messages lose their top bit. */
struct ProductIdentity {
    std::array<quint8, 3> manufacturer = {};
    quint8 family = 0;
    quint8 model = 0;
    QString name; /**< as people know it */
};

/** What differs from one unit to the next. Bytes that go into messages lose their top bit. */
struct SimulatedProductSettings {
    /** of the factory's code; what is no digit is 0 */
    VersionDigits version = {{'1', '0', '2', '3'}};

    /** Without one: family and model in hex digits, then 0001. */
    SerialNumber serialNumber;
    quint8 deviceId = 0x00;     /**< own MIDI device id; 7F, "all devices", is always heard */
    int memorySize = 0x100000;  /**< room for code in bytes, 0 to FFFFF0 */
    qint64 replyDelayUs = 1000; /**< from the last byte of a message to its reply */
};

/** One message that the product sends, `delayUs` microseconds after the bytes that caused it. */
struct SimulatedReply {
    QByteArray bytes;
    qint64 delayUs = 0;
};

enum class ProductMode { User, Boot, Dfu };

/** A value: a copy is a second product in the same state. */
class SimulatedProduct {
public:
    /**
     * What the identity reply carries while there is no valid code: the boot loader's own 0.1.0.0.
     */
    static constexpr VersionDigits bootVersion = {{'0', '1', '0', '0'}};

    /**
     * Where "rawgender.read" finds the 16-byte identity block: serial number in bytes 0 to 7,
     * family in byte 8, model in byte 9, FF in the rest.
     */
    static constexpr quint32 identityAddress = 0xFFFFF0;

    /** A fresh product, switched on, with the factory's code. */
    explicit SimulatedProduct(const ProductIdentity& identity,
                              const SimulatedProductSettings& settings = {});

    /**
     * Takes bytes off the wire, cut anywhere, and returns the replies to the messages that are
     * complete with them, in order.
     */
    QVector<SimulatedReply> receive(const QByteArray& bytes);

    /**
     * Switches off and on: the memory stays, a running update and an unfinished message are lost.
     */
    void powerCycle();

    /**
     * Lets power fail once, after this many single memory writes from now; then the product starts
     * again by itself, and the message that was being handled is not answered. What is unsteady
     * stays so until it is erased; a saved state holds what it read as last.
     */
    void failPowerAfter(qint64 writes, CutWrite cut = CutWrite::Nothing)
    {
        m_memory.failPowerAfter(writes, cut);
    }

    /** Inverts a bit of the code that is held, as a failing memory cell does. */
    void damageCode(int position) { m_memory.damage(position); }

    /** Puts code into the memory past the boot loader, as one does on the bench. */
    void setCode(const StoredCode& code) { m_memory.setCode(code); }

    /** Makes it a product of another model of the family from now on. */
    void setModel(quint8 model) { m_identity.model = model; }

    /** Whether a whole message belongs to an update image for this product. */
    bool isUpdateMessage(const QByteArray& message) const;

    const ProductIdentity& identity() const { return m_identity; }
    const SimulatedProductSettings& settings() const { return m_settings; }
    const QByteArray& codeBytes() const { return m_memory.code().bytes; }
    bool isCodeValid() const { return m_memory.code().valid; }
    const StoredCode& code() const { return m_memory.code(); }
    bool isUpdating() const { return m_update.isRunning(); }
    ProductMode mode() const { return m_mode; }
    qint64 memoryWrites() const { return m_memory.writes(); }

    /**
     * The memory as text, and back (docs/formats/simulated-product.md). `restore` switches off and
     * on; when the text is not a whole state file for this product it returns false, says why in
     * `error`, and leaves the product as it was.
     */
    QByteArray save() const;
    bool restore(const QByteArray& state, QString* error);

    /**
     * The address from which on the code may differ from what it was at the last call; none when
     * the memory was not written to since then.
     */
    std::optional<int> takeChange() { return m_memory.takeChange(); }

    /**
     * The line that, behind a text of `save` and earlier such lines, says what was written since:
     * code from `address` on, and the marks.
     */
    QByteArray saveChange(int address) const;

private:
    struct Command;

    QByteArray answer(const QByteArray& message);
    QByteArray answerUpdate(const QByteArray& message);
    QByteArray answerCommand(const QByteArray& message);
    QByteArray head() const;
    QByteArray manufacturer() const;
    QByteArray serialNumber() const;
    QByteArray reply(const QByteArray& body) const;
    QByteArray refusal(quint8 command) const;
    QByteArray restart(ProductMode mode);

    QByteArray answerReset(const QByteArray& body);
    QByteArray answerSetUser(const QByteArray& body);
    QByteArray answerSetDfu(const QByteArray& body);
    QByteArray answerSetBoot(const QByteArray& body);
    QByteArray answerGender(const QByteArray& body);
    QByteArray answerCodeImage(const QByteArray& body);
    QByteArray answerStoredCrc(const QByteArray& body);
    QByteArray answerCalculatedCrc(const QByteArray& body);
    QByteArray answerSerialNumber(const QByteArray& body);
    QByteArray answerVersion(const QByteArray& body);
    QByteArray answerRawRead(const QByteArray& body);
    QByteArray identityReply() const;
    quint8 byteAt(quint32 address) const;

    ProductIdentity m_identity;
    SimulatedProductSettings m_settings;
    ProductMemory m_memory;
    UpdateSession m_update = UpdateSession(0);
    SysExReader m_reader;
    ProductMode m_mode = ProductMode::User;
};

} // namespace hx::sim

/** @file
 * Sends the messages of an update image, one after the other, each until it is acknowledged.
 */
#pragma once

#include "host/bus/PortBus.h"
#include "host/update/AcknowledgementReader.h"
#include "host/update/UpdatePlan.h"

#include <atomic>
#include <functional>

namespace hx {

struct UpdateProgress {
    qint64 bytes = 0; /**< acknowledged as good */
    qint64 totalBytes = 0;
    int message = 0; /**< acknowledged as good; the first is 1 */
    int totalMessages = 0;
    int retries = 0;                  /**< so far, over all messages */
    double bytesPerSecond = 0;        /**< over the whole run; 0 before the first acknowledgement */
    qint64 remainingMicroseconds = 0; /**< at this rate; 0 when it is not known */
};

struct UpdateResult;

struct UpdateOptions {
    int maxRetries = 3; /**< of one message, when its acknowledgement is bad or does not come */
    const std::atomic<bool>* interrupted = nullptr; /**< stops after the message in flight */
    std::function<void(const UpdateProgress&)> progress;
    /**
     * Asked once the product has told who it is, its serial number included, and before anything of
     * the image is sent; false ends the run. Without it the serial number is not read.
     */
    std::function<bool(const UpdateResult&)> confirm;
};

/** What became of a message of the image, and so of the sending once no attempt is left. */
enum class SendEnd {
    Good,
    Bad,      /**< answered as damaged */
    Failed,   /**< the product said that the update is over */
    NoAnswer, /**< within the plugin's timeout */
    PortLost,
    NotTaken,     /**< the port is there, but did not take the message */
    OtherProduct, /**< the port was away and came back with another product, which got nothing */
    Interrupted,  /**< before it was sent */
};

struct SendReport {
    SendEnd end = SendEnd::Good; /**< Good: all messages were */
    UpdateProgress progress;
    bool touched = false; /**< a message was sent, whole or in part */
    int message = 0;      /**< number of the message it ended at, from 1; 0 when all were good */
    int attempts = 0;     /**< how often that message was sent */
    HxMidiData lastReply; /**< the last acknowledgement; empty when the last message had none */
    QString reason;       /**< empty when all were good */
};

class UpdateSender {
public:
    UpdateSender(PortBus& bus, const UpdatePlan& plan, const UpdateImage& image,
                 const UpdateOptions& options);
    UpdateSender(const UpdateSender&) = delete;
    UpdateSender& operator=(const UpdateSender&) = delete;

    SendReport sendAll();

private:
    bool sendOne(int index);
    SendEnd attempt(const HxMidiData& message, bool lateAnswerPossible);
    SendEnd verdictOf(const HxMidiData& acknowledgement);
    static SendEnd verdictOf(ExchangeEnd end);
    Microseconds settleTime() const;
    SendEnd settle(SendEnd verdict);
    void decide(int index, int attempt, SendEnd verdict);
    QString textOf(int index, SendEnd verdict) const;
    void end(SendEnd verdict, int index, int attempts, const QString& reason);
    bool interrupted() const;
    void advance(int index);
    void estimate();

    PortBus& m_bus;
    const UpdateImage& m_image;
    const UpdateOptions& m_options;
    AcknowledgementReader m_acknowledgements;
    ReplyTest m_isAcknowledgement;
    unsigned m_timeoutMs;
    Microseconds m_start = 0;
    SendReport m_report;
};

} // namespace hx

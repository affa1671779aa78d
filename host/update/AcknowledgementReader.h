/** @file
 * What the product's answer to an update message says.
 */
#pragma once

#include "deviceinterface/FwUpdateProtocol.h"
#include "host/bus/PortBus.h"

namespace hx {

enum class Acknowledgement {
    None, /**< the message is not one */
    Good,
    Bad, /**< damaged on the way, or its status is none of the three: it came damaged itself */
    Failed,
};

/**
 * Reads acknowledgements by the patterns of an update's protocol. Nearly all of an update's are the
 * same bytes: those that are the same as the last are not matched again.
 */
class AcknowledgementReader {
public:
    explicit AcknowledgementReader(const FwUpdateProtocol& protocol);

    Acknowledgement read(const HxMidiData& message);

private:
    Acknowledgement match(const HxMidiData& message) const;

    ReplyTest m_isAny;
    ReplyTest m_isGood;
    ReplyTest m_isBad;
    ReplyTest m_isFailed;
    QByteArray m_last;
    Acknowledgement m_lastRead = Acknowledgement::None; /**< of `m_last`, unless that is empty */
};

} // namespace hx

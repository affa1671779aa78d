#include "host/update/AcknowledgementReader.h"

namespace hx {

AcknowledgementReader::AcknowledgementReader(const FwUpdateProtocol& protocol)
    : m_isAny(replyTest(protocol.responseAny)), m_isGood(replyTest(protocol.responseGood)),
      m_isBad(replyTest(protocol.responseBad)), m_isFailed(replyTest(protocol.responseFailed))
{
}

Acknowledgement AcknowledgementReader::read(const HxMidiData& message)
{
    if (message.bytes.isEmpty() || message.bytes != m_last) {
        m_lastRead = match(message);
        m_last = message.bytes;
    }
    return m_lastRead;
}

Acknowledgement AcknowledgementReader::match(const HxMidiData& message) const
{
    if (!m_isAny(message))
        return Acknowledgement::None;
    if (m_isFailed(message))
        return Acknowledgement::Failed;
    return m_isGood(message) && !m_isBad(message) ? Acknowledgement::Good : Acknowledgement::Bad;
}

} // namespace hx

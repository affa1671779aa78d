#include "host/update/UpdateSender.h"

#include "host/base/HexText.h"
#include "qt/Saturated.h"

namespace hx {

namespace {

// After a silence a message is answered twice when only its first answer was late. For this part
// of the timeout the second one is waited for, so that it is not taken for the next message's.
constexpr unsigned settlePart = 4;

} // namespace

UpdateSender::UpdateSender(PortBus& bus, const UpdatePlan& plan, const UpdateImage& image,
                           const UpdateOptions& options)
    : m_bus(bus), m_image(image), m_options(options), m_acknowledgements(plan.protocol),
      m_isAcknowledgement([this](const HxMidiData& message) {
          return m_acknowledgements.read(message) != Acknowledgement::None;
      }),
      m_timeoutMs(static_cast<unsigned>(plan.protocol.timeoutMs))
{
    m_report.progress.totalBytes = image.bytes;
    m_report.progress.totalMessages = saturated(image.messages.size());
}

SendReport UpdateSender::sendAll()
{
    m_start = m_bus.port().clock().now();
    for (int index = 0; index < m_image.messages.size(); ++index) {
        if (!sendOne(index))
            break;
        advance(index);
    }
    estimate();
    return m_report;
}

// False when the update ends here; the report then says why.
bool UpdateSender::sendOne(int index)
{
    SendEnd verdict = SendEnd::NoAnswer;
    bool wasSilent = false;
    for (int number = 0; number <= m_options.maxRetries; ++number) {
        if (number > 0)
            m_bus.rest();
        if (interrupted())
            verdict = SendEnd::Interrupted;
        else
            verdict = attempt(m_image.messages.at(index), wasSilent);
        decide(index, number, verdict);
        if (verdict != SendEnd::NoAnswer && verdict != SendEnd::Bad)
            break;
        wasSilent = wasSilent || verdict == SendEnd::NoAnswer;
        m_report.progress.retries += number < m_options.maxRetries ? 1 : 0;
    }
    return verdict == SendEnd::Good;
}

SendEnd UpdateSender::attempt(const HxMidiData& message, bool lateAnswerPossible)
{
    // An interrupt lets the message in flight be answered.
    const InterruptWatch none(m_bus, nullptr);
    m_report.lastReply = m_bus.exchange(message, m_isAcknowledgement,
                                        QStringLiteral("an acknowledgement"), m_timeoutMs);
    const ExchangeEnd end = m_bus.lastEnd();
    m_report.touched = true;
    if (end != ExchangeEnd::Answered)
        return verdictOf(end);
    const SendEnd verdict = verdictOf(m_report.lastReply);
    return lateAnswerPossible ? settle(verdict) : verdict;
}

// Without an answer.
SendEnd UpdateSender::verdictOf(ExchangeEnd end)
{
    switch (end) {
    case ExchangeEnd::TimedOut:
        return SendEnd::NoAnswer;
    case ExchangeEnd::SendFailed:
        return SendEnd::NotTaken;
    case ExchangeEnd::OtherProduct:
        return SendEnd::OtherProduct;
    default:
        return SendEnd::PortLost;
    }
}

SendEnd UpdateSender::verdictOf(const HxMidiData& acknowledgement)
{
    switch (m_acknowledgements.read(acknowledgement)) {
    case Acknowledgement::Good:
        return SendEnd::Good;
    case Acknowledgement::Failed:
        return SendEnd::Failed;
    case Acknowledgement::Bad:
    case Acknowledgement::None:
        break;
    }
    return SendEnd::Bad; // the message goes again
}

Microseconds UpdateSender::settleTime() const
{
    return Microseconds(m_timeoutMs) / settlePart * m_bus.patience().factor *
           microsecondsPerMillisecond;
}

SendEnd UpdateSender::settle(SendEnd verdict)
{
    for (const AssembledEvent& event : m_bus.listen(settleTime())) {
        const HxMidiData message(event.message());
        if (event.kind != AssembledEvent::Kind::SysEx || !m_isAcknowledgement(message))
            continue;
        m_report.lastReply = message;
        if (verdict != SendEnd::Failed)
            verdict = verdictOf(message);
    }
    return verdict;
}

// Says what became of an attempt, and ends the run when nothing is left to try.
void UpdateSender::decide(int index, int attempt, SendEnd verdict)
{
    if (verdict == SendEnd::Good && !m_bus.isObserved())
        return;
    const bool mayRetry = verdict == SendEnd::Bad || verdict == SendEnd::NoAnswer;
    QString text = textOf(index, verdict);
    if (mayRetry && attempt < m_options.maxRetries) {
        text += QStringLiteral("; it is sent again, retry %1 of %2")
                    .arg(attempt + 1)
                    .arg(m_options.maxRetries);
    } else {
        if (attempt > 0 && verdict != SendEnd::Interrupted)
            text += QStringLiteral(" (sent %1 times)").arg(attempt + 1);
        if (verdict != SendEnd::Good)
            end(verdict, index, verdict == SendEnd::Interrupted ? attempt : attempt + 1, text);
    }
    const bool accepted = verdict == SendEnd::Good && attempt == 0;
    m_bus.note(accepted ? BusEventKind::Accepted : BusEventKind::Decided, text);
}

QString UpdateSender::textOf(int index, SendEnd verdict) const
{
    const QString message =
        QStringLiteral("message %1 of %2").arg(index + 1).arg(m_image.messages.size());
    const QString reply = hexText(m_report.lastReply.bytes);
    switch (verdict) {
    case SendEnd::Good:
        return message + QStringLiteral(" good");
    case SendEnd::Bad:
        return message + QStringLiteral(" was answered as damaged: ") + reply;
    case SendEnd::Failed:
        return message + QStringLiteral(" was refused for good: ") + reply;
    case SendEnd::NoAnswer:
        return message + QStringLiteral(" was not answered: ") + m_bus.errorText;
    case SendEnd::PortLost:
    case SendEnd::NotTaken:
    case SendEnd::OtherProduct:
        return message + QStringLiteral(": ") + m_bus.errorText;
    case SendEnd::Interrupted:
        break;
    }
    return QStringLiteral("interrupted before ") + message;
}

void UpdateSender::end(SendEnd verdict, int index, int attempts, const QString& reason)
{
    m_report.end = verdict;
    m_report.message = index + 1;
    m_report.attempts = attempts;
    m_report.reason = reason;
}

bool UpdateSender::interrupted() const
{
    return m_options.interrupted != nullptr && m_options.interrupted->load();
}

void UpdateSender::advance(int index)
{
    UpdateProgress& progress = m_report.progress;
    progress.message = index + 1;
    progress.bytes += m_image.messages.at(index).bytes.size();
    if (!m_options.progress)
        return;
    estimate();
    m_options.progress(progress);
}

void UpdateSender::estimate()
{
    UpdateProgress& progress = m_report.progress;
    const Microseconds elapsed = m_bus.port().clock().now() - m_start;
    if (elapsed <= 0 || progress.bytes == 0)
        return;
    progress.bytesPerSecond =
        static_cast<double>(progress.bytes) * 1e6 / static_cast<double>(elapsed);
    progress.remainingMicroseconds =
        elapsed * (progress.totalBytes - progress.bytes) / progress.bytes;
}

} // namespace hx

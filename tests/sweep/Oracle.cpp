#include "tests/sweep/Oracle.h"

#include <algorithm>
#include <limits>

namespace sweep {

namespace {

using hx::ProductCondition;
using hx::UpdateOutcome;

constexpr int attemptsOfMessage = 4; // once, and three retries
constexpr int attemptsOfIdentityBefore = 3;
constexpr int statusAt = 8;

enum class Status { Good, Bad, Failed, Silent };

Status statusOf(const QByteArray& acknowledgement)
{
    const char status = acknowledgement.at(statusAt);
    if (status == '\2')
        return Status::Failed;
    return status == '\0' ? Status::Good : Status::Bad;
}

// Follows the conversation command by command.
class Walk {
public:
    Walk(const Conversation& conversation, const hx::UpdateImage& image)
        : m_exchanges(conversation.exchanges), m_lostAt(conversation.lostAt),
          m_answersMayComeEarly(conversation.answersMayComeEarly), m_image(image)
    {
    }

    ExpectedEnd result()
    {
        if (identified()) {
            while (isNext(versionRequest))
                ++m_next;
            if (tookAllMessages())
                judgeReports();
        }
        if (m_lostAt && *m_lostAt < m_decidedAt)
            m_end.outcome = UpdateOutcome::PortLost;
        m_end.last = lastAnswers();
        m_end.condition = m_lostAt ? ProductCondition::PortLost : toldBy(m_end.last);
        return m_end;
    }

private:
    bool isNext(const QByteArray& command) const
    {
        return m_next < m_exchanges.size() && m_exchanges[m_next].command == command;
    }

    void wrong(const QString& text)
    {
        if (m_end.wrongCourse.isEmpty() && !m_lostAt)
            m_end.wrongCourse = text;
    }

    // Another product is believed when it answers the same twice.
    bool identified()
    {
        QByteArray answer;
        std::size_t asked = 0;
        bool isSure = false;
        while (m_next < m_exchanges.size() && isIdentityRequest(m_exchanges[m_next].command) &&
               !isIdentityOfProduct(answer)) {
            const QByteArray next = m_exchanges[m_next++].answer();
            isSure = !next.isEmpty() && next == answer;
            answer = next.isEmpty() ? answer : next;
            ++asked;
        }
        if (isIdentityOfProduct(answer))
            return true;
        m_end.outcome = isOther(answer) ? UpdateOutcome::WrongProduct : UpdateOutcome::NoAnswer;
        if (m_next < m_exchanges.size())
            wrong(QStringLiteral("it went on without an identity of the product"));
        if (!isSure && asked < attemptsOfIdentityBefore)
            wrong(QStringLiteral("it gave up the identity too early"));
        return false;
    }

    static ProductCondition toldBy(const LastAnswers& last)
    {
        const QByteArray none("\x7F\x7F\x7F\x7F");
        const QByteArray stored = valueIn(last.stored);
        const QByteArray calculated = valueIn(last.calculated);
        if (last.identity.isEmpty())
            return ProductCondition::NoAnswer;
        if (!isIdentityOfProduct(last.identity))
            return isOther(last.identity) ? ProductCondition::OtherProduct
                                          : ProductCondition::Unclear;
        const bool isVersionTold = !valueIn(last.version).isEmpty();
        const bool isVersionRefused = !isVersionTold && !last.version.isEmpty();
        if (stored.isEmpty() || calculated.isEmpty() || (!isVersionTold && !isVersionRefused))
            return ProductCondition::Unclear;
        if (stored == none && (isVersionRefused || calculated != none))
            return ProductCondition::NoValidCode;
        if (isVersionRefused)
            return ProductCondition::Unclear;
        return stored == calculated ? ProductCondition::CodeIntact : ProductCondition::CodeDamaged;
    }

    // A whole identity of another product; one with a maker of one byte has two bytes fewer.
    static bool isOther(const QByteArray& answer)
    {
        const bool isWhole = !answer.isEmpty() && (answer.at(5) == '\0') == (answer.size() == 17);
        return isWhole && !isIdentityOfProduct(answer);
    }

    bool tookAllMessages()
    {
        for (int index = 0; index < m_image.messages.size(); ++index) {
            const Status status = statusOfMessage(m_image.messages.at(index).bytes);
            if (status == Status::Good)
                continue;
            m_end.failedMessage = index + 1;
            m_end.outcome =
                status == Status::Silent ? UpdateOutcome::NoAnswer : UpdateOutcome::Failed;
            if (status == Status::Silent && !m_isCutShort)
                m_decidedAt = m_exchanges[m_next - 1].deadline();
            else if (!m_isCutShort)
                m_decidedAt = 0;
            return false;
        }
        return true;
    }

    // How the last attempt to send this message ended.
    Status statusOfMessage(const QByteArray& message)
    {
        bool wasSilent = false;
        Status status = Status::Silent;
        for (int attempt = 0; attempt < attemptsOfMessage; ++attempt) {
            if (!isNext(message)) {
                wrong(QStringLiteral("it stopped sending a message that was not acknowledged"));
                m_isCutShort = true;
                return status;
            }
            status = statusOfAttempt(m_exchanges[m_next++], wasSilent);
            if (status == Status::Good || status == Status::Failed)
                return status;
            wasSilent = wasSilent || status == Status::Silent;
        }
        return status;
    }

    // After a silence two acknowledgements may be under way; the last one counts. Otherwise one
    // that came before the message was sent is not its own.
    Status statusOfAttempt(const Exchange& exchange, bool wasSilent) const
    {
        Status status = Status::Silent;
        hx::Microseconds until = exchange.deadline();
        for (const HeardMessage& message : exchange.heard) {
            const bool isStale =
                !wasSilent && !m_answersMayComeEarly && message.time <= exchange.sent;
            if (isStale || message.time > until || !isAcknowledgement(message.bytes))
                continue;
            const bool isFirst = status == Status::Silent;
            if (!isFirst && (!wasSilent || status == Status::Failed))
                break;
            status = statusOf(message.bytes);
            if (isFirst)
                until = message.time + exchange.settling();
        }
        return status;
    }

    void judgeReports()
    {
        const LastAnswers last = lastAnswers();
        const QByteArray checksum = m_image.expectedChecksum();
        const QByteArray version = QString(m_image.version).remove(QLatin1Char('.')).toLatin1();
        const bool agrees = valueIn(last.version) == version && valueIn(last.stored) == checksum &&
                            valueIn(last.calculated) == checksum;
        m_end.outcome = UpdateOutcome::VerificationFailed;
        if (isIdentityOfProduct(last.identity) && agrees)
            m_end.outcome = UpdateOutcome::Succeeded;
        else if (isOther(last.identity))
            m_end.outcome = UpdateOutcome::WrongProduct;
    }

    LastAnswers lastAnswers() const
    {
        LastAnswers last;
        for (std::size_t i = m_next; i < m_exchanges.size(); ++i) {
            const Exchange& exchange = m_exchanges[i];
            const QByteArray answer = exchange.answer();
            if (isIdentityRequest(exchange.command) && !answer.isEmpty())
                last.identity = answer;
            else if (exchange.command == versionRequest)
                last.version = answer;
            else if (exchange.command == storedRequest)
                last.stored = answer;
            else if (exchange.command == calculatedRequest)
                last.calculated = answer;
        }
        return last;
    }

    const std::vector<Exchange>& m_exchanges;
    std::optional<hx::Microseconds> m_lostAt;
    bool m_isCutShort = false; // it stopped while a message could still be sent again
    hx::Microseconds m_decidedAt = std::numeric_limits<hx::Microseconds>::max();
    bool m_answersMayComeEarly;
    const hx::UpdateImage& m_image;
    std::size_t m_next = 0;
    ExpectedEnd m_end;
};

} // namespace

ExpectedEnd expectedEnd(const Conversation& conversation, const hx::UpdateImage& image)
{
    return Walk(conversation, image).result();
}

} // namespace sweep

#include "tests/sweep/Examination.h"

#include "simulator/Crc32.h"

#include <algorithm>

namespace sweep {

namespace {

using hx::ProductCondition;
using hx::UpdateOutcome;

// Identity and version before, three times each; after it the identity ten times, and version and
// both checksums twice, three times each. What is asked after a failure is less.
constexpr int mostQuestions = 3 + 3 + 10 + 2 * 3 * 3;
constexpr int mostAttempts = 4;
constexpr int fullDataSize = 112;
constexpr int longestMessage = 146; // of the small update, and of the answers to it
constexpr int longestReply = 17;
constexpr hx::Microseconds longestPauseInMessage = 1000 * 1000; // in usual patience
constexpr hx::Microseconds slackInTimeout = 30 * 1000; // for what the wire and the product take
constexpr hx::Microseconds questionTime = 8 * FaultyLink::byteTime;
constexpr hx::Microseconds longestBeforeSending = 250 * 1000;

// The code of the image under another version or kind: no sum of a message tells two changed bits
// that cancel, nor another kind that all messages name. The host finds the version wrong.
bool isMislabelled(const hx::sim::StoredCode& code, const hx::UpdateImage& image)
{
    return code.valid && code.bytes == image.code && code.crc == image.statedCrc;
}

// Time between the first and the last byte of the longest message that comes in these packets.
hx::Microseconds longestInPackets(const Fault& fault)
{
    const int size = fault.direction == Direction::Out ? longestMessage : longestReply;
    return fault.value * hx::Microseconds((size - 1) / std::max(fault.byte, 1));
}

// A message that once is late, lost in part or in pieces, or has real-time bytes in it, is made
// good by asking or sending again.
bool isOvercome(const Fault& fault, const hx::Patience& patience)
{
    switch (fault.kind) {
    case FaultKind::Packets:
        return longestInPackets(fault) < patience.factor * Exchange::timeout - slackInTimeout &&
               (fault.direction == Direction::Out ||
                fault.value < patience.factor * longestPauseInMessage);
    case FaultKind::Abort:
        return fault.strikes > 0 && fault.strikes < patience.sends;
    case FaultKind::Garble: // who rests does not ask for the last time while it goes on
        return fault.value < (mostAttempts - 1) * patience.rest;
    case FaultKind::Cap:
        return fault.value >= longestMessage || !fault.isLasting();
    case FaultKind::None:
    case FaultKind::Split:
        return true;
    case FaultKind::Insert:
        return fault.value >= 0xF8;
    case FaultKind::Delay:
    case FaultKind::Truncate:
    case FaultKind::Drop:
    case FaultKind::Merge:
    case FaultKind::Reorder:
        return !fault.isLasting();
    default:
        return false;
    }
}

// What comes after the timeout may meet another fault: a data message that is out of its turn by
// then ends the update.
bool mayMeetAnother(const Fault& fault)
{
    return fault.kind == FaultKind::Delay && fault.value > Exchange::timeout;
}

bool mustSucceed(const Scenario& scenario, const hx::Patience& patience)
{
    const bool isAlone = scenario.faults.size() < 2;
    return std::all_of(scenario.faults.begin(), scenario.faults.end(), [&](const Fault& fault) {
        return isOvercome(fault, patience) && (isAlone || !mayMeetAnother(fault));
    });
}

// Only faults that go on, or another one, can lie to the host again when it asks again.
bool mayStrikeAgain(const Scenario& scenario)
{
    return scenario.isLasting() || scenario.faults.size() > 1;
}

// Whether what was answered as last may differ from what is so.
bool mayLie(const Scenario& scenario)
{
    return mayStrikeAgain(scenario) || scenario.has(FaultKind::UnsteadyWrite);
}

Conversation conversationOf(const Scenario& scenario, const WireRecord& record, int patience)
{
    Conversation conversation = readConversation(record, patience);
    conversation.answersMayComeEarly = mayStrikeAgain(scenario);
    return conversation;
}

// Compares what the host says with the record and with the product's memory.
class Examination {
public:
    explicit Examination(const Course& course)
        : m_scenario(course.scenario), m_image(course.image), m_result(course.result),
          m_link(course.link), m_patience(course.patience),
          m_conversation(
              conversationOf(m_scenario, m_link.record(), static_cast<int>(m_patience.factor))),
          m_expected(expectedEnd(m_conversation, m_image))
    {
    }

    QStringList complaints(const hx::sim::StoredCode& before, const hx::sim::StoredCode& now,
                           hx::Microseconds elapsed)
    {
        checkTime(elapsed);
        checkOutcome();
        checkReason();
        checkMemory(before, now);
        checkCondition(now);
        checkStateText(now);
        return m_complaints;
    }

private:
    void demand(bool holds, const QString& complaint)
    {
        if (!holds)
            m_complaints << complaint;
    }

    // What docs/user/update-run.md states: an attempt at a message takes its time on the wire, the
    // timeout, the settling after a silence and a wait for stale input; a question the same but for
    // the settling.
    void checkTime(hx::Microseconds elapsed)
    {
        const hx::Microseconds timeout = m_patience.factor * Exchange::timeout;
        const hx::Microseconds before = longestBeforeSending + m_patience.rest * m_patience.sends;
        hx::Microseconds allowed = mostQuestions * (questionTime + timeout + before);
        for (const HxMidiData& message : m_image.messages)
            allowed += mostAttempts * (message.bytes.size() * FaultyLink::byteTime + timeout +
                                       timeout / 4 + before);
        const auto commands = static_cast<int>(m_conversation.exchanges.size());
        const int mostCommands =
            mostQuestions + mostAttempts * static_cast<int>(m_image.messages.size());
        demand(elapsed <= allowed && commands <= mostCommands,
               QStringLiteral("it took %1 us and %2 commands, allowed are %3 us and %4 commands")
                   .arg(elapsed)
                   .arg(commands)
                   .arg(allowed)
                   .arg(mostCommands));
    }

    void checkOutcome()
    {
        demand(m_expected.wrongCourse.isEmpty(), m_expected.wrongCourse);
        demand(m_result.succeeded() || !mustSucceed(m_scenario, m_patience),
               QStringLiteral("it does not get over a fault that it must get over"));
        demand(
            m_result.outcome == m_expected.outcome,
            QStringLiteral("the outcome is \"%1\"; on the wire it was \"%2\"")
                .arg(updateOutcomeText(m_result.outcome), updateOutcomeText(m_expected.outcome)));
    }

    void checkReason()
    {
        const bool ok = m_result.succeeded();
        demand(m_result.reason.isEmpty() == ok && m_result.advice.isEmpty() == ok,
               QStringLiteral("reason and advice do not go with the outcome"));
        demand(!m_result.productState.isEmpty(), QStringLiteral("nothing is said of the product"));
        demand(ok || m_result.advice.contains(QLatin1String(neededAdvice())),
               QStringLiteral("the advice lacks \"%1\": %2")
                   .arg(QLatin1String(neededAdvice()), m_result.advice));
        if (m_conversation.lostAt.has_value())
            return;
        demand(m_result.failedMessage == m_expected.failedMessage,
               QStringLiteral("it names message %1; the last one on the wire was %2")
                   .arg(m_result.failedMessage)
                   .arg(m_expected.failedMessage));
        if (m_expected.failedMessage > 0)
            demand(m_result.reason.startsWith(QStringLiteral("message %1 of %2 ")
                                                  .arg(m_expected.failedMessage)
                                                  .arg(m_image.messages.size())),
                   QStringLiteral("the reason does not name the message"));
    }

    // What the advice must hold after this end.
    const char* neededAdvice() const
    {
        const bool isBegun = m_result.touched && m_expected.failedMessage > 0;
        switch (m_result.touched ? m_result.productCondition : conditionOf(m_result.outcome)) {
        case ProductCondition::PortLost:
            return "Connect the port again";
        case ProductCondition::NoAnswer:
            return "Check power, cables";
        case ProductCondition::OtherProduct:
            return "Choose the port of the right product";
        case ProductCondition::CodeIntact:
            return isBegun ? "Run the same update again" : "to install it";
        case ProductCondition::NoValidCode:
        case ProductCondition::CodeDamaged:
            return isBegun ? "Run the same update again" : "Run the update again";
        case ProductCondition::Unclear:
            break;
        }
        return isBegun ? "Run the same update again" : "run the update again";
    }

    static ProductCondition conditionOf(UpdateOutcome outcome)
    {
        if (outcome == UpdateOutcome::PortLost)
            return ProductCondition::PortLost;
        return outcome == UpdateOutcome::WrongProduct ? ProductCondition::OtherProduct
                                                      : ProductCondition::NoAnswer;
    }

    void checkMemory(const hx::sim::StoredCode& before, const hx::sim::StoredCode& now)
    {
        // What reaches the product after its last answer is not the host's to know.
        demand(!m_result.succeeded() || holds(now, m_image) ||
                   holds(m_link.codeWhenCalculated(), m_image),
               QStringLiteral("FALSE SUCCESS: the memory does not hold the image"));
        const bool isChangedTwice = m_scenario.faults.size() > 1;
        demand(!now.valid || holds(now, m_image) || isSameCode(before, now) ||
                   isDamaged(before, now) || (isChangedTwice && isMislabelled(now, m_image)),
               QStringLiteral("the product calls code valid that is neither old nor new"));
        demand(m_result.touched || isSameCode(before, now) || isDamaged(before, now),
               QStringLiteral("it says that nothing was sent, but the memory changed"));
    }

    // By a memory cell that failed, which the product cannot prevent.
    bool isDamaged(const hx::sim::StoredCode& before, const hx::sim::StoredCode& now) const
    {
        return m_scenario.has(FaultKind::BadCell) &&
               (now.crc == m_image.statedCrc || now.crc == before.crc);
    }

    void checkCondition(const hx::sim::StoredCode& now)
    {
        const bool intact = now.valid && now.crc == hx::sim::productCrc32(now.bytes);
        bool agrees = true;
        switch (m_result.productCondition) {
        case ProductCondition::CodeIntact:
            agrees = intact;
            break;
        case ProductCondition::NoValidCode:
            agrees = !now.valid;
            break;
        case ProductCondition::CodeDamaged:
            agrees = now.valid && !intact;
            break;
        case ProductCondition::OtherProduct:
            agrees = false;
            break;
        case ProductCondition::NoAnswer:
            agrees = m_expected.last.identity.isEmpty();
            break;
        case ProductCondition::PortLost:
            agrees = m_conversation.lostAt.has_value();
            break;
        case ProductCondition::Unclear:
            agrees = !m_result.touched || !isToldClearly(now);
        }
        const bool isTold = m_result.productCondition == m_expected.condition;
        demand(agrees || (mayLie(m_scenario) && !isToldClearly(now) && isTold),
               QStringLiteral("it calls the product \"%1\"; its memory is %2")
                   .arg(productConditionText(m_result.productCondition),
                        QLatin1String(intact      ? "intact"
                                      : now.valid ? "damaged"
                                                  : "without valid code")));
    }

    // Nothing is called unfinished that the product holds whole and says so. Who only hears other
    // answers each time cannot know it.
    void checkStateText(const hx::sim::StoredCode& now)
    {
        const bool isIntact = m_result.productCondition == ProductCondition::CodeIntact;
        const bool saysUnfinished = m_result.productState.startsWith(
            QLatin1String("The update was begun and not finished"));
        const bool mayKnow = !m_scenario.isLasting() || isToldClearly(now);
        demand(!isIntact || !saysUnfinished || !holds(now, m_image) || !mayKnow,
               QStringLiteral("it calls an update unfinished that the product holds whole"));
    }

    // Whether the last answers that reached the host are what the product has to say.
    bool isToldClearly(const hx::sim::StoredCode& now) const
    {
        const LastAnswers& last = m_expected.last;
        const QByteArray none("\x7F\x7F\x7F\x7F");
        const QByteArray version(reinterpret_cast<const char*>(now.version.data()), 4);
        return isIdentityOfProduct(last.identity) &&
               valueIn(last.version) == (now.valid ? version : QByteArray()) &&
               !last.version.isEmpty() &&
               valueIn(last.stored) == (now.valid ? groupsOf(now.crc) : none) &&
               valueIn(last.calculated) == groupsOf(hx::sim::productCrc32(now.bytes));
    }

    static QByteArray groupsOf(quint32 crc)
    {
        QByteArray groups;
        for (int shift = 21; shift >= 0; shift -= 7)
            groups.append(static_cast<char>(crc >> shift & 0x7F));
        return groups;
    }

    const Scenario& m_scenario;
    const hx::UpdateImage& m_image;
    const hx::UpdateResult& m_result;
    const FaultyLink& m_link;
    const hx::Patience& m_patience;
    Conversation m_conversation;
    ExpectedEnd m_expected;
    QStringList m_complaints;
};

// What the product acknowledged as good and does not hold.
QStringList brokenWords(const std::vector<Acknowledged>& acknowledged, const hx::UpdateImage& image)
{
    QStringList words;
    for (const Acknowledged& word : acknowledged) {
        const auto found = std::find_if(
            image.messages.begin(), image.messages.end(),
            [&word](const HxMidiData& message) { return message.bytes == word.message; });
        const auto index = static_cast<int>(found - image.messages.begin());
        const bool isData = topicOf(word.message) == Topic::Data;
        const bool isClosing = topicOf(word.message) == Topic::Closing;
        const int start = index * fullDataSize;
        const bool isKept = isClosing
                                ? word.code.valid
                                : word.code.bytes.mid(start) == image.code.mid(start, fullDataSize);
        if (found != image.messages.end() && (isData || isClosing) && !isKept)
            words << QStringLiteral("the product acknowledged message %1 and does not hold it")
                         .arg(index + 1);
    }
    return words;
}

// Code that was called valid meanwhile and is neither the old one nor the image's.
QStringList wronglyValid(const std::vector<hx::sim::StoredCode>& codes, bool isChangedTwice,
                         const hx::sim::StoredCode& before, const hx::UpdateImage& image)
{
    const bool isWrong = std::any_of(codes.begin(), codes.end(), [&](const auto& code) {
        return !isSameCode(code, before) && !holds(code, image) &&
               !(isChangedTwice && isMislabelled(code, image));
    });
    return isWrong ? QStringList(QStringLiteral("the product called code valid on the way that is "
                                                "neither old nor new"))
                   : QStringList();
}

} // namespace

bool holds(const hx::sim::StoredCode& code, const hx::UpdateImage& image)
{
    const hx::sim::VersionDigits version = {{'1', '0', '2', '4'}};
    return code.valid && code.bytes == image.code && code.version == version &&
           code.crc == image.statedCrc && code.kind == hx::sim::kindFwu;
}

QStringList complaintsAbout(const Course& course, const hx::sim::StoredCode& before,
                            const hx::sim::StoredCode& now)
{
    QStringList complaints = Examination(course).complaints(before, now, course.elapsed);
    if (!course.scenario.has(FaultKind::BadCell))
        complaints << brokenWords(course.link.acknowledged(), course.image)
                   << wronglyValid(course.link.validCodes(), course.scenario.faults.size() > 1,
                                   before, course.image);
    return complaints;
}

} // namespace sweep

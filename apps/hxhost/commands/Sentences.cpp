#include "apps/hxhost/commands/Sentences.h"

#include "apps/hxhost/commands/Readings.h"

#include "host/base/HexText.h"

#include <algorithm>
#include <initializer_list>

namespace hx::host {

namespace {

const QString didNotAnswer = QStringLiteral("The instrument did not answer. Is it switched on? Are "
                                            "both MIDI cables in?");
const QString runAgain = QStringLiteral("Run the same update again: it starts afresh.");
const QString askAgain = QStringLiteral("Run the command again.");
const QString seePorts =
    QStringLiteral("'hxhost ports --probe' asks on every port who is there; --port chooses one.");
const QString choosePort =
    QStringLiteral("Choose its port with --port: 'hxhost ports --probe' asks on every port "
                   "who is there.");
const QString stableConnection = QStringLiteral("a connection that stays");

QString connectionLost(const QString& portName)
{
    return QStringLiteral("The connection to %1 was lost").arg(portName);
}

QString answerTo(const Reading& reading)
{
    return QStringLiteral("an answer to \"%1\"").arg(reading.key);
}

QString anotherAnswers(quint32 identifier)
{
    return QStringLiteral("Another instrument answers, with the identifier %1.")
        .arg(identifierText(identifier));
}

// A product that the plugin's pattern does not fit is named by its reply.
QString whoAnswers(const IdentityReading& identity)
{
    return identity.good() ? anotherAnswers(identity.fidpid) : identity.reason;
}

// Nothing came, or nothing that the plugin takes for an answer.
QString silenceText(const Reading& reading)
{
    const bool hasReply = reading.state == ReadingState::NoAnswer && !reading.raw.bytes.isEmpty();
    return hasReply ? reading.reason : didNotAnswer;
}

// "message 27 of 83".
QString messageText(const UpdateResult& result)
{
    return QStringLiteral("message %1 of %2")
        .arg(result.failedMessage)
        .arg(result.progress.totalMessages);
}

QString conditionText(ProductCondition condition)
{
    switch (condition) {
    case ProductCondition::CodeIntact:
        return QStringLiteral("The instrument answers and its code is intact.");
    case ProductCondition::NoValidCode:
        return QStringLiteral("The instrument is in its boot loader and holds no valid code.");
    case ProductCondition::CodeDamaged:
        return QStringLiteral("The instrument answers, but its code is damaged.");
    case ProductCondition::OtherProduct:
    case ProductCondition::NoAnswer:
    case ProductCondition::PortLost:
    case ProductCondition::Unclear:
        break;
    }
    return QString();
}

// What the instrument holds after an update that was begun, and what brings it back.
QString afterTouched(const UpdateResult& result)
{
    const QString state =
        result.holdsImage
            ? QStringLiteral("The instrument holds the code of the image, although it did not "
                             "acknowledge every message.")
            : conditionText(result.productCondition);
    return (state + QLatin1Char(' ') + runAgain).trimmed();
}

QString afterUntouched(const QString& advice)
{
    return QStringLiteral("Nothing of the image was sent: the instrument is as it was. ") + advice;
}

Problem stopped(const UpdateResult& result)
{
    if (!result.touched)
        return {ExitCode::Interrupted,
                QStringLiteral("You stopped the command before anything of an image was sent."),
                QString(), QStringLiteral("The instrument is as it was.")};
    if (result.failedMessage == 0)
        return {ExitCode::Interrupted,
                QStringLiteral("You stopped the command after the whole update was sent and before "
                               "it was checked."),
                QString(), QStringLiteral("\"hxhost verify IMAGE\" checks it.")};
    return {ExitCode::Interrupted,
            QStringLiteral("You stopped the update at message %1. The instrument is not damaged "
                           "but needs the update again.")
                .arg(result.failedMessage),
            QString(), QStringLiteral("The same command starts it afresh.")};
}

Problem lost(const UpdateResult& result, const QString& portName)
{
    const QString place =
        result.failedMessage > 0 ? QStringLiteral(" at ") + messageText(result) : QString();
    if (result.sendEnd == SendEnd::NotTaken)
        return {ExitCode::NoPort, result.reason, QStringLiteral("a port that takes every message"),
                QStringLiteral("Run the same update again with --slow-host: it starts afresh, and "
                               "offers a message that is not taken several times.")};
    return {ExitCode::NoPort, connectionLost(portName) + place + QLatin1Char('.'), stableConnection,
            result.touched
                ? QStringLiteral("Connect it again. ") + runAgain
                : afterUntouched(QStringLiteral("Connect it again, then run the command again."))};
}

// The reading for which the check ended, if it was one; null when the answers did not agree.
const Reading* unanswered(const UpdateResult& result)
{
    const std::initializer_list<const Reading*> readings = {
        &result.identityBefore, &result.identityAfter, &result.versionAfter, &result.stored,
        &result.calculated};
    const auto found = std::find_if(readings.begin(), readings.end(), [](const Reading* reading) {
        return reading->state != ReadingState::NotRead && !reading->good();
    });
    return found == readings.end() ? nullptr : *found;
}

Problem silent(const UpdateResult& result)
{
    const Reading* reading = unanswered(result);
    if (!result.touched)
        return {ExitCode::NoAnswer, reading != nullptr ? silenceText(*reading) : didNotAnswer,
                QStringLiteral("an answer to \"identify\""), seePorts};
    return {ExitCode::UpdateFailed,
            QStringLiteral("The instrument stopped answering at %1. Is it switched on? Are both "
                           "MIDI cables in?")
                .arg(messageText(result)),
            QStringLiteral("an acknowledgement of the message, which was sent %1 times")
                .arg(result.failedAttempts),
            afterTouched(result)};
}

Problem refused(const UpdateResult& result)
{
    if (result.sendEnd == SendEnd::Bad)
        return {ExitCode::UpdateFailed,
                QStringLiteral("The instrument received %1 damaged. Bytes are lost on the way to "
                               "it.")
                    .arg(messageText(result)),
                QStringLiteral("a good acknowledgement of the message, which was sent %1 times")
                    .arg(result.failedAttempts),
                QStringLiteral("Send more slowly: run the same update again with --rate 2000 --gap "
                               "20.")};
    return {
        ExitCode::UpdateFailed,
        QStringLiteral("The instrument refused %1 and ended the update.").arg(messageText(result)),
        QStringLiteral("a good acknowledgement of every message"), afterTouched(result)};
}

Problem replaced(const UpdateResult& result, const QString& portName)
{
    const QString next = QStringLiteral("Connect that one again. ");
    return {ExitCode::WrongProduct,
            QStringLiteral("%1: %2. Nothing of the update was sent to it.")
                .arg(portName, result.otherProduct),
            QStringLiteral("the instrument with which the command began"),
            result.touched ? next + runAgain : afterUntouched(next + askAgain)};
}

Problem otherProduct(const UpdateResult& result, const QString& portName)
{
    if (!result.otherProduct.isEmpty())
        return replaced(result, portName);
    const IdentityReading& after = result.identityAfter;
    const IdentityReading& seen = after.isTold() ? after : result.identityBefore;
    if (!seen.isTold())
        return {ExitCode::WrongProduct, result.reason,
                QStringLiteral("an image for an instrument that the plugin serves"),
                afterUntouched(QStringLiteral("Get the image made for this instrument."))};
    return {ExitCode::WrongProduct, whoAnswers(seen),
            QStringLiteral("the instrument that the plugin and the image are for"),
            (result.touched ? QString() : afterUntouched(QString())) + choosePort};
}

const Reading* interruptedReading(const ProductAssessment& assessment)
{
    const std::initializer_list<const Reading*> readings = {
        &assessment.identity, &assessment.version, &assessment.stored, &assessment.calculated};
    const auto found = std::find_if(readings.begin(), readings.end(), [](const Reading* reading) {
        return reading->state == ReadingState::Interrupted;
    });
    return found == readings.end() ? nullptr : *found;
}

// The plugin does not say how the question is put.
bool isUnaskable(const Reading* reading)
{
    return reading != nullptr && reading->state == ReadingState::Unknown;
}

QString disagreement(const UpdateResult& result, const UpdateImage* image)
{
    const Reading* reading = unanswered(result);
    if (isUnaskable(reading))
        return QStringLiteral("The code in the instrument cannot be checked: %1.")
            .arg(reading->reason);
    if (reading == &result.identityAfter)
        return QStringLiteral("The whole update was sent, but the instrument did not answer "
                              "afterwards.");
    if (reading != nullptr)
        return reading->state == ReadingState::Refused
                   ? QStringLiteral("The instrument refused to tell what it holds.")
                   : QStringLiteral("The instrument did not tell what it holds.");
    if (image != nullptr && result.versionAfter.version != image->version)
        return QStringLiteral("The instrument reports version %1; the image carries %2.")
            .arg(result.versionAfter.version, image->version);
    if (result.stored.groups != result.calculated.groups)
        return QStringLiteral("The code in the instrument is damaged: its stored and its "
                              "calculated checksum differ.");
    if (image != nullptr && result.stored.groups != result.imageChecksum)
        return QStringLiteral("The code in the instrument is not that of the image: their "
                              "checksums differ.");
    return result.reason;
}

Problem notVerified(const UpdateResult& result, const UpdateImage* image)
{
    const Reading* reading = unanswered(result);
    const QString expected =
        reading != nullptr
            ? answerTo(*reading)
            : QStringLiteral("the version of the image, and checksums that are all equal");
    if (isUnaskable(reading))
        return {ExitCode::VerificationFailed, disagreement(result, image), expected,
                QStringLiteral("Install a complete plugin, then run \"hxhost verify IMAGE\".")};
    const QString next = result.touched
                             ? runAgain
                             : QStringLiteral("\"hxhost update IMAGE\" installs an image; \"hxhost "
                                              "recover\" says what state the instrument is in.");
    return {ExitCode::VerificationFailed, disagreement(result, image), expected, next};
}

} // namespace

Problem problemOf(const UpdateResult& result, const UpdateImage* image, const QString& portName)
{
    switch (result.outcome) {
    case UpdateOutcome::NoAnswer:
        return silent(result);
    case UpdateOutcome::WrongProduct:
        return otherProduct(result, portName);
    case UpdateOutcome::Failed:
        return refused(result);
    case UpdateOutcome::VerificationFailed:
        return notVerified(result, image);
    case UpdateOutcome::Interrupted:
        return stopped(result);
    case UpdateOutcome::PortLost:
        return lost(result, portName);
    case UpdateOutcome::NotConfirmed:
        return {ExitCode::NotConfirmed,
                QStringLiteral("The update was not started, because the answer was not yes."),
                QStringLiteral("yes"),
                afterUntouched(QStringLiteral("Run the command again and type yes, or give "
                                              "--yes."))};
    case UpdateOutcome::ImageRefused:
    case UpdateOutcome::Succeeded:
        break;
    }
    return {ExitCode::ImageRefused, result.reason,
            QStringLiteral("a whole image for a product that the plugin serves"),
            afterUntouched(QStringLiteral("Get the image made for this instrument."))};
}

Problem problemOf(const Reading& reading, const QString& portName)
{
    const QString expected = answerTo(reading);
    switch (reading.state) {
    case ReadingState::PortLost:
        return {ExitCode::NoPort, connectionLost(portName) + QLatin1Char('.'), stableConnection,
                QStringLiteral("Connect it again. ") + askAgain};
    case ReadingState::Interrupted:
        return {ExitCode::Interrupted, QStringLiteral("You stopped the command before its end."),
                QString(), askAgain};
    case ReadingState::Malformed:
        return {ExitCode::NoAnswer,
                QStringLiteral("The instrument answered, but not as the plugin expects it."),
                expected, seePorts};
    case ReadingState::Refused:
        return {ExitCode::NoAnswer, QStringLiteral("The instrument refused to answer."), expected,
                askAgain};
    case ReadingState::OtherProduct:
        return {ExitCode::WrongProduct, reading.reason,
                QStringLiteral("the instrument that the plugin is for"), choosePort};
    default:
        return {ExitCode::NoAnswer, silenceText(reading), expected, seePorts};
    }
}

Problem problemOf(const ProductAssessment& assessment, const QString& portName)
{
    const QString intact = QStringLiteral("an instrument that answers and whose code is intact");
    switch (assessment.condition) {
    case ProductCondition::NoAnswer:
        return problemOf(assessment.identity, portName);
    case ProductCondition::PortLost:
        return {ExitCode::NoPort, connectionLost(portName) + QLatin1Char('.'), stableConnection,
                QStringLiteral("Connect it again. ") + askAgain};
    case ProductCondition::OtherProduct:
        return {ExitCode::WrongProduct, whoAnswers(assessment.identity), intact, assessment.advice};
    case ProductCondition::Unclear:
        if (const Reading* stoppedAt = interruptedReading(assessment))
            return problemOf(*stoppedAt, portName);
        return {ExitCode::VerificationFailed,
                QStringLiteral("The instrument did not tell everything about its code."), intact,
                assessment.advice};
    default:
        return {ExitCode::VerificationFailed, conditionText(assessment.condition), intact,
                assessment.advice};
    }
}

QString productText(const QString& productName, const EsnReading& esn)
{
    if (!esn.good())
        return productName;
    const QString text = serialText(esn.number);
    return QStringLiteral("%1, serial number %2")
        .arg(productName, text.isEmpty() ? hexText(esn.number) : text);
}

QString serialText(const QByteArray& number)
{
    const bool isText = std::all_of(number.begin(), number.end(),
                                    [](char byte) { return byte > 0x20 && byte < 0x7F; });
    return isText ? QString::fromLatin1(number) : QString();
}

} // namespace hx::host

#include "host/UpdateRun.h"

#include "host/HexText.h"

namespace hx {

namespace {

constexpr int identityAttemptsBefore = 3;
constexpr int identityAttemptsAfter = 10; // the product may have to start first
constexpr int readingAttempts = 3;

QString unfinished()
{
    return QStringLiteral("The update was begun and not finished. ");
}

QString unacknowledged()
{
    return QStringLiteral(
        "The product holds the code of the image, although it did not acknowledge "
        "every message. ");
}

QString runAgain()
{
    return QStringLiteral("Run the same update again: it starts afresh and recovers the product. "
                          "\"hxhost recover\" says what state the product is in.");
}

QString installImage()
{
    return QStringLiteral("That is not the code of the image: run \"hxhost update\" with it to "
                          "install it.");
}

// Lets a wait on the bus end on an interrupt, as long as this lives.
class InterruptWatch {
public:
    InterruptWatch(PortBus& bus, const std::atomic<bool>* flag) : m_bus(bus)
    {
        m_before = m_bus.watchInterrupt(flag);
        if (flag == nullptr)
            m_bus.watchInterrupt(m_before);
    }
    ~InterruptWatch() { m_bus.watchInterrupt(m_before); }
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

private:
    PortBus& m_bus;
    const std::atomic<bool>* m_before;
};

class Runner {
public:
    Runner(DeviceInterface& device, PortBus& bus)
        : m_device(device), m_bus(bus), m_reader(device, bus, readingAttempts),
          m_start(bus.port().clock().now()), m_stepStart(m_start)
    {
    }

    UpdateResult update(const UpdateImage& image, const UpdateOptions& options);
    UpdateResult verify(const UpdateImage* image);

private:
    void step(const char* name, bool good, const QString& text);
    bool end(UpdateOutcome outcome, const QString& reason);
    bool endOn(const Reading& reading, UpdateOutcome whenSilent);
    bool checkImage(const UpdateImage& image);
    bool identify();
    bool readVersionBefore();
    bool send(const UpdateImage& image, const UpdateOptions& options);
    bool identifyAgain(UpdateOutcome whenSilent);
    void readAfter();
    bool versionAgrees(const UpdateImage* image) const;
    bool checksumsAgree(const UpdateImage* image) const;
    bool checkAfter(const UpdateImage* image, UpdateOutcome whenSilent);
    bool checkVersion(const UpdateImage* image);
    bool checkChecksums(const UpdateImage* image);
    UpdateResult conclude();
    void describeUntouched();
    void describeUnfinished();
    void describeFinished();

    DeviceInterface& m_device;
    PortBus& m_bus;
    ProductReader m_reader;
    Microseconds m_start;
    Microseconds m_stepStart;
    UpdatePlan m_plan;
    QString m_imageVersion;
    UpdateResult m_result;
    bool m_allSent = false;
};

void Runner::step(const char* name, bool good, const QString& text)
{
    const Microseconds now = m_bus.port().clock().now();
    m_result.steps.push_back({QString::fromLatin1(name), good, text, now - m_stepStart});
    m_stepStart = now;
    m_bus.note(BusEventKind::Decided, QStringLiteral("%1: %2").arg(QLatin1String(name), text));
}

// Returns false, so that the step that ends the run can return it.
bool Runner::end(UpdateOutcome outcome, const QString& reason)
{
    m_result.outcome = outcome;
    m_result.reason = reason;
    return false;
}

bool Runner::endOn(const Reading& reading, UpdateOutcome whenSilent)
{
    if (reading.state == ReadingState::PortLost)
        return end(UpdateOutcome::PortLost, reading.reason);
    if (reading.state == ReadingState::Interrupted)
        return end(UpdateOutcome::Interrupted, reading.reason);
    return end(whenSilent, QStringLiteral("%1: %2").arg(reading.key, reading.reason));
}

bool Runner::checkImage(const UpdateImage& image)
{
    m_plan = planUpdate(m_device, image);
    m_imageVersion = image.version;
    m_result.imageChecksum = image.ok() ? image.expectedChecksum() : QByteArray();
    m_result.progress.totalBytes = m_plan.bytes;
    m_result.progress.totalMessages = m_plan.messages;
    if (m_plan.ok()) {
        step("image", true,
             QStringLiteral("%1 messages, %2 bytes, kind \"%3\", version %4")
                 .arg(m_plan.messages)
                 .arg(m_plan.bytes)
                 .arg(codeTypeTag(image.kind), image.version));
        return true;
    }
    const int more = m_plan.refusals.size() - 1;
    const QString others = more > 0 ? QStringLiteral(" (and %1 more)").arg(more) : QString();
    step("image", false, m_plan.refusals.first() + others);
    return end(UpdateOutcome::ImageRefused, m_plan.refusals.first() + others);
}

QString productText(const IdentityReading& identity)
{
    return QStringLiteral("maker %1, identifier 0x%2, version %3")
        .arg(hexText(identity.manufacturer),
             QString::number(identity.fidpid, 16).toUpper().rightJustified(6, QLatin1Char('0')),
             identity.version);
}

bool Runner::identify()
{
    IdentityReading& identity = m_result.identityBefore;
    identity = m_reader.identity(identityAttemptsBefore);
    const bool isFor = m_reader.isServed(identity) &&
                       identity.fidpid == static_cast<quint32>(m_plan.protocol.fidpid);
    step("identity", isFor, identity.good() ? productText(identity) : identity.reason);
    if (!identity.good())
        return endOn(identity, UpdateOutcome::NoAnswer);
    return isFor || end(UpdateOutcome::WrongProduct,
                        QStringLiteral("The product that answers (%1) is not the one the image is "
                                       "for (%2).")
                            .arg(productText(identity), m_device.productName()));
}

// A product in its boot loader may refuse to name a version; that does not stop an update.
bool Runner::readVersionBefore()
{
    VersionReading& version = m_result.versionBefore;
    version = m_reader.version();
    step("version before", version.good(), version.good() ? version.version : version.reason);
    const bool ends =
        version.state == ReadingState::PortLost || version.state == ReadingState::Interrupted;
    return !ends || endOn(version, UpdateOutcome::NoAnswer);
}

UpdateOutcome outcomeOf(SendEnd end)
{
    switch (end) {
    case SendEnd::AllGood:
        return UpdateOutcome::Succeeded;
    case SendEnd::Failed:
    case SendEnd::Bad:
        return UpdateOutcome::Failed;
    case SendEnd::NoAnswer:
        return UpdateOutcome::NoAnswer;
    case SendEnd::PortLost:
        return UpdateOutcome::PortLost;
    case SendEnd::Interrupted:
        break;
    }
    return UpdateOutcome::Interrupted;
}

bool Runner::send(const UpdateImage& image, const UpdateOptions& options)
{
    const SendReport report = UpdateSender(m_bus, m_plan, image, options).sendAll();
    m_result.progress = report.progress;
    m_result.touched = report.touched;
    m_result.failedMessage = report.message;
    m_result.lastReply = report.lastReply;
    m_allSent = report.end == SendEnd::AllGood;
    step("messages", m_allSent,
         m_allSent ? QStringLiteral("%1 messages acknowledged, %2 retries")
                         .arg(report.progress.message)
                         .arg(report.progress.retries)
                   : report.reason);
    return m_allSent || end(outcomeOf(report.end), report.reason);
}

bool Runner::identifyAgain(UpdateOutcome whenSilent)
{
    IdentityReading& identity = m_result.identityAfter;
    identity = m_reader.identity(identityAttemptsAfter);
    const bool served = m_reader.isServed(identity);
    step("identity after", served, identity.good() ? productText(identity) : identity.reason);
    if (!identity.good())
        return endOn(identity, whenSilent);
    return served || end(UpdateOutcome::WrongProduct,
                         QStringLiteral("Another product answers (%1). Choose the port of %2.")
                             .arg(productText(identity), m_device.productName()));
}

// All of them, whatever the first ones say: together they tell the state of the product.
void Runner::readAfter()
{
    m_result.versionAfter = m_reader.version();
    m_result.stored = m_reader.storedChecksum();
    m_result.calculated = m_reader.calculatedChecksum();
}

bool Runner::versionAgrees(const UpdateImage* image) const
{
    const VersionReading& version = m_result.versionAfter;
    return version.good() && (image == nullptr || version.version == image->version);
}

bool Runner::checksumsAgree(const UpdateImage* image) const
{
    const ChecksumReading& stored = m_result.stored;
    const ChecksumReading& calculated = m_result.calculated;
    return stored.good() && calculated.good() && stored.groups == calculated.groups &&
           (image == nullptr || stored.groups == m_result.imageChecksum);
}

// A product without valid code refuses to name a version, whatever its checksums are.
bool Runner::checkVersion(const UpdateImage* image)
{
    const VersionReading& version = m_result.versionAfter;
    const bool agrees = versionAgrees(image);
    step("version after", agrees, version.good() ? version.version : version.reason);
    if (!version.good())
        return endOn(version, UpdateOutcome::VerificationFailed);
    return agrees || end(UpdateOutcome::VerificationFailed,
                         QStringLiteral("The product reports version %1; the image carries %2.")
                             .arg(version.version, image->version));
}

QString shown(const ChecksumReading& checksum)
{
    return checksum.good() ? hexText(checksum.groups) : readingStateText(checksum.state);
}

bool Runner::checkChecksums(const UpdateImage* image)
{
    const ChecksumReading& stored = m_result.stored;
    const ChecksumReading& calculated = m_result.calculated;
    const bool agree = checksumsAgree(image);
    QString text = QStringLiteral("stored %1, calculated %2").arg(shown(stored), shown(calculated));
    if (image != nullptr)
        text += QStringLiteral(", image %1").arg(hexText(m_result.imageChecksum));
    step("checksums", agree, text);
    if (!stored.good())
        return endOn(stored, UpdateOutcome::VerificationFailed);
    if (!calculated.good())
        return endOn(calculated, UpdateOutcome::VerificationFailed);
    return agree || end(UpdateOutcome::VerificationFailed,
                        QStringLiteral("The checksums do not agree: %1.").arg(text));
}

bool Runner::checkAfter(const UpdateImage* image, UpdateOutcome whenSilent)
{
    if (!identifyAgain(whenSilent))
        return false;
    readAfter();
    if (!versionAgrees(image) || !checksumsAgree(image))
        readAfter(); // one answer that was changed on the way must not condemn good code
    return checkVersion(image) && checkChecksums(image);
}

QString adviceWhenUntouched(UpdateOutcome outcome)
{
    if (outcome == UpdateOutcome::NoAnswer)
        return QStringLiteral("Check power, cables and the choice of port (\"hxhost ports\"), then "
                              "run the update again.");
    if (outcome == UpdateOutcome::PortLost)
        return QStringLiteral("Connect the port again, then run the update again.");
    if (outcome == UpdateOutcome::WrongProduct)
        return QStringLiteral(
            "Choose the port of the right product (\"hxhost ports\"), then run the "
            "update again.");
    return QString();
}

void Runner::describeUntouched()
{
    m_result.productState =
        QStringLiteral("Nothing of the image was sent: the product is as it was.");
    m_result.advice = adviceWhenUntouched(m_result.outcome);
}

// Asks the product once more, so that what is said of it is what it says itself.
void Runner::describeUnfinished()
{
    m_result.advice = runAgain();
    if (m_result.outcome == UpdateOutcome::PortLost) {
        m_result.productCondition = ProductCondition::PortLost;
        m_result.productState =
            unfinished() + QStringLiteral("The port is gone: the product may hold no valid code.");
        return;
    }
    const std::atomic<bool>* watched = m_bus.watchInterrupt(nullptr);
    ProductReader reader(m_device, m_bus);
    const ProductAssessment assessment = assessProduct(reader);
    m_bus.watchInterrupt(watched);
    // Power may fail between the last write of the closing message and its acknowledgement.
    const bool holdsImage = assessment.condition == ProductCondition::CodeIntact &&
                            assessment.version.version == m_imageVersion &&
                            assessment.stored.groups == m_result.imageChecksum;
    m_result.productCondition = assessment.condition;
    m_result.productState = (holdsImage ? unacknowledged() : unfinished()) + assessment.state;
}

void Runner::describeFinished()
{
    ProductAssessment assessment;
    assessment.identity = m_result.identityAfter;
    assessment.version = m_result.versionAfter;
    assessment.stored = m_result.stored;
    assessment.calculated = m_result.calculated;
    concludeAssessment(assessment, m_reader);
    m_result.productCondition = assessment.condition;
    m_result.productState = assessment.state;
    if (m_result.succeeded())
        return;
    // Intact code is no comfort to one who wanted that of the image.
    m_result.advice =
        assessment.condition == ProductCondition::CodeIntact ? installImage() : assessment.advice;
}

UpdateResult Runner::conclude()
{
    m_result.duration = m_bus.port().clock().now() - m_start;
    if (m_allSent && m_result.outcome != UpdateOutcome::ImageRefused)
        describeFinished();
    else if (m_result.touched)
        describeUnfinished();
    else
        describeUntouched();
    m_bus.note(BusEventKind::Decided,
               QStringLiteral("outcome: %1").arg(updateOutcomeText(m_result.outcome)));
    return m_result;
}

UpdateResult Runner::update(const UpdateImage& image, const UpdateOptions& options)
{
    const bool good = checkImage(image) && identify() && readVersionBefore() &&
                      send(image, options) && checkAfter(&image, UpdateOutcome::VerificationFailed);
    if (good)
        m_result.outcome = UpdateOutcome::Succeeded;
    return conclude();
}

UpdateResult Runner::verify(const UpdateImage* image)
{
    m_allSent = true;
    const bool good =
        (image == nullptr || checkImage(*image)) && checkAfter(image, UpdateOutcome::NoAnswer);
    if (good)
        m_result.outcome = UpdateOutcome::Succeeded;
    return conclude();
}

} // namespace

QString updateOutcomeText(UpdateOutcome outcome)
{
    switch (outcome) {
    case UpdateOutcome::Succeeded:
        return QStringLiteral("succeeded");
    case UpdateOutcome::ImageRefused:
        return QStringLiteral("image refused");
    case UpdateOutcome::NoAnswer:
        return QStringLiteral("no answer");
    case UpdateOutcome::WrongProduct:
        return QStringLiteral("wrong product");
    case UpdateOutcome::Failed:
        return QStringLiteral("failed");
    case UpdateOutcome::VerificationFailed:
        return QStringLiteral("verification failed");
    case UpdateOutcome::Interrupted:
        return QStringLiteral("interrupted");
    case UpdateOutcome::PortLost:
        break;
    }
    return QStringLiteral("port lost");
}

UpdateResult runUpdate(DeviceInterface& device, PortBus& bus, const UpdateImage& image,
                       const UpdateOptions& options)
{
    const InterruptWatch watch(bus, options.interrupted);
    return Runner(device, bus).update(image, options);
}

UpdateResult verifyProduct(DeviceInterface& device, PortBus& bus, const UpdateImage* image)
{
    return Runner(device, bus).verify(image);
}

} // namespace hx

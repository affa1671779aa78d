#include "host/update/UpdateRun.h"

#include "host/base/HexText.h"
#include "host/product/ProductRecognition.h"
#include "host/update/UpdateConclusion.h"
#include "host/update/UpdateVerification.h"

#include <optional>

namespace hx {

namespace {

class Runner {
public:
    Runner(DeviceInterface& device, PortBus& bus)
        : m_device(device), m_bus(bus), m_reader(device, bus), m_steps(bus),
          m_result(m_steps.result)
    {
        m_bus.setReturnCheck([this] { return lookAtReturned(); });
    }
    ~Runner() { m_bus.setReturnCheck(nullptr); }
    Runner(const Runner&) = delete;
    Runner& operator=(const Runner&) = delete;

    UpdateResult update(const UpdateImage& image, const UpdateOptions& options);
    UpdateResult verify(const UpdateImage* image);

private:
    ReturnVerdict lookAtReturned();
    bool checkImage(const UpdateImage& image);
    bool identify();
    bool readVersionBefore();
    bool confirm(const UpdateOptions& options);
    bool send(const UpdateImage& image, const UpdateOptions& options);
    UpdateResult conclude();

    DeviceInterface& m_device;
    PortBus& m_bus;
    ProductReader m_reader;
    UpdateSteps m_steps;
    UpdateResult& m_result;
    UpdatePlan m_plan;
    QString m_imageVersion;
    bool m_allSent = false;
};

// The name of a port is no proof of what is behind it.
ReturnVerdict Runner::lookAtReturned()
{
    const bool isUpdate = m_result.identityBefore.good();
    const IdentityReading& known = isUpdate ? m_result.identityBefore : m_result.identityAfter;
    ReturnVerdict verdict = recognise(m_reader, {known, m_result.esnBefore});
    m_result.otherProduct = verdict.end == ExchangeEnd::OtherProduct ? verdict.text : QString();
    return verdict;
}

bool Runner::checkImage(const UpdateImage& image)
{
    m_plan = planUpdate(m_device, image);
    m_imageVersion = image.version;
    m_result.imageChecksum = image.ok() ? image.expectedChecksum() : QByteArray();
    m_result.progress.totalBytes = m_plan.bytes;
    m_result.progress.totalMessages = m_plan.messages;
    if (m_plan.ok()) {
        m_steps.add("image", true,
                    QStringLiteral("%1 messages, %2 bytes, kind \"%3\", version %4")
                        .arg(m_plan.messages)
                        .arg(m_plan.bytes)
                        .arg(codeTypeTag(image.kind), image.version));
        return true;
    }
    QString reason = m_plan.refusals.first();
    const auto more = m_plan.refusals.size() - 1;
    if (more > 0)
        reason += QStringLiteral(" (and %1 more)").arg(more);
    m_steps.add("image", false, reason);
    return m_steps.end(m_plan.isForOtherProduct ? UpdateOutcome::WrongProduct
                                                : UpdateOutcome::ImageRefused,
                       reason);
}

bool Runner::identify()
{
    IdentityReading& identity = m_result.identityBefore;
    identity = m_reader.identity();
    const bool isFor = m_reader.isServed(identity) &&
                       identity.fidpid == static_cast<quint32>(m_plan.protocol.fidpid);
    m_steps.add("identity", isFor, identity.good() ? productText(identity) : identity.reason);
    if (!identity.good())
        return m_steps.endOn(identity, UpdateOutcome::NoAnswer);
    if (isFor)
        return true;
    return m_steps.end(UpdateOutcome::WrongProduct,
                       QStringLiteral("The product that answers (%1) is not the one the image is "
                                      "for (%2).")
                           .arg(productText(identity), m_device.productName()));
}

// A product in its boot loader may refuse to name a version; that does not stop an update.
bool Runner::readVersionBefore()
{
    VersionReading& version = m_result.versionBefore;
    version = m_reader.version();
    m_steps.add("version before", version.good(),
                version.good() ? version.version : version.reason);
    const bool ends =
        version.state == ReadingState::PortLost || version.state == ReadingState::Interrupted;
    return !ends || m_steps.endOn(version, UpdateOutcome::NoAnswer);
}

// What the question needs is read whether or not a person is asked, so that a recorded run can be
// played back anywhere.
bool Runner::confirm(const UpdateOptions& options)
{
    if (!options.confirm)
        return true;
    EsnReading& esn = m_result.esnBefore;
    esn = m_reader.esn();
    m_steps.add("serial number", esn.good(), esn.good() ? hexText(esn.number) : esn.reason);
    if (esn.state == ReadingState::PortLost || esn.state == ReadingState::Interrupted)
        return m_steps.endOn(esn, UpdateOutcome::NoAnswer);
    if (options.confirm(m_result))
        return true;
    const bool isInterrupted = options.interrupted != nullptr && options.interrupted->load();
    if (isInterrupted)
        return m_steps.end(UpdateOutcome::Interrupted,
                           QStringLiteral("interrupted before the question was answered"));
    return m_steps.end(UpdateOutcome::NotConfirmed,
                       QStringLiteral("The update was not confirmed."));
}

// What the update comes to when not all messages were good.
UpdateOutcome outcomeOf(SendEnd end)
{
    switch (end) {
    case SendEnd::NoAnswer:
        return UpdateOutcome::NoAnswer;
    case SendEnd::PortLost:
    case SendEnd::NotTaken:
        return UpdateOutcome::PortLost;
    case SendEnd::OtherProduct:
        return UpdateOutcome::WrongProduct;
    case SendEnd::Interrupted:
        return UpdateOutcome::Interrupted;
    default:
        return UpdateOutcome::Failed;
    }
}

bool Runner::send(const UpdateImage& image, const UpdateOptions& options)
{
    const SendReport report = UpdateSender(m_bus, m_plan, image, options).sendAll();
    m_result.progress = report.progress;
    m_result.touched = report.touched;
    m_result.failedMessage = report.message;
    m_result.failedAttempts = report.attempts;
    m_result.sendEnd = report.end;
    m_result.lastReply = report.lastReply;
    m_allSent = report.end == SendEnd::Good;
    if (!m_allSent) {
        m_steps.add("messages", false, report.reason);
        return m_steps.end(outcomeOf(report.end), report.reason);
    }
    m_steps.add("messages", true,
                QStringLiteral("%1 messages acknowledged, %2 retries")
                    .arg(report.progress.message)
                    .arg(report.progress.retries));
    return true;
}

UpdateResult Runner::conclude()
{
    m_result.duration = m_steps.sinceStart();
    if (m_allSent && m_plan.ok() && m_result.otherProduct.isEmpty())
        describeFinished(m_result, m_reader);
    else if (m_result.touched)
        describeUnfinished(m_result, m_device, m_bus, m_imageVersion);
    else
        describeUntouched(m_result);
    m_bus.note(BusEventKind::Decided,
               QStringLiteral("outcome: %1").arg(updateOutcomeText(m_result.outcome)));
    return m_result;
}

UpdateResult Runner::update(const UpdateImage& image, const UpdateOptions& options)
{
    UpdateVerification verification(m_steps, m_reader, &image);
    const bool good = checkImage(image) && identify() && readVersionBefore() && confirm(options) &&
                      send(image, options) &&
                      verification.passes(UpdateOutcome::VerificationFailed);
    if (good)
        m_result.outcome = UpdateOutcome::Succeeded;
    return conclude();
}

UpdateResult Runner::verify(const UpdateImage* image)
{
    m_allSent = true;
    UpdateVerification verification(m_steps, m_reader, image);
    const bool good = (image == nullptr || checkImage(*image)) &&
                      verification.passes(UpdateOutcome::NoAnswer) &&
                      (image == nullptr || verification.kindFits());
    if (good)
        m_result.outcome = UpdateOutcome::Succeeded;
    return conclude();
}

} // namespace

UpdateResult runUpdate(DeviceInterface& device, PortBus& bus, const UpdateImage& image,
                       const UpdateOptions& options)
{
    std::optional<InterruptWatch> watch;
    if (options.interrupted != nullptr)
        watch.emplace(bus, options.interrupted);
    return Runner(device, bus).update(image, options);
}

UpdateResult verifyProduct(DeviceInterface& device, PortBus& bus, const UpdateImage* image)
{
    return Runner(device, bus).verify(image);
}

} // namespace hx

#include "host/update/UpdateVerification.h"

#include "host/base/HexText.h"

#include <initializer_list>

namespace hx {

namespace {

constexpr int identityAttemptsAfter = 10; // the product may have to start first

QString shown(const ChecksumReading& checksum)
{
    return checksum.good() ? hexText(checksum.groups) : readingStateText(checksum.state);
}

} // namespace

UpdateVerification::UpdateVerification(UpdateSteps& steps, ProductReader& reader,
                                       const UpdateImage* image)
    : m_steps(steps), m_result(steps.result), m_reader(reader), m_image(image)
{
}

bool UpdateVerification::identifyAgain(UpdateOutcome whenSilent)
{
    IdentityReading& identity = m_result.identityAfter;
    identity = m_reader.identity(identityAttemptsAfter);
    const bool served = m_reader.isServed(identity);
    m_steps.add("identity after", served,
                identity.good() ? productText(identity) : identity.reason);
    if (!identity.good())
        return m_steps.endOn(identity, whenSilent);
    if (served)
        return true;
    return m_steps.end(UpdateOutcome::WrongProduct,
                       QStringLiteral("Another product answers (%1). Choose the port of %2.")
                           .arg(productText(identity), m_reader.device().productName()));
}

// All of them, whatever the first ones say: together they tell the state of the product.
void UpdateVerification::readAll()
{
    m_result.versionAfter = m_reader.version();
    m_result.stored = m_reader.storedChecksum();
    m_result.calculated = m_reader.calculatedChecksum();
}

bool UpdateVerification::versionAgrees() const
{
    const VersionReading& version = m_result.versionAfter;
    return version.good() && (m_image == nullptr || version.version == m_image->version);
}

bool UpdateVerification::checksumsAgree() const
{
    const ChecksumReading& stored = m_result.stored;
    const ChecksumReading& calculated = m_result.calculated;
    return stored.good() && calculated.good() && stored.groups == calculated.groups &&
           (m_image == nullptr || stored.groups == m_result.imageChecksum);
}

// A product without valid code refuses to name a version, whatever its checksums are.
bool UpdateVerification::checkVersion()
{
    const VersionReading& version = m_result.versionAfter;
    const bool agrees = versionAgrees();
    m_steps.add("version after", agrees, version.good() ? version.version : version.reason);
    if (!version.good())
        return m_steps.endOn(version, UpdateOutcome::VerificationFailed);
    if (agrees)
        return true;
    return m_steps.end(UpdateOutcome::VerificationFailed,
                       QStringLiteral("The product reports version %1; the image carries %2.")
                           .arg(version.version, m_image->version));
}

bool UpdateVerification::checkChecksums()
{
    const ChecksumReading& stored = m_result.stored;
    const ChecksumReading& calculated = m_result.calculated;
    const bool agree = checksumsAgree();
    QString text = QStringLiteral("stored %1, calculated %2").arg(shown(stored), shown(calculated));
    if (m_image != nullptr)
        text += QStringLiteral(", image %1").arg(hexText(m_result.imageChecksum));
    m_steps.add("checksums", agree, text);
    if (!stored.good())
        return m_steps.endOn(stored, UpdateOutcome::VerificationFailed);
    if (!calculated.good())
        return m_steps.endOn(calculated, UpdateOutcome::VerificationFailed);
    if (agree)
        return true;
    return m_steps.end(UpdateOutcome::VerificationFailed,
                       QStringLiteral("The checksums do not agree: %1.").arg(text));
}

// The product describes the code it holds under the number of its kind. Of a product with room for
// both, the image's kind counts.
CodeType UpdateVerification::kindTold()
{
    const bool isFwd = m_image->kind == CodeType::Fwd;
    const CodeType other = isFwd ? CodeType::Fwu : CodeType::Fwd;
    m_result.codeImage = m_reader.codeImage(isFwd ? 1 : 0);
    if (m_result.codeImage.present || m_result.codeImage.state == ReadingState::PortLost)
        return m_result.codeImage.present ? m_image->kind : CodeType::Unknown;
    m_result.codeImage = m_reader.codeImage(isFwd ? 0 : 1);
    return m_result.codeImage.present ? other : CodeType::Unknown;
}

bool UpdateVerification::kindFits()
{
    const CodeType told = kindTold();
    m_result.kindTold = told;
    if (m_result.codeImage.state == ReadingState::PortLost)
        return m_steps.endOn(m_result.codeImage, UpdateOutcome::VerificationFailed);
    const bool fits = told == m_image->kind || told == CodeType::Unknown;
    m_steps.add("kind", fits,
                told == CodeType::Unknown ? QStringLiteral("the product does not tell it")
                                          : QString(codeTypeTag(told)));
    if (fits)
        return true;
    return m_steps.end(UpdateOutcome::VerificationFailed,
                       QStringLiteral("The product holds code of kind \"%1\"; the image is of kind "
                                      "\"%2\".")
                           .arg(codeTypeTag(told), codeTypeTag(m_image->kind)));
}

// A port that is gone says more than what was not answered before it went.
bool UpdateVerification::wasReadToTheEnd()
{
    for (const Reading* reading : std::initializer_list<const Reading*>{
             &m_result.versionAfter, &m_result.stored, &m_result.calculated}) {
        if (reading->state == ReadingState::PortLost)
            return m_steps.endOn(*reading, UpdateOutcome::PortLost);
    }
    return true;
}

bool UpdateVerification::passes(UpdateOutcome whenSilent)
{
    if (!identifyAgain(whenSilent))
        return false;
    readAll();
    if (!versionAgrees() || !checksumsAgree())
        readAll(); // one answer that was changed on the way must not condemn good code
    return wasReadToTheEnd() && checkVersion() && checkChecksums();
}

} // namespace hx

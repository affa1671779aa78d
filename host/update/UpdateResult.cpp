#include "host/update/UpdateResult.h"

namespace hx {

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
    case UpdateOutcome::NotConfirmed:
        return QStringLiteral("not confirmed");
    case UpdateOutcome::PortLost:
        break;
    }
    return QStringLiteral("port lost");
}

} // namespace hx

#include "apps/hxupdate/model/Ending.h"

namespace hxupdate {

namespace {

Ending endingUntouched(hx::UpdateOutcome outcome)
{
    switch (outcome) {
    case hx::UpdateOutcome::ImageRefused:
        return Ending::ImageRefused;
    case hx::UpdateOutcome::WrongProduct:
        return Ending::WrongBefore;
    case hx::UpdateOutcome::Interrupted:
    case hx::UpdateOutcome::NotConfirmed:
        return Ending::StoppedBefore;
    case hx::UpdateOutcome::PortLost:
        return Ending::LostBefore;
    case hx::UpdateOutcome::NoAnswer:
    case hx::UpdateOutcome::Failed:
    case hx::UpdateOutcome::VerificationFailed:
    case hx::UpdateOutcome::Succeeded:
        break;
    }
    return Ending::SilentBefore;
}

Ending endingTouched(const hx::UpdateResult& result)
{
    if (result.holdsImage)
        return Ending::Unacknowledged;
    const bool isAllSent = result.failedMessage == 0;
    switch (result.outcome) {
    case hx::UpdateOutcome::NoAnswer:
        return Ending::SilentMidway;
    case hx::UpdateOutcome::WrongProduct:
        return isAllSent ? Ending::WrongAfterwards : Ending::WrongMidway;
    case hx::UpdateOutcome::Interrupted:
        return isAllSent ? Ending::StoppedUnverified : Ending::StoppedMidway;
    case hx::UpdateOutcome::PortLost:
        return Ending::LostMidway;
    case hx::UpdateOutcome::ImageRefused:
    case hx::UpdateOutcome::Failed:
        return result.sendEnd == hx::SendEnd::Bad ? Ending::DamagedMidway : Ending::RefusedMidway;
    case hx::UpdateOutcome::VerificationFailed:
    case hx::UpdateOutcome::NotConfirmed:
    case hx::UpdateOutcome::Succeeded:
        break;
    }
    return Ending::NotProven;
}

} // namespace

Ending endingOf(const hx::UpdateResult& result)
{
    if (result.succeeded())
        return Ending::Succeeded;
    return result.touched ? endingTouched(result) : endingUntouched(result.outcome);
}

bool isMidway(Ending ending)
{
    return ending >= Ending::SilentMidway;
}

} // namespace hxupdate

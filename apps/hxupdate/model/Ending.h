// How an update has ended, as the verdict page tells it.
#pragma once

#include "host/update/UpdateResult.h"

#include <QByteArray>

namespace hxupdate {

enum class Ending {
    Succeeded,         // by the host's rule, and by no other
    NotOpened,         // the port could not be opened; nothing was sent
    OtherUnit,         // another unit than the reviewed one is connected; nothing was sent
    ImageRefused,      // nothing was sent
    SilentBefore,      // the product did not answer before anything was sent
    WrongBefore,       // another product answered before anything was sent
    StoppedBefore,     // the user stopped before anything was sent
    LostBefore,        // the port went away before anything was sent
    SilentMidway,      // the product stopped to answer
    RefusedMidway,     // the product refused a message for good
    DamagedMidway,     // the product received a message damaged, again and again
    StoppedMidway,     // the user stopped between two messages
    LostMidway,        // the port went away
    WrongMidway,       // the port came back with another product
    Unacknowledged,    // the product holds the code, but did not acknowledge every message
    StoppedUnverified, // all was sent, and then the user stopped
    NotProven,         // all was sent, but what the product reports does not agree
    WrongAfterwards    // all was sent, and then another product answered
};

constexpr Ending lastEnding = Ending::WrongAfterwards;

Ending endingOf(const hx::UpdateResult& result);

// Whether a message of the image was sent, so that the product may hold no valid code.
bool isMidway(Ending ending);

struct UpdateEnd {
    Ending ending = Ending::NotOpened;
    QString reason; // in the host's words; empty after success
    hx::ProductCondition condition = hx::ProductCondition::Unclear; // of the product now
    QString otherSerial; // the number of another unit that answered
    QString versionBefore;
    QString versionAfter;
    QByteArray record; // for a mail to the maker: versions, and a trace of all that travelled
};

} // namespace hxupdate

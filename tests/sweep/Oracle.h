// How an update over a recorded connection must have ended, told from the record alone.
#pragma once

#include "host/update/UpdateRun.h"
#include "tests/sweep/WireReading.h"

namespace sweep {

// What the product reports at the end, as far as it reached the host.
struct LastAnswers {
    QByteArray identity;
    QByteArray version;
    QByteArray stored;
    QByteArray calculated;
};

struct ExpectedEnd {
    hx::UpdateOutcome outcome = hx::UpdateOutcome::NoAnswer;
    int failedMessage = 0; // as UpdateResult::failedMessage
    QString wrongCourse;   // the host did what no outcome allows; mostly empty
    LastAnswers last;
    // What these say of the product.
    hx::ProductCondition condition = hx::ProductCondition::Unclear;
};

ExpectedEnd expectedEnd(const Conversation& conversation, const hx::UpdateImage& image);

} // namespace sweep

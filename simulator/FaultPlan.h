/** @file
 * The ways in which a simulated product can be made to misbehave, and their text form.
 */
#pragma once

#include <QString>
#include <QVector>

#include <limits>
#include <optional>

namespace hx::sim {

enum class FaultKind {
    /** counted in the messages that reach the product */
    Silent,
    DuplicateMessage,
    DamageMessage,
    CutMessage,
    InsertMessage,
    Refuse,
    WrongModel,
    Vanish,
    /** counted in the update messages among them */
    BadAck,
    FailedAck,
    PowerCut,
    BadWrite,
    /** counted in the replies */
    DropReply,
    DuplicateReply,
    DamageReply,
    CutReply,
    InsertReply,
    DelayReply,
    LateReply,
    SwapReply,
    Noise
};

/** Where in the handling of a message the power fails, in single memory writes. */
constexpr int cutDuringWrites = -1; /**< after half of the message's writes */
constexpr int cutAfterWrites = -2;  /**< when all are done, before the reply */

struct Fault {
    FaultKind kind = FaultKind::Silent;
    int first = 1; /**< which ones it strikes, counted from 1; both ends belong */
    int last = std::numeric_limits<int>::max();
    int position = 0; /**< a byte: from the F0 as 0, or from the end as -1 */
    int value = 0;    /**< a mask, a byte, milliseconds, or memory writes */

    bool strikes(int ordinal) const { return ordinal >= first && ordinal <= last; }
};

using FaultPlan = QVector<Fault>;

/**
 * Reads "name", "name:WHICH", "name:WHICH:..." as faultHelp lists them. Without a result `error`
 * names the piece that is wrong and what may stand there.
 */
std::optional<Fault> parseFault(const QString& text, QString* error);

/** The list of faults for people, one a line. */
QString faultHelp();

} // namespace hx::sim

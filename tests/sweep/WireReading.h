// What was asked and answered on a recorded connection, read without any code of the host.
#pragma once

#include "tests/sweep/FaultyLink.h"

#include <optional>

namespace sweep {

// A whole SysEx message that reached the host.
struct HeardMessage {
    QByteArray bytes;
    hx::Microseconds time = 0;
};

// A command and all that came until the next one.
struct Exchange {
    static constexpr hx::Microseconds timeout = 2200 * 1000;
    static constexpr hx::Microseconds settling = timeout / 4;

    QByteArray command;
    hx::Microseconds sent = 0;
    std::vector<HeardMessage> heard;

    // The first message in time that is an answer to the command; empty when none came. Where the
    // command was an identity request an answer of the product comes before that of another one.
    QByteArray answer() const;
};

struct Conversation {
    std::vector<Exchange> exchanges;
    std::optional<hx::Microseconds> lostAt; // the host used the port after it was gone

    // When several replies are held back, one may come while the next command is being sent. The
    // host cannot tell it from the reply of a product that answers before the pause for the wire is
    // over, and may take it.
    bool answersMayComeEarly = false;
};

Conversation readConversation(const WireRecord& record);

// The four bytes of value in an answer to version, stored or calculated checksum; empty when the
// answer does not hold them.
QByteArray valueIn(const QByteArray& answer);

bool isIdentityRequest(const QByteArray& command);
bool isIdentityOfProduct(const QByteArray& answer);
bool isAcknowledgement(const QByteArray& answer);

extern const QByteArray versionRequest;
extern const QByteArray storedRequest;
extern const QByteArray calculatedRequest;

} // namespace sweep

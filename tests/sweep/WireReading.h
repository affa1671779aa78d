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
    static constexpr hx::Microseconds timeout = 2200 * 1000; // of a host in its usual patience

    QByteArray command;
    hx::Microseconds sent = 0;
    std::vector<HeardMessage> heard;
    int patience = 1; // how many times as long the host waits

    hx::Microseconds deadline() const { return sent + patience * timeout; }
    hx::Microseconds settling() const { return patience * timeout / 4; }

    // The first message in time that is an answer to the command; empty when none came. Where the
    // command was an identity request an answer of the product comes before that of another one.
    QByteArray answer() const;
};

struct Conversation {
    std::vector<Exchange> exchanges;
    // The host used the port when it was gone, or the port gave up a message that the host did not
    // send again.
    std::optional<hx::Microseconds> lostAt;

    // When several replies are held back, one may come while the next command is being sent. The
    // host cannot tell it from the reply of a product that answers before the pause for the wire is
    // over, and may take it.
    bool answersMayComeEarly = false;
};

// `patience` is the host's.
Conversation readConversation(const WireRecord& record, int patience = 1);

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

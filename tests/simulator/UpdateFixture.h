// A product, an image for it, and the acknowledgements there are.
#pragma once

#include "tests/simulator/UpdateMessages.h"
#include "tests/support/Valdrin.h"

#include <gtest/gtest.h>

namespace hx::sim {

inline const QByteArray good = "F0 00 6B 2D 30 41 43 0C 00 F7";
inline const QByteArray bad = "F0 00 6B 2D 30 41 43 0C 01 F7";
inline const QByteArray failed = "F0 00 6B 2D 30 41 43 0C 02 F7";
inline const QByteArray goodFwd = "F0 00 6B 2D 30 41 42 0C 00 F7";
inline const QByteArray badFwd = "F0 00 6B 2D 30 41 42 0C 01 F7";
inline const QByteArray failedFwd = "F0 00 6B 2D 30 41 42 0C 02 F7";

class Update : public testing::Test {
protected:
    QByteArray send(const QByteArray& message) { return answers(product, message); }

    // Sends the messages, each of which must be good.
    void sendAll(const QVector<QByteArray>& messages)
    {
        for (const QByteArray& message : messages)
            ASSERT_EQ(send(message).right(5), "00 F7") << hexOf(message).constData();
    }

    // Two full messages and a short one.
    const QByteArray code = codeOfSize(300);
    const QVector<QByteArray> image = imageOf(code, "1024");
    SimulatedProduct product{valdrin()};
};

} // namespace hx::sim

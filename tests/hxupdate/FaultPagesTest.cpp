// What goes wrong between the window and the product, and the page on which it ends.
#include "tests/hxupdate/WindowBench.h"

using namespace hxupdate;

namespace {

// Of the messages that the product hears, the first three are questions (identity, version, serial
// number); the image has the next ones, and the last four are questions again.
struct FaultyUpdate {
    const char* fault;
    const char* title;
};

const char updated[] = "Valdrin was updated";
const char silentBefore[] = "The product does not answer";
const char silentMidway[] = "The product stopped answering";
const char updateRefused[] = "The product refused the update";
const char bytesLost[] = "Bytes are lost on the way to the product";
const char notAcknowledged[] = "The update was not acknowledged";
const char connectionLost[] = "The connection was lost";
const char notProven[] = "The update is not proven";

// Longest time that a run may take, in the product's time: what docs/user/update-run.md promises, and one
// wait for a port that went away.
hx::Microseconds longestRun(const ImageFacts& image)
{
    constexpr hx::Microseconds second = hx::microsecondsPerSecond;
    constexpr hx::Microseconds timeout = 22 * second / 10;
    constexpr hx::Microseconds message = 4 * (timeout + timeout / 4 + second / 4);
    constexpr hx::Microseconds questions = 34 * (timeout + second / 4);
    constexpr hx::Microseconds listening = second;
    constexpr hx::Microseconds portWait = 5 * second;
    return 4 * image.wireMicroseconds + image.messages * message + questions + listening + portWait;
}

const FaultyUpdate faultyUpdates[] = {
    {"silent", silentBefore},
    {"silent:1", updated},
    {"silent:5", updated},
    {"silent:5-", silentMidway},
    {"duplicate-message:5", updated},
    {"duplicate-message", updated},
    {"damage-message:5", updated},
    {"damage-message:5-", bytesLost},
    {"cut-message:5", updated},
    {"cut-message:5-", silentMidway},
    {"insert-message:5", updated},
    {"insert-message:5-", bytesLost},
    {"refuse:2-3", updated},
    {"wrong-model", "Another product answered"},
    {"wrong-model:2-", silentMidway},
    {"vanish:1", "The product was disconnected"},
    {"vanish:2", "The product was disconnected"},
    {"vanish:5", connectionLost},
    {"bad-ack:2", updated},
    {"bad-ack:2-", bytesLost},
    {"failed-ack:1", updateRefused},
    {"failed-ack:3", updateRefused},
    {"power-cut:2", updateRefused},
    {"power-cut:1:before", updated},
    {"power-cut:5:3", notAcknowledged},
    {"drop-reply:5", updated},
    {"drop-reply:5-", silentMidway},
    {"duplicate-reply:5", updated},
    {"damage-reply:5", updated},
    {"cut-reply:5", updated},
    {"cut-reply:5-", silentMidway},
    {"insert-reply:5", updated},
    {"delay-reply:5", updated},
    {"late-reply:5", updated},
    {"swap-reply:5", updated},
    {"noise", updated},
    {"bad-write:5", notProven},
};

// The window and the host speak of the same end: neither says what the other does not.
void expectTheHostToAgree(const WindowBench& bench)
{
    const QByteArray record = bench.model->end().record;
    const QString host = QString::fromUtf8(record.mid(record.indexOf("# outcome: ")));
    const QString window = bench.textOf("title") + bench.textOf("sentence");
    for (const char* claim : {"the product is as it was", "The update was begun and not finished",
                              "The product holds the code of the image"})
        EXPECT_EQ(window.contains(claim), host.contains(claim))
            << claim << ": " << host.toStdString();
    EXPECT_EQ(window.startsWith(updated), host.startsWith("# outcome: succeeded."));
}

void expectItsPageInTime(const FaultyUpdate& update)
{
    WindowBench bench;
    bench.goTo(Step::Review);
    bench.product->setFaults(faults({update.fault}));
    const hx::Microseconds start = bench.product->clock().now();
    bench.click("start");
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.textOf("title"), update.title) << bench.allText().toStdString();
    EXPECT_LE(bench.product->clock().now() - start, longestRun(bench.model->image()));
    expectTheHostToAgree(bench);
    const bool holdsTheCode = bench.product->product().isCodeValid() &&
                              bench.product->product().codeBytes() == samples::code(300);
    EXPECT_TRUE(holdsTheCode || bench.textOf("title") != updated);
}

} // namespace

TEST(FaultPages, EachFaultEndsOnItsPageInTime)
{
    for (const FaultyUpdate& update : faultyUpdates) {
        SCOPED_TRACE(update.fault);
        expectItsPageInTime(update);
    }
}

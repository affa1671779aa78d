// What goes wrong between the window and the product, and the page on which it ends.
#include "tests/hxupdate/WindowBench.h"

using namespace hxupdate;

namespace {

// Of the messages that the product hears, the first three are questions (serial number, identity,
// version); the image has the next ones, and the last four are questions again.
struct FaultyUpdate {
    const char* fault;
    const char* title;
};

const char good[] = "Valdrin was updated";
const char silentBefore[] = "The product does not answer";
const char silentMidway[] = "The product stopped answering";
const char refused[] = "The product refused the update";
const char lost[] = "The connection was lost";
const char notProven[] = "The update is not proven";

// Longest time that a run may take by the host's own bound, in the product's time.
constexpr hx::Microseconds longestRun = 10 * 60 * hx::microsecondsPerSecond;

const FaultyUpdate faultyUpdates[] = {
    {"silent", silentBefore},
    {"silent:1", good},
    {"silent:5", good},
    {"silent:5-", silentMidway},
    {"duplicate-message:5", good},
    {"duplicate-message", good},
    {"damage-message:5", good},
    {"damage-message:5-", refused},
    {"cut-message:5", good},
    {"cut-message:5-", silentMidway},
    {"insert-message:5", good},
    {"insert-message:5-", refused},
    {"refuse:2-3", good},
    {"wrong-model", "Another product answered"},
    {"wrong-model:2-", "Another product answered"},
    {"vanish:1", "The product was disconnected"},
    {"vanish:2", "The product was disconnected"},
    {"vanish:5", lost},
    {"bad-ack:2", good},
    {"bad-ack:2-", refused},
    {"failed-ack:1", refused},
    {"failed-ack:3", refused},
    {"power-cut:2", refused},
    {"power-cut:1:before", good},
    {"drop-reply:5", good},
    {"drop-reply:5-", silentMidway},
    {"duplicate-reply:5", good},
    {"damage-reply:5", good},
    {"cut-reply:5", good},
    {"cut-reply:5-", silentMidway},
    {"insert-reply:5", good},
    {"delay-reply:5", good},
    {"late-reply:5", good},
    {"swap-reply:5", good},
    {"noise", good},
    {"bad-write:5", notProven},
};

void expectItsPageInTime(const FaultyUpdate& update)
{
    WindowBench bench;
    bench.goTo(Step::Review);
    bench.product->setFaults(faults({update.fault}));
    const hx::Microseconds start = bench.product->clock().now();
    bench.click("start");
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.textOf("title"), update.title) << bench.allText().toStdString();
    EXPECT_LE(bench.product->clock().now() - start, longestRun);
    const bool holdsTheCode = bench.product->product().isCodeValid() &&
                              bench.product->product().codeBytes() == samples::code(300);
    EXPECT_TRUE(holdsTheCode || bench.textOf("title") != good);
}

} // namespace

TEST(FaultPages, EachFaultEndsOnItsPageInTime)
{
    for (const FaultyUpdate& update : faultyUpdates) {
        SCOPED_TRACE(update.fault);
        expectItsPageInTime(update);
    }
}

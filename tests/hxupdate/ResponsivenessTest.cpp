// That the window goes on while something takes time: nothing of that runs on its thread.
#include "tests/hxupdate/WindowBench.h"

#include <QMessageBox>

using namespace hxupdate;

TEST(Responsiveness, TakesEventsWhileTheVerificationIsBlocked)
{
    WindowBench bench;
    bench.goTo(Step::Verifying);
    bench.click("stop");
    EXPECT_NE(bench.dialog<QMessageBox>("stopQuestion"), nullptr);
    bench.finish();
}

TEST(Responsiveness, NothingThatCanTakeTimeRunsOnTheThreadOfTheWindow)
{
    WindowBench bench;
    bench.goTo(Step::Updating);
    bench.finish();
    ASSERT_EQ(bench.model->end().ending, Ending::Succeeded);
    for (const ThreadLog* log :
         {&bench.ports->threads, &bench.product->threads, &bench.sleep->threads}) {
        EXPECT_EQ(log->onMain, 0);
        EXPECT_GT(log->elsewhere, 0);
    }
}

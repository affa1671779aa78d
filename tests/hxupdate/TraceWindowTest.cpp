// The window that shows a recorded trace.
#include "apps/hxupdate/window/TraceWindow.h"

#include "tests/hxupdate/WindowBench.h"

#include <QTableView>

using namespace hxupdate;

TEST(TraceWindow, TimesEventsAndNamesAreNotCut)
{
    const auto events = hx::readTrace(HX_DOCS_FOLDER "/user/update-sequence.trace");
    ASSERT_TRUE(events);
    TraceWindow window("update.trace", *events, nullptr);
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.show();
    const auto* table = window.findChild<QTableView*>("table");
    ASSERT_EQ(table->model()->columnCount(), 4);
    for (int column = 0; column < 3; ++column) {
        for (int row = 0; row < table->model()->rowCount(); ++row) {
            const QModelIndex cell = table->model()->index(row, column);
            const QString text = cell.data().toString();
            EXPECT_GT(table->columnWidth(column), table->fontMetrics().horizontalAdvance(text))
                << text.toStdString();
        }
    }
}

// Shows a recorded trace: as a drawing, and as a table.
#pragma once

#include "host/trace/Trace.h"

#include <QCoreApplication>
#include <QDialog>

namespace hxupdate {

class TraceWindow final : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(TraceWindow)

public:
    TraceWindow(const QString& path, const hx::TraceEvents& events, QWidget* parent);

private:
    QWidget* newDrawing(const QString& title, const hx::TraceEvents& events);
    QWidget* newTable(const hx::TraceEvents& events);
};

} // namespace hxupdate

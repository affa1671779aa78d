// How far a batch has come, on standard error: a line for each product on a terminal, drawn anew in
// its place; plain lines or JSON lines elsewhere.
#pragma once

#include "apps/hxhost/batch/BatchUnit.h"
#include "apps/hxhost/report/Progress.h"

#include <map>

namespace hx::host {

// "auto" is a line a product where lines may be redrawn, JSON lines elsewhere.
ProgressMode batchMode(ProgressMode mode);

class BatchDisplay {
public:
    // `mode` is one of `batchMode`.
    BatchDisplay(Console& console, ProgressMode mode);

    // A line of the JSON progress of `hxhost update`.
    void show(const BatchUnit& unit, const QJsonObject& progress);

    // `count` is that of all units up to this one.
    void end(const BatchUnit& unit, const BatchCount& count);

    // What happened to no unit.
    void note(const QString& text);

    // Takes away what is drawn.
    void finish();

private:
    void redraw();

    Console& m_console;
    ProgressMode m_mode;
    std::map<QString, UpdateProgress> m_running; // by port
    std::map<QString, QString> m_names;          // by port
    std::map<QString, int> m_shown;              // tenths of plain lines, by port
    QString m_count;
};

} // namespace hx::host

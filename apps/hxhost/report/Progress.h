// How far an update has come, drawn as a bar, as plain lines or as JSON lines on standard error.
#pragma once

#include "apps/hxhost/report/Console.h"

#include "host/update/UpdateRun.h"

#include <QString>

namespace hx::host {

enum class ProgressMode { Auto, Bar, Plain, Json, None };

// What "auto" means here: a bar where a line may be redrawn, plain lines elsewhere.
ProgressMode resolvedMode(ProgressMode mode);

// Share of the image's bytes that the product has acknowledged, 0 to 100.
int percentOf(const UpdateProgress& progress);

// "56%  3.1 kB/s  0:12 left" and the bar before it, in at most `columns` columns. Pieces that do
// not fit are left out from the right.
QString progressBar(const UpdateProgress& progress, int columns);
QString progressLine(const UpdateProgress& progress);
QString progressJson(const UpdateProgress& progress);

class Progress {
public:
    Progress(Console& console, ProgressMode mode);

    // Shows the state when it differs enough from what was shown last: by a per cent for a bar and
    // for JSON, by ten for plain lines.
    void show(const UpdateProgress& progress);
    void finish();

private:
    int step() const { return m_mode == ProgressMode::Plain ? 10 : 1; }

    Console& m_console;
    ProgressMode m_mode;
    int m_shown = -1;
};

} // namespace hx::host

// What the host says of an update, compared with the record of the wire and with the product's memory.
#pragma once

#include "host/update/UpdateRun.h"
#include "tests/sweep/Oracle.h"

#include <QStringList>

namespace sweep {

// An update that is over.
struct Course {
    const Scenario& scenario;
    const hx::UpdateImage& image;
    const hx::UpdateResult& result;
    const FaultyLink& link;
    const hx::Patience& patience;
    hx::Microseconds elapsed;
};

// Whether the product would run the code of the image, and as what it was sent.
bool holds(const hx::sim::StoredCode& code, const hx::UpdateImage& image);

// What was not as it must be; `before` and `now` are the product's memory.
QStringList complaintsAbout(const Course& course, const hx::sim::StoredCode& before,
                            const hx::sim::StoredCode& now);

} // namespace sweep

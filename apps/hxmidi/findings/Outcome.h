// What a command gives back; the command line prints it.
#pragma once

#include "apps/hxmidi/findings/ExitCode.h"
#include "apps/hxmidi/findings/Finding.h"

#include <QByteArray>
#include <QIODevice>
#include <QJsonObject>

#include <functional>

namespace hx::midi {

struct Outcome {
    explicit Outcome(QIODevice& input) : standardInput(input) {}

    QIODevice& standardInput;
    bool standardInputRead = false;
    Findings findings;
    QByteArray text; // for standard output, unless there are errors
    ExitCode code = ExitCode::Success;
    // The same as an object; asked for with --json only.
    std::function<QJsonObject()> result = [] { return QJsonObject(); };
    int rows = 0; // elements of the longest list in it
};

} // namespace hx::midi

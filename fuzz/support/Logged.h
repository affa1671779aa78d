// The lines that a piece of code writes on Qt's message channel.
#pragma once

#include "tests/support/LogCapture.h"

#include <QStringList>

namespace hx {
namespace fuzz {

// What `work` logs, each line with its kind and category in front.
template <typename Work>
QStringList logged(Work&& work)
{
    QStringList lines;
    LogCapture capture;
    work();
    for (const LogLine& line : capture.lines())
        lines += QString::number(line.type) + line.category + QLatin1Char(' ') + line.text;
    return lines;
}

} // namespace fuzz
} // namespace hx

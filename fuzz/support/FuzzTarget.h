// What a fuzz target is made of: its function, registered by name, and the checks it makes.
#pragma once

#include "fuzz/support/FuzzInput.h"

#include <QDebug>
#include <QString>

#include <utility>

namespace hx {
namespace fuzz {

// Runs once for each input. An input is a finding when this aborts, crashes or never returns.
using TargetFunction = void (*)(FuzzInput& input);

// Makes a target known under the name that its program, seeds and dictionary carry.
struct Target {
    Target(const char* targetName, TargetFunction function);

    const char* name;
    TargetFunction run;
    const Target* next;

    // The one registered last; `next` leads to the others.
    static const Target* last;
};

// Prints what does not hold and aborts.
[[noreturn]] void fail(const char* what, const QString& details);

inline void require(bool holds, const char* what)
{
    if (!holds)
        fail(what, QString());
}

template <typename Value>
QString shown(const Value& value)
{
    QString text;
    QDebug(&text) << value;
    return text;
}

template <typename Value, typename Expected>
void requireSame(const Value& value, const Expected& expected, const char* what)
{
    if (!(value == expected))
        fail(what, shown(value) + QLatin1String("but should be ") + shown(expected));
}

} // namespace fuzz
} // namespace hx

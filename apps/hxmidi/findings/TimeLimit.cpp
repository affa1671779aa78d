#include "apps/hxmidi/findings/TimeLimit.h"

#include "qt/Saturated.h"

#include <algorithm>
#include <cerrno>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace hx::midi {

namespace {

constexpr rlim_t limitSeconds = 1;

[[noreturn]] void workUntilLimit(const std::function<void()>& work)
{
    const rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    const rlimit limit = {limitSeconds, limitSeconds + 1};
    setrlimit(RLIMIT_CPU, &limit);
    work();
    _exit(0);
}

// True also where no process can be started.
bool endsInTime(const std::function<void()>& work)
{
    const pid_t child = fork();
    if (child < 0)
        return true;
    if (child == 0)
        workUntilLimit(work);
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return true;
    }
    return WIFEXITED(status);
}

bool repeats(const QByteArray& pattern)
{
    return std::any_of(pattern.begin(), pattern.end(),
                       [](char c) { return QByteArray("*+?{\\").contains(c); });
}

} // namespace

bool refusesTime(const SourceText& pattern, const std::function<void()>& work, Findings& findings)
{
    if (!repeats(pattern.text) || endsInTime(work))
        return false;
    findings.error(QStringLiteral("the pattern needs more than a second of processor time"),
                   QStringLiteral("a pattern that is decided sooner"),
                   QStringLiteral("use fewer repetitions inside of repetitions, or less data"),
                   Place{pattern, {0, saturated(pattern.text.size())}});
    return true;
}

} // namespace hx::midi

#include "fuzz/support/FuzzTarget.h"

#include <cstdio>
#include <cstdlib>

namespace hx {
namespace fuzz {

const Target* Target::last = nullptr;

Target::Target(const char* targetName, TargetFunction function)
    : name(targetName), run(function), next(last)
{
    last = this;
}

void fail(const char* what, const QString& details)
{
    std::fprintf(stderr, "does not hold: %s\n%s\n", what, qPrintable(details));
    std::abort();
}

} // namespace fuzz
} // namespace hx

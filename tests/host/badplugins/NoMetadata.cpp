#include "tests/host/badplugins/RanMark.h"

extern "C" Q_DECL_EXPORT int ordinaryFunction()
{
    return ranMark ? 1 : 0;
}

// Whether the fast paths are used: always, unless the build switch HX_PLAIN turns them off. Every
// operation gives the same result both ways.
#pragma once

namespace hx {

#ifdef HX_PLAIN
inline constexpr bool fastPaths = false;
#else
inline constexpr bool fastPaths = true;
#endif

} // namespace hx

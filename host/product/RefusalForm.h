// The short form in which the product refuses a command: its first seven bytes, 46 and F7.
#pragma once

namespace hx {

constexpr int refusalBytes = 9;
constexpr int refusalMarkPosition = 7;
constexpr char refusalMark = 0x46;

} // namespace hx

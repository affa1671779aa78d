// Who the product is: the one place for its identifier word.
#pragma once

namespace hx {

constexpr unsigned int valdrinIdentifier = 0x300041; // family byte 0x30, model byte 0x41

} // namespace hx

// Who the product is. Every name and number that differs from other products is here.
#pragma once

#include <QtGlobal>

namespace product {

// Family byte in bits 16 to 23, model byte in bits 0 to 7: the word that hosts know products by.
constexpr quint32 identifier = 0x120005;

// How every message of the product begins: F0, the maker's identifier, family byte, model byte.
#define PRODUCT_HEADER "F0 00 21 7F 12 05"

// What the product answers to an identity request: each number is two bytes, the low one first.
#define PRODUCT_IDENTITY "F0 7E .. 06 02 00 21 7F 12 00 05 00 .. .. .. .. F7"

constexpr char name[] = "Example";
constexpr char portName[] = "Example Update"; // of its MIDI port, while the boot loader runs
constexpr char interfaceName[] = "ExampleBoot";
constexpr char nickName[] = "MyExampleBoot";
constexpr char pluginVersion[] = "0.0.0.1";

} // namespace product

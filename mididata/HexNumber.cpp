#include "mididata/HexNumber.h"

#include "mididata/HexDigits.h"

#include <QString>

namespace hx {

HexNumber readHexNumber(std::string_view token)
{
    if (token.size() == 2) {
        const int byte = hexByte(token[0], token[1]);
        if (byte >= 0)
            return {static_cast<unsigned int>(byte), true};
    }
    HexNumber number{};
    const QString text = QString::fromLatin1(token.data(), static_cast<int>(token.size()));
    number.value = static_cast<unsigned int>(text.toInt(&number.ok, 16));
    return number;
}

} // namespace hx

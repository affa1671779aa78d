#include "bench/HexPeers.h"

#ifdef HXBENCH_ABSL
#include <absl/strings/escaping.h>
#include <absl/strings/match.h>
#endif
#ifdef HXBENCH_SODIUM
#include <sodium.h>
#endif

namespace hxbench {

#ifdef HXBENCH_ABSL

namespace {

absl::string_view viewOf(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<size_t>(bytes.size())};
}

} // namespace

std::string abslWritten(const QByteArray& bytes)
{
    return absl::BytesToHexString(viewOf(bytes));
}

std::string abslRead(const QByteArray& digits)
{
    return absl::HexStringToBytes(viewOf(digits));
}

bool abslContains(const QByteArray& bytes, const QByteArray& part)
{
    return absl::StrContains(viewOf(bytes), viewOf(part));
}

#endif

#ifdef HXBENCH_SODIUM

QByteArray sodiumWritten(const QByteArray& bytes)
{
    QByteArray text(2 * bytes.size() + 1, Qt::Uninitialized); // it writes a zero after the text
    sodium_bin2hex(text.data(), static_cast<size_t>(text.size()),
                   reinterpret_cast<const unsigned char*>(bytes.constData()),
                   static_cast<size_t>(bytes.size()));
    return text;
}

QByteArray sodiumRead(const QByteArray& text, const char* blanks)
{
    QByteArray bytes(text.size() / 2, Qt::Uninitialized);
    size_t read = 0;
    if (sodium_hex2bin(reinterpret_cast<unsigned char*>(bytes.data()),
                       static_cast<size_t>(bytes.size()), text.constData(),
                       static_cast<size_t>(text.size()), blanks, &read, nullptr) != 0)
        return QByteArray();
    bytes.truncate(static_cast<decltype(bytes.size())>(read));
    return bytes;
}

#endif

} // namespace hxbench

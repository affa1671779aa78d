#include "ProtocolTable.h"

#include "Product.h"

namespace {

struct Text {
    const char* key;
    const char* hex;
};

// Commands in hex; replies as patterns, in which ".." is any byte (HxMidiData::match has the whole
// notation). A host finds a reply by the key of its command with ".response" at the end.
constexpr Text texts[] = {
    {"identify", "F0 7E 7F 06 01 F7"},
    {"identify.response", PRODUCT_IDENTITY},
    {"reset", PRODUCT_HEADER " 1B 09 58 F7"},
    {"gender.read", PRODUCT_HEADER " 2F F7"},
    {"gender.read.response", PRODUCT_HEADER " 2F .. .. .. .. F7"},
    {"esn.read", PRODUCT_HEADER " 21 F7"},
    {"esn.read.response", PRODUCT_HEADER " 21 .. .. .. .. .. .. .. .. F7"},
    {"version.read.user", PRODUCT_HEADER " 2E F7"},
    {"version.read.user.response", PRODUCT_HEADER " 2E .. .. .. .. F7"},
    {"version.read.user.crc", PRODUCT_HEADER " 30 F7"},
    {"version.read.user.crc.response", PRODUCT_HEADER " 30 .. .. .. .. F7"},
    {"version.calc.user.crc", PRODUCT_HEADER " 31 F7"},
    {"version.calc.user.crc.response", PRODUCT_HEADER " 31 .. .. .. .. F7"},
    {"loader.set.boot", PRODUCT_HEADER " 1C 02 F7"},
    {"loader.set.user", PRODUCT_HEADER " 1C 00 F7"},
    {"fwupdate.fwu.response.any", PRODUCT_HEADER " 43 0C .. F7"},
    {"fwupdate.fwu.response.good", PRODUCT_HEADER " 43 0C 00 F7"},
    {"fwupdate.fwu.response.bad", PRODUCT_HEADER " 43 0C 01 F7"},
    {"fwupdate.fwu.response.failed", PRODUCT_HEADER " 43 0C 02 F7"},
    {"fwupdate.fwu.filecheck",
     PRODUCT_HEADER " 43 0C .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. F7"},
};

} // namespace

QMap<QString, QVariant> buildProtocolTable()
{
    QMap<QString, QVariant> table;
    for (const Text& text : texts)
        table.insert(QString::fromLatin1(text.key),
                     QString::fromLatin1(text.hex).remove(QLatin1Char(' ')));
    table.insert(QStringLiteral("command.timeout.ms"), 2200);
    table.insert(QStringLiteral("command.timeout.s"), 2);
    return table;
}

#include "plugin/ProtocolTable.h"

namespace {

// One entry: a message or reply pattern as spaced text, or a number (an offset or a timeout).
struct Entry {
    Entry(const char* name, const char* text)
        : key(QLatin1String(name)), value(QString::fromLatin1(text).remove(QLatin1Char(' ')))
    {
    }
    Entry(const char* name, int number) : key(QLatin1String(name)), value(number) {}

    QString key;
    QVariant value;
};

} // namespace

// In the order in which they are inserted: a later entry replaces an earlier one with the same key.
// "rawgender.read" is listed twice with the same text; of the two "rawgender.read.response" the
// second, full pattern is the one that counts. ".." is any byte; "vv" marks value bytes; what other
// notation means is said at HxMidiData::match and HxMidiData::setData.
//
// Patterns differ in whether they fix the model byte (41) or accept any of the family (..), and in
// sub-command (42, 43 or both). The product's replies differ in the same way: do not even them out.
QMap<QString, QVariant> hx::buildProtocolMap()
{
    // clang-format off
    const Entry entries[] = {
        {"reset", "F0 00 6B 2D 30 41 1B 09 58 F7"},
        {"identify", "F0 7E 7F 06 01 F7"},
        {"identify.response", "F0 7E .. 06 02 .. .. .. .. .. .. .. .. .. .. .. F7"},
        {"gender", "F0 00 6B 2D 30 41 2F F7"},
        {"gender.response", "F0 00 6B 2D 30 41 2F 00 vv 00 vv F7"},
        {"id.dsp0", "F0 00 6B 2D 30 41 42 08 F7"},
        {"id.dsp1", "F0 00 6B 2D 30 41 42 09 F7"},
        {"id.dsp*.response", "F0 00 6B 2D 30 41 42 0[89] .. .. .. .. .. .. .. .. .. .. .. .. .. F7"},
        {"id.dsp0.response", "F0 00 6B 2D 30 41 42 08..*F7"},
        {"id.dsp1.response", "F0 00 6B 2D 30 41 42 09 .. .. .. .. .. .. .. .. .. .. .. .. .. F7"},
        {"id.dsp0.response.invalid", "F0 00 6B 2D 30 41 42 08 02 F7"},
        {"id.dsp1.response.invalid", "F0 00 6B 2D 30 41 42 09 02 F7"},
        {"id.dsp.offset.response_flag", 10},
        {"id.dsp.offset.bank_status", 20},
        {"id.dsp.offset.code_size", 12},
        {"id.dsp.offset.code_ver", 8},
        {"rawgender.read", "F0 00 6B 2D 30 41 42 0D 0F NIB24 F7"},
        {"rawgender.read.response", "F0 00 6B 2D 30 41 42 0D"},
        {"version.read.user.crc", "F0 00 6B 2D 30 41 30 F7"},
        {"version.read.user.crc.response", "F0 00 6B 2D 30 41 30 .. .. .. .."},
        {"version.calc.user.crc", "F0 00 6B 2D 30 41 31 F7"},
        {"version.calc.user.crc.response", "F0 00 6B 2D 30 41 31 .. .. .. .."},
        {"rawgender.read", "F0 00 6B 2D 30 41 42 0D 0F NIB24 F7"},
        {"rawgender.read.response", "F0 00 6B 2D 30 41 42 0D .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. F7"},
        {"esn.read", "F0 00 6B 2D 30 41 21 F7"},
        {"esn.read.response", "F0 00 6B 2D 30 41 21 .. .. .. .. .. .. .. .. F7"},
        {"loader.set.dfu", "F0 00 6B 2D 30 41 1C 01 F7"},
        {"loader.set.user", "F0 00 6B 2D 30 41 1C 00 F7"},
        {"loader.set.boot", "F0 00 6B 2D 30 41 1C 02 F7"},
        {"version.read.user", "F0 00 6B 2D 30 41 2E F7"},
        {"version.read.user.response", "(F0 00 6B 2D 30 .. 2E .. .. .. .. F7|F0 00 6B 2D 30 .. 2E 46 F7)"},
        {"gender.read", "F0 00 6B 2D 30 41 2F F7"},
        {"gender.read.response", "(F0 00 6B 2D 30 41 2F .. .. .. .. F7|F0 00 6B 2D 30 41 2F 46 F7)"},
        {"fwupdate.fwu.response.any", "F0 00 6B 2D 30 41 4[23] 0C .. F7"},
        {"fwupdate.fwu.response.good", "F0 00 6B 2D 30 .. 4[23] 0C 00 F7"},
        {"fwupdate.fwu.response.bad", "F0 00 6B 2D 30 .. 4[23] 0C 01 F7"},
        {"fwupdate.fwu.response.failed", "F0 00 6B 2D 30 .. 4[23] 0C 02 F7"},
        {"fwupdate.fwu.filecheck", "F0 00 6B 2D 30 41 43 0C .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. F7"},
        {"fwupdate.fwd.filecheck", "F0 00 6B 2D 30 .. 42 0C .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. .. F7"},
        {"fwupdate.fwd.response.any", "F0 00 6B 2D 30 41 4[23] 0C .. F7"},
        {"fwupdate.fwd.response.good", "F0 00 6B 2D 30 .. 4[23] 0C 00 F7"},
        {"fwupdate.fwd.response.bad", "F0 00 6B 2D 30 .. 4[23] 0C 01 F7"},
        {"fwupdate.fwd.response.failed", "F0 00 6B 2D 30 .. 4[23] 0C 02 F7"},
        {"command.timeout.ms", 2200},
        {"command.timeout.s", 2},
    };
    // clang-format on

    QMap<QString, QVariant> map;
    for (const Entry& entry : entries)
        map.insert(entry.key, entry.value);
    return map;
}

#include "bench/Bench.h"
#include "bench/HexPeers.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/transcription/Transcription.h"

#include <QString>

namespace hxbench {

namespace {

constexpr int messageSize = 48;

/** Allocates as many bytes and fills them. */
QByteArray filled(int size)
{
    return QByteArray(size, 'F');
}

QByteArray ownSetText(const QByteArray& text)
{
    HxMidiData data;
    data.setText(text.constData());
    return data.bytes;
}

void addSetText(const std::string& name, const QByteArray& text)
{
    add(name + "own", [=] { return ownSetText(text); });
    add(name + "steps", [=] { return transcription::setText(text.constData()); });
    add(name + "fromHex", [=] { return QByteArray::fromHex(text); });
    add(name + "floor", [] { return filled(messageSize); });
#ifdef HXBENCH_SODIUM
    const char* const blanks = text.contains(' ') ? " " : nullptr;
    add(name + "sodium", [=] { return sodiumRead(text, blanks); });
#endif
}

void addConstructors(const std::string& form, const QByteArray& text)
{
    const QString string = QString::fromLatin1(text);
    const std::string fromString = "from QString/" + form + "/";
    add(fromString + "own", [=] { return HxMidiData(string).bytes; });
    add(fromString + "steps", [=] { return transcription::fromText(string); });
    add(fromString + "fromHex", [=] { return QByteArray::fromHex(string.toLatin1()); });
    add(fromString + "floor", [] { return filled(messageSize); });
    const std::string fromCharacters = "from characters/" + form + "/";
    add(fromCharacters + "own", [=] { return HxMidiData(text.constData()).bytes; });
    add(fromCharacters + "steps", [=] { return transcription::fromText(text.constData()); });
}

void addLongText(int size)
{
    const QByteArray text = mixedBytes(size).toHex(' ');
    add("setText long/" + sizeName(size) + "/own", [=] { return ownSetText(text); });
    add("setText long/" + sizeName(size) + "/fromHex", [=] { return QByteArray::fromHex(text); });
    add("setText long/" + sizeName(size) + "/floor", [=] { return filled(size); });
#ifdef HXBENCH_SODIUM
    add("setText long/" + sizeName(size) + "/sodium", [=] { return sodiumRead(text, " "); });
#endif
}

} // namespace

void addHexText()
{
    const QByteArray compact = mixedBytes(messageSize).toHex().toUpper();
    const QByteArray spaced = mixedBytes(messageSize).toHex(' ').toUpper();
    addSetText("setText/48 compact/", compact);
    addSetText("setText/48 spaced/", spaced);
#ifdef HXBENCH_ABSL
    add("setText/48 compact/absl", [=] { return abslRead(compact); }); // it takes no blanks
#endif
    addConstructors("48 compact", compact);
    addConstructors("48 spaced", spaced);
    for (const int size : {4096, 8192, 16384, 1 << 20})
        addLongText(size);
}

} // namespace hxbench

// A typed value at a place of a message, as the fields command names it: 14bit@7, string@5+8.
#pragma once

#include "apps/hxmidi/findings/Finding.h"

#include "mididata/HxMidiData.h"

#include <QJsonValue>

#include <optional>

namespace hx::midi {

enum class FieldType {
    Bits14,
    UTime,
    Float32,
    Bits32,
    Bits32LittleEndian,
    Int1,
    Int2,
    Int3,
    Int4,
    String,
    Ascii,
};

struct FieldReference {
    QByteArray text; // as it was typed
    FieldType type;
    int position;
    int length; // of a text; 0 when none was given
};

struct FieldValue {
    QString text;
    QJsonValue json;
};

// Whether a word of the command line is meant as a field and not as data.
bool looksLikeField(const QByteArray& word);

// Reports what is wrong with the word as an error.
std::optional<FieldReference> readFieldReference(const QByteArray& word, Findings& findings);

// Reads the field with HxMidiData's getter for it. One that does not lie within the data is an
// error, or has the value `fallback` if there is one and the field is no text.
std::optional<FieldValue> readField(const HxMidiData& data, const FieldReference& field,
                                    std::optional<int> fallback, Findings& findings);

} // namespace hx::midi

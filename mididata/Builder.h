// Messages from builder formats, with a word on each piece that gives no bytes or others than it shows.
// Not installed.
#pragma once

#include "mididata/BuilderFields.h"
#include "mididata/TextProblem.h"

#include <QByteArray>

#include <optional>

class HxMidiData;

namespace hx {

// A field of a format, and its place there.
struct FieldPlace {
    const BuilderField& field;
    qint64 offset;
    qint64 length;
};

// Where the fields of a format take their arguments from. Each call takes the next argument, or none:
// then the field gives no bytes. A text without bytes is an argument.
class BuilderArguments {
public:
    virtual ~BuilderArguments() = default;

    virtual std::optional<int> number(const FieldPlace& place) = 0;
    virtual std::optional<quint32> word(const FieldPlace& place) = 0;
    virtual std::optional<double> real(const FieldPlace& place) = 0;
    virtual std::optional<QByteArray> hexBytes(const FieldPlace& place) = 0;
    virtual std::optional<QByteArray> characters(const FieldPlace& place) = 0;
};

// Appends what HxMidiData::vSetData() appends. Logs nothing. The format and the arguments must not lie
// in `data`.
void appendMessage(HxMidiData& data, const char* format, BuilderArguments& arguments,
                   const ProblemSink& report);

} // namespace hx

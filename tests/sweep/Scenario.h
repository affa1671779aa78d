// One fault at one byte of one message: what the sweep tries, as a value and as a line of text.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace sweep {

enum class Direction { Out, In }; // from the host to the product, and back

enum class FaultKind {
    None,
    Drop,      // the byte is lost
    Duplicate, // the byte comes twice
    Flip,      // `value` is the mask of the bits that change
    Truncate,  // the byte and all behind it are lost
    Insert,    // the byte `value` comes before it
    Delay,     // it and all behind it arrive `value` microseconds after the command was sent
    Split,     // the message comes in pieces of this many bytes and one
    Reorder,   // it and all behind it come after the next message
    Merge,     // what is before it comes together with the next message; it and the rest are lost
    Splice,    // what is before it takes the place of as many bytes of the next message
    Old,       // a copy of the message number `value` comes before it
    Vanish,    // the port is gone when the bytes before it have passed
    PowerOff,  // the product restarts when the bytes before it have passed
    PowerCut,  // power fails after `value` single memory writes of the message
    BadCell,   // the memory cell `value` fails once the message was handled
    Deaf,      // from it on the product hears and says nothing for `value` microseconds
    Refuse,    // the product answers with a refusal instead of acting
    Answer,    // it acknowledges with the status `value` instead of acting
    OtherModel // another model of the family is at the port
};

struct Scenario {
    Direction direction = Direction::Out;
    int message = 1; // in this direction, counted from 1
    int byte = 0;    // of the message, counted from 0
    FaultKind fault = FaultKind::None;
    int value = 0;   // 0 where the fault has none
    int strikes = 1; // this message and those after it; 0: all of them

    bool isLasting() const { return strikes != 1; }
    bool hits(int ordinal) const
    {
        return ordinal >= message && (strikes == 0 || ordinal < message + strikes);
    }
};

// All kinds, in the order of their names in the list for people.
const std::vector<FaultKind>& allFaultKinds();
const char* faultName(FaultKind kind);

// "out 3.17 flip 40 x1": direction, message and byte, fault, value (bytes and masks in hexadecimal,
// times and counts in decimal), strikes ("x*": all from there on).
QString scenarioText(const Scenario& scenario);

// The same back; nothing when the line is none, `error` then says which piece is wrong.
std::optional<Scenario> parseScenario(const QString& line, QString* error);

} // namespace sweep

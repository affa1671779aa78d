// What is tried: faults, each at one byte of one message, as a value and as a line of text.
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
    HalfWrite, // and half of the next one
    UnsteadyWrite, // the same, and a bit of it reads differently each time
    BadCell,       // the memory cell `value` fails once the message was handled
    Deaf,          // from it on the product hears and says nothing for `value` microseconds
    Refuse,        // the product answers with a refusal instead of acting
    Answer,        // it acknowledges with the status `value` instead of acting
    OtherModel,    // another model of the family is at the port
    // What slow operating systems and drivers do:
    Packets, // it comes in pieces of as many bytes as `byte` says, `value` microseconds apart
    Cap,     // what is behind its first `value` bytes is lost
    Abort,   // the port takes the bytes before it and gives the message up
    Garble   // until `value` microseconds have passed since the start, the byte is another one
};

// What a message is about: a command by its bytes, a reply by the command that it answers.
enum class Topic { Any, Identity, Version, Data, Check, Closing, Stored, Calculated };

struct Fault {
    Direction direction = Direction::Out;
    int message = 1; // in this direction, counted from 1; has no meaning where there is a topic
    int byte = 0;    // of the message, counted from 0
    FaultKind kind = FaultKind::None;
    int value = 0;            // 0 where the kind has none
    int strikes = 1;          // this message and those after it; 0: all of them
    Topic topic = Topic::Any; // another: every message of this topic, for ever

    bool isLasting() const { return strikes != 1; }
    bool hits(int ordinal, Topic about) const
    {
        if (topic != Topic::Any)
            return about == topic;
        return ordinal >= message && (strikes == 0 || ordinal < message + strikes);
    }
};

// All faults of one run; most have one.
struct Scenario {
    std::vector<Fault> faults;

    bool isLasting() const;
    bool has(FaultKind kind) const;
};

// All kinds, in the order of their names in the list for people.
const std::vector<FaultKind>& allFaultKinds();
const char* faultName(FaultKind kind);

// All topics but Any, in the order of an update.
const std::vector<Topic>& allTopics();

// "out 3.17 flip 40 x1": direction, message or topic ("data.17") and byte, fault, value (bytes and
// masks in hexadecimal, times and counts in decimal), strikes ("x*": all from there on). Several
// faults stand in one line with " + " between them.
QString faultText(const Fault& fault);
QString scenarioText(const Scenario& scenario);

// The same back; nothing when the line is none, `error` then says which piece is wrong.
std::optional<Scenario> parseScenario(const QString& line, QString* error);

} // namespace sweep

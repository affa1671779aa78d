// Who a product says it is: the parsed identity reply, and the identifier read from its memory.
#pragma once

#include "deviceinterface/DeviceInterface.h"
#include "mididata/HxMidiData.h"

#include <QString>

// Says where the first version character comes from: 0 takes it from the reply, any other value
// puts a character of code 0 in its place.
struct HxIdentityCtrl {
    HxIdentityCtrl(int control = 0) : value(control) {}

    int value;
};

// A MIDI identity reply, taken apart. Positions are byte positions in the reply, from its F0.
//
// With a one-byte manufacturer identifier the reply reads
//   F0 7E dev 06 02 mfr famLo famHi modLo modHi ver1 ver2 ver3 ver4 F7;
// an identifier whose first byte is 00 takes three bytes and moves all that follows by two.
struct HxIdentity {
    // Resets the record, then parses `reply`: true when it was accepted. Accepted is an identity
    // reply (F0 7E .. 06 02 found anywhere) of at least 16 bytes that holds the manufacturer's
    // 00 6B 2D anywhere; both are sought in the hex text, half bytes included.
    //
    // A refused reply leaves the record reset. `reply` may be the record's own.
    bool init(HxMidiData const& reply, HxIdentityCtrl ctrl);

    int deviceIdOffset = 2;
    int manufacturerIdOffset = 5;
    int manufacturerIdLength = 1;
    int familyOffset = 6;
    int modelOffset = 8;
    int versionOffset = 10;
    int tailOffset = 13; // not moved by a long manufacturer identifier; nobody reads it

    HxMidiData reply; // the whole identity reply; empty before the first and after a refused one

    // The four version characters read as decimal digits, 1.0.2.3 as 1023; a character that is no
    // digit counts as 0.
    qint32 versionNumber = 0;

    // The four version bytes as characters with dots between, always 7 characters; null when reset.
    QString versionText;
};

namespace hx {

// Reads the 16 bytes at `address` (24 bits) of the product's memory with the device's
// "rawgender.read" command and returns (family << 16) | model out of them. 0x7F007F on any failure:
// no bus, no reply of at least 48 bytes, bytes that were never written (both FF), or a command
// template that takes more than one number, or a float or a text: the builder would then read an
// argument that is not there. Whatever else the template holds is the builder's to read or ignore.
//
// The dictionary's reply pattern describes 41 bytes, the product's reply has 48: with a host whose
// bus filters by the pattern this read never succeeds.
unsigned getRawFidPid(int address, DeviceInterface* device);

} // namespace hx

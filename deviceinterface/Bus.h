/** @file
 * The host's transport for one attached product, as a plugin sees it.
 */
#pragma once

#include "deviceinterface/FwUpdateProtocol.h"
#include "mididata/HxMidiData.h"

#include <QString>

/** A MIDI message on its way over the bus. */
using BusData = HxMidiData;

/**
 * A plugin never opens a MIDI port: it hands each command to the bus, which writes it, waits for
 * the reply that fits and returns it. The order of the operations is part of the contract.
 */
class Bus {
public:
    virtual ~Bus() = default;

    /**
     * Sends `command` and returns the first reply that fits `responsePattern` (the pattern notation
     * of HxMidiData::match), or an empty buffer when none came within `timeoutMs` milliseconds;
     * `errorText` then says why.
     */
    virtual BusData transact(BusData command, QString responsePattern, unsigned timeoutMs) = 0;

    /** The same with a compiled pattern. */
    virtual BusData transactExpect(BusData const& command, ResponceData const& expected,
                                   unsigned timeoutMs) = 0;

    /** Why the last exchange gave an empty reply. Plugins read it for their log lines. */
    QString errorText;
};

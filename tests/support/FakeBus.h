// A bus that records what it is asked and answers from a list prepared by the test.
#pragma once

#include "deviceinterface/Bus.h"

#include <QVector>

class FakeBus : public Bus {
public:
    struct Exchange {
        HxMidiData command;
        QString pattern;
        unsigned timeoutMs = 0;
        bool compiled = false; // asked through transactExpect
    };

    BusData transact(BusData command, QString responsePattern, unsigned timeoutMs) override
    {
        exchanges.append({command, responsePattern, timeoutMs, false});
        return nextReply();
    }

    BusData transactExpect(BusData const& command, ResponceData const& expected,
                           unsigned timeoutMs) override
    {
        exchanges.append({command, expected.rx.pattern(), timeoutMs, true});
        return nextReply();
    }

    // What the exchanges answer, in order; an empty buffer once the list is used up.
    QVector<HxMidiData> replies;
    QVector<Exchange> exchanges;

private:
    BusData nextReply() { return replies.isEmpty() ? HxMidiData() : replies.takeFirst(); }
};

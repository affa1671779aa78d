/** @file
 * The MIDI ports of this machine, backend by backend.
 */
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace hx {

/** One way to reach MIDI ports: "alsa" and "jack" on Linux, "core" on macOS. */
struct MidiBackend {
    QString name;
    QString title;       /**< for people: "Jack", "ALSA" */
    QStringList inputs;  /**< ports that bytes come from */
    QStringList outputs; /**< ports that bytes go to */
    QString unavailable; /**< why no ports can be had from it; empty when they can */
};

/** Every backend that the library was built with, available or not. */
QList<MidiBackend> listMidiBackends();

/**
 * The part of a port's name that is the same tomorrow: without the client and port numbers that
 * ALSA puts at its end ("Valdrin Update:Valdrin Update 20:0") and the count that JACK gives a
 * second client of one name ("Valdrin Update-01:out").
 */
QString stablePortName(const QString& portName);

/**
 * Whether the port seems to be the product's: its stable name contains `productPortName`, in
 * whatever case.
 */
bool fitsProductPort(const QString& portName, const QString& productPortName);

} // namespace hx

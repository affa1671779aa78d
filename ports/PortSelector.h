/** @file
 * Finds the port that a person means.
 */
#pragma once

#include "host/base/Result.h"
#include "ports/PortList.h"
#include "ports/RtMidiPort.h"

namespace hx {

struct PortSelection {
    PortAddress address;
    QList<PortAddress> others; /**< with other inputs that may be the one; less likely ones later */
};

/**
 * `output` and `input` are each the name of a port, a part of one in whatever case, or
 * "backend:name"; a whole name goes before a part of another. One port of each direction must fit,
 * in one backend: several that fit are an error that lists them all. An empty `input` means the one
 * that belongs to the output; where several may, the likeliest is in `address` and the rest in
 * `others`.
 */
Result<PortSelection> selectPort(const QList<MidiBackend>& backends, const QString& output,
                                 const QString& input);

/**
 * The same for the names that a plugin gives its product's ports: several inputs that fit are no
 * error.
 */
Result<PortSelection> selectProductPort(const QList<MidiBackend>& backends, const QString& output,
                                        const QString& input);

/** The same for an input alone; the address then has no output. */
Result<PortSelection> selectInput(const QList<MidiBackend>& backends, const QString& input);

} // namespace hx

// The ports that a batch finds its products on.
#pragma once

#include "ports/PortList.h"

namespace hx::host {

struct BatchPort {
    QString name; // as --port takes it: BACKEND:NAME

    // The inputs that answers may come from, likeliest first, as --in-port takes them; empty where
    // the port brings its own answers.
    QStringList inputs;

    bool isOfBackend() const { return !inputs.isEmpty(); }

    // Whether the input must be found out by asking, while nobody else asks.
    bool isAmbiguous() const { return inputs.size() > 1; }
};

// Whether the text is `pattern`, in which "*" means any characters and "?" for one, in whatever
// case. Without these it is enough that it holds the pattern.
bool fitsBatchPattern(const QString& text, const QString& pattern);

// Whether a pattern is one of names of ports.
bool namesBackends(const QStringList& patterns);

// The ports that fit one of the patterns, each once, in alphabetical order. "simulator" and a
// pattern that begins with "simulator:" or "device:" name no port of a backend but files.
QList<BatchPort> batchPorts(const QList<MidiBackend>& backends, const QStringList& patterns);

// Whether two ports are names of one file.
bool areOneFile(const BatchPort& first, const BatchPort& second);

// Whether two ports seem to be one port under two backends.
bool areOnePort(const BatchPort& first, const BatchPort& second);

} // namespace hx::host

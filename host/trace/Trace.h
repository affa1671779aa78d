/** @file
 * The record of a session: one readable line an event. docs/formats/trace-format.md is its grammar.
 */
#pragma once

#include "host/base/Result.h"
#include "host/bus/BusEvent.h"

#include <QByteArray>
#include <QFileDevice>
#include <QIODevice>
#include <QString>

#include <functional>
#include <vector>

namespace hx {

struct TraceEvent {
    BusEvent event; /**< its time counts from the start of the trace */
    QString name;   /**< dictionary key that the bytes fit; empty when none does */
    int line = 0;   /**< in the file, from 1 */
};

/** The word of a kind in a trace: "sent", "received", ... */
QString busEventWord(BusEventKind kind);

/** The kind that the word names; false when it names none. */
bool busEventKindOf(const QString& word, BusEventKind* kind);

/** Whether events of this kind carry bytes: those that travelled, or that could not. */
bool carriesBytes(BusEventKind kind);

/** Whether they carry bytes that came. */
bool isArrival(BusEventKind kind);

/** Whether they tell of the wire, and not only of what the host or the plugin made of it. */
bool concernsWire(BusEventKind kind);

/** The first line of every trace. */
constexpr char traceHeader[] = "# hxtrace 1";

/** One line without its line end. */
QString traceLine(const TraceEvent& event);

/** The name that a trace gives a message; empty when it has none. */
using NameOfMessage = std::function<QString(const QByteArray&)>;

/** Writes events as they happen, each line at once, so that a record survives a crash. */
class TraceWriter final : public BusObserver {
public:
    /** `start` is the moment that the trace calls 0. */
    TraceWriter(QIODevice& out, Microseconds start);

    /** From now on messages are written with these names; without a function they have none. */
    void setNames(const NameOfMessage& nameOf) { m_nameOf = nameOf; }
    void comment(const QString& text);
    void busEvent(const BusEvent& event) override;

    /** False once a line could not be written. */
    bool ok() const { return m_ok; }

private:
    void writeLine(const QString& line);

    QIODevice& m_out;
    Microseconds m_start;
    Microseconds m_last = 0;
    NameOfMessage m_nameOf;
    bool m_ok = true;
};

using TraceEvents = std::vector<TraceEvent>;

/** Longer files are refused. */
constexpr qint64 maxTraceBytes = Q_INT64_C(256) * 1024 * 1024;

/**
 * A trace read back. Strict: the first thing that the grammar does not allow is the problem, whose
 * place has its line and column.
 */
Result<TraceEvents> parseTrace(const QByteArray& content);

/** The same of a file; the problem then says which. */
Result<TraceEvents> readTrace(const QString& path);

} // namespace hx

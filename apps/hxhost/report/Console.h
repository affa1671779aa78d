// What the program says while it works: notes, warnings and errors on standard error.
#pragma once

#include "host/base/Problem.h"

#include <QStringList>

#include <atomic>

namespace hx::host {

// How much is said; each level includes the ones before it.
enum class Verbosity {
    Quiet,  // errors only
    Normal, // warnings and notes
    Detail, // what is decided, and the plugin's log lines
    Bytes,  // every message that is sent or arrives
};

class Console {
public:
    // `isForPrograms`: every line is a JSON object, and what only a person needs is left out.
    explicit Console(Verbosity verbosity, bool isForPrograms = false);

    Verbosity verbosity() const { return m_verbosity; }

    void note(const QString& text);
    void detail(const QString& text) { say(Verbosity::Detail, text); }
    void bytes(const QString& text) { say(Verbosity::Bytes, text); }
    void warning(const QString& text);
    void problem(const Problem& problem);

    // Asks on the terminal, wherever standard error leads, and returns the line that was typed,
    // without blanks around it; a null text at the end of input, once `interrupted` is set, and
    // where only programs could read the question.
    QString ask(const QString& question, const std::atomic<bool>& interrupted);

    // Draws `text` over the line drawn before; `endRedraw` leaves it standing and goes on below it.
    void redraw(const QString& text);
    void endRedraw();

    // The same for several lines, which fit the terminal; what is said otherwise comes above them.
    void redrawLines(const QStringList& lines);

    // Writes one line whatever the level, as it is.
    void line(const QString& text);

private:
    void eraseLines();
    void say(Verbosity level, const QString& text);
    QString coloured(const char* code, const QString& text) const;

    Verbosity m_verbosity;
    bool m_isForPrograms;
    bool m_colour;
    bool m_redrawing = false;
    int m_drawnLines = 0; // of several
};

} // namespace hx::host

// What the program may assume about the terminal it runs in.
#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <optional>

namespace hx::host {

// True when a person reads standard error or output (or types standard input) directly.
bool errorIsTerminal();
bool outputIsTerminal();
bool inputIsTerminal();

// Writes on the terminal that the program was started in; false when there is none.
bool writeToTerminal(const QByteArray& text);

// The line that is typed on standard input; null at its end, and soon after `interrupted` is set.
QByteArray readTypedLine(const std::atomic<bool>& interrupted);

// Asks on the terminal that the program was started in, and returns the line that is typed there, of
// which nothing is shown. None where there is no terminal, at the end of input, and soon after
// `interrupted` is set.
std::optional<QByteArray> askHidden(const QByteArray& question,
                                    const std::atomic<bool>& interrupted);

// Columns and rows of the terminal on standard error; 80 and 24 when they cannot be known.
int terminalColumns();
int terminalRows();

// Whether standard error may be coloured. NO_COLOR (not empty) forbids it, CLICOLOR_FORCE (not
// empty and not 0) demands it, otherwise a terminal that is not "dumb" allows it.
bool colourAllowed();

// Whether the cursor may be moved back to redraw a line.
bool lineMayBeRedrawn();

} // namespace hx::host

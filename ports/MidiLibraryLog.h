// What RtMidi and the libraries under it would write on standard error, kept for our own messages.
#pragma once

#include <QString>

#include <iosfwd>
#include <memory>
#include <sstream>

namespace hx {

// Takes over the message channels of JACK and ALSA, where they are on this machine, for the rest of
// the process. May be called again.
void silenceMidiLibraries();

// The first line that one of them wrote since the last call, without its line end; empty when none.
QString takeMidiLibraryMessage();

// While it lives, what RtMidi writes on std::cerr is kept: its constructors report there before
// anybody can give them a callback.
class RtMidiSilence {
public:
    RtMidiSilence();
    ~RtMidiSilence();
    RtMidiSilence(const RtMidiSilence&) = delete;
    RtMidiSilence& operator=(const RtMidiSilence&) = delete;

    // What was written so far, in one line.
    QString text() const;

private:
    std::ostringstream m_kept;
    std::streambuf* m_before;
};

} // namespace hx

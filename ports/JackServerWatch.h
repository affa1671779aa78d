/** @file
 * Notices when a JACK server goes away. RtMidi does not tell, and a client goes on finding the ports
 * of a server that is gone in the memory it shared with it.
 */
#pragma once

#include <QLibrary>

#include <atomic>

namespace hx {

class JackServerWatch {
public:
    /** Enters the server as a client without ports. */
    JackServerWatch();
    ~JackServerWatch();
    JackServerWatch(const JackServerWatch&) = delete;
    JackServerWatch& operator=(const JackServerWatch&) = delete;

    /** False too when there was no server to watch. */
    bool isGone() const { return m_isGone; }

private:
    static void noteShutdown(void* watch);

    QLibrary m_library;
    void* m_client = nullptr;
    std::atomic<bool> m_isGone{false};
};

} // namespace hx

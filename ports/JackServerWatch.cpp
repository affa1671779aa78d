#include "ports/JackServerWatch.h"

namespace hx {

namespace {

// As the library's header has them; it is found when the program runs, because where RtMidi was
// built without JACK there is none.
using OpenClient = void* (*)(const char* name, int options, int* status, ...);
using CloseClient = int (*)(void* client);
using OnShutdown = void (*)(void* client, void (*callback)(void*), void* argument);
using Activate = int (*)(void* client);
using Version = const char* (*)();
constexpr int noStartServer = 1;

// PipeWire's library tells only clients that take part that the server has gone; JACK's tells all,
// and one that takes part would have to be waited for in each period.
bool mustTakePart(QLibrary& library)
{
    const auto version = Version(library.resolve("jack_get_version_string"));
    return version != nullptr && QByteArray(version()).contains("PipeWire");
}

} // namespace

JackServerWatch::JackServerWatch() : m_library(QStringLiteral("jack"), 0)
{
    const auto openClient = OpenClient(m_library.resolve("jack_client_open"));
    const auto onShutdown = OnShutdown(m_library.resolve("jack_on_shutdown"));
    if (openClient == nullptr || onShutdown == nullptr)
        return;
    int status = 0;
    m_client = openClient("hxhost watch", noStartServer, &status);
    if (m_client == nullptr)
        return;
    onShutdown(m_client, noteShutdown, this);
    const auto activate = Activate(m_library.resolve("jack_activate"));
    if (activate != nullptr && mustTakePart(m_library))
        activate(m_client);
}

JackServerWatch::~JackServerWatch()
{
    const auto closeClient = CloseClient(m_library.resolve("jack_client_close"));
    if (m_client != nullptr && closeClient != nullptr)
        closeClient(m_client);
}

// Called on a thread of the library.
void JackServerWatch::noteShutdown(void* watch)
{
    static_cast<JackServerWatch*>(watch)->m_isGone = true;
}

} // namespace hx

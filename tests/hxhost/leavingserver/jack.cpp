// JACK's library with a server that goes away when the client is opened of which the number stands
// in JACK_GONE_AT, else with the first message. As in the real library, the clients of a server that
// is gone are freed as soon as the program opens one more. A client that is used after that, or
// closed twice, ends the program.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <deque>

namespace {

using Callback = void (*)(void* argument);
using LogCallback = void (*)(const char* text);

struct Client {
    bool isThere = true;
    Callback onShutdown = nullptr;
    void* argument = nullptr;
};

struct Server {
    std::deque<Client> clients; // all that ever were
    bool isGone = false;
    LogCallback log = nullptr;

    void goAway()
    {
        isGone = true;
        for (const Client& client : clients) {
            if (client.isThere && client.onShutdown != nullptr)
                client.onShutdown(client.argument);
        }
    }

    void freeClients()
    {
        for (Client& client : clients)
            client.isThere = false;
        if (log != nullptr)
            log("the server was closed, but clients are still there");
    }
};

Server& server()
{
    static Server theServer;
    return theServer;
}

Client* used(void* pointer)
{
    auto* client = static_cast<Client*>(pointer);
    if (client != nullptr && client->isThere)
        return client;
    fputs("a client is used that the library has freed\n", stderr);
    abort();
}

size_t openingAtWhichItGoes()
{
    const char* number = getenv("JACK_GONE_AT");
    return number == nullptr ? SIZE_MAX : strtoul(number, nullptr, 10);
}

} // namespace

extern "C" {

const char* jack_get_version_string()
{
    return "1";
}

void jack_set_error_function(LogCallback log)
{
    server().log = log;
}

void jack_set_info_function(LogCallback) {}

void* jack_client_open(const char*, int, int*, ...)
{
    Server& its = server();
    its.isGone = its.isGone || its.clients.size() + 1 >= openingAtWhichItGoes();
    if (its.isGone) {
        its.freeClients();
        return nullptr;
    }
    return &its.clients.emplace_back();
}

int jack_client_close(void* client)
{
    used(client)->isThere = false;
    return 0;
}

void jack_on_shutdown(void* client, Callback onShutdown, void* argument)
{
    used(client)->onShutdown = onShutdown;
    used(client)->argument = argument;
}

int jack_activate(void* client)
{
    used(client);
    return 0;
}

int jack_set_process_callback(void* client, int (*)(uint32_t, void*), void*)
{
    used(client);
    return 0;
}

// Those of the product: what a program hears is an output. They stay in the memory that the server
// shared.
const char** jack_get_ports(void* client, const char*, const char*, unsigned long flags)
{
    constexpr unsigned long output = 2;
    used(client);
    auto** names = static_cast<const char**>(calloc(2, sizeof(const char*)));
    names[0] = flags == output ? "Valdrin Update replies:out" : "Valdrin Update:in";
    return names;
}

void jack_free(void* pointer)
{
    free(pointer);
}

void* jack_port_register(void* client, const char*, const char*, unsigned long, unsigned long)
{
    return used(client);
}

int jack_port_unregister(void* client, void*)
{
    used(client);
    return 0;
}

int jack_connect(void* client, const char*, const char*)
{
    used(client);
    return 0;
}

int jack_port_rename(void* client, void*, const char*)
{
    used(client);
    return 0;
}

const char* jack_port_name(const void*)
{
    return "hxhost:port";
}

int jack_port_name_size()
{
    return 256;
}

void* jack_ringbuffer_create(size_t)
{
    auto* buffer = static_cast<char*>(malloc(1));
    *buffer = 0; // not the last step, so that a leak names this function
    return buffer;
}

void jack_ringbuffer_free(void* buffer)
{
    free(buffer);
}

size_t jack_ringbuffer_write_space(const void*)
{
    return 16383;
}

size_t jack_ringbuffer_write(void*, const char*, size_t size)
{
    server().goAway();
    return size;
}

// What follows is called in a period of the server; there is none.
size_t jack_ringbuffer_peek(void*, char*, size_t)
{
    return 0;
}

size_t jack_ringbuffer_read(void*, char*, size_t)
{
    return 0;
}

void jack_ringbuffer_read_advance(void*, size_t) {}

size_t jack_ringbuffer_read_space(const void*)
{
    return 0;
}

uint64_t jack_get_time()
{
    return 0;
}

void* jack_port_get_buffer(void*, uint32_t)
{
    return nullptr;
}

void jack_midi_clear_buffer(void*) {}

int jack_midi_event_get(void*, void*, uint32_t)
{
    return 1;
}

unsigned char* jack_midi_event_reserve(void*, uint32_t, size_t)
{
    return nullptr;
}

uint32_t jack_midi_get_event_count(void*)
{
    return 0;
}
}

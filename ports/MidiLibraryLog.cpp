#include "ports/MidiLibraryLog.h"

#include <QLibrary>

#include <cstdarg>
#include <cstdio>
#include <iostream>
#include <mutex>

namespace hx {

namespace {

std::mutex& messageMutex()
{
    static std::mutex mutex;
    return mutex;
}

QString& firstMessage()
{
    static QString message;
    return message;
}

void keepMessage(const char* text)
{
    const std::lock_guard<std::mutex> lock(messageMutex());
    if (firstMessage().isEmpty())
        firstMessage() = QString::fromLocal8Bit(text).simplified();
}

extern "C" {

void keepJackMessage(const char* text)
{
    keepMessage(text);
}

void dropJackMessage(const char*) {}

// NOLINTNEXTLINE(cert-dcl50-cpp): the signature is the library's
void keepAlsaMessage(const char*, int, const char*, int, const char* format, ...)
{
    char text[512];
    va_list arguments;
    va_start(arguments, format);
    // The analyser takes va_start for a call that leaves its argument as it is.
    vsnprintf(text, sizeof text, format, arguments); // NOLINT(clang-analyzer-valist.Uninitialized)
    va_end(arguments);
    keepMessage(text);
}

using JackHandler = void (*)(const char*);
using AlsaHandler = void (*)(const char*, int, const char*, int, const char*, ...);
}

void silenceJack()
{
    using SetHandler = void (*)(JackHandler);
    QLibrary library(QStringLiteral("jack"), 0);
    if (const auto setError = SetHandler(library.resolve("jack_set_error_function")))
        setError(keepJackMessage);
    if (const auto setInfo = SetHandler(library.resolve("jack_set_info_function")))
        setInfo(dropJackMessage);
}

void silenceAlsa()
{
    using SetHandler = int (*)(AlsaHandler);
    QLibrary library(QStringLiteral("asound"), 2);
    if (const auto setError = SetHandler(library.resolve("snd_lib_error_set_handler")))
        setError(keepAlsaMessage);
}

} // namespace

void silenceMidiLibraries()
{
    static const bool done = [] {
        silenceJack();
        silenceAlsa();
        return true;
    }();
    Q_UNUSED(done);
}

QString takeMidiLibraryMessage()
{
    const std::lock_guard<std::mutex> lock(messageMutex());
    QString message;
    message.swap(firstMessage());
    return message;
}

RtMidiSilence::RtMidiSilence() : m_before(std::cerr.rdbuf(m_kept.rdbuf())) {}

RtMidiSilence::~RtMidiSilence()
{
    std::cerr.rdbuf(m_before);
}

QString RtMidiSilence::text() const
{
    return QString::fromStdString(m_kept.str()).simplified();
}

} // namespace hx

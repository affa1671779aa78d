// Update images for tests.
#pragma once

#include "host/image/ImageBuilder.h"
#include "host/image/UpdateImage.h"
#include "host/product/PluginLoader.h"
#include "qt/Saturated.h"

namespace samples {

// The product of this build's plugin.
inline const hx::ProductDescription& product()
{
    static const hx::ProductDescription description = [] {
        const hx::PluginLoadResult loaded = hx::loadPlugin(QStringLiteral(HX_PLUGIN_FILE));
        return loaded.ok() ? hx::describeProduct(loaded.plugin->device())
                           : hx::ProductDescription();
    }();
    return description;
}

// `size` code bytes in which every value occurs and no two messages are alike.
inline QByteArray code(int size)
{
    QByteArray bytes(size, '\0');
    for (int i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i * 31 + i / 256);
    return bytes;
}

inline QList<HxMidiData> messages(int size = 300, CodeType kind = CodeType::Fwu)
{
    return hx::buildImage(product(), code(size), kind, QStringLiteral("1.0.2.4"))->messages;
}

inline QByteArray content(const QList<HxMidiData>& messages)
{
    QByteArray bytes;
    for (const HxMidiData& message : messages)
        bytes += message.bytes;
    return bytes;
}

inline hx::UpdateImage image(int size = 300, CodeType kind = CodeType::Fwu)
{
    return hx::parseUpdateImage(hx::imageFileOf(messages(size, kind)), product());
}

// Sets the sum of a message that was changed right again.
inline HxMidiData resummed(HxMidiData message)
{
    const int position = hx::saturated(message.bytes.size()) - 2;
    message.bytes[position] = static_cast<char>(message.sumOfSection(8, position - 8));
    return message;
}

} // namespace samples

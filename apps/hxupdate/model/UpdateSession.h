// All that takes time, one thing after the other: looking, reading, updating.
#pragma once

#include "apps/hxupdate/model/Ending.h"
#include "apps/hxupdate/model/ImageFacts.h"
#include "apps/hxupdate/model/ProductSearch.h"
#include "apps/hxupdate/model/SleepGuard.h"

#include "host/image/UpdateImage.h"
#include "host/trace/Trace.h"
#include "host/update/UpdatePlan.h"

#include <functional>

namespace hxupdate {

// What a session works with.
struct Surroundings {
    QString pluginPlace; // a plugin's file, or a folder of plugins
    std::unique_ptr<PortSource> ports;
    std::unique_ptr<SleepGuard> sleep;
    QString pickedPort; // empty: the ports that fit a plugin's product
};

// A file that was handed over: an update image, or a recorded trace.
struct TakenFile {
    QString path;
    bool isTrace = false;
    hx::Result<hx::TraceEvents> trace = hx::TraceEvents();
    ImageFacts image;
};

// Told while an update runs, on the thread that runs it.
struct UpdateWatch {
    std::function<void(bool staysAwake)> started;
    std::function<void(const hx::UpdateProgress&)> progressed;
    std::function<void(bool isThere)> moved; // the product's port went away, or is there again
};

// In the place of a plugin's number: any plugin that the image fits.
constexpr int noPlugin = -1;

// Used on one thread; the flags that it is given may be set from another.
class UpdateSession {
public:
    explicit UpdateSession(Surroundings surroundings);

    Connection search(const std::atomic<bool>& ended);
    Connection look();
    void pick(const QString& port);
    void forget() { m_search.forget(); }

    // Reads the file once. An image is kept, and held against the plugin that serves the product.
    TakenFile takeFile(const QString& path, int plugin);

    // Holds the image that is kept against the plugin of another product.
    ImageFacts judge(int plugin);

    // Sends the image that is kept to the product that was reviewed. Ends between two messages once
    // `stopped` is true.
    UpdateEnd update(const ProductFacts& product, const std::atomic<bool>& stopped,
                     const UpdateWatch& watch);

private:
    void loadPlugins();
    hx::UpdateImage imageFor(int plugin) const;
    ImageFault faultFor(const hx::UpdatePlan& plan, const hx::SignatureVerdict& origin) const;
    int pluginForImage() const;
    UpdateEnd run(hx::PortBus& bus, const ProductFacts& product, const ImageFacts& image,
                  const std::atomic<bool>& stopped, const UpdateWatch& watch);

    Surroundings m_with;
    Plugins m_plugins;
    bool m_isLoaded = false;
    ProductSearch m_search;
    QString m_filePath;
    ImageFault m_faultOfPlace = ImageFault::None;
    hx::Result<QByteArray> m_signature = QByteArray(); // the content of its file
    hx::ImageFile m_file;
    hx::UpdateImage m_image; // taken out of the file as the plugin judged last knows it
};

} // namespace hxupdate

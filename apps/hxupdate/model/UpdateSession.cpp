#include "apps/hxupdate/model/UpdateSession.h"

#include "apps/hxupdate/model/UpdateRecord.h"

#include "host/base/FileName.h"
#include "host/base/WholeFile.h"
#include "host/update/UpdateRun.h"
#include "qt/Saturated.h"

#include <QFile>

#include <filesystem>

namespace hxupdate {

namespace {

// Not of a pipe, which could keep one waiting for ever.
bool openRegular(QFile& file, const QString& path)
{
    std::error_code fault;
    return std::filesystem::is_regular_file(hx::filePath(path), fault) &&
           bool(hx::openFile(file, path, QIODevice::ReadOnly));
}

bool isTraceFile(const QString& path)
{
    QFile file;
    return openRegular(file, path) &&
           file.read(qint64(sizeof hx::traceHeader - 1)) == hx::traceHeader;
}

// What can be told of the place alone.
ImageFault faultOfPlace(const QString& path)
{
    std::error_code fault;
    if (std::filesystem::is_directory(hx::filePath(path), fault))
        return ImageFault::Folder;
    QFile file;
    return openRegular(file, path) ? ImageFault::None : ImageFault::Unreadable;
}

// What shows at the first look; None when there are messages.
ImageFault faultOfFormat(const hx::ImageFile& file)
{
    if (file.format == hx::ImageFormat::WebPage)
        return ImageFault::WebPage;
    if (file.format == hx::ImageFormat::Archive)
        return ImageFault::Archive;
    return file.messages.empty() ? ImageFault::NoImage : ImageFault::None;
}

ImageFault faultOfOrigin(hx::SignatureState state)
{
    switch (state) {
    case hx::SignatureState::NoKey:
    case hx::SignatureState::Unchecked:
    case hx::SignatureState::Good:
        return ImageFault::None;
    case hx::SignatureState::KeyUnusable:
        return ImageFault::BadKey;
    case hx::SignatureState::Missing:
        return ImageFault::NoSignature;
    case hx::SignatureState::OtherKey:
        return ImageFault::OtherSigner;
    case hx::SignatureState::Unreadable:
    case hx::SignatureState::OtherFile:
    case hx::SignatureState::CommentChanged:
    case hx::SignatureState::CommentOther:
        break;
    }
    return ImageFault::BadSignature;
}

hx::Result<QByteArray> readSignature(const QString& path)
{
    hx::Result<QByteArray> content = hx::readWholeFile(path, hx::maxMinisignBytes);
    if (content)
        return content;
    return hx::fileProblem(QStringLiteral("%1: %2").arg(path, content.problem().what));
}

ImageFacts factsOf(const QString& path, const hx::UpdateImage& image)
{
    ImageFacts facts;
    facts.path = path;
    facts.kind = image.kind;
    facts.version = image.version;
    facts.codeBytes = image.code.size();
    facts.bytes = image.bytes;
    facts.messages = hx::saturated(image.messages.size());
    facts.wireMicroseconds = image.wireMicroseconds();
    return facts;
}

UpdateEnd notOpened(const QString& reason)
{
    UpdateEnd end;
    end.reason = reason;
    return end;
}

UpdateEnd endedAtOtherUnit(const QString& serial)
{
    UpdateEnd end;
    end.ending = Ending::OtherUnit;
    end.otherSerial = serial;
    return end;
}

UpdateEnd endedAtImage(const ImageFacts& image)
{
    UpdateEnd end;
    end.ending = Ending::ImageRefused;
    end.reason = image.problems.join(QLatin1Char(' '));
    return end;
}

UpdateEnd endOf(const hx::UpdateResult& result)
{
    UpdateEnd end;
    end.ending = endingOf(result);
    end.reason = result.reason;
    end.condition = result.productCondition;
    end.versionBefore = result.versionBefore.version;
    end.versionAfter = result.versionAfter.version;
    return end;
}

// The computer stays awake as long as this lives.
class Wakefulness {
public:
    explicit Wakefulness(SleepGuard& guard) : m_guard(guard), m_isHeld(guard.hold()) {}
    ~Wakefulness() { m_guard.release(); }
    Wakefulness(const Wakefulness&) = delete;
    Wakefulness& operator=(const Wakefulness&) = delete;

    bool isHeld() const { return m_isHeld; }

private:
    SleepGuard& m_guard;
    bool m_isHeld;
};

// The unit that was reviewed may have been exchanged for another one of its kind.
bool isOtherUnit(const ProductFacts& product, const QString& serial)
{
    return !product.serial.isEmpty() && !serial.isEmpty() && serial != product.serial;
}

} // namespace

UpdateSession::UpdateSession(Surroundings surroundings)
    : m_with(std::move(surroundings)), m_search(m_plugins, *m_with.ports)
{
    m_search.pick(m_with.pickedPort);
}

void UpdateSession::loadPlugins()
{
    if (!m_isLoaded)
        m_plugins.load(m_with.pluginPlace);
    m_isLoaded = true;
}

Connection UpdateSession::search(const std::atomic<bool>& ended)
{
    loadPlugins();
    if (!m_plugins.isEmpty())
        return m_search.search(ended);
    Connection connection;
    connection.finding = Finding::NoPlugin;
    connection.detail = m_plugins.error();
    return connection;
}

Connection UpdateSession::look()
{
    return m_search.look();
}

void UpdateSession::pick(const QString& port)
{
    m_search.pick(port);
}

TakenFile UpdateSession::takeFile(const QString& path, int plugin)
{
    loadPlugins();
    TakenFile taken;
    taken.path = path;
    taken.isTrace = isTraceFile(path);
    if (taken.isTrace) {
        taken.trace = hx::readTrace(path);
        return taken;
    }
    m_filePath = path;
    m_faultOfPlace = faultOfPlace(path);
    m_file = hx::readImageFile(path); // both files once: what is sent later is what was looked at
    m_signature = readSignature(hx::signatureNameOf(path));
    taken.image = judge(plugin);
    return taken;
}

hx::UpdateImage UpdateSession::imageFor(int plugin) const
{
    return hx::parseUpdateImage(m_file, hx::describeProduct(m_plugins.device(plugin)));
}

// The first that takes the image, or any one that says why not.
int UpdateSession::pluginForImage() const
{
    for (int plugin = 0; plugin < m_plugins.count(); ++plugin) {
        if (hx::planUpdate(m_plugins.device(plugin), imageFor(plugin)).ok())
            return plugin;
    }
    return m_plugins.isEmpty() ? noPlugin : 0;
}

ImageFacts UpdateSession::judge(int plugin)
{
    const int by = plugin == noPlugin ? pluginForImage() : plugin;
    m_image = by == noPlugin ? hx::UpdateImage() : imageFor(by);
    ImageFacts facts = factsOf(m_filePath, m_image);
    if (by == noPlugin) {
        facts.fault = ImageFault::NoPlugin;
        facts.problems << m_plugins.error();
        return facts;
    }
    const hx::UpdatePlan plan = hx::planUpdate(m_plugins.device(by), m_image);
    facts.origin = hx::checkSignature(m_plugins.keys(by), m_signature, m_file.content, m_image);
    facts.problems = plan.refusals;
    if (!facts.origin.allowsSending())
        facts.problems.prepend(facts.origin.detail);
    facts.fault = faultFor(plan, facts.origin);
    return facts;
}

ImageFault UpdateSession::faultFor(const hx::UpdatePlan& plan,
                                   const hx::SignatureVerdict& origin) const
{
    if (plan.ok() && origin.allowsSending())
        return ImageFault::None;
    if (m_faultOfPlace != ImageFault::None)
        return m_faultOfPlace;
    const ImageFault ofFormat = faultOfFormat(m_file);
    if (ofFormat != ImageFault::None)
        return ofFormat;
    if (plan.isForOtherProduct)
        return ImageFault::OtherProduct;
    return origin.allowsSending() ? ImageFault::Damaged : faultOfOrigin(origin.state);
}

UpdateEnd UpdateSession::update(const ProductFacts& product, const std::atomic<bool>& stopped,
                                const UpdateWatch& watch)
{
    const ImageFacts image = judge(product.plugin);
    if (!image.isGood())
        return endedAtImage(image);
    const Wakefulness wakefulness(*m_with.sleep);
    watch.started(wakefulness.isHeld());
    m_search.forget();
    std::unique_ptr<hx::PortBus> bus;
    const auto moved = [&bus, &watch](bool isThere, const QString& text) {
        bus->note(isThere ? hx::BusEventKind::PortBack : hx::BusEventKind::Decided, text);
        watch.moved(isThere);
    };
    const auto port = m_with.ports->open(product.port, m_plugins.device(product.plugin), moved);
    if (!port)
        return notOpened(port.problem().what);
    bus = std::make_unique<hx::PortBus>(**port);
    return run(*bus, product, image, stopped, watch);
}

UpdateEnd UpdateSession::run(hx::PortBus& bus, const ProductFacts& product, const ImageFacts& image,
                             const std::atomic<bool>& stopped, const UpdateWatch& watch)
{
    hx::LoadedPlugin& plugin = m_plugins.plugin(product.plugin);
    QString otherSerial;
    UpdateRecord record(bus, plugin);
    record.add(product);
    record.add(image);
    hx::UpdateOptions options;
    options.interrupted = &stopped;
    options.progress = watch.progressed;
    options.confirm = [&product, &otherSerial](const hx::UpdateResult& found) {
        const QString serial = serialText(found.esnBefore);
        otherSerial = isOtherUnit(product, serial) ? serial : QString();
        return otherSerial.isEmpty();
    };
    const hx::UpdateResult result = hx::runUpdate(plugin.device(), bus, m_image, options);
    record.add(result);
    UpdateEnd end = otherSerial.isEmpty() ? endOf(result) : endedAtOtherUnit(otherSerial);
    end.record = record.content();
    return end;
}

} // namespace hxupdate

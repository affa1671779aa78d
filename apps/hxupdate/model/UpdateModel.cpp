#include "apps/hxupdate/model/UpdateModel.h"

#include "host/base/WholeFile.h"

#include <QFileInfo>

#include <utility>

namespace hxupdate {

namespace {

// Calls `function` on the thread of `context`, after all that was asked of it before.
template <typename Function>
void callOn(QObject* context, Function function)
{
#ifdef __clang_analyzer__ // which takes what Qt keeps of a function for lost
    Q_UNUSED(context)
    function();
#else
    QMetaObject::invokeMethod(context, function, Qt::QueuedConnection);
#endif
}

} // namespace

UpdateModel::UpdateModel(Surroundings surroundings, QObject* parent)
    : QObject(parent), m_session(std::move(surroundings))
{
    m_queue.moveToThread(&m_thread);
    m_thread.start();
}

UpdateModel::~UpdateModel()
{
    m_stopped = true;
    m_searchEnded = true;
    m_thread.quit();
    m_thread.wait();
}

// Runs `work` when all that was asked for before is done, then `done` here with its result.
template <typename Work, typename Done>
void UpdateModel::post(Work work, Done done)
{
    callOn(&m_queue, [this, work, done] {
        const auto result = work();
        callOn(this, [done, result] { done(result); });
    });
}

// The same; a search under way makes room for it.
template <typename Work, typename Done>
void UpdateModel::run(Work work, Done done)
{
    ++m_waiting;
    m_searchEnded = true;
    post(work, [this, done](const auto& result) {
        m_searchEnded = --m_waiting > 0;
        done(result);
    });
}

int UpdateModel::pluginInUse() const
{
    const bool isChosen = m_step == Step::ChooseImage || m_step == Step::Review;
    return isChosen ? m_product.plugin : noPlugin;
}

void UpdateModel::go(Step step)
{
    if (m_step == step)
        return;
    m_step = step;
    Q_EMIT stepChanged();
}

void UpdateModel::tell(Notice notice, const QString& detail)
{
    Q_EMIT noticed(notice, detail);
}

void UpdateModel::look()
{
    if (m_isLooking || m_waiting > 0 || isRunning() || m_step == Step::Verdict)
        return;
    m_isLooking = true;
    const bool asks = m_step == Step::Connect;
    post([this, asks] { return asks ? m_session.search(m_searchEnded) : m_session.look(); },
         [this](const Connection& connection) {
             m_isLooking = false;
             takeConnection(connection);
         });
}

void UpdateModel::takeConnection(const Connection& connection)
{
    if (isRunning() || m_step == Step::Verdict || !connection.isWhole)
        return;
    setConnection(connection);
    const ProductFacts* product = connection.product();
    if (m_step == Step::Connect || (product != nullptr && product->port == m_product.port))
        return;
    go(Step::Connect);
    tell(Notice::ProductAway);
}

void UpdateModel::setConnection(const Connection& connection)
{
    m_connection = connection;
    Q_EMIT connectionChanged();
}

void UpdateModel::pickPort(const QString& port)
{
    if (m_step != Step::Connect)
        return;
    setConnection({});
    run(
        [this, port] {
            m_session.pick(port);
            return port;
        },
        [this](const QString&) { look(); });
}

void UpdateModel::takeFile(const QString& path)
{
    if (isRunning())
        return tell(Notice::FileNotNow);
    const int plugin = pluginInUse();
    run([this, path, plugin] { return m_session.takeFile(path, plugin); },
        [this](const TakenFile& taken) { takeTaken(taken); });
}

void UpdateModel::takeTaken(const TakenFile& taken)
{
    if (!taken.isTrace)
        setImage(taken.image);
    else if (taken.trace)
        Q_EMIT traceTaken(taken.path, *taken.trace);
    else
        tell(Notice::TraceBad, QStringLiteral("%1:%2")
                                   .arg(QFileInfo(taken.path).fileName())
                                   .arg(taken.trace.problem().place.line));
}

void UpdateModel::setImage(const ImageFacts& image)
{
    m_image = image;
    const bool isForProduct = pluginInUse() != noPlugin;
    if (isForProduct)
        go(image.isGood() ? Step::Review : Step::ChooseImage);
    Q_EMIT imageChanged();
    if (!isForProduct)
        tell(image.isGood() ? Notice::ImageKept : Notice::ImageBad,
             QFileInfo(image.path).fileName());
}

void UpdateModel::useProduct()
{
    if (m_step != Step::Connect || m_connection.product() == nullptr)
        return;
    m_product = *m_connection.product();
    go(Step::ChooseImage);
    if (!m_image.isChosen())
        return;
    run([this, plugin = m_product.plugin] { return m_session.judge(plugin); },
        [this](const ImageFacts& image) { setImage(image); });
}

void UpdateModel::useImage()
{
    if (m_step == Step::ChooseImage && m_image.isGood() && m_waiting == 0)
        go(Step::Review);
}

void UpdateModel::goBack()
{
    if (m_step == Step::Review)
        go(Step::ChooseImage);
    else if (m_step == Step::ChooseImage)
        go(Step::Connect);
}

// Not while a file is being read: what is sent is what was reviewed.
void UpdateModel::startUpdate()
{
    if (m_step != Step::Review || !m_image.isGood() || m_waiting > 0)
        return;
    m_stopped = false;
    m_progress = {};
    m_progress.totalBytes = m_image.bytes;
    m_progress.totalMessages = m_image.messages;
    go(Step::Updating);
    run([this, product = m_product] { return m_session.update(product, m_stopped, watch()); },
        [this](const UpdateEnd& end) { takeEnd(end); });
}

UpdateWatch UpdateModel::watch()
{
    UpdateWatch watch;
    watch.started = [this](bool staysAwake) {
        const auto take = [this, staysAwake] {
            m_staysAwake = staysAwake;
            Q_EMIT progressed();
        };
        callOn(this, take);
    };
    watch.progressed = [this](const hx::UpdateProgress& progress) {
        if (m_told.put(progress))
            callOn(this, [this] { takeProgress(); });
    };
    watch.moved = [this](bool isThere) {
        const Notice notice = isThere ? Notice::ProductBack : Notice::ProductAway;
        callOn(this, [this, notice] { tell(notice); });
    };
    return watch;
}

void UpdateModel::takeProgress()
{
    m_progress = m_told.take();
    Q_EMIT progressed();
    if (m_progress.message == m_progress.totalMessages)
        go(Step::Verifying);
}

void UpdateModel::takeEnd(const UpdateEnd& end)
{
    m_end = end;
    go(Step::Verdict);
}

void UpdateModel::stop()
{
    if (!isRunning())
        return;
    m_stopped = true;
    Q_EMIT stopping();
}

void UpdateModel::startAgain()
{
    if (m_step != Step::Verdict)
        return;
    setConnection({});
    go(Step::Connect);
    look();
}

void UpdateModel::saveRecord(const QString& path)
{
    const auto save = [path, record = m_end.record] {
        const hx::Result<> written = hx::writeWholeFile(path, record);
        return written ? QString() : written.problem().what;
    };
    run(save, [this, path](const QString& error) {
        if (error.isEmpty())
            tell(Notice::RecordSaved, path);
        else
            tell(Notice::RecordNotSaved, error);
    });
}

} // namespace hxupdate

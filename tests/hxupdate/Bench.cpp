#include "tests/hxupdate/Bench.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

using namespace hxupdate;

namespace {

constexpr int longestWaitMs = 30000;

class LoggedSleep final : public SleepGuard {
public:
    explicit LoggedSleep(const std::shared_ptr<SleepLog>& log) : m_log(log) {}

    bool hold() override
    {
        m_log->threads.note();
        ++m_log->held;
        return m_log->isThere;
    }
    void release() override { ++m_log->released; }

private:
    std::shared_ptr<SleepLog> m_log;
};

} // namespace

bool waitUntil(const std::function<bool()>& holds)
{
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.start(longestWaitMs);
    while (!holds() && deadline.isActive()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return holds();
}

hx::sim::FaultPlan faults(const QStringList& texts)
{
    hx::sim::FaultPlan plan;
    for (const QString& text : texts) {
        QString error;
        const std::optional<hx::sim::Fault> fault = hx::sim::parseFault(text, &error);
        EXPECT_TRUE(fault.has_value()) << error.toStdString();
        plan << fault.value_or(hx::sim::Fault());
    }
    return plan;
}

Bench::Bench(const QString& plugin) : sleep(std::make_shared<SleepLog>())
{
    auto source = std::make_unique<TestPorts>();
    ports = source.get();
    Surroundings surroundings;
    surroundings.pluginPlace = plugin;
    surroundings.ports = std::move(source);
    surroundings.sleep = std::make_unique<LoggedSleep>(sleep);
    model = std::make_unique<UpdateModel>(std::move(surroundings));
    QObject::connect(model.get(), &UpdateModel::noticed, model.get(),
                     [this](Notice notice, const QString& detail) {
                         notices << notice;
                         noticed = detail;
                     });
}

void Bench::look()
{
    bool isFound = false;
    const auto connection = QObject::connect(model.get(), &UpdateModel::connectionChanged,
                                             [&isFound] { isFound = true; });
    model->look();
    EXPECT_TRUE(waitUntil([&] { return isFound; }));
    QObject::disconnect(connection);
}

bool Bench::isAt(Step step)
{
    return waitUntil([&] { return model->step() == step; });
}

QString Bench::image(const QString& version, int size)
{
    const auto built =
        hx::buildImage(samples::product(), samples::code(size), CodeType::Fwu, version);
    return files.write(version + QStringLiteral(".syx"), samples::content(built->messages));
}

void Bench::goTo(Step step)
{
    if (!product)
        product = ports->plug(productPort);
    look();
    if (step == Step::Connect)
        return;
    model->useProduct();
    ASSERT_EQ(model->step(), Step::ChooseImage);
    if (step == Step::ChooseImage)
        return;
    model->takeFile(image());
    ASSERT_TRUE(isAt(Step::Review));
    if (step == Step::Review)
        return;
    const int before = 3; // identity, version, serial number
    product->gate.messages = before + (step == Step::Verifying ? model->image().messages : 2);
    model->startUpdate();
    product->gate.reached.acquire();
    ASSERT_TRUE(isAt(step));
}

void Bench::finish()
{
    product->gate.opened.release();
    ASSERT_TRUE(isAt(Step::Verdict));
}

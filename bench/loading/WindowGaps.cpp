// Updates the simulated product at the pace of the wire, and tells how long the window's event loop
// was away at a time: "updating COUNT MEDIAN LONGEST" in milliseconds, and the same of "verifying".
#include "apps/hxupdate/window/Language.h"
#include "apps/hxupdate/window/UpdateWindow.h"
#include "bench/loading/SimulatedWindow.h"

#include "host/base/WholeFile.h"
#include "host/image/ImageBuilder.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <map>

using namespace hxupdate;

namespace {

constexpr int codeBytes = 16384; // six seconds on the wire
constexpr double nanosecondsPerMillisecond = 1e6;

// A tick as often as the event loop comes round; what is between two of them is a gap.
class GapWatch final : public QObject {
public:
    explicit GapWatch(UpdateModel& model)
    {
        m_ticks.setTimerType(Qt::PreciseTimer);
        connect(&m_ticks, &QTimer::timeout, this, [this, &model] {
            m_gaps[model.step()].push_back(double(m_time.nsecsElapsed()) /
                                           nanosecondsPerMillisecond);
            m_time.restart();
        });
        m_time.start();
        m_ticks.start(1);
    }

    void print(const char* name, Step step)
    {
        std::vector<double>& gaps = m_gaps[step];
        std::sort(gaps.begin(), gaps.end());
        if (!gaps.empty())
            std::printf("%s %zu %.1f %.1f\n", name, gaps.size(), gaps[gaps.size() / 2],
                        gaps.back());
    }

private:
    QTimer m_ticks;
    QElapsedTimer m_time;
    std::map<Step, std::vector<double>> m_gaps; // in milliseconds
};

bool writeImage(const QString& path)
{
    Plugins plugins;
    plugins.load(hx::pluginFolder());
    if (plugins.isEmpty())
        return false;
    const auto image =
        hx::buildImage(hx::describeProduct(plugins.device(0)), QByteArray(codeBytes, '\x2A'),
                       CodeType::Fwu, QStringLiteral("1.0.2.4"));
    return image && bool(hx::writeWholeFile(path, image->fileContent()));
}

// Each step as soon as it can be taken, and the end at the verdict.
void takeEachStep(UpdateModel& model, const QString& image)
{
    QObject::connect(&model, &UpdateModel::connectionChanged, &model, &UpdateModel::useProduct);
    QObject::connect(&model, &UpdateModel::stepChanged, &model, [&model, image] {
        if (model.step() == Step::ChooseImage)
            model.takeFile(image);
        if (model.step() == Step::Review)
            QTimer::singleShot(0, &model, &UpdateModel::startUpdate);
        if (model.step() == Step::Verdict)
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    });
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QTemporaryDir folder;
    const QString image = folder.filePath(QStringLiteral("image.syx"));
    if (!writeImage(image))
        return 1;
    speak(application, QLocale::system());
    UpdateModel model(simulatedSurroundings());
    UpdateWindow window(model, true);
    takeEachStep(model, image);
    GapWatch watch(model);
    window.show();
    window.startLooking();
    QApplication::exec();
    watch.print("updating", Step::Updating);
    watch.print("verifying", Step::Verifying);
    return model.end().ending == Ending::Succeeded ? 0 : 1;
}

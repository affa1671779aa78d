// hxhost batch: every product that answers is updated, all at the same time.
#include "apps/hxhost/batch/Batch.h"
#include "apps/hxhost/batch/BatchDisplay.h"
#include "apps/hxhost/batch/BatchReport.h"
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/commands/PlanReport.h"
#include "apps/hxhost/report/ExitCodeTable.h"

#include "host/base/FileName.h"
#include "host/base/WholeFile.h"
#include "host/bus/Patience.h"

#include <QCoreApplication>

#include <algorithm>
#include <limits>

namespace hx::host {

namespace {

constexpr int mostJobs = 256; // three open files each

struct BatchOptions {
    PluginOptions plugin;
    Pace pace;
    OriginOptions origin;
    std::string image;
    std::vector<std::string> ports; // empty: the name that the plugin gives
    int jobs = mostJobs;
    bool watch = false;
    bool skipSilent = false;
    bool noListen = false;
    bool slowHost = false;
    std::vector<std::string> reports;
    std::string traces = "hxhost-batch";
};

// Empty for a name of a form that is known, else what is wrong with it.
std::string isReportName(const std::string& name)
{
    return batchReportForm(fileNameText(name))
               ? std::string()
               : "\"" + name +
                     "\" is not a report; expected a name that ends in .xml, .csv or .jsonl";
}

// Longer than any update may be between two lines of its progress: four attempts at each message of a
// per cent of them, and all questions before and after.
int longestSilenceMs(const UpdatePlan& plan, const Pace& pace, const Patience& patience)
{
    constexpr qint64 questions = 34;
    constexpr qint64 attempts = 4;
    const qint64 marginMs =
        qint64(250) * patience.factor + patience.rest / microsecondsPerMillisecond;
    const qint64 timeoutMs = qint64(patience.factor) * plan.protocol.timeoutMs;
    const qint64 messages = plan.messages / 100 + 1;
    const qint64 wireMs =
        (pace.wireTime(plan.bytes) + pace.gap * plan.messages) / microsecondsPerMillisecond;
    const qint64 longest = attempts * (wireMs + messages * (timeoutMs + timeoutMs / 4 + marginMs)) +
                           questions * (timeoutMs + marginMs);
    return int(std::min<qint64>(longest, std::numeric_limits<int>::max()));
}

class BatchRun {
public:
    BatchRun(CommandContext& context, const BatchOptions& options, const PlannedImage& planned,
             const DeviceInterface& device);

    void run();

private:
    Result<> writeImage() const;
    bool makeFolder();
    bool writeReports();
    BatchPlan plan() const;
    BatchHandlers handlers();
    QStringList patterns() const;
    void takeUnit(const BatchUnit& unit);
    void addResult() const;
    void judge(bool interrupted) const;
    void failFile(const QString& what, const QString& name, const QString& option) const;

    CommandContext& m_context;
    const BatchOptions& m_options;
    const PlannedImage& m_planned;
    const DeviceInterface& m_device;
    BatchRecord m_record;
    BatchDisplay m_display;
    QString m_prefix; // of the files in the folder of traces
};

BatchRun::BatchRun(CommandContext& context, const BatchOptions& options,
                   const PlannedImage& planned, const DeviceInterface& device)
    : m_context(context), m_options(options), m_planned(planned),
      m_device(device), m_record{QDateTime::currentDateTimeUtc(), {}},
      m_display(context.console, context.console.verbosity() == Verbosity::Quiet
                                     ? ProgressMode::None
                                     : batchMode(context.output.progress)),
      m_prefix(fileNameText(std::filesystem::absolute(options.traces).string()) +
               m_record.started.toString(QStringLiteral("'/'yyyyMMdd'T'HHmmss'-'")))
{
}

void BatchRun::failFile(const QString& what, const QString& name, const QString& option) const
{
    m_context.fail(ExitCode::FileError,
                   QStringLiteral("\"%1\" cannot be written: %2").arg(name, what),
                   QStringLiteral("a place that may be written to, with room"),
                   QStringLiteral("give another one with %1").arg(option));
}

// All units get the same image, even if its file changes meanwhile; and each of their updates
// looks at its signature again.
Result<> BatchRun::writeImage() const
{
    const LoadedImage& image = m_planned.loaded;
    const QString name = plan().image;
    const Result<> written = writeWholeFile(name, image.file.content);
    return written && image.origin.state == SignatureState::Good
               ? writeWholeFile(signatureNameOf(name), image.signature)
               : written;
}

bool BatchRun::makeFolder()
{
    const QString folder = fileNameText(m_options.traces);
    std::error_code error;
    std::filesystem::create_directories(filePath(folder), error);
    const Result<> written =
        error ? fileProblem(QString::fromStdString(error.message())) : writeImage();
    if (!written)
        failFile(written.problem().what, folder, QStringLiteral("--traces"));
    return bool(written);
}

bool BatchRun::writeReports()
{
    for (const std::string& report : m_options.reports) {
        const QString name = fileNameText(report);
        const Result<> written = writeBatchReport(name, m_record);
        if (!written && !m_context.report.failed())
            failFile(written.problem().what, name, QStringLiteral("--report"));
    }
    return !m_context.report.failed();
}

BatchPlan BatchRun::plan() const
{
    BatchPlan plan;
    plan.program = QCoreApplication::applicationFilePath();
    plan.image = m_prefix + QStringLiteral("image.syx");
    if (!m_options.plugin.plugin.empty())
        plan.connection << QStringLiteral("--plugin") << fileNameText(m_options.plugin.plugin);
    plan.connection << QStringLiteral("--rate") << QString::number(m_options.pace.bytesPerSecond)
                    << QStringLiteral("--gap")
                    << QString::number(m_options.pace.gap / microsecondsPerMillisecond);
    if (m_options.slowHost)
        plan.connection << QStringLiteral("--slow-host");
    if (m_options.noListen)
        plan.updateOptions << QStringLiteral("--no-listen");
    if (!m_options.origin.publicKey.empty())
        plan.updateOptions << QStringLiteral("--pubkey")
                           << fileNameText(m_options.origin.publicKey);
    if (m_options.origin.isUnsigned)
        plan.updateOptions << QStringLiteral("--unsigned");
    plan.tracePrefix = m_prefix;
    plan.jobs = m_options.jobs;
    plan.longestSilence = longestSilenceMs(m_planned.plan, m_options.pace,
                                           m_options.slowHost ? slowHostPatience : Patience());
    plan.goesOn = m_options.watch;
    plan.skipsSilent = m_options.skipSilent;
    return plan;
}

QStringList BatchRun::patterns() const
{
    QStringList patterns;
    for (const std::string& pattern : m_options.ports)
        patterns << fileNameText(pattern);
    return patterns.isEmpty() ? QStringList{m_device.productOutPortName()} : patterns;
}

BatchHandlers BatchRun::handlers()
{
    const QStringList wanted = patterns();
    BatchHandlers handlers;
    handlers.listPorts = [wanted] {
        return batchPorts(namesBackends(wanted) ? listMidiBackends() : QList<MidiBackend>(),
                          wanted);
    };
    handlers.progressed = [this](const BatchUnit& unit, const QJsonObject& line) {
        m_display.show(unit, line);
    };
    handlers.ended = [this](const BatchUnit& unit) { takeUnit(unit); };
    handlers.noted = [this](const QString& text) { m_display.note(text); };
    return handlers;
}

// The reports are whole after each unit, even if this program is killed.
void BatchRun::takeUnit(const BatchUnit& unit)
{
    m_record.units << unit;
    m_display.end(unit, countOf(m_record.units));
    writeReports();
}

void BatchRun::addResult() const
{
    QJsonArray rows;
    for (const BatchUnit& unit : m_record.units)
        rows << batchObject(unit);
    Report& report = m_context.report;
    const BatchCount count = countOf(m_record.units);
    report.setDetail(false);
    report.addTable(QStringLiteral("units"),
                    {QStringLiteral("serial"), QStringLiteral("versionBefore"),
                     QStringLiteral("versionAfter"), QStringLiteral("outcome"),
                     QStringLiteral("port"), QStringLiteral("reason")},
                    rows);
    report.addHidden(QStringLiteral("count.succeeded"), count.succeeded);
    report.addHidden(QStringLiteral("count.failed"), count.failed);
    report.addHidden(QStringLiteral("count.skipped"), count.skipped);
    report.say(QStringLiteral("%1 updated, %2 failed, %3 of the same product as another port.")
                   .arg(count.succeeded)
                   .arg(count.failed)
                   .arg(count.skipped));
}

void BatchRun::judge(bool interrupted) const
{
    const BatchCount count = countOf(m_record.units);
    const QString next =
        QStringLiteral("\"reason\" says what became of each; run the batch again for those that "
                       "failed: an update that was cut off starts afresh");
    const bool isCutOff =
        std::any_of(m_record.units.begin(), m_record.units.end(), [](const BatchUnit& unit) {
            return unit.outcome == exitName(ExitCode::Interrupted);
        });
    if (interrupted && (isCutOff || !m_options.watch))
        m_context.fail(ExitCode::Interrupted, QStringLiteral("You stopped the batch."), QString(),
                       next);
    else if (count.failed > 0)
        m_context.fail(ExitCode::NotAllUpdated,
                       QStringLiteral("%1 of %2 products were not updated")
                           .arg(count.failed)
                           .arg(count.failed + count.succeeded),
                       QStringLiteral("every product updated"), next);
    else if (m_record.units.isEmpty() && !m_options.watch)
        m_context.fail(ExitCode::NoAnswer,
                       QStringLiteral("no product answers on the ports that fit"),
                       QStringLiteral("at least one"),
                       QStringLiteral("check cables and power; 'hxhost ports --probe' shows what "
                                      "answers where"));
}

void BatchRun::run()
{
    const InterruptFlag interrupt;
    Batch batch(plan(), handlers(), *interrupt.flag());
    if (!batch.hasPorts() && !m_options.watch)
        return m_context.fail(
            ExitCode::NoPort,
            QStringLiteral("no port fits \"%1\"").arg(patterns().join(QStringLiteral("\" or \""))),
            QStringLiteral("at least one port"),
            QStringLiteral("'hxhost ports' lists the ports; give a pattern that "
                           "fits with --ports"));
    if (!makeFolder() || !writeReports())
        return;
    batch.run();
    m_display.finish();
    addResult();
    if (!m_context.report.failed())
        judge(*interrupt.flag());
}

void batch(CommandContext& context, const BatchOptions& options)
{
    context.console = Console(context.output.verbosity(),
                              batchMode(context.output.progress) == ProgressMode::Json);
    context.report.setDetail(true);
    Session session(context);
    if (!session.loadPlugin(options.plugin))
        return;
    const std::optional<PlannedImage> planned =
        planImage(context, session, options.image, options.origin);
    if (planned)
        BatchRun(context, options, *planned, session.device()).run();
}

void addReportOptions(const Command& command, BatchOptions& options)
{
    command
        .addRepeated("--report", options.reports,
                     "Write what became of each unit: JUnit XML (.xml), CSV (.csv) or JSON lines "
                     "(.jsonl); may be given several times")
        .valueName("FILE")
        .check(isReportName);
    command.addOption("--traces", options.traces, "Folder for the image and the trace of each unit")
        .valueName("FOLDER")
        .showDefault();
}

} // namespace

void addBatchCommand(CommandLine& line)
{
    auto options = std::make_shared<BatchOptions>();
    const Command command =
        line.add("batch", "Update every product that answers, all at the same time");
    addImageArgument(command, options->image);
    command
        .addRepeated("--ports", options->ports,
                     "Ports to look on: part of a name, or a whole one with * and ?; "
                     "simulator:FILE and device:FILE with * and ? in the file's name; may be given "
                     "several times; default: the name that the plugin gives")
        .valueName("PATTERN");
    command.addOption("--jobs", options->jobs, "How many products are updated at the same time")
        .valueName("N")
        .range(1, mostJobs)
        .showDefault();
    command.addFlag("--watch", options->watch,
                    "Wait for the next product after each, until Ctrl-C");
    command.addFlag("--skip-silent", options->skipSilent,
                    "Leave out ports where nothing answers; otherwise they count as failed");
    command.addFlag("--no-listen", options->noListen,
                    "Do not listen for other traffic for a second before an update");
    addReportOptions(command, *options);
    addSendingOriginOptions(command, options->origin);
    addPluginOptions(command, options->plugin);
    addPaceOptions(command, options->pace);
    addSlowHostOption(command, options->slowHost);
    command.explain("Progress is a line for each product on a terminal, else JSON lines.");
    line.setRun(command, [options](CommandContext& context) { batch(context, *options); });
}

} // namespace hx::host

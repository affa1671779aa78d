// hxsweep: tries every scenario of the sweep, or the ones named, and says which did not pass.
#include "host/product/PluginLoader.h"
#include "tests/sweep/Sweep.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include <chrono>
#include <map>

namespace {

using sweep::Laboratory;
using sweep::Scenario;
using sweep::TrialReport;

constexpr int mostShown = 40;

struct Options {
    QString scenario; // empty: all
    QString plugin;
    long every;
    long first;
    bool isList;
};

struct Totals {
    long seen = 0;
    long passed = 0;
    long failed = 0;
    std::map<QString, std::map<QString, long>> outcomes; // by fault
};

QTextStream& out()
{
    static QTextStream stream(stdout);
    return stream;
}

void showFailure(const Scenario& scenario, const TrialReport& report)
{
    out() << sweep::scenarioText(scenario) << ": " << report.complaints.join(QStringLiteral("; "))
          << "\n";
    out().flush();
}

void tryOne(Laboratory& laboratory, const Scenario& scenario, Totals* totals)
{
    const TrialReport report = laboratory.tryScenario(scenario);
    const bool passed = report.complaints.isEmpty();
    ++(passed ? totals->passed : totals->failed);
    ++totals->outcomes[QLatin1String(sweep::faultName(scenario.fault))]
                      [hx::updateOutcomeText(report.outcome)];
    if (!passed && totals->failed <= mostShown)
        showFailure(scenario, report);
}

void showTotals(const Totals& totals, double seconds)
{
    for (const auto& fault : totals.outcomes) {
        out() << fault.first.leftJustified(12);
        for (const auto& outcome : fault.second)
            out() << "  " << outcome.first << " " << outcome.second;
        out() << "\n";
    }
    out() << totals.passed << " passed, " << totals.failed << " failed, in "
          << QString::number(seconds, 'f', 1) << " s\n";
}

int sweepAll(Laboratory& laboratory, const Options& options)
{
    const auto start = std::chrono::steady_clock::now();
    Totals totals;
    sweep::forEachScenario(laboratory, [&](const Scenario& scenario) {
        if (totals.seen++ % options.every != options.first)
            return;
        if (options.isList)
            out() << sweep::scenarioText(scenario) << "\n";
        else
            tryOne(laboratory, scenario, &totals);
    });
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    if (!options.isList)
        showTotals(totals, taken.count());
    return totals.failed == 0 ? 0 : 1;
}

void showCourse(const TrialReport& report)
{
    static const char* const words[] = {"sent", "came", "port lost"};
    for (const sweep::WireEvent& event : report.record)
        out() << QString::number(event.time).rightJustified(10) << " us  "
              << words[static_cast<int>(event.kind)] << "  "
              << QString::fromLatin1(event.bytes.toHex(' ').toUpper()) << "\n";
    out() << "outcome: " << hx::updateOutcomeText(report.outcome) << "\n"
          << "reason:  " << report.reason << "\n"
          << "product: " << report.productState << "\n";
}

int showScenario(Laboratory& laboratory, const Options& options)
{
    QString error;
    const auto scenario = sweep::parseScenario(options.scenario, &error);
    if (!scenario) {
        out() << error << "\n";
        return 2;
    }
    const TrialReport report = laboratory.tryScenario(*scenario);
    showCourse(report);
    if (!report.complaints.isEmpty())
        showFailure(*scenario, report);
    else
        out() << sweep::scenarioText(*scenario) << ": passed\n";
    return report.complaints.isEmpty() ? 0 : 1;
}

// The number that was given for an option, or nothing when it is not at least `least`.
std::optional<long> number(const QCommandLineParser& line, const QString& name, long least)
{
    bool isNumber = false;
    const long value = line.value(name).toLong(&isNumber);
    return isNumber && value >= least ? std::optional<long>(value) : std::nullopt;
}

std::optional<Options> readOptions(const QCoreApplication& application)
{
    QCommandLineParser line;
    line.setApplicationDescription(
        "Tries a small update with one fault at every byte of every message.");
    line.addHelpOption();
    line.addOptions({{"scenario", "only this one, with its whole course", "SCENARIO"},
                     {"plugin", "the plugin library", "FILE", HX_PLUGIN_FILE},
                     {"every", "only every Nth scenario", "N", "1"},
                     {"first", "of these, beginning with this one, from 0", "N", "0"},
                     {"list", "name the scenarios, try none"}});
    line.process(application);
    const auto every = number(line, "every", 1);
    const auto first = number(line, "first", 0);
    if (!every || !first || !line.positionalArguments().isEmpty())
        return std::nullopt;
    return Options{line.value("scenario"), line.value("plugin"), *every, *first,
                   line.isSet("list")};
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const auto read = readOptions(application);
    if (!read) {
        out() << "see hxsweep --help: --every takes a number from 1 on, --first one from 0 on\n";
        return 2;
    }
    const Options& options = *read;
    const hx::PluginLoadResult loaded = hx::loadPlugin(options.plugin);
    if (!loaded.ok()) {
        out() << loaded.error << "\n";
        return 2;
    }
    Laboratory laboratory(loaded.plugin->device());
    return options.scenario.isEmpty() ? sweepAll(laboratory, options)
                                      : showScenario(laboratory, options);
}

// hxsweep: tries every scenario of the sweep, or the ones named, and says which did not pass.
#include "host/product/PluginLoader.h"
#include "tests/sweep/Sweep.h"

#include <QTextStream>

#include <CLI/CLI.hpp>

#include <chrono>
#include <map>

namespace {

using sweep::Laboratory;
using sweep::Scenario;
using sweep::TrialReport;

constexpr int mostShown = 40;

struct Options {
    std::string scenario;
    std::string plugin = HX_PLUGIN_FILE;
    long every = 1;
    long first = 0;
    bool list = false;
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
        if (options.list)
            out() << sweep::scenarioText(scenario) << "\n";
        else
            tryOne(laboratory, scenario, &totals);
    });
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    if (!options.list)
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
    const auto scenario = sweep::parseScenario(QString::fromStdString(options.scenario), &error);
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

} // namespace

int main(int argc, char** argv)
{
    Options options;
    CLI::App app("Tries a small update with one fault at every byte of every message.");
    app.add_option("--scenario", options.scenario, "only this one, with its whole course");
    app.add_option("--plugin", options.plugin, "the plugin library");
    app.add_option("--every", options.every, "only every Nth scenario")->check(CLI::PositiveNumber);
    app.add_option("--first", options.first, "of these, beginning with this one, from 0");
    app.add_flag("--list", options.list, "name the scenarios, try none");
    CLI11_PARSE(app, argc, argv);

    const hx::PluginLoadResult loaded = hx::loadPlugin(QString::fromStdString(options.plugin));
    if (!loaded.ok()) {
        out() << loaded.error << "\n";
        return 2;
    }
    Laboratory laboratory(loaded.plugin->device());
    return options.scenario.empty() ? sweepAll(laboratory, options)
                                    : showScenario(laboratory, options);
}

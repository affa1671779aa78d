// hxsweep: tries every scenario of the sweep, or the ones named, and says which did not pass.
#include "host/product/PluginLoader.h"
#include "tests/sweep/Pairs.h"
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
constexpr long pairsOfBroken = 1000;

struct Options {
    QString scenario; // empty: all
    QString flaw;     // of the product; empty: it is sound
    QString plugin;
    long every;
    long first;
    long pairs; // 0: every single fault
    long seed;
    bool isPermanent;
    bool isPortFaults;
    bool isSlowHost;
    bool isList;
};

struct Totals {
    long passed = 0;
    long failed = 0;
    long falseSuccesses = 0;
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

QString kindsText(const Scenario& scenario)
{
    return scenario.faults.size() == 1
               ? QLatin1String(sweep::faultName(scenario.faults.front().kind))
               : QStringLiteral("pairs");
}

void tryOne(Laboratory& laboratory, const Scenario& scenario, Totals* totals)
{
    const TrialReport report = laboratory.tryScenario(scenario);
    const bool passed = report.complaints.isEmpty();
    totals->falseSuccesses += report.isFalseSuccess ? 1 : 0;
    ++(passed ? totals->passed : totals->failed);
    ++totals->outcomes[kindsText(scenario)][hx::updateOutcomeText(report.outcome)];
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
    out() << totals.passed << " passed, " << totals.failed << " failed, " << totals.falseSuccesses
          << " false successes, in " << QString::number(seconds, 'f', 1) << " s\n";
}

using Visit = std::function<void(const Scenario&)>;

void forEachPair(Laboratory& laboratory, const Options& options, const Visit& visit)
{
    const sweep::Pairs pairs(laboratory, static_cast<quint64>(options.seed));
    if (options.flaw.isEmpty())
        out() << options.pairs << " pairs of " << pairs.faultCount() << " faults, drawn with seed "
              << options.seed << "\n";
    for (long number = 0; number < options.pairs; ++number)
        visit(pairs.pair(static_cast<quint64>(number)));
}

void forEachChosen(Laboratory& laboratory, const Options& options, const Visit& visit)
{
    long seen = 0;
    const auto visitChosen = [&](const Scenario& scenario) {
        if (seen++ % options.every == options.first)
            visit(scenario);
    };
    if (options.pairs > 0)
        forEachPair(laboratory, options, visitChosen);
    else if (options.isPortFaults)
        sweep::forEachPortFault(laboratory, visitChosen);
    else if (options.isPermanent)
        sweep::forEachPermanentFault(laboratory, visitChosen);
    else
        sweep::forEachScenario(laboratory, visitChosen);
}

int sweepAll(Laboratory& laboratory, const Options& options)
{
    const auto start = std::chrono::steady_clock::now();
    Totals totals;
    forEachChosen(laboratory, options, [&](const Scenario& scenario) {
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

const sweep::Flaw* flawNamed(const QString& name)
{
    for (const sweep::Flaw& flaw : sweep::allFlaws()) {
        if (name == QLatin1String(flaw.name))
            return &flaw;
    }
    return nullptr;
}

// What a set of scenarios finds wrong with a broken product.
Totals findings(Laboratory& laboratory, const Options& options)
{
    Totals totals;
    forEachChosen(laboratory, options, [&](const Scenario& scenario) {
        const TrialReport report = laboratory.tryScenario(scenario);
        ++(report.complaints.isEmpty() ? totals.passed : totals.failed);
        totals.falseSuccesses += report.isFalseSuccess ? 1 : 0;
    });
    return totals;
}

// A broken product is found when any scenario fails, and is never called updated when it is not.
int tryBroken(DeviceInterface& device, Options options)
{
    int missed = 0;
    for (const sweep::Flaw& flaw : sweep::allFlaws()) {
        Laboratory laboratory(device, &flaw);
        Options permanent = options;
        permanent.isPermanent = true;
        Options pairs = options;
        pairs.pairs = pairsOfBroken * options.every;
        const Totals found[] = {findings(laboratory, options), findings(laboratory, permanent),
                                findings(laboratory, pairs)};
        long failed = 0;
        long falseSuccesses = 0;
        out() << QString::fromLatin1(flaw.name).leftJustified(24);
        for (const Totals& totals : found) {
            out() << QStringLiteral("%1 of %2  ")
                         .arg(totals.failed)
                         .arg(totals.failed + totals.passed);
            failed += totals.failed;
            falseSuccesses += totals.falseSuccesses;
        }
        out() << falseSuccesses << "  " << flaw.what << "\n";
        out().flush();
        missed += failed == 0 || falseSuccesses > 0 ? 1 : 0;
    }
    out() << sweep::allFlaws().size() << " broken products, " << missed
          << " not found or called updated\n";
    return missed == 0 ? 0 : 1;
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
    line.addOptions(
        {{"scenario", "only this one, with its whole course", "SCENARIO"},
         {"broken", "with a product that breaks this promise; \"all\": all of them", "NAME"},
         {"plugin", "the plugin library", "FILE", HX_PLUGIN_FILE},
         {"every", "only every Nth scenario", "N", "1"},
         {"first", "of these, beginning with this one, from 0", "N", "0"},
         {"port-faults", "what slow operating systems and drivers do"},
         {"slow-host", "with the patience that --slow-host gives"},
         {"permanent", "faults that never heal, on one direction and topic"},
         {"pairs", "so many pairs of faults, drawn", "N", "0"},
         {"seed", "what they are drawn with", "N", "1"},
         {"list", "name the scenarios, try none"}});
    line.process(application);
    const auto every = number(line, "every", 1);
    const auto first = number(line, "first", 0);
    const auto pairs = number(line, "pairs", 0);
    const auto seed = number(line, "seed", 0);
    if (!every || !first || !pairs || !seed || !line.positionalArguments().isEmpty())
        return std::nullopt;
    return Options{line.value("scenario"),
                   line.value("broken"),
                   line.value("plugin"),
                   *every,
                   *first,
                   *pairs,
                   *seed,
                   line.isSet("permanent"),
                   line.isSet("port-faults"),
                   line.isSet("slow-host"),
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
        out() << loaded.problem.what << "\n";
        return 2;
    }
    if (options.flaw == QLatin1String("all"))
        return tryBroken(loaded.plugin->device(), options);
    const sweep::Flaw* flaw = flawNamed(options.flaw);
    if (!options.flaw.isEmpty() && flaw == nullptr) {
        out() << "no flaw is called " << options.flaw
              << "; \"--broken all\" tries and names them\n";
        return 2;
    }
    Laboratory laboratory(loaded.plugin->device(), flaw);
    if (options.isSlowHost)
        laboratory.setPatience(hx::slowHostPatience);
    return options.scenario.isEmpty() ? sweepAll(laboratory, options)
                                      : showScenario(laboratory, options);
}

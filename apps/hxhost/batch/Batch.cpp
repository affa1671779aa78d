#include "apps/hxhost/batch/Batch.h"

#include "apps/hxhost/batch/ChildOutcome.h"
#include "apps/hxhost/report/ExitCodeTable.h"
#include "host/base/FileName.h"

#include <QEventLoop>

#include <algorithm>

namespace hx::host {

namespace {

constexpr int lookAroundMs = 50;    // for an interrupt, and for whatever may begin
constexpr int askAgainMs = 1000;    // which product is on a port, when the next one is waited for
constexpr int longestPortText = 80; // in the name of a trace

QString fileText(QString port)
{
    for (QChar& character : port) {
        const bool isPlain = character.unicode() < 0x80 &&
                             (character.isLetterOrNumber() || character == QLatin1Char('.') ||
                              character == QLatin1Char('-'));
        if (!isPlain)
            character = QLatin1Char('_');
    }
    return port.right(longestPortText);
}

bool isThere(const QString& file)
{
    std::error_code unseen;
    return std::filesystem::exists(filePath(file), unseen);
}

void removeFile(const QString& file)
{
    std::error_code unseen;
    std::filesystem::remove(filePath(file), unseen);
}

} // namespace

Batch::Batch(const BatchPlan& plan, const BatchHandlers& handlers,
             const std::atomic<bool>& interrupted)
    : m_plan(plan), m_handlers(handlers), m_interrupted(interrupted)
{
    lookForPorts();
}

Batch::~Batch() = default;

void Batch::run()
{
    QEventLoop loop;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, [this, &loop] {
        goOn();
        if (isOver())
            loop.quit();
    });
    tick.start(lookAroundMs);
    loop.exec();
}

// What has gone is forgotten, so that what comes in its place is asked.
void Batch::lookForPorts()
{
    m_sinceLook.start();
    const QList<BatchPort> ports = m_handlers.listPorts();
    const auto isListed = [&ports](const QString& name) {
        return std::any_of(ports.begin(), ports.end(),
                           [&name](const BatchPort& port) { return port.name == name; });
    };
    const auto isGone = [&](const std::unique_ptr<Place>& place) {
        return !place->child && !isListed(place->port.name);
    };
    m_places.erase(std::remove_if(m_places.begin(), m_places.end(), isGone), m_places.end());
    for (const BatchPort& port : ports) {
        const auto isIt = [&port](const auto& place) { return place->port.name == port.name; };
        if (std::any_of(m_places.begin(), m_places.end(), isIt))
            continue;
        m_places.push_back(std::make_unique<Place>());
        m_places.back()->port = port;
    }
}

void Batch::goOn()
{
    if (m_interrupted && !m_isStopping)
        stop();
    if (m_isStopping)
        return;
    if (m_plan.goesOn && m_sinceLook.elapsed() >= askAgainMs)
        lookForPorts();
    for (const auto& place : m_places) {
        if (!place->child && running() < m_plan.jobs)
            begin(*place);
    }
}

void Batch::begin(Place& place)
{
    if (place.stage == Stage::Known)
        return decide(place);
    if (const Place* same = sameFile(place)) {
        if (place.stage == Stage::Unasked)
            leaveOut(place, *same, QStringLiteral("the same file as %1"));
        return;
    }
    const bool isDue = place.stage == Stage::Unasked ||
                       (m_plan.goesOn && place.sinceLastRun.elapsed() >= askAgainMs);
    if (isDue && mayAsk(place))
        ask(place);
}

// An answer that comes by one of several inputs may be to another run's question: while such a port
// is asked, no other port of a backend is. Such ports come first.
bool Batch::mayAsk(const Place& place) const
{
    const auto isInTheWay = [&place](const std::unique_ptr<Place>& other) {
        if (other.get() == &place || !other->port.isOfBackend())
            return false;
        const bool isAsked = other->stage == Stage::Unasked || other->stage == Stage::Asking;
        return place.isAmbiguous() ? other->child != nullptr : other->isAmbiguous() && isAsked;
    };
    return !place.port.isOfBackend() || std::none_of(m_places.begin(), m_places.end(), isInTheWay);
}

void Batch::ask(Place& place)
{
    if (place.number == 0) {
        place.number = ++m_numbers;
        place.unit = BatchUnit();
        place.unit.port = reportText(place.port.name);
    }
    place.stage = Stage::Asking;
    start(place, {QStringLiteral("info")}, &Batch::takeAnswer);
}

void Batch::start(Place& place, const QStringList& words, TakeResult take)
{
    QStringList all = words + m_plan.connection;
    all << QStringLiteral("--port") << place.port.name;
    if (place.port.isOfBackend())
        all << QStringLiteral("--in-port") << place.port.inputs.at(place.input);
    all << QStringLiteral("--json") << QStringLiteral("--progress") << QStringLiteral("json")
        << QStringLiteral("--stop-at-eof") << QStringLiteral("--trace") << traceOf(place);
    place.child = std::make_unique<ChildRun>(m_plan.program, all, m_plan.longestSilence);
    ChildHandlers handlers;
    handlers.progressed = [this, &place](const QJsonObject& line) {
        m_handlers.progressed(place.unit, line);
    };
    handlers.ended = [this, &place, take](const ChildResult& result) {
        place.child.reset();
        place.sinceLastRun.start();
        place.unit.durationMs += result.durationMs;
        (this->*take)(place, result);
        goOn();
    };
    place.child->start(handlers);
}

void Batch::takeAnswer(Place& place, const ChildResult& result)
{
    if (m_isStopping && m_plan.goesOn)
        return rest(place);
    if (hasProduct(result))
        return takeProduct(place, result.document);
    const bool isSilent = hasEndedWith(result, ExitCode::NoAnswer);
    if (isSilent && place.isAmbiguous() && place.input + 1 < place.port.inputs.size()) {
        ++place.input;
        place.stage = Stage::Unasked;
        return;
    }
    if (isSilent || (m_plan.goesOn && hasEndedWith(result, ExitCode::NoPort)))
        return takeSilence(place, result);
    if (m_plan.goesOn && std::exchange(place.isServed, true))
        return rest(place);
    end(place, outcomeOf(result), reasonOf(result));
}

void Batch::takeProduct(Place& place, const QJsonObject& document)
{
    place.isInputKnown = true;
    place.unit.readInfo(document);
    const QString serial = place.unit.serial;
    if (m_isStopping)
        return end(place, exitName(ExitCode::Interrupted),
                   QStringLiteral("the batch was stopped before the update began"));
    place.stage = Stage::Known;
    if (!m_plan.goesOn)
        return;
    const bool isNew = !place.isServed || serial != place.servedSerial;
    if (isNew && m_updated.contains(serial))
        m_handlers.noted(QStringLiteral("%1: the product with the serial number %2 is updated "
                                        "already")
                             .arg(place.unit.port, serial));
    if (isNew && !m_updated.contains(serial))
        return;
    place.isServed = true;
    place.servedSerial = serial;
    rest(place);
}

void Batch::takeSilence(Place& place, const ChildResult& result)
{
    place.input = 0;
    place.isServed = false;
    place.servedSerial.clear();
    if (!m_plan.goesOn && !m_plan.skipsSilent)
        return end(place, outcomeOf(result), reasonOf(result));
    if (!m_plan.goesOn)
        m_handlers.noted(QStringLiteral("%1: nothing answers").arg(place.unit.port));
    rest(place);
}

// Nothing is to be told of what was found.
void Batch::rest(Place& place)
{
    removeFile(traceOf(place));
    place.number = 0;
    place.stage = Stage::Over;
}

void Batch::decide(Place& place)
{
    if (const Place* same = sameProduct(place))
        return leaveOut(place, *same,
                        place.unit.serial.isEmpty()
                            ? QStringLiteral("the same port as %1")
                            : QStringLiteral("the same product as on %1, by its serial number"));
    if (!mustWait(place))
        update(place);
}

// What leads there is never asked.
const Batch::Place* Batch::sameFile(const Place& place) const
{
    for (const auto& other : m_places) {
        if (other.get() == &place)
            return nullptr; // the first of them is the one
        if (areOneFile(place.port, other->port))
            return other.get();
    }
    return nullptr;
}

void Batch::leaveOut(Place& place, const Place& same, const QString& why)
{
    removeFile(traceOf(place));
    place.unit.port = reportText(place.port.name);
    place.isServed = true;
    place.servedSerial = place.unit.serial;
    end(place, sameProductOutcome,
        why.arg(same.port.name) + QStringLiteral(": it is updated there"));
}

// Another place where the product is updated, or was.
const Batch::Place* Batch::sameProduct(const Place& place) const
{
    for (const auto& other : m_places) {
        const bool isTaken = other->stage == Stage::Updating ||
                             (!m_plan.goesOn && other->stage == Stage::Over && other->isServed);
        if (other.get() == &place || !isTaken)
            continue;
        const QString& serial = place.unit.serial;
        const bool isUnknown = serial.isEmpty() || other->servedSerial.isEmpty();
        if (isUnknown ? areOnePort(place.port, other->port) : serial == other->servedSerial)
            return other.get();
    }
    return nullptr;
}

// Whether the same port under another backend may yet tell which product this is.
bool Batch::mustWait(const Place& place) const
{
    const auto mayTell = [&place](const std::unique_ptr<Place>& other) {
        const bool isAsked = other->stage == Stage::Unasked || other->stage == Stage::Asking;
        return other.get() != &place && isAsked && areOnePort(place.port, other->port);
    };
    return place.unit.serial.isEmpty() && std::any_of(m_places.begin(), m_places.end(), mayTell);
}

void Batch::update(Place& place)
{
    removeFile(traceOf(place)); // that of the questions before
    place.stage = Stage::Updating;
    place.isServed = true;
    place.servedSerial = place.unit.serial;
    const QStringList words{QStringLiteral("update"), m_plan.image, QStringLiteral("--yes")};
    start(place, words + m_plan.updateOptions, &Batch::takeUpdate);
}

void Batch::takeUpdate(Place& place, const ChildResult& result)
{
    place.unit.readUpdate(result.document);
    place.servedSerial = place.unit.serial;
    const QString outcome = outcomeOf(result);
    if (outcome == succeededOutcome && !place.unit.serial.isEmpty())
        m_updated.insert(place.unit.serial);
    end(place, outcome, reasonOf(result));
}

void Batch::end(Place& place, const QString& outcome, const QString& reason)
{
    const QString trace = traceOf(place);
    place.unit.outcome = outcome;
    place.unit.reason = reportText(reason);
    place.unit.trace = isThere(trace) ? reportText(trace) : QString();
    place.number = 0;
    place.stage = Stage::Over;
    m_handlers.ended(place.unit);
}

void Batch::stop()
{
    m_isStopping = true;
    for (const auto& place : m_places) {
        if (place->child)
            place->child->stop();
        else if (place->stage != Stage::Over && !m_plan.goesOn) {
            place->unit.port = reportText(place->port.name);
            end(*place, exitName(ExitCode::Interrupted),
                QStringLiteral("the batch was stopped before the update began"));
        }
    }
}

bool Batch::isOver() const
{
    const auto isDone = [](const std::unique_ptr<Place>& place) {
        return place->stage == Stage::Over;
    };
    return running() == 0 &&
           (m_isStopping ||
            (!m_plan.goesOn && std::all_of(m_places.begin(), m_places.end(), isDone)));
}

int Batch::running() const
{
    return int(std::count_if(m_places.begin(), m_places.end(),
                             [](const auto& place) { return place->child != nullptr; }));
}

QString Batch::traceOf(const Place& place) const
{
    return m_plan.tracePrefix + QStringLiteral("%1-%2.trace")
                                    .arg(place.number, 3, 10, QLatin1Char('0'))
                                    .arg(fileText(place.port.name));
}

} // namespace hx::host

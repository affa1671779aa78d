// A batch: asks on every port which product is there, and updates each product once, all at the same
// time and each in a process of its own.
#pragma once

#include "apps/hxhost/batch/BatchPorts.h"
#include "apps/hxhost/batch/BatchUnit.h"
#include "apps/hxhost/batch/ChildRun.h"

#include <QSet>

#include <atomic>
#include <memory>
#include <vector>

namespace hx::host {

struct BatchPlan {
    QString program;           // this one
    QString image;             // a file
    QStringList connection;    // options of every run
    QStringList updateOptions; // those of updates alone
    QString tracePrefix;       // of the traces' files, with their folder
    int jobs = 0;              // at the same time
    int longestSilence = 0;    // of a run that is not hung, in milliseconds
    bool goesOn = false;       // waits for the next product after each, until it is stopped
    bool skipsSilent = false;  // a port where nothing answers is not a failure
};

struct BatchHandlers {
    std::function<QList<BatchPort>()> listPorts;
    std::function<void(const BatchUnit&, const QJsonObject&)> progressed; // a line of progress
    std::function<void(const BatchUnit&)> ended;
    std::function<void(const QString&)> noted; // what a person may want to know
};

class Batch {
public:
    Batch(const BatchPlan& plan, const BatchHandlers& handlers,
          const std::atomic<bool>& interrupted);
    ~Batch();
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    // Returns when all is done: every unit has been told as ended.
    void run();

    bool hasPorts() const { return !m_places.empty(); }

private:
    enum class Stage {
        Unasked, // nobody knows yet what is there
        Asking,
        Known, // an update may begin
        Updating,
        Over, // until something else is there
    };

    struct Place {
        BatchPort port;
        Stage stage = Stage::Unasked;
        BatchUnit unit;
        std::unique_ptr<ChildRun> child;
        int input = 0;              // of the port's, the one to ask
        bool isInputKnown = false;  // it has answered
        int number = 0;             // in the names of traces; 0: none was begun
        bool isServed = false;      // what is there has been dealt with
        QString servedSerial;       // of that
        QElapsedTimer sinceLastRun; // has ended

        bool isAmbiguous() const { return port.isAmbiguous() && !isInputKnown; }
    };

    using TakeResult = void (Batch::*)(Place&, const ChildResult&);

    void lookForPorts();
    void goOn();
    void begin(Place& place);
    const Place* sameFile(const Place& place) const;
    bool mayAsk(const Place& place) const;
    void ask(Place& place);
    void takeAnswer(Place& place, const ChildResult& result);
    void takeProduct(Place& place, const QJsonObject& document);
    void takeSilence(Place& place, const ChildResult& result);
    void decide(Place& place);
    const Place* sameProduct(const Place& place) const;
    void leaveOut(Place& place, const Place& same, const QString& why);
    bool mustWait(const Place& place) const;
    void update(Place& place);
    void takeUpdate(Place& place, const ChildResult& result);
    void start(Place& place, const QStringList& words, TakeResult take);
    void end(Place& place, const QString& outcome, const QString& reason);
    void rest(Place& place);
    void stop();
    bool isOver() const;
    int running() const;
    QString traceOf(const Place& place) const;

    const BatchPlan m_plan;
    const BatchHandlers m_handlers;
    const std::atomic<bool>& m_interrupted;
    std::vector<std::unique_ptr<Place>> m_places;
    QSet<QString> m_updated; // serial numbers
    int m_numbers = 0;
    bool m_isStopping = false;
    QElapsedTimer m_sinceLook;
};

} // namespace hx::host

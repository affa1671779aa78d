// One product of a batch: where it is, and what became of it.
#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

namespace hx::host {

// The text as every report can hold it: printable, and without the two characters that XML lacks
// beside those.
QString reportText(const QString& text);

// All texts are as reports can hold them.
struct BatchUnit {
    QString port;          // BACKEND:NAME
    QString serial;        // empty: not told
    QString identity;      // family and model, as in an identity; empty: not told
    QString versionBefore; // empty: not told, as by a product without valid code
    QString versionAfter;
    QString outcome; // one of the words below, or the name of an exit code
    QString reason;  // empty after success
    qint64 durationMs = 0;
    int retries = 0;
    QString warnings; // of its update, one after the other; empty: none
    QString trace;    // empty: none was written

    bool succeeded() const;

    // Whether another port led to the same product, so that nothing was to be done here.
    bool isSkipped() const;

    // Whether its process ended in a way that this program never means to.
    bool isBroken() const;

    // Takes over what the document of `info` or `update` tells.
    void readInfo(const QJsonObject& document);
    void readUpdate(const QJsonObject& document);
};

extern const QString succeededOutcome;   // "succeeded"
extern const QString sameProductOutcome; // "same-product"
extern const QString crashedOutcome;     // "crashed"
extern const QString hungOutcome;        // "hung"

struct BatchCount {
    int succeeded = 0;
    int failed = 0;
    int skipped = 0;

    void add(const BatchUnit& unit);
};

BatchCount countOf(const QList<BatchUnit>& units);

// The names of a unit's values, in the order in which every report gives them.
const QStringList& batchFields();

// The values under these names; numbers are numbers, all else is text.
QJsonObject batchObject(const BatchUnit& unit);

// The value as text.
QString batchText(const BatchUnit& unit, const QString& field);

} // namespace hx::host

// A batch as a file that other programs read: JUnit XML, CSV or JSON lines.
#pragma once

#include "apps/hxhost/batch/BatchUnit.h"
#include "host/base/Result.h"

#include <QDateTime>

namespace hx::host {

enum class BatchReportForm { JUnit, Csv, JsonLines };

// The form that the ending of a file's name means: .xml, .csv, .jsonl; none for another one.
std::optional<BatchReportForm> batchReportForm(const QString& name);

struct BatchRecord {
    QDateTime started; // in UTC
    QList<BatchUnit> units;
};

// JUnit: a suite for each unit, with one test case; the unit's values are the suite's properties.
QByteArray junitText(const BatchRecord& record);

// RFC 4180, with a header line.
QByteArray csvText(const BatchRecord& record);

// An object a line.
QByteArray jsonLinesText(const BatchRecord& record);

// Replaces the file as a whole.
Result<> writeBatchReport(const QString& name, const BatchRecord& record);

} // namespace hx::host

// What a batch makes of runs that do not end as this program's do: scripts stand in for it.
#include "apps/hxhost/batch/Batch.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace hx::host {

namespace {

constexpr int aMillisecond = 1;
constexpr int anHour = 60 * 60 * 1000;

class BatchRun : public ::testing::Test {
protected:
    // A program that ignores its arguments.
    QString program(const QByteArray& commands) const
    {
        const QString name = m_folder.filePath(QStringLiteral("program"));
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + commands + "\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return name;
    }

    // What becomes of the only unit, whose runs are killed when they say nothing for so long.
    BatchUnit unitOf(const QString& program, int longestSilence) const
    {
        BatchPlan plan;
        plan.program = program;
        plan.tracePrefix = m_folder.filePath(QStringLiteral("t-"));
        plan.jobs = 1;
        plan.longestSilence = longestSilence;
        QList<BatchUnit> units;
        BatchHandlers handlers;
        handlers.listPorts = [] {
            return QList<BatchPort>{{QStringLiteral("device:somewhere"), {}}};
        };
        handlers.progressed = [](const BatchUnit&, const QJsonObject&) {};
        handlers.ended = [&units](const BatchUnit& unit) { units << unit; };
        handlers.noted = [](const QString&) {};
        const std::atomic<bool> interrupted{false};
        Batch(plan, handlers, interrupted).run();
        EXPECT_EQ(units.size(), 1);
        return units.value(0);
    }

private:
    int m_count = 1;
    char m_name[5] = "test";
    char* m_words[1] = {m_name};
    QCoreApplication m_application{m_count, m_words};
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(BatchRun, ARunThatHangsForEverIsKilledAndItsUnitIsCalledHung)
{
    const QString hanging = program("exec cat"); // its input never ends by itself
    const BatchUnit unit = unitOf(hanging, aMillisecond);
    EXPECT_EQ(unit.outcome, hungOutcome);
    EXPECT_EQ(unit.reason, "its process said nothing for too long and was ended");
    EXPECT_TRUE(unit.isBroken());
    EXPECT_EQ(unit.port, "device:somewhere");
}

TEST_F(BatchRun, ARunThatCrashesMakesItsUnitACrashedOne)
{
    const BatchUnit unit = unitOf(program("echo its last words >&2; kill -9 $$"), anHour);
    EXPECT_EQ(unit.outcome, crashedOutcome);
    EXPECT_EQ(unit.reason, "its last words");
    EXPECT_TRUE(unit.isBroken());
}

TEST_F(BatchRun, ARunThatEndsWithAnUnknownCodeHasCrashed)
{
    EXPECT_EQ(unitOf(program("exit 99"), anHour).outcome, crashedOutcome);
}

TEST_F(BatchRun, AProgramThatCannotBeStartedIsAFaultOfThisProgram)
{
    const BatchUnit unit = unitOf(QStringLiteral("/no/such/program"), anHour);
    EXPECT_EQ(unit.outcome, "internal");
    EXPECT_NE(unit.reason, "");
}

} // namespace hx::host

// The ports that a batch looks on.
#include "apps/hxhost/batch/BatchPorts.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace hx::host {

namespace {

QStringList namesOf(const QList<BatchPort>& ports)
{
    QStringList names;
    for (const BatchPort& port : ports)
        names << port.name;
    return names;
}

MidiBackend backend(const QString& name, const QStringList& outputs, const QStringList& inputs)
{
    MidiBackend made;
    made.name = name;
    made.outputs = outputs;
    made.inputs = inputs;
    return made;
}

const QList<MidiBackend> bench = {
    backend("alsa", {"Bench 1:Bench 1 20:0", "Bench 2:Bench 2 24:0", "Synth 28:0"},
            {"Bench 1:Bench 1 20:0", "Bench 2:Bench 2 24:0", "Synth 28:0"}),
    backend("jack", {"Bench 1:Bench 1", "Valdrin Update:in", "Valdrin Update-01:in"},
            {"Bench 1:Bench 1", "Valdrin Update replies:out", "Valdrin Update replies-01:out"}),
};

} // namespace

TEST(BatchPattern, APartOfTheTextInWhateverCaseFits)
{
    EXPECT_TRUE(fitsBatchPattern("alsa:Bench 1", "bench"));
    EXPECT_TRUE(fitsBatchPattern("alsa:Bench 1", "alsa:Bench 1"));
    EXPECT_FALSE(fitsBatchPattern("alsa:Bench 1", "bench 2"));
    EXPECT_TRUE(fitsBatchPattern("a[1]+(2)", "[1]+("));
}

TEST(BatchPattern, WithWildcardsTheWholeTextMustFit)
{
    EXPECT_TRUE(fitsBatchPattern("alsa:Bench 1/2", "ALSA:*2"));
    EXPECT_TRUE(fitsBatchPattern("Bench 1", "bench ?"));
    EXPECT_FALSE(fitsBatchPattern("Bench 12", "bench ?"));
    EXPECT_FALSE(fitsBatchPattern("the Bench 1", "bench*"));
    EXPECT_TRUE(fitsBatchPattern("a[1]+", "a[?]+"));
    EXPECT_TRUE(fitsBatchPattern("", "*"));
}

TEST(BatchPorts, AllThatFitOnePatternOrAnotherEachOnceInOrder)
{
    EXPECT_EQ(namesOf(batchPorts(bench, {"jack:Bench*", "bench"})),
              (QStringList{"alsa:Bench 1:Bench 1 20:0", "alsa:Bench 2:Bench 2 24:0",
                           "jack:Bench 1:Bench 1"}));
    EXPECT_TRUE(batchPorts(bench, {"nothing"}).isEmpty());
}

TEST(BatchPorts, APortBringsTheInputsItsAnswersMayComeFrom)
{
    const QList<BatchPort> plain = batchPorts(bench, {"alsa:Bench 1:Bench 1 20:0"});
    ASSERT_EQ(plain.size(), 1);
    EXPECT_EQ(plain.at(0).inputs, QStringList{"alsa:Bench 1:Bench 1 20:0"});
    EXPECT_FALSE(plain.at(0).isAmbiguous());
    const QList<BatchPort> doubled = batchPorts(bench, {"jack:Valdrin Update-01:in"});
    ASSERT_EQ(doubled.size(), 1);
    EXPECT_EQ(doubled.at(0).inputs, (QStringList{"jack:Valdrin Update replies-01:out",
                                                 "jack:Valdrin Update replies:out"}));
    EXPECT_TRUE(doubled.at(0).isAmbiguous());
}

TEST(BatchPorts, FilesFitByTheLastPartOfTheirName)
{
    const QTemporaryDir folder;
    for (const char* name : {"b.state", "a.state", "A.STATE", "c.other"})
        EXPECT_TRUE(QFile(folder.filePath(name)).open(QIODevice::WriteOnly));
    const QString place = folder.path() + '/';
    EXPECT_EQ(namesOf(batchPorts({}, {"simulator:" + place + "*.state"})),
              (QStringList{"simulator:" + place + "a.state", "simulator:" + place + "b.state"}));
    EXPECT_EQ(namesOf(batchPorts({}, {"device:" + place + "?.other"})),
              QStringList{"device:" + place + "c.other"});
    EXPECT_EQ(namesOf(batchPorts({}, {"simulator:new", "simulator"})),
              (QStringList{"simulator", "simulator:new"}));
    EXPECT_TRUE(batchPorts({}, {"device:/no/such/folder/*"}).isEmpty());
}

TEST(BatchPorts, OnlyNamesOfPortsNeedTheBackends)
{
    EXPECT_FALSE(namesBackends({"simulator", "simulator:x", "device:/dev/x"}));
    EXPECT_TRUE(namesBackends({"simulator", "Bench"}));
}

TEST(BatchPorts, OneNameUnderTwoBackendsSeemsToBeOnePort)
{
    const QList<BatchPort> ports = batchPorts(bench, {"Bench 1"});
    ASSERT_EQ(ports.size(), 2);
    EXPECT_TRUE(areOnePort(ports.at(0), ports.at(1)));
    EXPECT_FALSE(areOnePort(ports.at(0), ports.at(0)));
    const QList<BatchPort> others = batchPorts(bench, {"Bench 2", "jack:Bench 1"});
    EXPECT_FALSE(areOnePort(others.at(0), others.at(1)));
    EXPECT_FALSE(areOnePort({"simulator:x", {}}, {"device:x", {}}));
}

} // namespace hx::host

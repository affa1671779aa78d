// A port is found again wherever it is by then, and never taken for another one.
#include "ports/PortMemory.h"

#include "ports/device/DevicePort.h"
#include "tests/ports/FakeSystem.h"

#include <gtest/gtest.h>

namespace hx {

namespace {

QList<MidiBackend> machine(const QStringList& outputs, const QStringList& inputs)
{
    MidiBackend alsa;
    alsa.name = QStringLiteral("alsa");
    alsa.inputs = QStringList{"Other:in 14:0"};
    alsa.outputs = alsa.inputs;
    MidiBackend jack;
    jack.name = QStringLiteral("jack");
    jack.outputs = outputs;
    jack.inputs = inputs;
    return {alsa, jack};
}

std::string whereNow(const PortMemory& memory, const QList<MidiBackend>& present)
{
    const Result<PortAddress> found = memory.find(present);
    if (!found)
        return found.problem().what.toStdString();
    return (found->backend + ' ' + found->output + ' ' + found->input).toStdString();
}

} // namespace

TEST(PortMemory, ARenumberedPortIsFoundWhateverItsPlace)
{
    const PortMemory memory({"jack", "Boot 20:0", "Boot 20:0"},
                            machine({"Piano 16:0", "Boot 20:0"}, {"Piano 16:0", "Boot 20:0"}));
    EXPECT_EQ(whereNow(memory, machine({"Boot 32:1", "Piano 16:0"}, {"Piano 16:0", "Boot 32:1"})),
              "jack Boot 32:1 Boot 32:1");
    EXPECT_EQ(whereNow(memory, machine({"Piano 16:0"}, {"Piano 16:0"})),
              "the port jack:Boot is not there");
    EXPECT_EQ(whereNow(memory, machine({"Boot 32:1"}, {})), "the port jack:Boot is not there");
    EXPECT_EQ(whereNow(memory, {}), "the port jack:Boot is not there");
}

TEST(PortMemory, ADoubleThatWasThereBeforeIsNotTakenForIt)
{
    const QStringList both = {"Boot:in", "Boot-01:in"};
    const PortMemory first({"jack", "Boot:in", "Boot:in"}, machine(both, both));
    EXPECT_EQ(whereNow(first, machine({"Boot-01:in"}, {"Boot-01:in"})),
              "the port jack:Boot:in is not there");
    EXPECT_EQ(whereNow(first, machine(both, both)), "jack Boot:in Boot:in");
    const PortMemory second({"jack", "Boot-01:in", "Boot-01:in"}, machine(both, both));
    EXPECT_EQ(whereNow(second, machine({"Boot:in"}, {"Boot:in"})),
              "the port jack:Boot:in is not there");
}

TEST(PortMemory, TwoThatCameSinceAreNotGuessedBetween)
{
    const PortMemory memory({"jack", "Boot:in", "Boot:in"}, machine({"Boot:in"}, {"Boot:in"}));
    const QStringList both = {"Boot-01:in", "Boot-02:in"};
    EXPECT_EQ(whereNow(memory, machine(both, both)),
              "several ports may be jack:Boot:in, and none is chosen by guess: jack:Boot:in; "
              "jack:Boot:in");
}

TEST(PortMemory, AnInputAloneIsFoundWithoutAnOutput)
{
    const PortMemory memory({"jack", "", "Boot 20:0"}, machine({}, {"Boot 20:0"}));
    EXPECT_EQ(whereNow(memory, machine({}, {"Boot 24:0"})), "jack  Boot 24:0");
}

TEST(PortMemory, ARawDeviceIsFoundByItsUsbDeviceOnAnotherCard)
{
    FakeSystem system;
    system.plugIn(1, QStringLiteral("1-2"), "A17");
    const QString was = QDir(system.path()).filePath("midiC1D0");
    const QString now = QDir(system.path()).filePath("midiC3D0");
    for (const QString& name : {was, QDir(system.path()).filePath("midiC2D0"), now}) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    const PortIdentity identity = identityOfDevice(was, system.path());
    EXPECT_EQ(identity.serialNumber, "A17");
    EXPECT_TRUE(isCertain(identity));
    ASSERT_TRUE(QDir(system.path() + "/class/sound/card1").removeRecursively());
    system.plugIn(2, QStringLiteral("1-3"), "B9");
    EXPECT_FALSE(findDevice(identity, system.path(), system.path()));
    system.plugIn(3, QStringLiteral("1-4"), "A17");
    const Result<QString> found = findDevice(identity, system.path(), system.path());
    ASSERT_TRUE(found) << found.problem().what.toStdString();
    EXPECT_EQ(*found, now);
    EXPECT_FALSE(isCertain({"device", "", was, ""}));
}

} // namespace hx

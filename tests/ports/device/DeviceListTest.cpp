// The raw MIDI devices in a folder that stands in for that of the system.
#include "ports/device/DeviceList.h"

#include "ports/PortSelector.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace hx {

namespace {

class DeviceList : public ::testing::Test {
protected:
    QString make(const QString& name) const
    {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return file.fileName();
    }

    QString folder() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(DeviceList, HoldsEachRawMidiDeviceAndNothingElse)
{
    const QStringList devices = {make("midiC1D0"), make("midiC1D1"), make("midiC2D0")};
    for (const char* other : {"seq", "timer", "controlC1", "pcmC1D0p", "midi", "midiC3", "umpC1D0"})
        make(other);
    EXPECT_EQ(rawMidiDevices(folder()), devices);
    const MidiBackend backend = listRawMidiDevices(folder());
    EXPECT_EQ(backend.name, "device");
    EXPECT_EQ(backend.inputs, devices);
    EXPECT_EQ(backend.outputs, devices);
    EXPECT_EQ(backend.unavailable, "");
}

TEST_F(DeviceList, SaysWhereItLookedWhenThereAreNone)
{
    EXPECT_EQ(listRawMidiDevices(folder()).unavailable,
              "there are no raw MIDI devices in " + folder());
    EXPECT_EQ(listRawMidiDevices("/no/such/folder").unavailable,
              "there are no raw MIDI devices in /no/such/folder");
}

TEST_F(DeviceList, ADeviceIsSelectedByTheNameUnderWhichItIsOpened)
{
    const QString device = make("midiC1D0");
    make("midiC1D1");
    const Result<PortSelection> selection =
        selectPort({listRawMidiDevices(folder())}, "device:" + device, QString());
    ASSERT_TRUE(selection);
    EXPECT_EQ(selection->address.backend, "device");
    EXPECT_EQ(selection->address.output, device);
    EXPECT_EQ(selection->address.input, device);
    EXPECT_TRUE(selection->others.isEmpty());
}

} // namespace hx

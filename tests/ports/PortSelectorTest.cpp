#include "ports/PortSelector.h"
#include "ports/PortNames.h"

#include <gtest/gtest.h>

namespace hx {

namespace {

MidiBackend backend(const char* name, const QStringList& outputs, const QStringList& inputs)
{
    MidiBackend result;
    result.name = QString::fromLatin1(name);
    result.outputs = outputs;
    result.inputs = inputs;
    return result;
}

QList<MidiBackend> studio()
{
    return {backend("alsa",
                    {"Midi Through:Midi Through Port-0 14:0", "Valdrin Update:Valdrin Update 20:0",
                     "USB MIDI:Port 1 24:0", "USB MIDI:Port 2 24:1"},
                    {"Midi Through:Midi Through Port-0 14:0", "Valdrin Update:Valdrin Update 20:0",
                     "USB MIDI:Port 1 24:0", "USB MIDI:Port 2 24:1"}),
            backend("jack", {"system:midi_playback_1", "Synth:in"},
                    {"system:midi_capture_1", "Synth replies:out"})};
}

// What a MIDI library lists.
struct ListedPorts {
    std::vector<std::string> names;

    unsigned getPortCount() const { return unsigned(names.size()); }
    std::string getPortName(unsigned index) const { return names.at(index); }
};

std::string chosen(const QString& output, const QString& input = QString())
{
    const Result<PortSelection> selection = selectPort(studio(), output, input);
    if (!selection)
        return selection.problem().what.toStdString();
    const PortAddress& address = selection->address;
    return (address.backend + "|" + address.output + "|" + address.input).toStdString();
}

} // namespace

TEST(PortSelector, TakesAWholeNameAPartOfOneOrANameWithItsBackend)
{
    const std::string valdrin =
        "alsa|Valdrin Update:Valdrin Update 20:0|Valdrin Update:Valdrin Update 20:0";
    EXPECT_EQ(chosen("Valdrin Update:Valdrin Update 20:0"), valdrin);
    EXPECT_EQ(chosen("Valdrin Update:Valdrin Update"), valdrin);
    EXPECT_EQ(chosen("valdrin"), valdrin);
    EXPECT_EQ(chosen("alsa:Valdrin"), valdrin);
    EXPECT_EQ(chosen("alsa:Valdrin Update:Valdrin Update 20:0"), valdrin);
    EXPECT_EQ(chosen("Port 2"), "alsa|USB MIDI:Port 2 24:1|USB MIDI:Port 2 24:1");
}

TEST(PortSelector, AWholeNameIsTakenThoughItIsAPartOfAnother)
{
    const QStringList ports = {"Boot loader 2", "Boot loader", "Boot loader-01:in"};
    for (const QString& wanted : {ports[0], ports[1], ports[2], QString("core:Boot loader")}) {
        const Result<PortSelection> selection =
            selectPort({backend("core", ports, ports)}, wanted, wanted);
        ASSERT_TRUE(selection) << selection.problem().what.toStdString();
        EXPECT_TRUE(wanted.endsWith(selection->address.output)) << wanted.toStdString();
        EXPECT_EQ(selection->address.output, selection->address.input);
    }
}

TEST(PortSelector, TwoThatFitAreAnErrorThatListsBoth)
{
    const Result<PortSelection> selection = selectPort(studio(), "USB MIDI", QString());
    EXPECT_FALSE(selection);
    EXPECT_EQ(selection.problem().what.toStdString(),
              "2 MIDI output ports fit \"USB MIDI\": alsa:USB "
              "MIDI:Port 1 24:0, alsa:USB MIDI:Port 2 24:1");
    EXPECT_EQ(selection.problem().expected.toStdString(), "a name that fits one port");
    EXPECT_EQ(selection.problem().next.toStdString(),
              "give the whole name of one of them with --port");
}

TEST(PortSelector, NoneThatFitsIsAnErrorThatListsAll)
{
    QList<MidiBackend> backends = {backend("jack", {"Synth:in"}, {"Synth:out"}),
                                   backend("alsa", {}, {})};
    backends[1].unavailable = "no sequencer";
    const Result<PortSelection> selection = selectPort(backends, "Valdrin", QString());
    EXPECT_EQ(selection.problem().what.toStdString(), "no MIDI output port fits \"Valdrin\"");
    EXPECT_EQ(selection.problem().expected.toStdString(),
              "one of: jack:Synth:in; alsa cannot be used: no sequencer");
    EXPECT_EQ(selection.problem().next.toStdString(),
              "connect the product and look at 'hxhost ports', or "
              "use '--port simulator'");
    EXPECT_EQ(selectPort({}, "Valdrin", QString()).problem().expected.toStdString(),
              "a MIDI port, and there is none");
}

TEST(PortSelector, InputIsTheOneOfTheSameDevice)
{
    EXPECT_EQ(chosen("Synth:in"), "jack|Synth:in|Synth replies:out");
    EXPECT_EQ(chosen("jack:Synth:in"), "jack|Synth:in|Synth replies:out");
    EXPECT_EQ(chosen("midi_playback_1"), "jack|system:midi_playback_1|system:midi_capture_1");
}

TEST(PortSelector, InputCanBeNamed)
{
    EXPECT_EQ(chosen("midi_playback_1", "replies"),
              "jack|system:midi_playback_1|Synth replies:out");
    EXPECT_EQ(chosen("Synth:in", "USB"), "no MIDI input port fits \"USB\"");
    const Result<PortSelection> several = selectPort(studio(), "Valdrin", "USB");
    EXPECT_EQ(several.problem().next.toStdString(),
              "give the whole name of one of them with --in-port");
}

// JACK counts the second client of a name.
TEST(PortSelector, OfTwoDevicesOfOneNameTheWholeNameSelectsEach)
{
    const QStringList outputs = {"Valdrin Update:in", "Valdrin Update-01:in"};
    const QStringList inputs = {"Valdrin Update replies:out", "Valdrin Update replies-01:out"};
    const QList<MidiBackend> backends = {backend("jack", outputs, inputs)};
    for (int i = 0; i < 2; ++i) {
        const Result<PortSelection> whole =
            selectPort(backends, "jack:" + outputs[i], "jack:" + inputs[i]);
        ASSERT_TRUE(whole) << whole.problem().what.toStdString();
        EXPECT_EQ(whole->address.output, outputs[i]);
        EXPECT_EQ(whole->address.input, inputs[i]);
        EXPECT_TRUE(whole->others.isEmpty());
        EXPECT_EQ(selectInput(backends, inputs[i])->address.input, inputs[i]);
        const Result<PortSelection> asking = selectPort(backends, outputs[i], QString());
        ASSERT_TRUE(asking) << asking.problem().what.toStdString();
        EXPECT_EQ(asking->address.input, inputs[i]);
        ASSERT_EQ(asking->others.size(), 1);
        EXPECT_EQ(asking->others.first().output, outputs[i]);
        EXPECT_EQ(asking->others.first().input, inputs[1 - i]);
    }
    EXPECT_FALSE(selectPort(backends, "Valdrin Update", QString()));
}

TEST(PortSelector, ThePluginsNameOfAnInputMayFitSeveral)
{
    const QList<MidiBackend> backends = {
        backend("core", {"Boot loader"}, {"Wire 1", "Wire 2", "Other"})};
    const Result<PortSelection> selection = selectProductPort(backends, "Boot loader", "Wire");
    ASSERT_TRUE(selection) << selection.problem().what.toStdString();
    EXPECT_EQ(selection->address.input, "Wire 1");
    ASSERT_EQ(selection->others.size(), 1);
    EXPECT_EQ(selection->others.first().input, "Wire 2");
    EXPECT_EQ(selectProductPort(backends, "Boot loader", "Radio").problem().what,
              "no MIDI input port fits \"Radio\"");
}

TEST(PortSelector, InputAloneHasNoOutput)
{
    const Result<PortSelection> selection = selectInput(studio(), "Synth");
    ASSERT_TRUE(selection);
    EXPECT_EQ(selection->address.backend, "jack");
    EXPECT_EQ(selection->address.input, "Synth replies:out");
    EXPECT_TRUE(selection->address.output.isEmpty());
}

TEST(PortNames, PortsOfOneNameAreNumberedAndEachNumberSelectsItsPort)
{
    const ListedPorts ports = {{"Boot loader", "Synth", "Boot loader", "Boot loader"}};
    const QStringList names = portNames(ports);
    EXPECT_EQ(names, QStringList({"Boot loader", "Synth", "Boot loader (2)", "Boot loader (3)"}));
    for (const QString& name : names) {
        const Result<PortSelection> selection =
            selectPort({backend("core", names, names)}, "core:" + name, QString());
        ASSERT_TRUE(selection) << selection.problem().what.toStdString();
        EXPECT_EQ(selection->address.output, name);
        EXPECT_EQ(selection->address.input, name);
        EXPECT_TRUE(selection->others.isEmpty());
    }
}

TEST(PortNames, StablePartHasNoNumbersOfTheDay)
{
    EXPECT_EQ(stablePortName("Valdrin Update:Valdrin Update 20:0"),
              "Valdrin Update:Valdrin Update");
    EXPECT_EQ(stablePortName("Valdrin Update:Valdrin Update MIDI 1 128:12"),
              "Valdrin Update:Valdrin Update MIDI 1");
    EXPECT_EQ(stablePortName("Valdrin Update-01:out"), "Valdrin Update:out");
    EXPECT_EQ(stablePortName("Valdrin Update:in"), "Valdrin Update:in");
    EXPECT_EQ(stablePortName("Port-7"), "Port-7");
    EXPECT_EQ(stablePortName(""), "");
}

TEST(PortNames, ProductFitsByItsStablePartInWhateverCase)
{
    EXPECT_TRUE(fitsProductPort("VALDRIN update-02:out", "Valdrin Update"));
    EXPECT_TRUE(fitsProductPort("Valdrin Update:Valdrin Update 20:0", "Valdrin Update"));
    EXPECT_FALSE(fitsProductPort("Valdrin:Update 20:0", "Valdrin Update"));
    EXPECT_FALSE(fitsProductPort("anything", ""));
}

TEST(PortList, NamesEveryBackendWithPortsOrAReason)
{
    ::testing::internal::CaptureStderr();
    const QList<MidiBackend> backends = listMidiBackends();
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    ASSERT_FALSE(backends.isEmpty());
    for (const MidiBackend& found : backends) {
        EXPECT_FALSE(found.name.isEmpty());
        if (!found.unavailable.isEmpty()) {
            EXPECT_TRUE(found.inputs.isEmpty());
            EXPECT_TRUE(found.outputs.isEmpty());
        }
    }
}

} // namespace hx

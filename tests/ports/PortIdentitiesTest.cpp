// A port is known by its USB device and its name, never by its place in a list.
#include "ports/PortIdentities.h"

#include "tests/ports/FakeSystem.h"

#include <gtest/gtest.h>

namespace hx {

namespace {

PortIdentity port(const QString& name, const QString& socket = QString(),
                  const QString& serial = QString())
{
    return {QStringLiteral("alsa"), socket, name, serial};
}

int placeOf(const PortIdentity& wanted, const QList<PortIdentity>& present)
{
    const Result<int> found = findPort(wanted, present);
    EXPECT_TRUE(found) << found.problem().what.toStdString();
    return found ? *found : -1;
}

QString whyNot(const PortIdentity& wanted, const QList<PortIdentity>& present)
{
    const Result<int> found = findPort(wanted, present);
    EXPECT_FALSE(found);
    return found ? QString() : found.problem().what;
}

} // namespace

TEST(PortIdentities, AnAlsaPortIsKnownByTheUsbDeviceOfItsCard)
{
    FakeSystem system;
    system.plugIn(1, QStringLiteral("1-2"), "A17");
    const PortIdentity identity =
        identityOfPort("alsa", "Valdrin Update:Valdrin Update MIDI 1 20:0", system.path());
    EXPECT_EQ(identity.backend, "alsa");
    EXPECT_EQ(identity.stableId, "usb 1-2 1234");
    EXPECT_EQ(identity.name, "Valdrin Update:Valdrin Update MIDI 1");
    EXPECT_EQ(identity.serialNumber, "A17");
}

TEST(PortIdentities, TheSecondDeviceOfACardIsOfThatCardToo)
{
    FakeSystem system;
    system.plugIn(2, QStringLiteral("1-4"), "B9");
    EXPECT_EQ(identityOfPort("alsa", "A:b 27:0", system.path()).serialNumber, "B9");
    EXPECT_EQ(identityOfPort("alsa", "A:b 28:0", system.path()).serialNumber, "");
}

TEST(PortIdentities, WithoutAUsbDeviceThereIsTheNameAlone)
{
    FakeSystem system;
    system.plugIn(1, QStringLiteral("1-2"), "");
    system.build(0);
    EXPECT_EQ(identityOfPort("alsa", "A:b 20:0", system.path()).stableId, "usb 1-2 1234");
    EXPECT_EQ(identityOfPort("alsa", "A:b 20:0", system.path()).serialNumber, "");
    for (const char* name : {"A:b 16:0", "A:b 24:0", "A:b 128:0", "A:b 14:0", "A:b"}) {
        const PortIdentity identity = identityOfPort("alsa", name, system.path());
        EXPECT_EQ(identity.stableId, "") << name;
        EXPECT_EQ(identity.name, "A:b") << name;
    }
    EXPECT_EQ(identityOfPort("jack", "A:b 20:0", system.path()).stableId, "");
    EXPECT_EQ(identityOfPort("jack", "A-01:b", system.path()).name, "A:b");
}

TEST(PortIdentities, ARenumberedPortIsFoundByItsName)
{
    EXPECT_EQ(placeOf(port("Boot"), {port("Piano"), port("Boot")}), 1);
    EXPECT_EQ(placeOf(port("Boot"), {port("Boot"), port("Piano")}), 0);
}

TEST(PortIdentities, ARenamedPortIsFoundByItsSerialNumberOrItsSocket)
{
    EXPECT_EQ(placeOf(port("App", "usb 1-2 12", "A17"),
                      {port("App", "usb 1-2 12", "B9"), port("Boot", "usb 1-3 12", "A17")}),
              1);
    EXPECT_EQ(
        placeOf(port("App", "usb 1-2 12"), {port("App", "usb 1-3 12"), port("Boot", "usb 1-2 12")}),
        1);
    EXPECT_EQ(whyNot(port("App"), {port("Boot")}), "the port alsa:App is not there");
}

TEST(PortIdentities, OfTwoPortsOfOneDeviceTheNameDecides)
{
    const QList<PortIdentity> both = {port("Out 1", "usb 1-2 12", "A17"),
                                      port("Out 2", "usb 1-2 12", "A17")};
    EXPECT_EQ(placeOf(port("Out 2", "usb 1-2 12", "A17"), both), 1);
    EXPECT_EQ(placeOf(port("Out 1", "usb 1-9 12", "A17"), both), 0);
}

TEST(PortIdentities, TwoPortsThatCannotBeToldApartAreNotGuessedBetween)
{
    EXPECT_EQ(whyNot(port("Boot"), {port("Boot"), port("Piano"), port("Boot")}),
              "several ports may be alsa:Boot, and none is chosen by guess: alsa:Boot; alsa:Boot");
    EXPECT_EQ(whyNot(port("App", "usb 1-2 12", "A17"),
                     {port("x", "usb 1-3 12", "A17"), port("y", "usb 1-3 12", "A17")}),
              "several ports may be alsa:App, serial number A17, and none is chosen by guess: "
              "alsa:x, serial number A17; alsa:y, serial number A17");
}

TEST(PortIdentities, AnotherDeviceOfTheSameNameIsNotTakenForIt)
{
    EXPECT_EQ(whyNot(port("Boot", "usb 1-2 12", "A17"), {port("Boot", "usb 1-2 12", "B9")}),
              "the port alsa:Boot, serial number A17 is not there");
    const PortIdentity otherBackend = {QStringLiteral("jack"), QString(), QStringLiteral("Boot"),
                                       QString()};
    EXPECT_EQ(whyNot(port("Boot"), {otherBackend}), "the port alsa:Boot is not there");
}

} // namespace hx

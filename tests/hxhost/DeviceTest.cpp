// Commands over a device: the simulated product in one process, the host in another.
#include "tests/hxhost/HxHost.h"

#include "ports/device/DevicePort.h"

#include <QFileInfo>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int aMinute = 60000;

// 'hxhost simulate --device', from the moment it has said that its product is there.
class DeviceProduct {
public:
    explicit DeviceProduct(const QString& link, const QStringList& more = {})
    {
        m_process.setReadChannel(QProcess::StandardError);
        m_process.start(QStringLiteral(HX_HOST_PROGRAM),
                        QStringList{"simulate", "--device", link, "--json"} + more);
        while (!m_said.contains("The product is on") && m_process.waitForReadyRead(aMinute))
            m_said += m_process.readAllStandardError();
        EXPECT_TRUE(m_said.contains(link.toUtf8())) << m_said.toStdString();
    }

    // Its result; it ends by itself when it was unplugged.
    QJsonObject end(bool isUnplugged = false)
    {
        if (!isUnplugged)
            m_process.terminate();
        EXPECT_TRUE(m_process.waitForFinished(aMinute));
        const QJsonDocument document = QJsonDocument::fromJson(m_process.readAllStandardOutput());
        return document.object().value("result").toObject();
    }

private:
    QProcess m_process;
    QByteArray m_said;
};

class DeviceTest : public HxHostTest {
protected:
    QString link() const { return path(QStringLiteral("product")); }
    QString port() const { return QStringLiteral("device:") + link(); }
    QStringList update() const
    {
        return {"update", image(), "--port", port(), "--rate", "0", "--no-listen"};
    }
};

} // namespace

TEST_F(DeviceTest, AProductOnADeviceIsUpdatedAndVerified)
{
    DeviceProduct product(link());
    const ProgramResult updated = hxhost(update());
    EXPECT_EQ(updated.exitCode, 0) << updated.err.toStdString();
    EXPECT_TRUE(
        updated.out.contains("Verified: the instrument answers, and its code is that of the "
                             "image."))
        << updated.out.toStdString();
    const QJsonObject identity = json({"identify", "--port", port()}).value("result").toObject();
    EXPECT_EQ(identity.value("port").toString(), port());
    const QJsonObject result = product.end();
    EXPECT_EQ(result.value("port").toString(), port());
    EXPECT_TRUE(result.value("product").toObject().value("codeValid").toBool());
    EXPECT_EQ(result.value("product").toObject().value("codeBytes").toInt(), 1000);
    EXPECT_FALSE(QFileInfo(link()).isSymLink());
}

TEST_F(DeviceTest, AProductThatIsUnpluggedEndsTheUpdateAtOnce)
{
    DeviceProduct product(link(), {"--fault", "vanish:9"});
    const QJsonObject document = json(update());
    EXPECT_EQ(document.value("exitCode").toInt(), 4);
    EXPECT_EQ(document.value("result").toObject().value("outcome").toString(), "port lost");
    const QByteArray text = QJsonDocument(document).toJson();
    EXPECT_TRUE(
        text.contains(QStringLiteral("the device %1 was removed, or its other end was closed")
                          .arg(link())
                          .toUtf8()))
        << text.toStdString();
    EXPECT_TRUE(product.end(true).value("product").toObject().value("unplugged").toBool());
}

TEST_F(DeviceTest, ADeviceThatAnotherProgramHoldsIsRefused)
{
    DeviceProduct product(link());
    const auto held = hx::DevicePort::open({link(), QString()}, hx::Pace());
    ASSERT_TRUE(held);
    const ProgramResult refused = hxhost({"identify", "--port", port()});
    EXPECT_EQ(refused.exitCode, 4);
    EXPECT_EQ(QString::fromUtf8(refused.err),
              QStringLiteral("error: the device \"%1\" is in use by another program\n"
                             "  expected: a device that no other program has open\n"
                             "  next: close that program ('fuser -v %1' names it), then try "
                             "again\n")
                  .arg(link()));
    product.end();
}

TEST_F(DeviceTest, AFifoForEachDirectionIsAPort)
{
    const QByteArray there = path("there").toUtf8();
    const QByteArray back = path("back").toUtf8();
    ASSERT_EQ(mkfifo(there.constData(), 0600), 0);
    ASSERT_EQ(mkfifo(back.constData(), 0600), 0);
    const int heard = ::open(there.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    QProcess host;
    host.start(QStringLiteral(HX_HOST_PROGRAM),
               {"identify", "--port", "device:" + path("there"), "--in-port",
                "device:" + path("back"), "--field", "identity.identifier"});
    struct pollfd look = {heard, POLLIN, 0};
    ASSERT_EQ(poll(&look, 1, aMinute), 1);
    char command[16];
    EXPECT_EQ(::read(heard, command, sizeof command), 6);
    EXPECT_EQ(QByteArray(command, 6), QByteArray::fromHex("F07E7F0601F7"));
    const int answers = ::open(back.constData(), O_WRONLY | O_CLOEXEC);
    const QByteArray reply = QByteArray::fromHex("F07E000602006B2D3000410031303233F7");
    EXPECT_EQ(::write(answers, reply.constData(), size_t(reply.size())), reply.size());
    EXPECT_TRUE(host.waitForFinished(aMinute));
    EXPECT_EQ(host.exitCode(), 0);
    EXPECT_EQ(host.readAllStandardOutput(), "0x300041\n");
    ::close(heard);
    ::close(answers);
}

TEST_F(DeviceTest, WhatADeviceSaysCanBeMonitored)
{
    DeviceProduct product(link(), {"--fault", "noise"});
    const ProgramResult heard = hxhost({"monitor", "--port", port(), "--count", "3"});
    EXPECT_EQ(heard.exitCode, 0) << heard.err.toStdString();
    EXPECT_TRUE(heard.out.contains("F8")) << heard.out.toStdString();
    product.end();
}

TEST_F(DeviceTest, AMissingDeviceIsAPortThatIsNotThere)
{
    const ProgramResult missing = hxhost({"info", "--port", port()});
    EXPECT_EQ(missing.exitCode, 4);
    EXPECT_TRUE(missing.err.startsWith("error: there is no device \""))
        << missing.err.toStdString();
}

TEST_F(DeviceTest, ADeviceWithoutANameIsRefused)
{
    for (const QStringList& words :
         {QStringList{"identify", "--port", "device:"}, QStringList{"monitor", "--port", "device:"},
          QStringList{"identify", "--port", port(), "--in-port", "device:"}}) {
        const QJsonObject document = json(words);
        EXPECT_EQ(document["exitCode"], 4) << words.join(' ').toStdString();
        EXPECT_EQ(document["error"].toObject()["what"], "the device has no name");
    }
}

TEST_F(DeviceTest, ADeviceAndAnotherPortAreNotOneConnection)
{
    for (const QStringList& ports :
         {QStringList{"--port", port(), "--in-port", "alsa:x"},
          QStringList{"--port", "alsa:x", "--in-port", port()}, QStringList{"--in-port", port()}}) {
        const ProgramResult mixed = hxhost(QStringList("identify") + ports);
        EXPECT_EQ(mixed.exitCode, 2) << ports.join(" ").toStdString();
        EXPECT_TRUE(mixed.err.contains("are not both devices")) << mixed.err.toStdString();
    }
}

TEST_F(DeviceTest, ALinkNeedsADeviceAndAFreeName)
{
    const ProgramResult alone = hxhost({"simulate", link()});
    EXPECT_EQ(alone.exitCode, 2);
    EXPECT_TRUE(alone.err.contains("next: give --device too")) << alone.err.toStdString();
    const ProgramResult taken = hxhost({"simulate", "--device", write("taken", "text")});
    EXPECT_EQ(taken.exitCode, 10);
    EXPECT_EQ(read(path("taken")), "text");
    EXPECT_EQ(hxhost({"simulate", "--device", "--backend", "jack"}).exitCode, 2);
}

TEST_F(DeviceTest, WithoutALinkTheDeviceIsNamedByItsPath)
{
    const ProgramResult simulated = hxhost({"simulate", "--device", "--seconds", "0.01"});
    EXPECT_EQ(simulated.exitCode, 0);
    EXPECT_TRUE(simulated.err.startsWith("The product is on device:/dev/"))
        << simulated.err.toStdString();
}

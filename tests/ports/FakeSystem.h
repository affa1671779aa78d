// The kernel's folders of devices, as a test wants them.
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

// The kernel's folders as they are for one USB interface in a socket.
class FakeSystem {
public:
    QString path() const { return m_folder.path(); }

    void plugIn(int card, const QString& socket, const QByteArray& serial)
    {
        const QString device = QStringLiteral("devices/usb1/") + socket;
        const QString interface = device + QStringLiteral("/%1:1.0").arg(socket);
        const QString sound = QStringLiteral("class/sound/card%1").arg(card);
        QDir root(path());
        EXPECT_TRUE(root.mkpath(interface));
        EXPECT_TRUE(root.mkpath(sound));
        write(device + QStringLiteral("/idVendor"), "1234\n");
        if (!serial.isEmpty())
            write(device + QStringLiteral("/serial"), serial + '\n');
        EXPECT_TRUE(QFile::link(root.filePath(interface), root.filePath(sound + "/device")));
    }

    // A card inside the machine: no USB device is above it.
    void build(int card)
    {
        const QString sound = QStringLiteral("class/sound/card%1").arg(card);
        QDir root(path());
        EXPECT_TRUE(root.mkpath(sound));
        EXPECT_TRUE(root.mkpath(QStringLiteral("devices/pci0/sound")));
        EXPECT_TRUE(
            QFile::link(root.filePath("devices/pci0/sound"), root.filePath(sound + "/device")));
    }

private:
    void write(const QString& name, const QByteArray& text)
    {
        QFile file(QDir(path()).filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QTemporaryDir m_folder;
};

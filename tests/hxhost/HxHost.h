// hxhost as the tests run it: in a folder of its own, with the plugin of this build.
#pragma once

#include "tests/support/Program.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

class HxHostTest : public ::testing::Test {
protected:
    using Environment = QMap<QString, QString>;

    static ProgramResult hxhost(const QStringList& arguments, const Environment& environment = {})
    {
        return runProgram(QStringLiteral(HX_HOST_PROGRAM), arguments, environment);
    }

    // With --json: the document; its exit code is checked against the program's.
    static QJsonObject json(QStringList arguments)
    {
        const ProgramResult result = hxhost(arguments << QStringLiteral("--json"));
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(result.out, &error);
        EXPECT_EQ(error.error, QJsonParseError::NoError) << result.out.toStdString();
        EXPECT_EQ(document.object().value("exitCode").toInt(-1), result.exitCode);
        EXPECT_EQ(document.object().value("ok").toBool(), result.exitCode == 0);
        return document.object();
    }

    QString path(const QString& name) const { return m_folder.filePath(name); }

    QString write(const QString& name, const QByteArray& content) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    static QByteArray read(const QString& name)
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }

    // An image of `size` code bytes, made by the program itself.
    QString image(int size = 1000, const QString& kind = QStringLiteral("fwu")) const
    {
        QByteArray code;
        for (int i = 0; i < size; ++i)
            code.append(char(i * 7 + i / 256));
        const QString name = path(QStringLiteral("image.syx"));
        const ProgramResult built =
            hxhost({"image", "build", write("code.bin", code), "-o", name, "--kind", kind});
        EXPECT_EQ(built.exitCode, 0) << built.err.toStdString();
        return name;
    }

private:
    QTemporaryDir m_folder;
};

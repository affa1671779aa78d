// Files that a test writes into a folder of its own.
#pragma once

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

class TestFiles {
public:
    // Writes `content` to the file `name` and returns its path.
    QString write(const QString& name, const QByteArray& content)
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return file.fileName();
    }

    // Copies the file `from` to the file `name` and returns its path.
    QString copy(const QString& from, const QString& name)
    {
        EXPECT_TRUE(QFile::copy(from, path(name)));
        return path(name);
    }

    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString folder() const { return m_folder.path(); }

    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

private:
    QTemporaryDir m_folder;
};

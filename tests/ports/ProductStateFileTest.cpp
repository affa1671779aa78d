#include "ports/ProductStateFile.h"
#include "tests/simulator/UpdateMessages.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/Valdrin.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace hx {

namespace {

class StateFile : public ::testing::Test {
protected:
    QString path() const { return m_folder.filePath(QStringLiteral("product.state")); }

    void write(const QByteArray& content) const
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    QByteArray contents() const
    {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    QString folder() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
};

// Without the superuser's right to read everything, as long as it lives.
class AsNobody {
public:
    AsNobody() : m_user(geteuid())
    {
        if (m_user == 0) {
            EXPECT_EQ(seteuid(nobody), 0);
        }
    }
    ~AsNobody() { EXPECT_EQ(seteuid(m_user), 0); }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

private:
    static constexpr uid_t nobody = 65534;
    uid_t m_user;
};

std::unique_ptr<ProductStateFile> openState(const QString& path, sim::SimulatedProduct& product,
                                            QString* error)
{
    auto opened = ProductStateFile::open(path, product);
    if (opened)
        return std::move(*opened);
    EXPECT_EQ(opened.problem().code, ExitCode::FileError);
    *error = opened.problem().what;
    return nullptr;
}

} // namespace

TEST_F(StateFile, AFileThatIsNotThereGivesTheProductAsItLeftTheFactory)
{
    sim::SimulatedProduct product{sim::valdrin()};
    QString error;
    ASSERT_NE(openState(path(), product, &error), nullptr) << error.toStdString();
    EXPECT_EQ(product.codeBytes(), sim::SimulatedProduct(sim::valdrin()).codeBytes());
    EXPECT_EQ(contents(), sim::SimulatedProduct(sim::valdrin()).save());
}

TEST_F(StateFile, WhatIsKeptIsRestored)
{
    sim::SimulatedProduct changed{sim::valdrin()};
    QString error;
    {
        const auto file = openState(path(), changed, &error);
        ASSERT_NE(file, nullptr) << error.toStdString();
        changed.damageCode(0);
        EXPECT_TRUE(file->close(changed));
    }
    sim::SimulatedProduct product{sim::valdrin()};
    ASSERT_NE(openState(path(), product, &error), nullptr) << error.toStdString();
    EXPECT_EQ(product.codeBytes(), changed.codeBytes());
}

// What a killed program leaves: nothing is closed.
TEST_F(StateFile, HoldsEachChangeAsSoonAsItIsMade)
{
    sim::SimulatedProduct product{sim::valdrin()};
    QString error;
    const auto file = openState(path(), product, &error);
    ASSERT_NE(file, nullptr) << error.toStdString();
    for (const QByteArray& message : sim::imageOf(sim::codeOfSize(5000), "1024")) {
        product.receive(message);
        EXPECT_TRUE(file->keep(product));
        sim::SimulatedProduct found{sim::valdrin()};
        ASSERT_TRUE(found.restore(contents(), &error)) << error.toStdString();
        EXPECT_EQ(found.save(), product.save());
    }
    EXPECT_TRUE(product.isCodeValid());
}

TEST_F(StateFile, AProductThatWasErasedIsNotValidInItsFile)
{
    sim::SimulatedProduct product{sim::valdrin()};
    QString error;
    const auto file = openState(path(), product, &error);
    ASSERT_NE(file, nullptr) << error.toStdString();
    product.receive(sim::imageOf(sim::codeOfSize(5000), "1024").first());
    EXPECT_TRUE(file->keep(product));
    EXPECT_TRUE(contents().contains("\nvalid no\n")) << contents().toStdString();
}

TEST_F(StateFile, AddsToTheFileWhatAMessageBringsAndIsTidyOnceItIsClosed)
{
    sim::SimulatedProduct product{sim::valdrin()};
    QString error;
    const auto file = openState(path(), product, &error);
    ASSERT_NE(file, nullptr) << error.toStdString();
    const auto messages = sim::imageOf(sim::codeOfSize(5000), "1024");
    for (int i = 0; i < 3; ++i) {
        product.receive(messages.at(i));
        EXPECT_TRUE(file->keep(product));
    }
    EXPECT_EQ(contents().count("\nchange fwu no - - "), 2);
    EXPECT_TRUE(file->close(product));
    EXPECT_EQ(contents(), product.save());
}

TEST_F(StateFile, ALineThatWasNotFinishedDoesNotCountAndIsNotContinued)
{
    sim::SimulatedProduct product{sim::valdrin()};
    product.receive(sim::imageOf(sim::codeOfSize(5000), "1024").first());
    write(product.save() + "change fwu no - - 0000");
    QString error;
    sim::SimulatedProduct restored{sim::valdrin()};
    const auto file = openState(path(), restored, &error);
    ASSERT_NE(file, nullptr) << error.toStdString();
    EXPECT_EQ(restored.save(), product.save());
    restored.damageCode(3);
    EXPECT_TRUE(file->keep(restored));
    EXPECT_EQ(contents(), restored.save());
}

// The file then has what the last good call left, and the next program goes on from there.
TEST_F(StateFile, AChangeThatFindsNoRoomIsAFailureAndStaysOne)
{
    sim::SimulatedProduct product{sim::valdrin()};
    QString error;
    auto file = openState(path(), product, &error);
    ASSERT_NE(file, nullptr) << error.toStdString();
    const auto messages = sim::imageOf(sim::codeOfSize(5000), "1024");
    product.receive(messages.at(0));
    EXPECT_TRUE(file->keep(product));
    const QByteArray stored = product.save();
    {
        const FileSizeLimit noRoom(rlim_t(contents().size()));
        product.receive(messages.at(1));
        EXPECT_FALSE(file->keep(product));
    }
    product.receive(messages.at(2)); // for which there would be room
    const Result<> later = file->keep(product);
    ASSERT_FALSE(later);
    EXPECT_EQ(later.problem().what, "File too large");
    EXPECT_FALSE(file->close(product));
    file.reset();
    sim::SimulatedProduct found{sim::valdrin()};
    ASSERT_NE(openState(path(), found, &error), nullptr) << error.toStdString();
    EXPECT_EQ(found.save(), stored);
}

TEST_F(StateFile, IsNotWrittenWhenNothingChanges)
{
    const QByteArray state = sim::SimulatedProduct(sim::valdrin()).save();
    write(state);
    QFile file(path());
    const QDateTime longAgo(QDate(2001, 2, 3), QTime(4, 5, 6));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(longAgo, QFileDevice::FileModificationTime));
    file.close();
    sim::SimulatedProduct product{sim::valdrin()};
    QString error;
    {
        const auto used = openState(path(), product, &error);
        ASSERT_NE(used, nullptr) << error.toStdString();
        product.receive(QByteArray::fromHex("F07E7F0601F7"));
        EXPECT_TRUE(used->keep(product));
        EXPECT_TRUE(used->close(product));
    }
    EXPECT_EQ(QFileInfo(path()).lastModified(), longAgo);
}

TEST_F(StateFile, ASecondUserIsRefusedByWhateverName)
{
    const QString link = folder() + "/link.state";
    ASSERT_TRUE(QFile::link(path(), link));
    sim::SimulatedProduct product{sim::valdrin()};
    QString error;
    {
        const auto first = openState(path(), product, &error);
        ASSERT_NE(first, nullptr) << error.toStdString();
        for (const QString& name : {path(), link}) {
            EXPECT_EQ(openState(name, product, &error), nullptr);
            EXPECT_EQ(error, QStringLiteral("another program uses it (process %1)").arg(getpid()));
        }
    }
    EXPECT_NE(openState(link, product, &error), nullptr) << error.toStdString();
}

TEST_F(StateFile, TheLockOfAKilledProgramDoesNotHoldAndIsTakenAway)
{
    QFile lock(path() + ".lock");
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
    lock.write("process 4711\n");
    lock.close();
    sim::SimulatedProduct product{sim::valdrin()};
    QString error;
    EXPECT_NE(openState(path(), product, &error), nullptr) << error.toStdString();
    EXPECT_FALSE(lock.exists());
}

TEST_F(StateFile, AFileThatIsNoLockIsNotTakenForOne)
{
    QFile diary(path() + ".lock");
    ASSERT_TRUE(diary.open(QIODevice::WriteOnly));
    diary.write("my diary");
    diary.close();
    sim::SimulatedProduct product{sim::valdrin()};
    QString error;
    EXPECT_EQ(openState(path(), product, &error), nullptr);
    EXPECT_EQ(error, "the file of that name and \".lock\" is not a lock");
    EXPECT_TRUE(diary.open(QIODevice::ReadOnly));
    EXPECT_EQ(diary.readAll(), "my diary");
}

TEST_F(StateFile, ADamagedFileIsRefusedAndLeavesTheProductAlone)
{
    write("no state\n");
    sim::SimulatedProduct product{sim::valdrin()};
    QString error;
    EXPECT_EQ(openState(path(), product, &error), nullptr);
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(product.codeBytes(), sim::SimulatedProduct(sim::valdrin()).codeBytes());
}

TEST_F(StateFile, APlaceThatCannotKeepTheStateIsRefusedBeforeTheProductIsUsed)
{
    sim::SimulatedProduct product{sim::valdrin()};
    QString error;
    EXPECT_EQ(openState(path() + "/no/such/folder", product, &error), nullptr);
    EXPECT_EQ(error, "No such file or directory");
    EXPECT_EQ(openState(QString(), product, &error), nullptr);
    EXPECT_EQ(error, "it has no name");
}

TEST_F(StateFile, AFileThatMayNotBeReadIsRefusedAndNotReplacedByAFreshProduct)
{
    const QByteArray state = sim::SimulatedProduct(sim::valdrin()).save();
    write(state);
    ASSERT_EQ(chmod(folder().toLocal8Bit().constData(), 0777), 0);
    ASSERT_EQ(chmod(path().toLocal8Bit().constData(), 0000), 0);
    {
        const AsNobody nobody;
        sim::SimulatedProduct product{sim::valdrin()};
        QString error;
        EXPECT_EQ(openState(path(), product, &error), nullptr);
        EXPECT_EQ(error, "Permission denied");
    }
    struct stat found = {};
    ASSERT_EQ(stat(path().toLocal8Bit().constData(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, 0u);
    EXPECT_EQ(found.st_size, state.size());
}

TEST_F(StateFile, WhatIsTooLargeIsRefusedAndNotTakenIntoMemory)
{
    write("simulated product state 1\n");
    QFile file(path());
    ASSERT_TRUE(file.resize(64LL * 1024 * 1024 + 1)); // takes no room on the disk
    sim::SimulatedProduct product{sim::valdrin()};
    QString error;
    EXPECT_EQ(openState(path(), product, &error), nullptr);
    EXPECT_EQ(error, "it is larger than 67108864 bytes, more than the memory of any product");
}

// Opening a pipe to which nobody writes would wait for ever.
TEST_F(StateFile, APipeOrADeviceIsRefusedUnread)
{
    sim::SimulatedProduct product{sim::valdrin()};
    QString error;
    ASSERT_EQ(mkfifo(path().toLocal8Bit().constData(), 0600), 0);
    EXPECT_EQ(openState(path(), product, &error), nullptr);
    EXPECT_EQ(error, "it is not a regular file");
    EXPECT_EQ(openState(QStringLiteral("/dev/null"), product, &error), nullptr);
    EXPECT_EQ(error, "it is not a regular file");
}

} // namespace hx

#include "ports/StatefulSimulatedPort.h"

#include <QFile>
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

} // namespace

TEST_F(StateFile, AFileThatIsNotThereGivesTheProductAsItLeftTheFactory)
{
    SimulatedProduct product;
    QString error;
    EXPECT_TRUE(restoreProduct(product, path(), &error));
    EXPECT_EQ(product.codeBytes(), SimulatedProduct().codeBytes());
}

TEST_F(StateFile, WhatIsSavedIsRestored)
{
    SimulatedProduct changed;
    changed.damageCode(0);
    QString error;
    ASSERT_TRUE(saveProduct(changed, path(), &error)) << error.toStdString();
    SimulatedProduct product;
    ASSERT_TRUE(restoreProduct(product, path(), &error)) << error.toStdString();
    EXPECT_EQ(product.codeBytes(), changed.codeBytes());
}

TEST_F(StateFile, ADamagedFileIsRefusedAndLeavesTheProductAlone)
{
    write("no state\n");
    SimulatedProduct product;
    QString error;
    EXPECT_FALSE(restoreProduct(product, path(), &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(product.codeBytes(), SimulatedProduct().codeBytes());
}

TEST_F(StateFile, APlaceThatCannotKeepTheStateIsRefusedBeforeTheProductIsUsed)
{
    SimulatedProduct product;
    QString error;
    EXPECT_FALSE(restoreProduct(product, path() + "/no/such/folder", &error));
    EXPECT_EQ(error, "No such file or directory");
    EXPECT_FALSE(restoreProduct(product, QString(), &error));
    EXPECT_EQ(error, "it has no name");
}

TEST_F(StateFile, AFileThatMayNotBeReadIsRefusedAndNotReplacedByAFreshProduct)
{
    const QByteArray state = SimulatedProduct().save();
    write(state);
    ASSERT_EQ(chmod(folder().toLocal8Bit().constData(), 0777), 0);
    ASSERT_EQ(chmod(path().toLocal8Bit().constData(), 0000), 0);
    {
        const AsNobody nobody;
        SimulatedProduct product;
        QString error;
        EXPECT_FALSE(restoreProduct(product, path(), &error));
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
    SimulatedProduct product;
    QString error;
    EXPECT_FALSE(restoreProduct(product, path(), &error));
    EXPECT_EQ(error, "it is larger than 67108864 bytes, which no memory of a product is");
}

// Opening a pipe to which nobody writes would wait for ever.
TEST_F(StateFile, APipeOrADeviceIsRefusedUnread)
{
    SimulatedProduct product;
    QString error;
    ASSERT_EQ(mkfifo(path().toLocal8Bit().constData(), 0600), 0);
    EXPECT_FALSE(restoreProduct(product, path(), &error));
    EXPECT_EQ(error, "it is no regular file");
    EXPECT_FALSE(restoreProduct(product, QStringLiteral("/dev/null"), &error));
    EXPECT_EQ(error, "it is no regular file");
}

} // namespace hx

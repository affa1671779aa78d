#include "host/base/WholeFile.h"
#include "tests/host/TestFiles.h"
#include "tests/support/FileSizeLimit.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace hx;

namespace {

bool isPipe(const QString& path)
{
    struct stat status = {};
    return stat(path.toLocal8Bit().constData(), &status) == 0 && S_ISFIFO(status.st_mode);
}

} // namespace

TEST(WholeFile, IsWrittenAndReplaced)
{
    TestFiles files;
    EXPECT_TRUE(writeWholeFile(files.path("a"), "first"));
    EXPECT_EQ(TestFiles::contentOf(files.path("a")), "first");
    EXPECT_TRUE(writeWholeFile(files.path("a"), QByteArray()));
    EXPECT_EQ(TestFiles::contentOf(files.path("a")), "");
}

TEST(WholeFile, NamesTheReasonWhenItCannotBeWritten)
{
    TestFiles files;
    const Result<> missing = writeWholeFile(files.path("missing/a"), "text");
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.problem().code, ExitCode::FileError);
    EXPECT_EQ(missing.problem().what, "No such file or directory");
    const Result<> folder = writeWholeFile(files.folder(), "text");
    ASSERT_FALSE(folder);
    EXPECT_EQ(folder.problem().what, "it is a folder");
}

// A system that runs out of room takes a part and says nothing yet.
TEST(WholeFile, SaysThatThereIsNoRoomWhenOnlyAPartWasTaken)
{
    TestFiles files;
    files.write("a", "before");
    for (const int room : {65536, 1000}) { // more and less than a buffer holds
        const FileSizeLimit limit{rlim_t(room)};
        const Result<> written = writeWholeFile(files.path("a"), QByteArray(room + 1, 'x'));
        ASSERT_FALSE(written);
        EXPECT_EQ(written.problem().what, "there is no room for all of it; free some");
    }
    EXPECT_EQ(TestFiles::contentOf(files.path("a")), "before");
}

TEST(WholeFile, APipeIsWrittenToAndStaysAPipe)
{
    TestFiles files;
    const QString path = files.path("pipe");
    ASSERT_EQ(mkfifo(path.toLocal8Bit().constData(), 0600), 0);
    const int reader = open(path.toLocal8Bit().constData(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    EXPECT_TRUE(writeWholeFile(path, "through"));
    char bytes[16] = {};
    EXPECT_EQ(read(reader, bytes, sizeof(bytes)), 7);
    EXPECT_STREQ(bytes, "through");
    close(reader);
    EXPECT_TRUE(isPipe(path));
}

TEST(WholeFile, ADeviceThatTakesNothingIsAnErrorAndStaysADevice)
{
    TestFiles files;
    const QString link = files.path("full");
    if (!QFile::exists(QStringLiteral("/dev/full")) || !QFile::link("/dev/full", link))
        GTEST_SKIP() << "no /dev/full";
    const Result<> written = writeWholeFile(link, "text");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.problem().what, "No space left on device");
    struct stat status = {};
    ASSERT_EQ(stat("/dev/full", &status), 0);
    EXPECT_TRUE(S_ISCHR(status.st_mode));
}

TEST(WholeFile, ASecretIsReadOnlyWhereNotEverybodyMay)
{
    TestFiles files;
    const QString path = files.write("key", "secret");
    const QByteArray name = path.toLocal8Bit();
    for (const mode_t mode : {0600U, 0400U, 0640U}) {
        ASSERT_EQ(chmod(name.constData(), mode), 0);
        const Result<QByteArray> read = readSecretFile(path, 100);
        ASSERT_TRUE(bool(read));
        EXPECT_EQ(*read, "secret");
    }
    for (const mode_t mode : {0644U, 0604U, 0602U, 0666U}) {
        ASSERT_EQ(chmod(name.constData(), mode), 0);
        const Result<QByteArray> read = readSecretFile(path, 100);
        ASSERT_FALSE(bool(read));
        EXPECT_EQ(read.problem().what,
                  QString("all users of this machine may read or change it, its mode is 0%1")
                      .arg(mode, 0, 8));
    }
    EXPECT_EQ(readSecretFile(files.folder(), 100).problem().what, "it is a folder");
    EXPECT_EQ(readSecretFile(files.path("gone"), 100).problem().what, "No such file or directory");
}

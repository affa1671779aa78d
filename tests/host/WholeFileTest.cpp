#include "host/base/WholeFile.h"
#include "tests/host/TestFiles.h"

#include <gtest/gtest.h>

#include <csignal>

#include <fcntl.h>
#include <sys/resource.h>
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
    QString error;
    EXPECT_TRUE(writeWholeFile(files.path("a"), "first", &error)) << error.toStdString();
    EXPECT_EQ(TestFiles::contentOf(files.path("a")), "first");
    EXPECT_TRUE(writeWholeFile(files.path("a"), QByteArray(), &error));
    EXPECT_EQ(TestFiles::contentOf(files.path("a")), "");
    EXPECT_TRUE(error.isEmpty());
}

TEST(WholeFile, NamesTheReasonWhenItCannotBeWritten)
{
    TestFiles files;
    QString error;
    EXPECT_FALSE(writeWholeFile(files.path("missing/a"), "text", &error));
    EXPECT_FALSE(error.isEmpty());
    error.clear();
    EXPECT_FALSE(writeWholeFile(files.folder(), "text", &error));
    EXPECT_FALSE(error.isEmpty());
}

// A system that runs out of room takes a part and says nothing yet.
TEST(WholeFile, SaysThatThereIsNoRoomWhenOnlyAPartWasTaken)
{
    TestFiles files;
    files.write("a", "before");
    rlimit before = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small = {65536, before.rlim_max};
    const auto onTooLarge = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    QString error;
    const bool isWritten = writeWholeFile(files.path("a"), QByteArray(100000, 'x'), &error);
    const rlimit smaller = {1000, before.rlim_max}; // less than a buffer holds
    setrlimit(RLIMIT_FSIZE, &smaller);
    QString errorOfFew;
    const bool areFewWritten = writeWholeFile(files.path("a"), QByteArray(1001, 'x'), &errorOfFew);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, onTooLarge);
    EXPECT_FALSE(isWritten || areFewWritten);
    EXPECT_EQ(error, "there is no room for all of it; free some");
    EXPECT_EQ(errorOfFew, error);
    EXPECT_EQ(TestFiles::contentOf(files.path("a")), "before");
}

TEST(WholeFile, APipeIsWrittenToAndStaysAPipe)
{
    TestFiles files;
    const QString path = files.path("pipe");
    ASSERT_EQ(mkfifo(path.toLocal8Bit().constData(), 0600), 0);
    const int reader = open(path.toLocal8Bit().constData(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    QString error;
    EXPECT_TRUE(writeWholeFile(path, "through", &error)) << error.toStdString();
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
    QString error;
    EXPECT_FALSE(writeWholeFile(link, "text", &error));
    EXPECT_EQ(error, "No space left on device");
    struct stat status = {};
    ASSERT_EQ(stat("/dev/full", &status), 0);
    EXPECT_TRUE(S_ISCHR(status.st_mode));
}

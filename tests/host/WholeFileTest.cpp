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
    rlimit before = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small = {65536, before.rlim_max};
    const auto onTooLarge = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const Result<> many = writeWholeFile(files.path("a"), QByteArray(100000, 'x'));
    const rlimit smaller = {1000, before.rlim_max}; // less than a buffer holds
    setrlimit(RLIMIT_FSIZE, &smaller);
    const Result<> few = writeWholeFile(files.path("a"), QByteArray(1001, 'x'));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, onTooLarge);
    ASSERT_FALSE(many);
    ASSERT_FALSE(few);
    EXPECT_EQ(many.problem().what, "there is no room for all of it; free some");
    EXPECT_EQ(few.problem().what, many.problem().what);
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

// Command lines that make no sense still end with a defined exit code, a reason, and nothing on
// Qt's channel.
#include "tests/hxmidi/CommandRun.h"

#include "tests/mididata/Random.h"
#include "tests/support/LogCapture.h"
#include "tests/support/QtPrinting.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

const std::vector<std::string> commands = {"parse", "build",  "match", "diff", "dump",
                                           "split", "fields", "sum",   "hash", "convert"};
const std::vector<std::string> words = {"F0",          "7E 00",      "F07E7F0601F7",
                                        "7",           "..",         "",
                                        "@-",          "@",          "@nowhere",
                                        "--",          "--json",     "--strict",
                                        "--raw",       "--lenient",  "--tokens",
                                        "--from",      "c",          "decimal",
                                        "raw",         "--size",     "--columns",
                                        "--start",     "--end",      "--count",
                                        "--offset",    "--to",       "--kind",
                                        "--each",      "--length",   "-1",
                                        "0",           "3",          "999999",
                                        "-2147483648", "4294967296", "VV",
                                        "CSTR F32",    "MSTR F7",    "(",
                                        "[0",          ".{9}{9}",    "14bit@1",
                                        "string@0",    "ascii@9",    "utime@0x",
                                        "--fallback",  "--frob",     "\xFF\xFE",
                                        "[F0]",        "{0xF0",      "-q",
                                        "--tolerant",  "--status",   "--help",
                                        "=",           "--size=2"};

std::vector<std::string> randomLine(Random& random)
{
    std::vector<std::string> line;
    if (!random.oneIn(10))
        line.push_back(random.of(commands));
    const int count = random.below(7);
    for (int i = 0; i < count; ++i)
        line.push_back(random.of(words));
    return line;
}

bool asksFor(const std::vector<std::string>& line, const std::string& option)
{
    return std::find(line.begin(), line.end(), option) != line.end();
}

void run(const std::vector<std::string>& line, const QByteArray& input)
{
    SCOPED_TRACE(testing::PrintToString(line));
    LogCapture log;
    const CommandRun run = hxmidi(line, input);
    EXPECT_EQ(log.texts(), QStringList());
    EXPECT_TRUE(run.code == 0 || run.code == 1 || run.code == 2) << run.code;
    EXPECT_EQ(run.code == 2, run.err.find("error: ") != std::string::npos) << run.err;
    if (run.code != 2)
        return;
    const bool isJson = asksFor(line, "--json") && !run.out.empty();
    EXPECT_TRUE(isJson || run.out.empty()) << run.out;
    EXPECT_FALSE(isJson && run.json().value(QStringLiteral("ok")).toBool(true)) << run.out;
}

} // namespace

TEST(RandomCommandLines, EndWithAnExitCodeAndAReason)
{
    Random random(5);
    for (int i = 0; i < 2000 && !testing::Test::HasFailure(); ++i)
        run(randomLine(random), random.oneIn(2) ? random.bytes(random.below(20)) : "F0 7E 7 F7\n");
}

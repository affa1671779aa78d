// JACK's server goes away while a program opens its ports: the library then frees clients that the
// program still has. The library is that of leavingserver/jack.cpp.
#include "tests/hxhost/HxHost.h"

namespace {

class LeavingServer : public HxHostTest {
protected:
    // The server goes away when the client of that number is opened.
    static ProgramResult runUntil(int opening, const QStringList& words)
    {
        return hxhost(words + QStringList{"--plugin", HX_PLUGIN_FILE},
                      {{"LD_LIBRARY_PATH", HX_LEAVING_SERVER_FOLDER},
                       {"JACK_GONE_AT", QString::number(opening)}});
    }
};

} // namespace

// Two clients list the ports, three open them, and two look for them when they are gone.
TEST_F(LeavingServer, AServerThatGoesWhilePortsAreOpenedIsAnErrorAndNoCrash)
{
    for (int opening = 1; opening <= 7; ++opening) {
        const ProgramResult ended = runUntil(opening, {"identify"});
        EXPECT_EQ(ended.exitCode, 4) << opening << ended.err.toStdString();
        EXPECT_EQ(ended.err.contains("The connection to jack:Valdrin Update:in was lost.\n"),
                  opening > 5)
            << opening << ended.err.toStdString();
    }
}

TEST_F(LeavingServer, SoItIsForAPortToHearAndForPortsThatAreOffered)
{
    const QList<QStringList> commands = {{"monitor", "--port", "jack:Valdrin Update replies:out"},
                                         {"simulate", "--backend", "jack"}};
    for (const QStringList& words : commands) {
        for (int opening = 1; opening <= 5; ++opening) {
            const ProgramResult ended = runUntil(opening, words);
            EXPECT_EQ(ended.exitCode, 4) << opening << ended.err.toStdString();
        }
    }
}

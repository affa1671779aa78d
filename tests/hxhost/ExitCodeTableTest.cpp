// Every exit code that a command can end with, reached through that command; the table is the one
// of docs/user/exit-codes.md.
#include "tests/hxhost/HxHost.h"

#include <QMap>
#include <QSet>

namespace {

// Capital words stand for files: see `file`.
struct Case {
    const char* command;
    int code;
    const char* words; // after the command
};

void PrintTo(const Case& row, std::ostream* out)
{
    *out << row.command << ' ' << row.words << " -> " << row.code;
}

const Case cases[] = {
    {"update", 0, "IMAGE --port simulator"},
    {"update", 2, "IMAGE --port simulator --field colour"},
    {"update", 3, "IMAGE --port simulator --plugin BAD"},
    {"update", 4, "IMAGE --port simulator --fault vanish:7"},
    {"update", 5, "IMAGE --port simulator --fault silent"},
    {"update", 6, "BAD --port simulator"},
    {"update", 7, "IMAGE --port simulator --fault failed-ack:3"},
    {"update", 8, "IMAGE --port simulator --fault silent:9-"},
    {"update", 9, "OTHER --port simulator"},
    {"update", 10, "NOWHERE --port simulator"},
    {"update", 11, "IMAGE --port replay:TRACE"},
    {"update", 130, "IMAGE --port replay:STOPPED --no-listen"},
    {"batch", 0, "IMAGE --ports simulator --traces NEW --progress plain"},
    {"batch", 2, "IMAGE --jobs 0"},
    {"batch", 3, "IMAGE --plugin BAD --progress plain"},
    {"batch", 4, "IMAGE --ports nowhere --progress plain"},
    {"batch", 6, "BAD --ports simulator --progress plain"},
    {"batch", 9, "OTHER --ports simulator --progress plain"},
    {"batch", 10, "NOWHERE --ports simulator --progress plain"},
    {"batch", 14, "IMAGE --ports simulator:BAD --traces NEW --progress plain"},
    {"verify", 0, "--port simulator"},
    {"verify", 2, "--port simulator --rate -1"},
    {"verify", 3, "--port simulator --plugin BAD"},
    {"verify", 4, "--port simulator --fault vanish:1"},
    {"verify", 5, "--port simulator --fault silent"},
    {"verify", 6, "BAD --port simulator"},
    {"verify", 8, "IMAGE --port simulator"},
    {"verify", 9, "OTHER --port simulator"},
    {"verify", 10, "NOWHERE --port simulator"},
    {"verify", 11, "--port replay:TRACE"},
    {"verify", 130, "--port replay:STOPPED"},
    {"identify", 0, "--port simulator"},
    {"identify", 2, "--port Valdrin --fault silent"},
    {"identify", 3, "--port simulator --plugin BAD"},
    {"identify", 4, "--port simulator --fault vanish:1"},
    {"identify", 5, "--port simulator --fault silent"},
    {"identify", 9, "--port simulator --fault wrong-model"},
    {"identify", 10, "--port simulator --trace NOWHERE"},
    {"identify", 11, "--port replay:EMPTY"},
    {"identify", 130, "--port replay:STOPPED"},
    {"info", 0, "--port simulator"},
    {"info", 2, "--port simulator --nothing"},
    {"info", 3, "--port simulator --plugin BAD"},
    {"info", 4, "--port simulator --fault vanish:1"},
    {"info", 5, "--port simulator --fault silent:3-"},
    {"info", 9, "--port simulator --fault wrong-model"},
    {"info", 10, "--port simulator:NOWHERE"},
    {"info", 11, "--port replay:TRACE"},
    {"info", 130, "--port replay:STOPPED"},
    {"recover", 0, "--port simulator"},
    {"recover", 2, "surplus --port simulator"},
    {"recover", 3, "--port simulator --plugin BAD"},
    {"recover", 4, "--port simulator --fault vanish:2"},
    {"recover", 5, "--port simulator --fault silent"},
    {"recover", 8, "--port simulator --fault silent:2-"},
    {"recover", 9, "--port simulator --fault wrong-model"},
    {"recover", 10, "--port replay:NOWHERE"},
    {"recover", 11, "--port replay:TRACE"},
    {"recover", 130, "--port replay:STOPPED"},
    {"image build", 0, "CODE -o NEW --kind fwu"},
    {"image build", 2, "CODE -o NEW --kind fwx"},
    {"image build", 3, "CODE -o NEW --kind fwu --plugin BAD"},
    {"image build", 6, "IMAGE -o NEW --kind fwu"},
    {"image build", 10, "NOWHERE -o NEW --kind fwu"},
    {"image inspect", 0, "IMAGE"},
    {"image inspect", 2, ""},
    {"image inspect", 3, "IMAGE --plugin BAD"},
    {"image inspect", 6, "BAD"},
    {"image inspect", 9, "OTHER"},
    {"image inspect", 10, "NOWHERE"},
    {"image sign", 0, "IMAGE --key SECRET -o NEW"},
    {"image sign", 2, "IMAGE"},
    {"image sign", 3, "IMAGE --key SECRET --plugin BAD"},
    {"image sign", 6, "BAD --key SECRET"},
    {"image sign", 9, "OTHER --key SECRET"},
    {"image sign", 10, "IMAGE --key NOWHERE"},
    {"image verify", 0, "SIGNED --pubkey PUBLIC"},
    {"image verify", 2, "IMAGE"},
    {"image verify", 3, "IMAGE --pubkey PUBLIC --plugin BAD"},
    {"image verify", 6, "IMAGE --pubkey PUBLIC"},
    {"image verify", 9, "OTHER --pubkey PUBLIC"},
    {"image verify", 10, "NOWHERE --pubkey PUBLIC"},
    {"inspect", 0, ""},
    {"inspect", 2, "--field colour"},
    {"inspect", 3, "--plugin BAD"},
    {"inspect", 10, "--trace NOWHERE"},
    {"check", 0, "PLUGIN"},
    {"check", 2, "PLUGIN PLUGIN"},
    {"check", 3, "BAD"},
    {"check", 6, "PLUGIN --image BAD"},
    {"check", 9, "PLUGIN --image OTHER"},
    {"check", 10, "PLUGIN --image NOWHERE"},
    {"check", 13, "PLUGIN --image ODD"},
    {"ports", 0, ""},
    {"ports", 2, "--nothing"},
    {"ports", 3, "--plugin BAD"},
    {"ports", 10, "--trace NOWHERE"},
    {"monitor", 0, "--port simulator --fault noise --count 1"},
    {"monitor", 2, "--port simulator --count -1"},
    {"monitor", 3, "--port simulator --plugin BAD"},
    {"monitor", 4, "--port nowhere"},
    {"monitor", 10, "--port replay:NOWHERE"},
    {"trace", 0, "TRACE"},
    {"trace", 2, "TRACE --svg TRACE"},
    {"trace", 10, "NOWHERE"},
    {"simulate", 2, "--backend nothing"},
    {"simulate", 3, "--plugin BAD"},
    {"simulate", 4, "--backend jack"},
    {"simulate", 10, "--state NOWHERE"},
    {"support", 0, "-o NEW --port simulator"},
    {"support", 2, ""},
    {"support", 10, "-o NOWHERE --port simulator"},
    {"support", 130, "-o NEW --port replay:STOPPED"},
};

class ExitCodeTable : public HxHostTest, public testing::WithParamInterface<Case> {
protected:
    QString file(const QString& word) const
    {
        if (word == "PLUGIN")
            return HX_PLUGIN_FILE;
        if (word == "NOWHERE")
            return path("no/such/folder/file");
        if (word == "IMAGE" || word == "CODE") {
            const QString syx = image(300);
            return word == "IMAGE" ? syx : path("code.bin");
        }
        if (word == "BAD")
            return write("bad", QByteArray("\xF0\x00 nothing good", 15));
        if (word == "OTHER")
            return write("other", read(image(300)).replace("\x2D\x30\x41", "\x2D\x30\x42"));
        if (word == "ODD")
            return write("odd", QByteArray::fromHex("F0006B2D30410102030405F7"));
        if (word == "SECRET" || word == "PUBLIC")
            return key(word.toLower());
        if (word == "SIGNED")
            return signedImage();
        if (word == "TRACE")
            return recorded();
        if (word == "STOPPED")
            return write("stopped",
                         read(recorded())
                             .replace("received    F0 7E 00 06 02 00 6B 2D 30 00 41 00 31 30 32 "
                                      "33 F7 = identify.response",
                                      "interrupted : Ctrl-C"));
        return word == "EMPTY" ? write("empty", "# hxtrace 1\n") : path("new");
    }

private:
    // One of a pair of keys: "secret" or "public".
    QString key(const QString& name) const
    {
        if (!QFile::exists(path(name)))
            runProgram(QStringLiteral("minisign"),
                       {"-G", "-W", "-s", path("secret"), "-p", path("public")});
        return path(name);
    }

    QString signedImage() const
    {
        const QString syx = image(300);
        EXPECT_EQ(hxhost({"image", "sign", syx, "--key", key("secret")}).exitCode, 0);
        return syx;
    }

    // An identity request and its answer.
    QString recorded() const
    {
        const QString name = path("trace");
        EXPECT_EQ(hxhost({"identify", "--port", "simulator", "--trace", name}).exitCode, 0);
        return name;
    }
};

// "| `update` | 3, 4, 5 |", and the codes that the line before the table gives to every command.
QMap<QString, QSet<int>> documentedCodes(const QByteArray& page)
{
    QMap<QString, QSet<int>> codes;
    const QList<QByteArray> lines = page.split('\n');
    for (const QByteArray& line : lines) {
        const QList<QByteArray> cells = line.split('|');
        if (cells.size() != 4 || !cells.at(1).startsWith(" `"))
            continue;
        const QString command = QString::fromLatin1(cells.at(1)).remove('`').trimmed();
        for (const QByteArray& code : cells.at(2).split(','))
            codes[command] << code.trimmed().toInt();
    }
    return codes;
}

} // namespace

TEST_P(ExitCodeTable, CommandEndsWithTheCode)
{
    const QString line = QString("%1 %2").arg(GetParam().command, GetParam().words);
    QStringList words = line.trimmed().split(' ');
    for (QString& word : words) {
        const QString last = word.section(':', -1);
        if (last == last.toUpper() && last.at(0).isLetter())
            word.replace(last, file(last));
    }
    const ProgramResult ended =
        hxhost(words, {{"JACK_DEFAULT_SERVER", "no-such-server"}, {"JACK_NO_START_SERVER", "1"}});
    EXPECT_EQ(ended.exitCode, GetParam().code) << ended.err.toStdString();
    EXPECT_EQ(ended.err.contains("error: "), GetParam().code != 0) << ended.err.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Commands, ExitCodeTable, testing::ValuesIn(cases));

// 1 is a fault of the program; a question is answered, and a password typed, on a terminal alone; a
// product is served, and stays silent, on real ports alone; a batch is stopped from outside: these are
// tried elsewhere.
TEST(ExitCodePage, NamesEveryCodeOfEachCommandThatIsTriedAndNoOther)
{
    QFile page(HX_EXIT_CODE_PAGE);
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    QMap<QString, QSet<int>> tried;
    for (const Case& row : cases)
        tried[row.command] << row.code;
    QMap<QString, QSet<int>> documented = documentedCodes(page.readAll());
    EXPECT_TRUE(documented["update"].remove(12));
    EXPECT_TRUE(documented["batch"].remove(5));
    EXPECT_TRUE(documented["batch"].remove(130));
    EXPECT_TRUE(documented["simulate"].remove(0));
    EXPECT_TRUE(documented["image sign"].remove(130));
    EXPECT_EQ(documented.keys(), tried.keys());
    for (auto it = tried.begin(); it != tried.end(); ++it)
        EXPECT_TRUE(documented[it.key()] == it.value()) << it.key().toStdString();
}

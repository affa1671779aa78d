// Names of files and ports, and texts of traces, whatever bytes they are made of.
#include "tests/hxhost/HxHost.h"
#include "tests/support/NamesOfBytes.h"

#include <filesystem>

namespace {

class FileNames : public HxHostTest {
protected:
    // A script in the test's own folder; "$0" is the program, $e and $g are names in Latin-1, which
    // UTF-8 is not.
    ProgramResult script(const QString& text) const
    {
        const QString names =
            "cd '" + path(".") + "' && e=$(printf 'a\\351') g=$(printf 'a\\350') && ";
        return runProgram(QStringLiteral("/bin/sh"),
                          {QStringLiteral("-c"), names + text, HX_HOST_PROGRAM});
    }

    // QTemporaryDir cannot remove what Qt cannot name.
    void TearDown() override
    {
        for (const auto& file : std::filesystem::directory_iterator(path(".").toStdString()))
            std::filesystem::remove_all(file);
    }

    int files() const
    {
        const std::filesystem::directory_iterator folder(path(".").toStdString());
        return int(std::distance(begin(folder), end(folder)));
    }

    bool holds(const std::string& name) const
    {
        return std::filesystem::exists(path(".").toStdString() + '/' + name);
    }
};

bool isPlain(const QByteArray& output)
{
    for (const char byte : output) {
        if ((byte >= 0 && byte < ' ' && byte != '\n') || byte == '\x7F')
            return false;
    }
    return !output.contains("\xC2\x9B");
}

} // namespace

TEST_F(FileNames, TwoThatAreNotUtf8StayTwoFiles)
{
    SKIP_WHERE_NAMES_ARE_TEXT(path(".").toStdString());
    write("code", "some code");
    for (const char* locale : {"C", "C.UTF-8"}) {
        const ProgramResult ended = script(
            QStringLiteral("export LC_ALL=%1; \"$0\" image build code -o \"$e\" --kind fwu && "
                           "\"$0\" image build code -o \"$g\" --kind fwd")
                .arg(locale));
        EXPECT_EQ(ended.exitCode, 0) << ended.err.toStdString();
        EXPECT_TRUE(ended.out.contains("a\\xE9\n")) << ended.out.toStdString();
        EXPECT_TRUE(holds("a\xE9") && holds("a\xE8"));
        EXPECT_EQ(files(), 3);
        EXPECT_TRUE(script("\"$0\" image inspect \"$e\" --field image.kind").out == "fwu\n");
        EXPECT_TRUE(script("\"$0\" image inspect \"$g\" --field image.kind").out == "fwd\n");
        EXPECT_EQ(script("rm \"$e\" \"$g\"").exitCode, 0);
    }
}

TEST_F(FileNames, ThatAreUtf8AreUsedInEveryLocale)
{
    write("code", "some code");
    const ProgramResult ended =
        script("LC_ALL=C \"$0\" image build code -o \"$(printf '\\303\\244')\" --kind fwu");
    EXPECT_EQ(ended.exitCode, 0) << ended.err.toStdString();
    EXPECT_TRUE(holds("\xC3\xA4"));
    EXPECT_TRUE(ended.out.contains("\xC3\xA4\n")) << ended.out.toStdString();
}

TEST_F(FileNames, ThatAreNotUtf8AreUsedByEveryOption)
{
    SKIP_WHERE_NAMES_ARE_TEXT(path(".").toStdString());
    image();
    const ProgramResult ended = script(
        "cp image.syx \"$e\" && \"$0\" update \"$e\" --port \"simulator:$g\" --trace \"$e.t\" -q "
        "&& "
        "\"$0\" verify \"$e\" --port \"simulator:$g\" && \"$0\" trace \"$e.t\" --svg \"$g.svg\" && "
        "\"$0\" update \"$e\" --port \"replay:$e.t\" -q && cp code.bin \"$e.b\" && "
        "\"$0\" image build \"$e.b\" -o \"$g.i\" --kind fwu");
    EXPECT_EQ(ended.exitCode, 0) << ended.err.toStdString();
    for (const char* name : {"a\xE9", "a\xE8", "a\xE9.t", "a\xE8.svg", "a\xE8.i"})
        EXPECT_TRUE(holds(name)) << name;
}

TEST_F(FileNames, OfPluginsAndOfTheProgramsOwnFolderMayBeAnyBytes)
{
    SKIP_WHERE_NAMES_ARE_TEXT(path(".").toStdString());
    const QString set =
        QStringLiteral("p='%1'; mkdir -p \"$e/bin\" \"$e/lib\" && cp \"$0\" \"$e/bin/hxhost\" "
                       "&& cp \"$p\" \"$e/lib\" && cp \"$p\" \"$g.so\"; ")
            .arg(HX_PLUGIN_FILE);
    for (const char* command :
         {"\"$0\" inspect --plugin \"$e/lib\"", "\"$0\" inspect --plugin \"$g.so\"",
          "\"$e/bin/hxhost\" identify --port simulator", "\"$0\" check \"$e/lib\"",
          "LC_ALL=C \"$e/bin/hxhost\" inspect"}) {
        const ProgramResult ended = script(set + command);
        EXPECT_EQ(ended.exitCode, 0) << command << ended.err.toStdString();
    }
    const ProgramResult none = script(set + "rm \"$e/lib/\"*; \"$e/bin/hxhost\" inspect");
    EXPECT_EQ(none.exitCode, 3);
    EXPECT_EQ(script(set + "\"$e/bin/hxhost\" inspect --trace \"$e/bin/hxhost\"").exitCode, 2);
    EXPECT_EQ(script(set + "\"$e/bin/hxhost\" inspect --trace \"$e/lib/\"*.so").exitCode, 2);
}

TEST_F(FileNames, ThatIsMissingIsShownAsItIs)
{
    SKIP_WHERE_NAMES_ARE_TEXT(path(".").toStdString());
    const ProgramResult ended = script("\"$0\" image inspect \"$e\"");
    EXPECT_EQ(ended.exitCode, 10);
    EXPECT_TRUE(ended.err.startsWith("error: the image \"a\\xE9\" cannot be read: No such file"))
        << ended.err.toStdString();
}

TEST_F(FileNames, AreTextInTheDocumentAndBytesForScripts)
{
    SKIP_WHERE_NAMES_ARE_TEXT(path(".").toStdString());
    image();
    const ProgramResult document =
        script("cp image.syx \"$e\"; \"$0\" image inspect \"$e\" --json");
    const QJsonObject result =
        QJsonDocument::fromJson(document.out).object().value("result").toObject();
    EXPECT_EQ(result.value("image").toObject().value("file").toString(), "a\\xE9");
    EXPECT_EQ(script("\"$0\" image inspect \"$e\" --field image.file").out, "a\xE9\n");
}

TEST_F(FileNames, WithControlCharactersAreShownEscaped)
{
    image();
    const ProgramResult ended = script(
        "n=$(printf 'x\\033[31m\\302\\233y'); cp image.syx \"$n\"; \"$0\" image inspect \"$n\"; "
        "\"$0\" verify \"$n\" --port simulator; \"$0\" image inspect \"$n.missing\"");
    EXPECT_TRUE(isPlain(ended.out)) << ended.out.toStdString();
    EXPECT_TRUE(isPlain(ended.err)) << ended.err.toStdString();
    EXPECT_TRUE(ended.out.contains("x\\x1B[31m\\u009By\n")) << ended.out.toStdString();
    EXPECT_TRUE(ended.err.contains("x\\x1B[31m\\u009By.missing")) << ended.err.toStdString();
    const ProgramResult document =
        script("\"$0\" image inspect \"$(printf 'x\\033[31m\\302\\233y')\" --json");
    EXPECT_TRUE(isPlain(document.out)) << document.out.toStdString();
    EXPECT_EQ(QJsonDocument::fromJson(document.out)
                  .object()["result"]
                  .toObject()["image"]
                  .toObject()["file"]
                  .toString(),
              QString::fromUtf8("x\x1B[31m\xC2\x9By"));
}

TEST_F(FileNames, OfPortsAndCommandsAreShownEscaped)
{
    for (const char* words :
         {"identify --port \"$n\"", "\"$n\"", "identify \"$n\"", "simulate --backend \"$n\"",
          "identify --port simulator --field \"$n\"", "identify --fault \"$n\""}) {
        const ProgramResult ended =
            script(QStringLiteral("n=$(printf 'x\\033]0;y\\007'); \"$0\" %1").arg(words));
        EXPECT_NE(ended.exitCode, 0) << words;
        EXPECT_TRUE(isPlain(ended.out) && isPlain(ended.err)) << words << ended.err.toStdString();
    }
}

TEST_F(FileNames, InTheTitleOfATraceCannotForgeALine)
{
    ASSERT_EQ(
        script("\"$0\" identify --port simulator --gap 0 --trace \"$(printf 't\\n1.0 sent F0')\"")
            .exitCode,
        0);
    EXPECT_TRUE(holds("t\n1.0 sent F0"));
    EXPECT_EQ(script("\"$0\" trace \"$(printf 't\\n1.0 sent F0')\" --field summary.sent").out,
              "1\n");
}

TEST_F(FileNames, TextsOfTracesAreShownEscaped)
{
    write("t", "# hxtrace 1\n0.000001 log : \x1B[2J \xC2\x9B and \xE2\x80\xAE\n0.000002 log : "
               "\\x1b]0;x\n");
    for (const char* more : {"", " --json", " --svg p.svg"}) {
        const ProgramResult ended = script(QStringLiteral("\"$0\" trace t").append(more));
        EXPECT_EQ(ended.exitCode, 0) << ended.err.toStdString();
        EXPECT_TRUE(isPlain(ended.out)) << ended.out.toStdString();
    }
    EXPECT_TRUE(script("\"$0\" trace t").out.contains("\\x1B[2J \\u009B and \\u202E")) << "table";
}

// "-": an image from standard input, a file on standard output; and a standard error for programs.
#include "tests/hxhost/HxHost.h"

#include <QJsonArray>

namespace {

class StandardStreams : public HxHostTest {
protected:
    ProgramResult script(const QString& text) const
    {
        return runProgram(
            QStringLiteral("/bin/sh"),
            {QStringLiteral("-c"), "cd '" + path(".") + "' && " + text, HX_HOST_PROGRAM});
    }
};

QList<QJsonObject> objectsIn(const QByteArray& lines)
{
    QList<QJsonObject> objects;
    for (const QByteArray& line : lines.trimmed().split('\n')) {
        EXPECT_TRUE(QJsonDocument::fromJson(line).isObject()) << line.toStdString();
        objects << QJsonDocument::fromJson(line).object();
    }
    return objects;
}

} // namespace

TEST_F(StandardStreams, EveryImageMayComeFromStandardInput)
{
    image();
    for (const char* command :
         {"image inspect -", "update - --port simulator", "update - --dry-run", "check --image -",
          "verify - --port simulator:state"}) {
        ASSERT_EQ(script("\"$0\" update image.syx --port simulator:state -q").exitCode, 0);
        const ProgramResult ended =
            script(QStringLiteral("cat image.syx | \"$0\" %1").arg(command));
        EXPECT_EQ(ended.exitCode, 0) << command << ended.err.toStdString();
    }
    EXPECT_EQ(script("cat code.bin | \"$0\" image build - -o again.syx --kind fwu").exitCode, 0);
    EXPECT_EQ(read(path("again.syx")), read(path("image.syx")));
}

TEST_F(StandardStreams, AnImageFromStandardInputIsCheckedLikeAnyOther)
{
    EXPECT_EQ(script("printf '' | \"$0\" image inspect -").exitCode, 6);
    EXPECT_EQ(script("head -c 17000000 /dev/zero | \"$0\" image inspect -").exitCode, 6);
    EXPECT_EQ(script("\"$0\" image inspect - <&-").exitCode,
              6); // the program opens /dev/null there
}

TEST_F(StandardStreams, AFileOnStandardOutputStandsThereAlone)
{
    image();
    ASSERT_EQ(script("\"$0\" update image.syx --port simulator --trace t -q").exitCode, 0);
    const ProgramResult built = script("\"$0\" image build code.bin -o - --kind fwu");
    EXPECT_EQ(built.exitCode, 0);
    EXPECT_EQ(built.out, read(path("image.syx")));
    const ProgramResult drawn = script("\"$0\" trace t --svg -");
    ASSERT_EQ(script("\"$0\" trace t --svg t.svg").exitCode, 0);
    EXPECT_TRUE(drawn.out.contains("</svg>"));
    EXPECT_EQ(drawn.out, read(path("t.svg")));
    EXPECT_EQ(
        script("\"$0\" image build code.bin -o - --kind fwu | \"$0\" image inspect -").exitCode, 0);
    EXPECT_EQ(script("test ! -e ./-").exitCode, 0);
}

TEST_F(StandardStreams, AFileAndAResultDoNotShareStandardOutput)
{
    image();
    for (const char* words : {"image build code.bin -o - --kind fwu --json",
                              "image build code.bin -o - --kind fwu --field image.kind",
                              "identify --port simulator --trace -", "simulate --state -"}) {
        const ProgramResult ended = script(QStringLiteral("\"$0\" ").append(words));
        EXPECT_EQ(ended.exitCode, 2) << words;
        EXPECT_TRUE(ended.err.contains("standard output")) << ended.err.toStdString();
    }
}

TEST_F(StandardStreams, JsonProgressHasItsStreamToItself)
{
    image();
    for (const QByteArray& more : {QByteArray(), QByteArray(" --json")}) {
        const ProgramResult ended =
            script("\"$0\" update image.syx --port simulator --progress json" + more);
        EXPECT_EQ(ended.exitCode, 0);
        for (const QJsonObject& object : objectsIn(ended.err))
            EXPECT_TRUE(object.contains("percent")) << ended.err.toStdString();
    }
}

TEST_F(StandardStreams, JsonProgressTellsWarningsAndTheErrorAsObjects)
{
    image();
    const QString failing = "\"$0\" update image.syx --port simulator --fault noise --fault "
                            "failed-ack:3 --progress json";
    const QList<QJsonObject> objects = objectsIn(script(failing).err);
    EXPECT_TRUE(objects.first().contains("warning"));
    EXPECT_TRUE(
        objects.last().value("error").toObject().value("what").toString().contains("message 3"));
    for (const QJsonObject& object : objectsIn(script(failing + " --json").err))
        EXPECT_TRUE(object.contains("percent"));
    EXPECT_TRUE(objectsIn(script("\"$0\" update --progress json").err).first().contains("error"));
    EXPECT_EQ(script("\"$0\" update --progress json --json").err.toStdString(), "");
}

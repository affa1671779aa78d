// inspect and the image commands: what needs no product.
#include "tests/hxhost/HxHost.h"

#include <QFileInfo>
#include <QJsonArray>

#include <filesystem>

namespace {

class InspectCommand : public HxHostTest {};
class ImageCommands : public HxHostTest {};

} // namespace

TEST_F(InspectCommand, ShowsMetadataIdentityAndNames)
{
    const ProgramResult ended = hxhost({"inspect", "--plugin", HX_PLUGIN_FILE});
    EXPECT_EQ(ended.exitCode, 0);
    const QByteArray head =
        QByteArray("plugin.file           ") + HX_PLUGIN_FILE +
        "\n"
        "plugin.interfaceId    com.tarv.qtio.DeviceInterface.ValdrinBootInterface\n"
        "plugin.className      ValdrinBootInterface\n"
        "plugin.keys           bootValdrinPlugin\n"
        "plugin.qtVersion      " +
        QString(QT_VERSION_STR).section('.', 0, 1).toLatin1() + ".0\n";
    EXPECT_EQ(ended.out.left(head.size()).toStdString(), head.toStdString());
    EXPECT_TRUE(ended.out.contains("device.productName    Valdrin\n"
                                   "device.nickName       MyValdrinBoot\n"
                                   "device.classVersion   0.0.0.1\n"
                                   "device.portName       Valdrin Update\n"
                                   "device.inPortName     Valdrin Update\n"
                                   "device.outPortName    Valdrin Update\n"
                                   "device.identifier     0x300041\n"
                                   "device.rawIdentifier  0x300041\n"
                                   "device.isBootcode     true\n"
                                   "device.hasBootcode    true\n"
                                   "device.serves:\n"
                                   "  identifier  name\n"
                                   "  0x300041    ValdrinBoot\n"))
        << ended.out.toStdString();
}

TEST_F(InspectCommand, ShowsThe43EntriesOfTheDictionary)
{
    const QJsonArray dictionary =
        json({"inspect"}).value("result").toObject().value("dictionary").toArray();
    EXPECT_EQ(dictionary.size(), 43);
    EXPECT_EQ(dictionary.at(0).toObject(),
              QJsonObject({{"key", "command.timeout.ms"}, {"type", "integer"}, {"value", 2200}}));
}

TEST_F(InspectCommand, FindsThePluginInAFolderAndBesideTheProgram)
{
    const QString folder = QFileInfo(HX_PLUGIN_FILE).path();
    EXPECT_EQ(hxhost({"inspect", "--plugin", folder, "--field", "plugin.className"}).out,
              "ValdrinBootInterface\n");
    EXPECT_EQ(hxhost({"inspect", "--field", "plugin.file"}).out.trimmed(),
              QByteArray(HX_PLUGIN_FILE));
}

TEST_F(ImageCommands, BuildWritesTheWorkedExampleOfTheGrammar)
{
    const QString code = write("code.bin", QByteArray::fromHex("F07E81"));
    const QString output = path("out.syx");
    const ProgramResult ended = hxhost(
        {"image", "build", code, "-o", output, "--kind", "fwu", "--code-version", "1.0.2.4"});
    EXPECT_EQ(ended.exitCode, 0) << ended.err.toStdString();
    EXPECT_EQ(read(output).toHex().toUpper().toStdString(),
              "F0006B2D3041430A0000000000000003"
              "50707E0142F7"
              "F0006B2D3041430C0000000003060C191A0C31303234011CF7"
              "F0006B2D3041F7");
}

TEST_F(ImageCommands, InspectShowsWhatTheImageHolds)
{
    const QString syx = image();
    const ProgramResult ended = hxhost({"image", "inspect", syx});
    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_EQ(ended.err.toStdString(), "");
    EXPECT_EQ(ended.out.toStdString(),
              "image.file          " + syx.toStdString() +
                  "\n"
                  "image.format        raw SysEx\n"
                  "image.fileBytes     1337\n"
                  "image.kind          fwu\n"
                  "image.product       0x300041\n"
                  "image.version       1.0.2.4\n"
                  "image.messages      11\n"
                  "image.dataMessages  9\n"
                  "image.bytes         1337\n"
                  "image.codeBytes     1000\n"
                  "image.wireSeconds   1 s on a DIN MIDI wire, answers not counted\n"
                  "image.checksum      " +
                  hxhost({"image", "inspect", syx, "--field", "image.checksum"}).out.toStdString() +
                  "image.good          true\n");
}

TEST_F(ImageCommands, InspectListsEveryProblemAtOnce)
{
    QByteArray content = read(image());
    content[20] = char(content.at(20) ^ 1);
    content[146 + 20] = char(content.at(146 + 20) ^ 1);
    const QJsonObject document = json({"image", "inspect", write("two.syx", content)});
    EXPECT_EQ(document.value("exitName").toString(), "image-refused");
    const QJsonArray problems =
        document.value("result").toObject().value("image").toObject().value("problems").toArray();
    ASSERT_GE(problems.size(), 2);
    EXPECT_EQ(problems.at(0).toObject().value("message").toInt(), 1);
    EXPECT_EQ(problems.at(1).toObject().value("message").toInt(), 2);
}

TEST_F(ImageCommands, InspectReadsHexTextAsWell)
{
    const QByteArray hex = read(image()).toHex(' ');
    const QString text = write("image.txt", hex);
    EXPECT_EQ(hxhost({"image", "inspect", text, "--field", "image.format"}).out, "hex text\n");
    EXPECT_EQ(hxhost({"update", text, "--port", "simulator"}).exitCode, 0);
}

TEST_F(ImageCommands, BuildLeavesItsOwnCodeFileAlone)
{
    const QString code = write("code.bin", "some code");
    const ProgramResult ended =
        hxhost({"image", "build", code, "-o", path("./code.bin"), "--kind", "fwu"});
    EXPECT_EQ(ended.exitCode, 2);
    EXPECT_TRUE(ended.err.startsWith("error: --output \"" + path("./code.bin").toUtf8() +
                                     "\" would overwrite the file that CODE names\n"))
        << ended.err.toStdString();
    std::filesystem::create_hard_link(code.toStdString(), path("hard").toStdString());
    EXPECT_EQ(hxhost({"image", "build", code, "-o", path("hard"), "--kind", "fwu"}).exitCode, 2);
    EXPECT_EQ(read(code), "some code");
}

TEST_F(ImageCommands, BuildRefusesWhatNoImageCanHold)
{
    const QString empty = write("empty.bin", "");
    const QString code = write("code.bin", "code");
    const QString large = write("large.bin", QByteArray(1048577, 'x'));
    EXPECT_EQ(hxhost({"image", "build", empty, "-o", path("x"), "--kind", "fwu"}).exitCode, 6);
    EXPECT_EQ(hxhost({"image", "build", large, "-o", path("x"), "--kind", "fwu"}).exitCode, 6);
    EXPECT_FALSE(QFileInfo::exists(path("x")));
}

TEST_F(ImageCommands, BuildRefusesAVersionThatIsNotFourDigits)
{
    const QString code = write("code.bin", "code");
    const ProgramResult ended =
        hxhost({"image", "build", code, "-o", path("x"), "--kind", "fwu", "--code-version", "1.2"});
    EXPECT_EQ(ended.exitCode, 2);
    EXPECT_TRUE(ended.err.startsWith("error: --code-version: \"1.2\" is not a version of four "
                                     "digits, such as 1.0.2.4\n"))
        << ended.err.toStdString();
    EXPECT_FALSE(QFileInfo::exists(path("x")));
}

TEST_F(ImageCommands, BuildRefusesAnUpdateImageInThePlaceOfCode)
{
    const QString code = write("code.bin", "code");
    ASSERT_EQ(hxhost({"image", "build", code, "-o", path("x.syx"), "--kind", "fwu"}).exitCode, 0);
    const QByteArray whole = read(path("x.syx"));
    QByteArray ofAnotherProduct = whole;
    ofAnotherProduct.replace(QByteArray::fromHex("30 41"), QByteArray::fromHex("30 42"));
    for (const QByteArray& content : {whole, whole.left(40), whole + '\x01', ofAnotherProduct}) {
        const QString image = write("image.syx", content);
        const ProgramResult ended =
            hxhost({"image", "build", image, "-o", path("y.syx"), "--kind", "fwu"});
        EXPECT_EQ(ended.exitCode, 6) << content.toHex().toStdString();
        EXPECT_TRUE(
            ended.err.startsWith("error: \"" + image.toUtf8() +
                                 "\" is an update image already, whole or damaged, not code\n"))
            << ended.err.toStdString();
    }
    EXPECT_FALSE(QFileInfo::exists(path("y.syx")));
}

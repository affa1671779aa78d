// Files of keys and signatures: what is read, what is written, what is never overwritten.
#include "tests/hxhost/SignedImages.h"
#include "tests/support/NamesOfBytes.h"

#include <filesystem>

#include <sys/stat.h>

TEST_F(SignedImages, TheBytesOfTheFileAreSignedWhateverItsForm)
{
    trust();
    const QByteArray syx = read(imageFile());
    for (const QByteArray& text : {syx.toHex(' '), syx.toHex('\n')}) {
        write("image.syx", text);
        sign();
        expectSent("good");
        write("image.syx", text + '\n');
        expectRefused("other file", "it is not what was signed: ");
        ASSERT_TRUE(QFile::remove(signatureFile()));
    }
}

TEST_F(SignedImages, ASignatureIsNeverWrittenOverAFile)
{
    write("image.syx.minisig", "of great value");
    const QJsonObject document = sign();
    EXPECT_EQ(document.value("exitName").toString(), "file-error");
    EXPECT_TRUE(errorOf(document).endsWith("image.syx.minisig\" is there already"));
    EXPECT_EQ(sign("maker", {"-o", path("maker.pub")}).value("exitCode").toInt(), 10);
    EXPECT_EQ(sign("maker", {"-o", path("maker.key")}).value("exitCode").toInt(), 2);
    EXPECT_EQ(read(signatureFile()), "of great value");
    const QJsonObject nowhere = sign("maker", {"-o", path("no/folder")});
    EXPECT_TRUE(errorOf(nowhere).endsWith("cannot be written: No such file or directory"));
}

TEST_F(SignedImages, ASecretKeyThatEverybodyMayReadIsRefused)
{
    ASSERT_EQ(chmod(path("maker.key").toLocal8Bit().constData(), 0644), 0);
    const QJsonObject document = sign();
    EXPECT_EQ(document.value("exitName").toString(), "file-error");
    EXPECT_TRUE(errorOf(document).endsWith("maker.key\" cannot be used: all users of this machine "
                                           "may read or change it, its mode is 0644"))
        << errorOf(document).toStdString();
    EXPECT_FALSE(QFile::exists(signatureFile()));
}

TEST_F(SignedImages, ThePublicKeyDoesNotSign)
{
    ASSERT_EQ(chmod(path("maker.pub").toLocal8Bit().constData(), 0600), 0);
    const QJsonObject document = json({"image", "sign", imageFile(), "--key", path("maker.pub")});
    EXPECT_EQ(document.value("exitCode").toInt(), 10);
    EXPECT_TRUE(errorOf(document).endsWith("it is not a secret key of minisign"));
}

TEST_F(SignedImages, TheSecretKeyIsNowhereInWhatIsWritten)
{
    const QByteArray secret = read(path("maker.key")).split('\n').at(1).mid(120, 60);
    const ProgramResult ended = hxhost({"image", "sign", imageFile(), "--key", path("maker.key"),
                                        "--json", "-vv", "--trace", path("trace")});
    ASSERT_EQ(ended.exitCode, 0);
    const QByteArray raw = QByteArray::fromBase64(secret);
    for (const QByteArray& written :
         {ended.out, ended.err, read(path("trace")), read(signatureFile())}) {
        EXPECT_FALSE(written.contains(secret));
        EXPECT_FALSE(written.contains(raw));
    }
}

TEST_F(SignedImages, AKeyIsNeededToVerify)
{
    sign();
    EXPECT_EQ(
        json({"image", "verify", imageFile(), "--plugin", plugin()}).value("exitName").toString(),
        "usage");
    EXPECT_EQ(update({"--signature", signatureFile()}).value("exitName").toString(), "usage");
    trust();
    const ProgramResult verified = hxhost({"image", "verify", imageFile(), "--plugin", plugin()});
    EXPECT_EQ(verified.exitCode, 0);
    EXPECT_TRUE(verified.out.contains("signed with the key ")) << verified.out.toStdString();
}

TEST_F(SignedImages, KeysAndSignaturesAreNotOverwritten)
{
    trust();
    sign();
    const QByteArray key = read(path("liborbit.pub"));
    const QByteArray signature = read(signatureFile());
    for (const QString& output : {path("liborbit.pub"), signatureFile()}) {
        const QJsonObject document = json({"update", imageFile(), "--port", "simulator", "--plugin",
                                           plugin(), "--trace", output});
        EXPECT_EQ(document.value("exitName").toString(), "usage") << output.toStdString();
    }
    EXPECT_EQ(read(path("liborbit.pub")), key);
    EXPECT_EQ(read(signatureFile()), signature);
}

TEST_F(SignedImages, TheKeyBesideAPluginCountsWhateverBytesItsNameHas)
{
    SKIP_WHERE_NAMES_ARE_TEXT(path(".").toStdString());
    SKIP_WHERE_NAMES_ARE_TEXT(path(".").toStdString());
    const std::string folder = path("r").toStdString() + "\xE9";
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(HX_PLUGIN_FILE, folder + "/lib\xE9.so");
    std::filesystem::copy_file(path("maker.pub").toStdString(), folder + "/lib\xE9.pub");
    const auto run = [&](const std::string& words) {
        return runProgram("/bin/sh", {"-c",
                                      QString("cd '%1' && \"$0\" update image.syx --port simulator "
                                              "--no-listen --plugin r*%2")
                                          .arg(path("."), QString::fromStdString(words)),
                                      HX_HOST_PROGRAM})
            .exitCode;
    };
    EXPECT_EQ(run(""), 6);
    EXPECT_EQ(run("/*.so"), 6);
    sign();
    EXPECT_EQ(run(""), 0);
    EXPECT_EQ(run("/*.so"), 0);
    std::filesystem::remove_all(folder);
}

TEST_F(SignedImages, AKeyWithAPasswordNeedsATerminal)
{
    // Made by minisign, as the tests' own; what it says of its password comes first.
    write("locked.key", "untrusted comment: minisign encrypted secret key\n"
                        "RWRTY0IyfgD8DIFnp/"
                        "IecAShF8lRkguw8WTL8kzaQigjrwRag+AAAAACAAAAAAAAAEAAAAAAp+CGtakweVqP7ug1dKwv"
                        "EfIWgVdoFs3T93fPEriOhlSw9mJsyTSwgCtK5nt8Kdq15vFLHrQp/l/"
                        "DZqjVjf3pRtNF3TxzD9mD57W4Me4vpnM5dzrx"
                        "BjFUDmp55hOVdB0fTDwR6JwbhnQ=\n");
    ASSERT_EQ(chmod(path("locked.key").toLocal8Bit().constData(), 0600), 0);
    const ProgramResult ended = runProgram("setsid", {"-w", HX_HOST_PROGRAM, "image", "sign",
                                                      imageFile(), "--key", path("locked.key")});
    EXPECT_EQ(ended.exitCode, 10);
    EXPECT_TRUE(ended.err.contains("it has a password, and none was given\n"))
        << ended.err.toStdString();
}

// Signed images: signed here and verified by minisign, and the other way round; and that with a key
// nothing is sent of an image that is not signed with it.
#include "tests/hxhost/HxHost.h"

#include <QDir>
#include <QJsonArray>

#include <filesystem>

#include <sys/stat.h>

namespace {

class SignedImages : public HxHostTest {
protected:
    void SetUp() override
    {
        makeKey("maker");
        ASSERT_TRUE(QFile::copy(HX_PLUGIN_FILE, plugin()));
    }

    // NAME.pub and NAME.key, without a password.
    void makeKey(const QString& name) const
    {
        minisign({"-G", "-W", "-p", path(name + ".pub"), "-s", path(name + ".key")});
    }

    static ProgramResult minisign(const QStringList& words)
    {
        const ProgramResult ended = runProgram(QStringLiteral("minisign"), words);
        EXPECT_EQ(ended.exitCode, 0) << words.join(' ').toStdString() << ended.err.toStdString();
        return ended;
    }

    QString plugin() const { return path("liborbit.so"); }
    const QString& imageFile() const { return m_image; }
    QString signatureFile() const { return m_image + ".minisig"; }

    // From now on images for the plugin must be signed with this key.
    void trust(const QString& key = "maker") const
    {
        write("liborbit.pub", read(path(key + ".pub")));
    }

    QJsonObject sign(const QString& key = "maker", const QStringList& more = {}) const
    {
        return json(QStringList{"image", "sign", m_image, "--key", path(key + ".key")} + more);
    }

    // The comment that minisign verifies and shows.
    QString verifiedComment(const QString& signature) const
    {
        return QString::fromUtf8(
            minisign({"-V", "-Q", "-p", path("maker.pub"), "-m", m_image, "-x", signature}).out);
    }

    // A whole run on the simulated product; its trace is in the file "trace".
    QJsonObject update(const QStringList& more = {}) const
    {
        QFile::remove(path("trace"));
        return json(QStringList{"update", m_image, "--port", "simulator", "--no-listen", "--plugin",
                                plugin(), "--trace", path("trace")} +
                    more);
    }

    static QJsonObject signatureOf(const QJsonObject& document)
    {
        return document.value("result").toObject().value("signature").toObject();
    }

    static QString errorOf(const QJsonObject& document, const QString& part = "what")
    {
        return document.value("error").toObject().value(part).toString();
    }

    // With code 6, in this state and these words, before anything is sent.
    void expectRefused(const QString& state, const QString& words,
                       const QStringList& more = {}) const
    {
        const QJsonObject document = update(more);
        EXPECT_EQ(document.value("exitName").toString(), "image-refused");
        EXPECT_EQ(signatureOf(document).value("state").toString(), state);
        EXPECT_TRUE(errorOf(document).contains(words)) << errorOf(document).toStdString();
        EXPECT_TRUE(errorOf(document, "expected").startsWith("an image signed with a key of "));
        EXPECT_FALSE(errorOf(document, "next").isEmpty());
        EXPECT_FALSE(document.value("result").toObject().contains("port"));
        EXPECT_FALSE(read(path("trace")).contains(" sent "));
    }

    void expectSent(const QString& state, const QStringList& more = {}) const
    {
        const QJsonObject document = update(more);
        EXPECT_EQ(document.value("exitName").toString(), "success")
            << errorOf(document).toStdString();
        EXPECT_EQ(signatureOf(document).value("state").toString(), state);
    }

private:
    QString m_image = image();
};

} // namespace

TEST_F(SignedImages, WhatIsSignedHereIsVerifiedByMinisign)
{
    const QJsonObject document = sign();
    EXPECT_EQ(document.value("exitCode").toInt(), 0) << errorOf(document).toStdString();
    const QString comment = signatureOf(document).value("comment").toString();
    EXPECT_EQ(signatureOf(document).value("file").toString(), signatureFile());
    EXPECT_TRUE(comment.startsWith("identifier=0x300041 kind=fwu version=1.0.2.4 sha256="));
    EXPECT_EQ(verifiedComment(signatureFile()), comment + '\n');
    const QString id = signatureOf(document).value("key").toString();
    EXPECT_TRUE(read(path("maker.pub")).contains(id.toLatin1())) << id.toStdString();
}

TEST_F(SignedImages, WhatMinisignSignsIsVerifiedHere)
{
    const QString comment = signatureOf(sign()).value("comment").toString();
    minisign({"-S", "-s", path("maker.key"), "-m", imageFile(), "-x", path("by-minisign"), "-t",
              comment});
    const QStringList verify = {"image",           "verify",      imageFile(),        "--pubkey",
                                path("maker.pub"), "--signature", path("by-minisign")};
    EXPECT_EQ(signatureOf(json(verify)).value("state").toString(), "good");
    trust();
    expectSent("good", {"--signature", path("by-minisign")});
}

TEST_F(SignedImages, ASignatureOfMinisignWithoutOurCommentIsRefused)
{
    trust();
    minisign({"-S", "-s", path("maker.key"), "-m", imageFile()});
    expectRefused("comment of another image", "the signed comment is \"timestamp:");
}

TEST_F(SignedImages, ASignatureOfTheOlderKindIsRefused)
{
    trust();
    minisign({"-S", "-l", "-s", path("maker.key"), "-m", imageFile()});
    expectRefused("unreadable", "it is a signature of the kind \"Ed\"");
}

TEST_F(SignedImages, WithTheKeyBesideThePluginASignedImageIsSent)
{
    trust();
    const QString id = signatureOf(sign()).value("key").toString();
    const QJsonObject document = update({"-v"});
    EXPECT_EQ(document.value("exitCode").toInt(), 0);
    EXPECT_EQ(signatureOf(document).value("key").toString(), id);
    EXPECT_EQ(signatureOf(document).value("keyFile").toString(), path("liborbit.pub"));
    EXPECT_TRUE(
        read(path("trace")).contains("decided     : the image: signed with the key " + id.toUtf8()))
        << read(path("trace")).left(600).toStdString();
}

TEST_F(SignedImages, WithoutAKeyNothingChanges)
{
    expectSent("not signed");
    const ProgramResult shown = hxhost({"update", imageFile(), "--dry-run", "--plugin", plugin()});
    EXPECT_EQ(shown.exitCode, 0);
    EXPECT_TRUE(shown.out.contains("signature.state     not signed: its origin is not known\n"))
        << shown.out.toStdString();
    EXPECT_FALSE(read(path("trace")).contains("the image: "));
}

TEST_F(SignedImages, NothingIsSentWithoutASignature)
{
    trust();
    expectRefused("missing", "image.syx\" is refused: it is not signed: \"" + signatureFile() +
                                 "\" cannot be read: No such file or directory");
    write("image.syx.minisig", QByteArray(10000000, 'x'));
    expectRefused("missing", "it has more than 16384 bytes");
    write("image.syx.minisig", "");
    expectRefused("unreadable", "it has 0 lines; expected 4 lines");
}

TEST_F(SignedImages, NothingIsSentThatAnotherKeyHasSigned)
{
    trust();
    makeKey("stranger");
    sign("stranger");
    expectRefused("other key", "it is signed with a key that is not trusted here: ");
    expectSent("good", {"--pubkey", path("stranger.pub")});
}

TEST_F(SignedImages, NothingIsSentOfAnImageOfWhichAByteWasChanged)
{
    trust();
    sign();
    QByteArray content = read(imageFile());
    for (const int place : {0, 200, int(content.size()) - 1}) {
        QByteArray changed = content;
        changed[place] = char(changed.at(place) ^ 1);
        write("image.syx", changed);
        expectRefused("other file", "it is not what was signed: ");
    }
}

TEST_F(SignedImages, NothingIsSentOnTheSignatureOfAnOlderImageWithANewName)
{
    trust();
    sign();
    const QByteArray older = read(signatureFile());
    image(1001); // in the place of the one that was signed
    write("image.syx.minisig", older);
    expectRefused("other file", "it is not what was signed: ");
}

TEST_F(SignedImages, NothingIsSentOnACommentThatWasChanged)
{
    trust();
    sign();
    write("image.syx.minisig", read(signatureFile()).replace("1.0.2.4", "9.9.9.9"));
    expectRefused("comment changed", "version=9.9.9.9");
}

TEST_F(SignedImages, NothingIsSentWhenTheKeyCannotBeUsed)
{
    sign();
    const QString key = path("liborbit.pub");
    write("liborbit.pub", "");
    expectRefused("key unusable", "it has 0 lines");
    ASSERT_TRUE(QFile::remove(key));
    ASSERT_TRUE(QDir().mkdir(key));
    expectRefused("key unusable", "it is a folder");
    expectRefused("key unusable", "No such file or directory", {"--pubkey", path("gone.pub")});
    ASSERT_TRUE(QDir().rmdir(key));
    ASSERT_TRUE(QFile::link(path("maker.pub"), key));
    expectSent("good");
}

TEST_F(SignedImages, TwoKeysInOneFileAreValidAtOnce)
{
    makeKey("next");
    write("liborbit.pub", read(path("maker.pub")) + read(path("next.pub")));
    sign();
    expectSent("good");
    ASSERT_TRUE(QFile::remove(signatureFile()));
    sign("next");
    expectSent("good");
    trust();
    expectRefused("other key", "it is signed with a key that is not trusted here: ");
}

TEST_F(SignedImages, AnUnsignedImageIsSentWhenThatIsAskedForAndItIsRecorded)
{
    trust();
    expectSent("not checked", {"--unsigned"});
    EXPECT_TRUE(
        read(path("trace"))
            .contains("decided     : the image: not checked (--unsigned): its origin is not "
                      "known\n"));
    write("liborbit.pub", "no key");
    expectSent("not checked", {"--unsigned"});
}

TEST_F(SignedImages, ABatchSendsWhatIsSignedAndNothingElse)
{
    const auto batch = [this](const QStringList& more) {
        return json(QStringList{"batch", imageFile(), "--ports", "simulator", "--no-listen",
                                "--plugin", plugin(), "--traces", path("traces")} +
                    more);
    };
    trust();
    const QJsonObject refused = batch({});
    EXPECT_EQ(refused.value("exitCode").toInt(), 6);
    EXPECT_EQ(signatureOf(refused).value("state").toString(), "missing");
    EXPECT_FALSE(QFile::exists(path("traces"))) << "it has begun";
    EXPECT_EQ(batch({"--unsigned"}).value("exitCode").toInt(), 0);
    sign();
    const QJsonObject sent = batch({});
    EXPECT_EQ(sent.value("exitCode").toInt(), 0) << errorOf(sent).toStdString();
    EXPECT_EQ(signatureOf(sent).value("state").toString(), "good");
    const QJsonObject other = batch({"--pubkey", path("gone.pub")});
    EXPECT_EQ(signatureOf(other).value("state").toString(), "key unusable");
    ASSERT_TRUE(QFile::remove(path("liborbit.pub")));
    EXPECT_EQ(batch({"--pubkey", path("maker.pub")}).value("exitCode").toInt(), 0);
}

TEST_F(SignedImages, AnOlderSignedVersionIsCalledADowngrade)
{
    trust();
    const QString older = path("older.syx");
    hxhost({"image", "build", write("code", "code"), "-o", older, "--kind", "fwu", "--code-version",
            "0.9.0.0"});
    hxhost({"image", "sign", older, "--key", path("maker.key")});
    const QStringList words = {"update", older, "--port", "simulator", "--plugin", plugin()};
    const QJsonArray warnings = json(words).value("warnings").toArray();
    EXPECT_EQ(warnings, (QJsonArray{"This is a downgrade to an older signed version: faults that "
                                    "were mended since come back."}));
    EXPECT_EQ(json(words + QStringList{"--unsigned"}).value("warnings").toArray(), QJsonArray());
}

TEST_F(SignedImages, AWebPageInThePlaceOfAnImageIsStillCalledSo)
{
    trust();
    write("image.syx", "<!DOCTYPE html><html></html>");
    const QJsonObject document = update();
    EXPECT_EQ(document.value("exitCode").toInt(), 6);
    EXPECT_TRUE(errorOf(document).startsWith("This is a web page"))
        << errorOf(document).toStdString();
}

TEST_F(SignedImages, ASignedFileThatIsNoGoodImageIsRefusedAsEver)
{
    trust();
    QByteArray content = read(imageFile());
    write("image.syx", content + content);
    const QString comment =
        errorOf(json({"update", imageFile(), "--plugin", plugin(), "--dry-run"})); // not signed yet
    EXPECT_TRUE(comment.contains("it is not signed"));
    const QJsonObject document = json({"image", "sign", imageFile(), "--key", path("maker.key")});
    EXPECT_EQ(document.value("exitCode").toInt(), 6) << "no signature is made of it either";
    EXPECT_FALSE(QFile::exists(signatureFile()));
}

TEST_F(SignedImages, AnImageFromStandardInputHasItsSignatureNamed)
{
    trust();
    const auto piped = [this](const QString& words) {
        return runProgram(
            "/bin/sh",
            {"-c", "cd '" + path(".") + "' && \"$0\" " + words + " < image.syx", HX_HOST_PROGRAM});
    };
    EXPECT_EQ(piped("image sign - --key maker.key").exitCode, 2);
    EXPECT_EQ(piped("image sign - --key maker.key -o signature").exitCode, 0);
    const QString update = "update - --port simulator --no-listen --plugin liborbit.so ";
    const ProgramResult refused = piped(update);
    EXPECT_EQ(refused.exitCode, 6);
    EXPECT_TRUE(refused.err.contains("an image from standard input has none beside it\n"))
        << refused.err.toStdString();
    EXPECT_EQ(piped(update + "--signature signature").exitCode, 0);
    const ProgramResult written = piped("image sign - --key maker.key -o -");
    EXPECT_EQ(written.out, read(path("signature"))) << "and nothing else";
}

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

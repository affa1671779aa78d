// Signed images: signed here and verified by minisign, and the other way round; and that with a key
// nothing is sent of an image that is not signed with it.
#include "tests/hxhost/SignedImages.h"

#include <QDir>
#include <QJsonArray>

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

TEST_F(SignedImages, ABatchTellsOfADowngradeInTheUnitsLineAndInEveryReport)
{
    trust();
    const QString older = path("older.syx");
    hxhost({"image", "build", write("code", "code"), "-o", older, "--kind", "fwu", "--code-version",
            "0.9.0.0"});
    hxhost({"image", "sign", older, "--key", path("maker.key")});
    const QByteArray warning = "This is a downgrade to an older signed version: faults that were "
                               "mended since come back.";
    const auto batch = [&](const QStringList& more) {
        return hxhost(QStringList{"batch", older, "--ports", "simulator", "--no-listen", "--plugin",
                                  plugin(), "--traces", path("traces")} +
                      more);
    };
    const ProgramResult ended =
        batch({"--report", path("r.csv"), "--report", path("r.jsonl"), "--report", path("r.xml")});
    EXPECT_EQ(ended.exitCode, 0);
    for (const QByteArray& text :
         {ended.err, read(path("r.csv")), read(path("r.jsonl")), read(path("r.xml"))})
        EXPECT_TRUE(text.contains(warning)) << text.toStdString();
    EXPECT_TRUE(
        batch({"--progress", "plain"}).err.contains("version 0.9.0.0. Warning: " + warning));
    EXPECT_FALSE(batch({"--unsigned"}).err.contains(warning));
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

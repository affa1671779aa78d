// What lies in the place of a signature or of the public keys and is not quite one: refused with exit
// code 6 and in words, before anything is sent.
#include "tests/hxhost/SignedImages.h"

#include <QDir>
#include <QList>

#include <sys/stat.h>

namespace {

struct OddFile {
    const char* what;
    QByteArray content;
    const char* state;
    const char* words;
};

QByteArray withLine(const QByteArray& text, int index, const QByteArray& line)
{
    QList<QByteArray> lines = text.split('\n');
    lines[index] = line;
    return lines.join('\n');
}

QByteArray withCarriageReturns(QByteArray text)
{
    return text.replace("\n", "\r\n");
}

class OddSignatures : public SignedImages {
protected:
    void SetUp() override
    {
        SignedImages::SetUp();
        trust();
        sign();
        signature = read(signatureFile());
    }

    // `make` puts something in the place of the file; afterwards it is removed.
    template <typename Make>
    void expectRefusedWith(const QString& file, const Make& make, const QString& state,
                           const QString& words) const
    {
        ASSERT_TRUE(QFile::remove(file));
        ASSERT_TRUE(make(file));
        expectRefused(state, words);
        ASSERT_TRUE(QDir(file).exists() ? QDir().rmdir(file) : QFile::remove(file));
        write(QDir(path(".")).relativeFilePath(file), "");
    }

    QByteArray signature;
};

} // namespace

TEST_F(OddSignatures, AFileThatIsNotQuiteASignatureIsRefused)
{
    const QByteArray longLine(9000, 'x');
    const QByteArray blob = signature.split('\n').at(1);
    const QList<OddFile> files = {
        {"CRLF", withCarriageReturns(signature), "unreadable", "line 1 begins with"},
        {"two signatures", signature + signature, "unreadable", "it has 8 lines; expected 4 lines"},
        {"a byte at the end", signature + 'x', "unreadable", "it has 5 lines"},
        {"a NUL at the end", signature + '\0', "unreadable", "it has 5 lines"},
        {"an empty line at the end", signature + '\n', "unreadable", "it has 5 lines"},
        {"an empty line at the beginning", '\n' + signature, "unreadable", "it has 5 lines"},
        {"a byte-order mark", "\xEF\xBB\xBF" + signature, "unreadable", "line 1 begins with"},
        {"its first line alone", signature.left(signature.indexOf('\n')), "unreadable",
         "it has 1 lines"},
        {"cut in the middle", signature.left(signature.size() / 2), "unreadable", "lines"},
        {"the older algorithm", withLine(signature, 1, "RW" + blob.mid(2)), "unreadable",
         "it is a signature of the kind \"Ed\"; expected one of the kind \"ED\""},
        {"another algorithm", withLine(signature, 1, "RX" + blob.mid(2)), "unreadable",
         "it is a signature of the kind \"Et\""},
        {"a shorter signature", withLine(signature, 1, blob.left(96)), "unreadable",
         "expected base64 of 74 bytes"},
        {"base64 that goes on", withLine(signature, 1, blob + "AAAA"), "unreadable",
         "expected base64 of 74 bytes"},
        {"a blank in the base64", withLine(signature, 1, ' ' + blob), "unreadable",
         "expected base64 of 74 bytes"},
        {"a public key", read(path("maker.pub")), "unreadable", "it has 2 lines"},
        {"a secret key", read(path("maker.key")), "unreadable", "it has 2 lines"},
        {"the image", read(imageFile()), "unreadable", "line"},
        {"another comment", withLine(signature, 2, "trusted comment: " + longLine),
         "comment changed", "xxx...\" was changed after it was signed"},
        {"a comment of other words", withLine(signature, 2, "Trusted comment: "), "unreadable",
         "line 3 begins with"},
        {"a file too long", signature + QByteArray(20000, '\n'), "missing",
         "it has more than 16384 bytes"},
    };
    for (const OddFile& odd : files) {
        SCOPED_TRACE(odd.what);
        write("image.syx.minisig", odd.content);
        expectRefused(odd.state, odd.words);
    }
    // What nothing depends on: the first comment, and the last line feed.
    write("image.syx.minisig", withLine(signature, 0, "untrusted comment: " + longLine));
    expectSent("good");
    write("image.syx.minisig", signature.chopped(1));
    expectSent("good");
}

TEST_F(OddSignatures, ACommentOfAnyLengthIsShownInPart)
{
    write("image.syx.minisig", withLine(signature, 2, "trusted comment: " + QByteArray(9000, 'x')));
    EXPECT_LT(errorOf(update()).size(), 600);
}

TEST_F(OddSignatures, TheSignatureOfAnotherImageIsRefused)
{
    image(900);
    ASSERT_TRUE(QFile::remove(signatureFile()));
    sign();
    image();
    expectRefused("other file", "it is not what was signed: ");
}

TEST_F(OddSignatures, WhatIsNotARegularFileIsRefusedAndNotWaitedFor)
{
    const QString keys = path("liborbit.pub");
    const auto link = [](const QString& target) {
        return [target](const QString& place) { return QFile::link(target, place); };
    };
    const auto folder = [](const QString& place) { return QDir().mkdir(place); };
    const auto pipe = [](const QString& place) {
        return mkfifo(place.toLocal8Bit().constData(), 0600) == 0;
    };
    const QString regular = "it is not a regular file";
    expectRefusedWith(signatureFile(), pipe, "missing", regular);
    expectRefusedWith(signatureFile(), folder, "missing", "it is a folder");
    expectRefusedWith(signatureFile(), link("/dev/zero"), "missing", regular);
    expectRefusedWith(signatureFile(), link(path("nowhere")), "missing", "No such file");
    expectRefusedWith(signatureFile(), link(signatureFile()), "missing", "symbolic links");
    expectRefusedWith(keys, pipe, "key unusable", regular);
    expectRefusedWith(keys, folder, "key unusable", "it is a folder");
    expectRefusedWith(keys, link("/dev/zero"), "key unusable", regular);
    expectRefusedWith(keys, link(path("nowhere")), "key unusable", "No such file");
    expectRefusedWith(keys, link(keys), "key unusable", "symbolic links");
}

TEST_F(OddSignatures, AFileThatIsNotQuiteAListOfKeysTrustsNobody)
{
    makeKey("next");
    const QByteArray key = read(path("maker.pub"));
    const QByteArray blob = key.split('\n').at(1);
    const QList<OddFile> files = {
        {"empty", "", "key unusable", "it has 0 lines; expected two lines for each of 1 to 16"},
        {"CRLF", withCarriageReturns(key), "key unusable", "line 1 begins with"},
        {"the key without its comment", blob, "key unusable", "it has 1 lines"},
        {"an empty line at the end", key + '\n', "key unusable", "it has 3 lines"},
        {"a key and a half", key + read(path("next.pub")).left(60), "key unusable", "line"},
        {"a key and something else", key + "x\ny\n", "key unusable", "line 3 begins with \"x\""},
        {"a key twice", key + key, "key unusable", "is in it twice; expected each key once"},
        {"17 keys", key.repeated(17), "key unusable", "it has 34 lines"},
        {"another algorithm", withLine(key, 1, "RX" + blob.mid(2)), "key unusable",
         "expected a public key of the kind \"Ed\""},
        {"a secret key", read(path("maker.key")), "key unusable", "expected base64 of 42 bytes"},
        {"a signature", signature, "key unusable", "expected base64 of 42 bytes"},
        {"a file too long", key + QByteArray(20000, '\n'), "key unusable",
         "it has more than 16384 bytes"},
    };
    for (const OddFile& odd : files) {
        SCOPED_TRACE(odd.what);
        write("liborbit.pub", odd.content);
        expectRefused(odd.state, odd.words);
    }
    write("liborbit.pub", read(path("next.pub")) + key);
    expectSent("good");
}

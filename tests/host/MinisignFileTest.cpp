// The text files of keys and signatures: what is read, and what is refused in which words.
#include "tests/host/SignatureSamples.h"
#include "tests/support/QtPrinting.h"

using namespace hx;

namespace {

Signature sampleSignature()
{
    return {QByteArray(8, 'i'), QByteArray(64, 's'), "what it is of", QByteArray(64, 'g')};
}

QString whyNoSignature(const QByteArray& text)
{
    const Result<Signature> read = parseSignature(text);
    return read ? QString("it was read")
                : read.problem().what + "; expected " + read.problem().expected;
}

QString whyNoKeys(const QByteArray& text)
{
    const Result<std::vector<PublicKey>> read = parsePublicKeys(text);
    return read ? QString("they were read")
                : read.problem().what + "; expected " + read.problem().expected;
}

QByteArray withLine(const QByteArray& text, int index, const QByteArray& line)
{
    QList<QByteArray> lines = text.split('\n');
    lines[index] = line;
    return lines.join('\n');
}

} // namespace

TEST(MinisignFile, ASignatureIsReadAsItWasWritten)
{
    const Signature written = sampleSignature();
    const QByteArray text = signatureText(written);
    EXPECT_TRUE(text.startsWith("untrusted comment: signature of an update image\nRURpaWlp"))
        << text.toStdString();
    for (const QByteArray& form : {text, text.left(text.size() - 1)}) {
        const Result<Signature> read = parseSignature(form);
        ASSERT_TRUE(bool(read));
        EXPECT_EQ(read->keyId, written.keyId);
        EXPECT_EQ(read->signature, written.signature);
        EXPECT_EQ(read->trustedComment, written.trustedComment);
        EXPECT_EQ(read->globalSignature, written.globalSignature);
    }
}

TEST(MinisignFile, AKeyIdentifierIsShownAsMinisignShowsIt)
{
    EXPECT_EQ(keyIdText(QByteArray::fromHex("7E218E5CB8D7EB29")), "29EBD7B85C8E217E");
    EXPECT_EQ(keyIdText(QByteArray::fromHex("1D7A1876DCE46906")), "669E4DC76187A1D");
}

TEST(MinisignFile, ASignatureHasFourLinesAndNothingElse)
{
    const QByteArray text = signatureText(sampleSignature());
    EXPECT_EQ(whyNoSignature({}), "it has 0 lines; expected 4 lines");
    EXPECT_EQ(whyNoSignature(text + "\n"), "it has 5 lines; expected 4 lines");
    EXPECT_EQ(whyNoSignature(text + text), "it has 8 lines; expected 4 lines");
    EXPECT_EQ(whyNoSignature(text.left(text.indexOf("trusted comment: what"))),
              "it has 2 lines; expected 4 lines");
}

TEST(MinisignFile, ALineThatIsWrongIsNamed)
{
    const QByteArray text = signatureText(sampleSignature());
    const QString comment =
        "line %1 begins with \"%2\"; expected \"%3 \" and a text that ends with a line feed";
    EXPECT_EQ(whyNoSignature(withLine(text, 0, "comment: x")),
              comment.arg("1", "comment: x", "untrusted comment:"));
    EXPECT_EQ(whyNoSignature(withLine(text, 2, "trusted comment:x")),
              comment.arg("3", "trusted comment:x", "trusted comment:"));
    EXPECT_EQ(whyNoSignature(withLine(text, 1, "RU==")),
              "line 2 begins with \"RU==\"; expected base64 of 74 bytes");
    EXPECT_EQ(whyNoSignature(withLine(text, 3, "")),
              "line 4 begins with \"\"; expected base64 of 64 bytes");
}

TEST(MinisignFile, LineEndsOfOtherSystemsAndAByteOrderMarkAreRefused)
{
    const QByteArray text = signatureText(sampleSignature());
    EXPECT_TRUE(whyNoSignature(QByteArray(text).replace("\n", "\r\n")).startsWith("line 1 begins"));
    EXPECT_TRUE(whyNoSignature("\xEF\xBB\xBF" + text).startsWith("line 1 begins"));
    EXPECT_TRUE(
        whyNoSignature(withLine(text, 2, "trusted comment: a\x1B[31m")).contains("\\x1B[31m"));
    EXPECT_EQ(whyNoSignature(withLine(text, 2, "trusted comment: a\tb")), "it was read");
}

TEST(MinisignFile, Base64HasOneFormOnly)
{
    const QByteArray text = signatureText(sampleSignature());
    const QByteArray line = text.split('\n').at(1);
    const QByteArray cut = line.left(line.size() - 1);
    const QList<QByteArray> others = {cut,
                                      cut + "==",
                                      line + ' ',
                                      ' ' + line,
                                      line + line,
                                      line.left(40) + ' ' + line.mid(40),
                                      cut.left(98) + "t=",
                                      QByteArray(line).replace(9, 1, "-"),
                                      line + QByteArray(1, '\0')};
    for (const QByteArray& other : others)
        EXPECT_TRUE(whyNoSignature(withLine(text, 1, other)).endsWith("base64 of 74 bytes"))
            << other.toStdString();
}

TEST(MinisignFile, ASignatureOfAnUnhashedFileIsRefused)
{
    const QByteArray older = ("Ed" + QByteArray(72, 'x')).toBase64();
    EXPECT_EQ(whyNoSignature(withLine(signatureText(sampleSignature()), 1, older)),
              "it is a signature of the kind \"Ed\"; expected one of the kind \"ED\", which "
              "minisign makes without its option -l");
}

TEST(MinisignFile, KeysAreReadInTheirOrder)
{
    const QByteArray text = samples::publicKeyText(samples::keyPair('a')) +
                            samples::publicKeyText(samples::keyPair('b'));
    const Result<std::vector<PublicKey>> keys = parsePublicKeys(text);
    ASSERT_TRUE(bool(keys));
    ASSERT_EQ(keys->size(), 2U);
    EXPECT_EQ(keys->at(0).id, QByteArray(8, 'a'));
    EXPECT_EQ(keys->at(1).id, QByteArray(8, 'b'));
    EXPECT_EQ(keys->at(1).key, samples::keyPair('b').publicKey);
}

TEST(MinisignFile, AFileOfKeysIsReadWholeOrNotAtAll)
{
    const QByteArray key = samples::publicKeyText(samples::keyPair('a'));
    const QString twoLines = "expected two lines for each of 1 to 16 public keys";
    EXPECT_EQ(whyNoKeys({}), "it has 0 lines; " + twoLines);
    EXPECT_EQ(whyNoKeys(key + "\n"), "it has 3 lines; " + twoLines);
    QByteArray many;
    for (char letter = 'a'; letter <= 'q'; ++letter)
        many += samples::publicKeyText(samples::keyPair(letter));
    EXPECT_EQ(whyNoKeys(many), "it has 34 lines; " + twoLines);
    EXPECT_EQ(whyNoKeys(many.left(16 * key.size())), "they were read");
    EXPECT_EQ(whyNoKeys(key + key),
              "the key 6161616161616161 is in it twice; expected each key once");
    EXPECT_EQ(
        whyNoKeys(key + "comment\nx\n"),
        "line 3 begins with \"comment\"; expected \"untrusted comment: \" and a text that ends "
        "with a line feed");
    EXPECT_EQ(whyNoKeys(withLine(key, 1, "RWQ=")),
              "line 2 begins with \"RWQ=\"; expected base64 of 42 bytes");
    const QByteArray otherKind = ("ED" + QByteArray(40, 'x')).toBase64();
    EXPECT_TRUE(whyNoKeys(withLine(key, 1, otherKind))
                    .endsWith("expected a public key of the kind \"Ed\""));
}

// An image held against its signature: one way in which it is good, and every way in which it is not.
#include "tests/host/ImageSamples.h"
#include "tests/host/SignatureSamples.h"
#include "tests/support/QtPrinting.h"

#include <QCryptographicHash>

using namespace hx;
using samples::keyPair;

namespace {

struct SignedFile {
    QByteArray content;
    UpdateImage image;
    QByteArray signature; // the content of its file
};

SignedFile signedFile(const QString& version = QStringLiteral("1.0.2.4"),
                      CodeType kind = CodeType::Fwu)
{
    SignedFile file;
    file.content = buildImage(samples::product(), samples::code(300), kind, version)->fileContent();
    file.image = parseUpdateImage(parseImageFile(file.content), samples::product());
    file.signature =
        signatureText(signImage(file.content, file.image, samples::secretKey(keyPair('a'))));
    return file;
}

TrustedKeys keysOfMaker()
{
    return samples::trusted(samples::publicKeyText(keyPair('a')));
}

SignatureVerdict verdictOf(const SignedFile& file, const TrustedKeys& keys = keysOfMaker())
{
    return checkSignature(keys, file.signature, file.content, file.image);
}

SignatureState stateOf(const SignedFile& file, const TrustedKeys& keys = keysOfMaker())
{
    return verdictOf(file, keys).state;
}

// A signature by the maker's key with any comment.
QByteArray signatureWithComment(const SignedFile& file, const QByteArray& comment)
{
    Signature signature = *parseSignature(file.signature);
    signature.trustedComment = comment;
    signature.globalSignature =
        samples::secretKey(keyPair('a')).sign(signature.signature + comment);
    return signatureText(signature);
}

} // namespace

TEST(ImageSignature, IsGoodWhenATrustedKeyMadeItOfThisFile)
{
    const SignatureVerdict verdict = verdictOf(signedFile());
    EXPECT_EQ(verdict.state, SignatureState::Good);
    EXPECT_EQ(verdict.keyId, "6161616161616161");
    EXPECT_EQ(verdict.detail, "");
    EXPECT_TRUE(verdict.allowsSending());
}

TEST(ImageSignature, TheCommentSaysWhatTheImageIs)
{
    const SignedFile file = signedFile();
    EXPECT_EQ(signedComment(file.content, file.image),
              "identifier=0x300041 kind=fwu version=1.0.2.4 sha256=" +
                  QCryptographicHash::hash(file.content, QCryptographicHash::Sha256).toHex());
    EXPECT_EQ(signatureNameOf("a/image.syx"), "a/image.syx.minisig");
}

TEST(ImageSignature, WithoutAKeyNothingIsLookedAt)
{
    const SignatureVerdict verdict = checkSignature({}, fileProblem("gone"), {}, {});
    EXPECT_EQ(verdict.state, SignatureState::NoKey);
    EXPECT_TRUE(verdict.allowsSending());
}

TEST(ImageSignature, OnlyThreeStatesAllowSending)
{
    for (int state = 0; state <= int(lastSignatureState); ++state) {
        SignatureVerdict verdict;
        verdict.state = SignatureState(state);
        const bool allowed = verdict.state == SignatureState::NoKey ||
                             verdict.state == SignatureState::Unchecked ||
                             verdict.state == SignatureState::Good;
        EXPECT_EQ(verdict.allowsSending(), allowed) << state;
    }
}

TEST(ImageSignature, AMissingSignatureIsRefused)
{
    const SignedFile file = signedFile();
    const SignatureVerdict verdict =
        checkSignature(keysOfMaker(), fileProblem("No such file"), file.content, file.image);
    EXPECT_EQ(verdict.state, SignatureState::Missing);
    EXPECT_EQ(verdict.detail, "No such file");
}

TEST(ImageSignature, ATextThatIsNoSignatureIsRefused)
{
    SignedFile file = signedFile();
    file.signature.chop(20);
    const SignatureVerdict verdict = verdictOf(file);
    EXPECT_EQ(verdict.state, SignatureState::Unreadable);
    EXPECT_TRUE(verdict.detail.endsWith("; expected base64 of 64 bytes"))
        << verdict.detail.toStdString();
}

TEST(ImageSignature, KeysThatCannotBeUsedTrustNobody)
{
    const SignatureVerdict verdict = verdictOf(signedFile(), samples::trusted("no key"));
    EXPECT_EQ(verdict.state, SignatureState::KeyUnusable);
    EXPECT_EQ(verdict.detail, "it has 1 lines");
}

TEST(ImageSignature, AnotherKeyIsRefused)
{
    const TrustedKeys others = samples::trusted(samples::publicKeyText(keyPair('b')));
    const SignatureVerdict verdict = verdictOf(signedFile(), others);
    EXPECT_EQ(verdict.state, SignatureState::OtherKey);
    EXPECT_EQ(verdict.detail, "it is signed with the key 6161616161616161");
}

TEST(ImageSignature, TheRightKeyUnderAnotherIdentifierIsRefused)
{
    samples::KeyPair renamed = keyPair('a');
    renamed.id = QByteArray(8, 'z');
    EXPECT_EQ(stateOf(signedFile(), samples::trusted(samples::publicKeyText(renamed))),
              SignatureState::OtherKey);
}

TEST(ImageSignature, AnotherKeyUnderTheTrustedIdentifierIsRefused)
{
    samples::KeyPair forged = keyPair('b');
    forged.id = keyPair('a').id;
    SignedFile file = signedFile();
    file.signature = signatureText(signImage(file.content, file.image, samples::secretKey(forged)));
    EXPECT_EQ(stateOf(file), SignatureState::OtherFile);
}

TEST(ImageSignature, TwoKeysAreValidAtOnce)
{
    const QByteArray older = samples::publicKeyText(keyPair('a'));
    const QByteArray newer = samples::publicKeyText(keyPair('b'));
    SignedFile file = signedFile();
    EXPECT_EQ(stateOf(file, samples::trusted(older + newer)), SignatureState::Good);
    EXPECT_EQ(stateOf(file, samples::trusted(newer + older)), SignatureState::Good);
    file.signature =
        signatureText(signImage(file.content, file.image, samples::secretKey(keyPair('b'))));
    EXPECT_EQ(stateOf(file, samples::trusted(older + newer)), SignatureState::Good);
    EXPECT_EQ(stateOf(file, samples::trusted(older)), SignatureState::OtherKey);
}

TEST(ImageSignature, AChangedByteIsRefusedWhereverItIs)
{
    const SignedFile good = signedFile();
    for (int place = 0; place < good.content.size(); ++place) {
        SignedFile changed = good;
        changed.content[place] = char(changed.content.at(place) ^ 1);
        EXPECT_EQ(stateOf(changed), SignatureState::OtherFile) << place;
    }
    SignedFile longer = good;
    longer.content += '\xF7';
    EXPECT_EQ(stateOf(longer), SignatureState::OtherFile);
    longer.content.chop(2);
    EXPECT_EQ(stateOf(longer), SignatureState::OtherFile);
}

TEST(ImageSignature, TheSignatureOfAnotherImageIsRefused)
{
    SignedFile file = signedFile();
    file.signature = signedFile(QStringLiteral("1.0.2.5")).signature;
    EXPECT_EQ(stateOf(file), SignatureState::OtherFile);
}

TEST(ImageSignature, ACommentThatWasChangedIsRefused)
{
    SignedFile file = signedFile();
    file.signature.replace("version=1.0.2.4", "version=1.0.2.9");
    const SignatureVerdict verdict = verdictOf(file);
    EXPECT_EQ(verdict.state, SignatureState::CommentChanged);
    EXPECT_TRUE(verdict.detail.contains("version=1.0.2.9")) << verdict.detail.toStdString();
}

TEST(ImageSignature, TheCommentOfAnotherSignatureIsRefused)
{
    Signature swapped = *parseSignature(signedFile().signature);
    const Signature other = *parseSignature(signedFile(QStringLiteral("1.0.2.5")).signature);
    swapped.trustedComment = other.trustedComment;
    swapped.globalSignature = other.globalSignature;
    SignedFile file = signedFile();
    file.signature = signatureText(swapped);
    EXPECT_EQ(stateOf(file), SignatureState::CommentChanged);
}

TEST(ImageSignature, ASignedCommentOfAnotherImageIsRefused)
{
    SignedFile file = signedFile();
    const QByteArray good = signedComment(file.content, file.image);
    const QList<QByteArray> others = {
        "",
        "timestamp:1795363841\tfile:image.syx\thashed",
        QByteArray(good).replace("kind=fwu", "kind=fwd"),
        QByteArray(good).replace("0x300041", "0x300042"),
        QByteArray(good).replace("1.0.2.4", "1.0.2.5"),
        good.left(good.size() - 1) + (good.endsWith('0') ? '1' : '0'),
        good + ' ',
        ' ' + good,
        good + " channel=beta",
    };
    for (const QByteArray& comment : others) {
        file.signature = signatureWithComment(file, comment);
        const SignatureVerdict verdict = verdictOf(file);
        EXPECT_EQ(verdict.state, SignatureState::CommentOther) << comment.toStdString();
        EXPECT_TRUE(verdict.detail.contains(good)) << verdict.detail.toStdString();
    }
    file.signature = signatureWithComment(file, good);
    EXPECT_EQ(stateOf(file), SignatureState::Good);
}

TEST(ImageSignature, TheUntrustedCommentMayBeAnyText)
{
    SignedFile file = signedFile();
    file.signature.replace("signature of an update image", "mailed by a friend");
    EXPECT_EQ(stateOf(file), SignatureState::Good);
}

TEST(ImageSignature, AnyOtherBitOfTheSignatureMatters)
{
    const SignedFile good = signedFile();
    const Signature whole = *parseSignature(good.signature);
    const auto stateWith = [&good](const Signature& signature) {
        SignedFile file = good;
        file.signature = signatureText(signature);
        return stateOf(file);
    };
    for (int bit = 0; bit < 64 * 8; ++bit) {
        Signature changed = whole;
        changed.signature[bit / 8] = char(changed.signature.at(bit / 8) ^ 1 << bit % 8);
        EXPECT_EQ(stateWith(changed), SignatureState::OtherFile) << bit;
        changed = whole;
        changed.globalSignature[bit / 8] = char(changed.globalSignature.at(bit / 8) ^ 1 << bit % 8);
        EXPECT_EQ(stateWith(changed), SignatureState::CommentChanged) << bit;
    }
}

// The key that signs: how it is opened, and what is refused.
#include "tests/host/SignatureSamples.h"
#include "tests/support/QtPrinting.h"

using namespace hx;
using samples::keyPair;

namespace {

const SecretKey::AskPassword nobody = [] { return std::nullopt; };

SecretKey::AskPassword typed(const QByteArray& password)
{
    return [password] { return std::optional(QByteArray(password.constData())); };
}

QString whyNoKey(QByteArray text, const SecretKey::AskPassword& ask = nobody)
{
    const Result<SecretKey> key = SecretKey::open(text, ask);
    return key ? QString("it was opened") : key.problem().what;
}

} // namespace

TEST(SecretKey, WithoutAPasswordItIsOpenedWithoutAsking)
{
    QByteArray text = samples::secretKeyText(keyPair('a'));
    const Result<SecretKey> key = SecretKey::open(text, nullptr);
    ASSERT_TRUE(bool(key));
    EXPECT_EQ(key->id(), QByteArray(8, 'a'));
    const QByteArray signature = key->sign("bytes");
    EXPECT_EQ(crypto_sign_verify_detached(
                  reinterpret_cast<const unsigned char*>(signature.constData()),
                  reinterpret_cast<const unsigned char*>("bytes"), 5,
                  reinterpret_cast<const unsigned char*>(keyPair('a').publicKey.constData())),
              0);
}

TEST(SecretKey, TheTextThatItCameFromIsWiped)
{
    QByteArray text = samples::secretKeyText(keyPair('a'));
    const QByteArray nothing(text.size(), '\0');
    ASSERT_TRUE(bool(SecretKey::open(text, nullptr)));
    EXPECT_EQ(text, nothing);
    text = "untrusted comment: x\nRWQ=\n";
    ASSERT_FALSE(bool(SecretKey::open(text, nullptr)));
    EXPECT_EQ(text, QByteArray(text.size(), '\0'));
}

TEST(SecretKey, APasswordOpensTheKeyThatItBelongsTo)
{
    QByteArray text = samples::encryptedKeyText(keyPair('a'), "sesame");
    const QByteArray copy(text.constData());
    const Result<SecretKey> key = SecretKey::open(text, typed("sesame"));
    ASSERT_TRUE(bool(key)) << key.problem().what.toStdString();
    EXPECT_EQ(key->id(), QByteArray(8, 'a'));
    EXPECT_EQ(key->sign("x"), samples::secretKey(keyPair('a')).sign("x"));
    EXPECT_EQ(whyNoKey(copy, typed("Sesame")), "what was typed is not its password");
    EXPECT_EQ(whyNoKey(copy, typed("")), "what was typed is not its password");
    EXPECT_EQ(whyNoKey(copy), "it has a password, and none was given");
}

TEST(SecretKey, AnythingElseIsNoKey)
{
    const QString none = "it is not a secret key of minisign";
    const QByteArray good = samples::secretKeyText(keyPair('a'));
    EXPECT_EQ(whyNoKey({}), none);
    EXPECT_EQ(whyNoKey("untrusted comment: x"), none);
    EXPECT_EQ(whyNoKey("untrusted comment: x\n"), none);
    EXPECT_EQ(whyNoKey(good.mid(1)), none);
    EXPECT_EQ(whyNoKey(good + "\n"), none);
    EXPECT_EQ(whyNoKey(QByteArray(good).replace("\n", "\r\n")), none);
    EXPECT_EQ(whyNoKey(samples::publicKeyText(keyPair('a'))), none);
    EXPECT_EQ(whyNoKey(samples::secretText(QByteArray(157, 'x'))), none);
    EXPECT_EQ(whyNoKey(samples::secretText("ed" + QByteArray(2, '\0') + "B2" + QByteArray(152, 0))),
              none);
    EXPECT_EQ(whyNoKey(samples::secretText("Ed" + QByteArray(2, '\0') + "B3" + QByteArray(152, 0))),
              none);
    EXPECT_EQ(whyNoKey(good.left(good.size() - 1)), "it was opened");
}

TEST(SecretKey, HalvesThatDoNotBelongTogetherAreRefused)
{
    samples::KeyPair mixed = keyPair('a');
    mixed.secretKey = mixed.secretKey.left(32) + keyPair('b').publicKey;
    EXPECT_EQ(whyNoKey(samples::secretKeyText(mixed)),
              "it is damaged: its two halves do not belong together");
}

TEST(SecretKey, APasswordThatCostsMoreThanMinisignEverAsksForIsNotTried)
{
    const QString unknown = "it is encrypted in a way that is not known";
    const samples::KeyPair pair = keyPair('a');
    const quint64 most = quint64(1) << 30;
    EXPECT_EQ(whyNoKey(samples::encryptedKeyText(pair, "p", {32768, most + 1}), typed("p")),
              unknown);
    EXPECT_EQ(whyNoKey(samples::encryptedKeyText(pair, "p", {most, 16777216}), typed("p")),
              unknown);
    const QByteArray other = "EdXXB2" + QByteArray(152, '\0');
    EXPECT_EQ(whyNoKey(samples::secretText(other), typed("p")), unknown);
}

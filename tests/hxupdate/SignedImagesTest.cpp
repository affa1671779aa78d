// Images with a key beside the plugin: which may be sent, what is said of the others, and that what
// is sent is what was looked at.
#include "tests/host/SignatureSamples.h"
#include "tests/hxupdate/Bench.h"

#include <QFileInfo>

using namespace hxupdate;
using samples::keyPair;

namespace {

// A folder with the plugin and, when there is one, the key of its maker.
class TrustingFolder {
public:
    explicit TrustingFolder(const QByteArray& keys = samples::publicKeyText(keyPair('a')))
    {
        plugin = place.copy(HX_PLUGIN_FILE, QStringLiteral("liborbit.so"));
        if (!keys.isNull())
            place.write(QStringLiteral("liborbit.pub"), keys);
    }

    TestFiles place;
    QString plugin;
};

class RestlessGuard final : public SleepGuard {
public:
    bool hold() override { return true; }
    void release() override {}
};

class SignedBench : private TrustingFolder, public Bench {
public:
    explicit SignedBench(const QByteArray& keys = samples::publicKeyText(keyPair('a')))
        : TrustingFolder(keys), Bench(plugin)
    {
    }

    // The name of an image with its signature beside it.
    QString signedImage(char key = 'a', const QString& version = QStringLiteral("1.0.2.4"))
    {
        const QString path = image(version);
        sign(path, key);
        return path;
    }

    void sign(const QString& path, char key = 'a')
    {
        const QByteArray content = TestFiles::contentOf(path);
        const hx::UpdateImage parsed =
            hx::parseUpdateImage(hx::parseImageFile(content), samples::product());
        const hx::Signature signature =
            hx::signImage(content, parsed, samples::secretKey(keyPair(key)));
        files.write(QFileInfo(path).fileName() + ".minisig", hx::signatureText(signature));
    }

    ImageFacts take(const QString& path)
    {
        bool isJudged = false;
        const auto connection = QObject::connect(model.get(), &UpdateModel::imageChanged,
                                                 [&isJudged] { isJudged = true; });
        model->takeFile(path);
        EXPECT_TRUE(waitUntil([&] { return isJudged; }));
        QObject::disconnect(connection);
        return model->image();
    }
};

} // namespace

TEST(SignedImages, ASignedImageIsReviewedAndSent)
{
    SignedBench bench;
    bench.goTo(Step::ChooseImage);
    const ImageFacts image = bench.take(bench.signedImage());
    EXPECT_EQ(image.fault, ImageFault::None);
    EXPECT_EQ(image.origin.state, hx::SignatureState::Good);
    EXPECT_EQ(image.origin.keyId, "6161616161616161");
    ASSERT_TRUE(bench.isAt(Step::Review));
    bench.model->startUpdate();
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.model->end().ending, Ending::Succeeded);
    EXPECT_TRUE(bench.model->end().record.contains(", key 6161616161616161\n"))
        << bench.model->end().record.left(600).toStdString();
}

TEST(SignedImages, WithoutAKeyNothingIsAskedFor)
{
    SignedBench bench{QByteArray()};
    bench.goTo(Step::ChooseImage);
    const ImageFacts image = bench.take(bench.image());
    EXPECT_EQ(image.fault, ImageFault::None);
    EXPECT_EQ(image.origin.state, hx::SignatureState::NoKey);
}

TEST(SignedImages, EachWayOfNotBeingSignedIsToldApartAndNoneCanBeSent)
{
    SignedBench bench;
    bench.goTo(Step::ChooseImage);
    const QString path = bench.image();
    EXPECT_EQ(bench.take(path).fault, ImageFault::NoSignature);
    EXPECT_TRUE(bench.model->image().problems.first().endsWith("No such file or directory"))
        << bench.model->image().problems.first().toStdString();
    bench.sign(path, 'b');
    EXPECT_EQ(bench.take(path).fault, ImageFault::OtherSigner);
    bench.files.write("1.0.2.4.syx.minisig", "no signature");
    EXPECT_EQ(bench.take(path).fault, ImageFault::BadSignature);
    bench.sign(path);
    QByteArray content = TestFiles::contentOf(path);
    bench.files.write("1.0.2.4.syx", content + content.right(7));
    EXPECT_EQ(bench.take(path).fault, ImageFault::BadSignature);
    EXPECT_EQ(bench.model->step(), Step::ChooseImage);
    bench.model->useImage();
    bench.model->startUpdate();
    EXPECT_EQ(bench.model->step(), Step::ChooseImage);
}

TEST(SignedImages, AChangedCommentOrThatOfAnotherImageIsABadSignature)
{
    SignedBench bench;
    bench.goTo(Step::ChooseImage);
    const QString path = bench.signedImage();
    const QByteArray good = TestFiles::contentOf(path + ".minisig");
    bench.files.write("1.0.2.4.syx.minisig", QByteArray(good).replace("1.0.2.4", "1.0.2.5"));
    EXPECT_EQ(bench.take(path).fault, ImageFault::BadSignature);
    const hx::SecretKey key = samples::secretKey(keyPair('a'));
    hx::Signature other = *hx::parseSignature(good);
    other.trustedComment = "of something else";
    other.globalSignature = key.sign(other.signature + other.trustedComment);
    bench.files.write("1.0.2.4.syx.minisig", hx::signatureText(other));
    EXPECT_EQ(bench.take(path).fault, ImageFault::BadSignature);
}

TEST(SignedImages, AKeyThatCannotBeUsedLetsNoImageThrough)
{
    SignedBench bench("not a key");
    bench.goTo(Step::ChooseImage);
    EXPECT_EQ(bench.take(bench.signedImage()).fault, ImageFault::BadKey);
}

TEST(SignedImages, AWebPageOrAnImageOfAnotherProductIsStillCalledSo)
{
    SignedBench bench;
    bench.goTo(Step::ChooseImage);
    EXPECT_EQ(bench.take(bench.files.write("page.syx", "<html>")).fault, ImageFault::WebPage);
    EXPECT_EQ(bench.take(bench.files.path("gone.syx")).fault, ImageFault::Unreadable);
    QByteArray content = TestFiles::contentOf(bench.image());
    content.replace("\x2D\x30\x41", "\x2D\x30\x42");
    EXPECT_EQ(bench.take(bench.files.write("other.syx", content)).fault, ImageFault::OtherProduct);
}

TEST(SignedImages, ASignedImageThatIsDamagedIsCalledDamaged)
{
    SignedBench bench;
    bench.goTo(Step::ChooseImage);
    const QString path = bench.image();
    bench.files.write("1.0.2.4.syx", TestFiles::contentOf(path).chopped(7));
    bench.sign(path);
    EXPECT_EQ(bench.take(path).fault, ImageFault::Damaged);
}

TEST(SignedImages, WhatIsSentIsWhatWasLookedAt)
{
    SignedBench bench;
    bench.goTo(Step::ChooseImage);
    const QString path = bench.signedImage();
    bench.take(path);
    ASSERT_TRUE(bench.isAt(Step::Review));
    bench.image(QStringLiteral("1.0.2.4"), 500); // other bytes in the same place
    ASSERT_TRUE(QFile::remove(path + ".minisig"));
    bench.model->startUpdate();
    ASSERT_TRUE(bench.isAt(Step::Verdict));
    EXPECT_EQ(bench.model->end().ending, Ending::Succeeded);
    EXPECT_EQ(bench.product->product().codeBytes(), samples::code(300));
}

TEST(SignedImages, AnImageThatWasKeptIsHeldAgainstTheKeyOnceAProductIsThere)
{
    SignedBench bench;
    bench.take(bench.image());
    EXPECT_EQ(bench.model->image().fault, ImageFault::NoSignature);
    bench.goTo(Step::ChooseImage);
    EXPECT_EQ(bench.model->image().fault, ImageFault::NoSignature);
    EXPECT_EQ(bench.model->step(), Step::ChooseImage);
}

TEST(SignedImages, AnOlderSignedVersionIsADowngrade)
{
    SignedBench bench;
    bench.goTo(Step::ChooseImage);
    EXPECT_EQ(bench.take(bench.signedImage('a', "0.9.0.0")).fault, ImageFault::None);
    EXPECT_EQ(bench.model->change(), Change::Downgrade);
}

TEST(SignedImages, ASessionSendsNothingThatWasNotLookedAt)
{
    TrustingFolder folder;
    TestFiles files;
    Surroundings surroundings;
    auto ports = std::make_unique<TestPorts>();
    const std::shared_ptr<TestProduct> product = ports->plug(productPort);
    surroundings.pluginPlace = folder.plugin;
    surroundings.ports = std::move(ports);
    surroundings.sleep = std::make_unique<RestlessGuard>();
    UpdateSession session(std::move(surroundings));
    session.takeFile(files.write("a.syx", samples::content(samples::messages())), 0);
    ProductFacts facts;
    facts.port = productPort;
    const std::atomic<bool> stopped{false};
    const QByteArray before = product->product().codeBytes();
    const UpdateEnd end = session.update(facts, stopped, {[](bool) {}, nullptr, nullptr});
    EXPECT_EQ(end.ending, Ending::ImageRefused);
    EXPECT_TRUE(end.reason.contains("a.syx.minisig")) << end.reason.toStdString();
    EXPECT_EQ(product->messages, 0);
    EXPECT_EQ(product->product().codeBytes(), before);
}

#include "host/signature/ImageSignature.h"

#include "host/base/HexText.h"
#include "host/base/PrintableText.h"
#include "host/signature/SecretKey.h"

#include <QCryptographicHash>

#include <algorithm>

#include <sodium.h>

namespace hx {

namespace {

const unsigned char* dataOf(const QByteArray& bytes)
{
    return reinterpret_cast<const unsigned char*>(bytes.constData());
}

// BLAKE2b-512, which is what an Ed25519 signature of a file is made of.
QByteArray fileHash(const QByteArray& content)
{
    QByteArray hash(crypto_generichash_BYTES_MAX, '\0');
    crypto_generichash(reinterpret_cast<unsigned char*>(hash.data()), size_t(hash.size()),
                       dataOf(content), size_t(content.size()), nullptr, 0);
    return hash;
}

bool isSignedBy(const PublicKey& key, const QByteArray& bytes, const QByteArray& signature)
{
    return crypto_sign_verify_detached(dataOf(signature), dataOf(bytes), size_t(bytes.size()),
                                       dataOf(key.key)) == 0;
}

// No comment of an image is as long as what is shown of one.
QString shownComment(const QByteArray& comment)
{
    constexpr int shownCharacters = 200;
    const QString text = QString::fromUtf8(comment);
    const QString rest = text.size() > shownCharacters ? QStringLiteral("...") : QString();
    return printable(text.left(shownCharacters)) + rest;
}

SignatureVerdict verdictOn(const std::vector<PublicKey>& keys, const Signature& signature,
                           const QByteArray& content, const UpdateImage& image)
{
    const QString id = keyIdText(signature.keyId);
    const auto key = std::find_if(keys.begin(), keys.end(), [&signature](const PublicKey& known) {
        return known.id == signature.keyId;
    });
    if (key == keys.end())
        return {SignatureState::OtherKey, id, QStringLiteral("it is signed with the key ") + id};
    if (!isSignedBy(*key, fileHash(content), signature.signature))
        return {SignatureState::OtherFile, id,
                QStringLiteral("the signature with the key %1 is not of this file").arg(id)};
    if (!isSignedBy(*key, signature.signature + signature.trustedComment,
                    signature.globalSignature))
        return {SignatureState::CommentChanged, id,
                QStringLiteral("the comment \"%1\" was changed after it was signed")
                    .arg(shownComment(signature.trustedComment))};
    const QByteArray expected = signedComment(content, image);
    if (signature.trustedComment != expected)
        return {SignatureState::CommentOther, id,
                QStringLiteral("the signed comment is \"%1\"; that of the image is \"%2\"")
                    .arg(shownComment(signature.trustedComment), shownComment(expected))};
    return {SignatureState::Good, id, QString()};
}

} // namespace

QByteArray signedComment(const QByteArray& content, const UpdateImage& image)
{
    const QByteArray hash = QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
    return QStringLiteral("identifier=%1 kind=%2 version=%3 sha256=%4")
        .arg(identifierText(image.identifier), codeTypeTag(image.kind), image.version,
             QString::fromLatin1(hash))
        .toUtf8();
}

QString signatureNameOf(const QString& imageName)
{
    return imageName + QStringLiteral(".minisig");
}

SignatureVerdict checkSignature(const TrustedKeys& keys, const Result<QByteArray>& signature,
                                const QByteArray& content, const UpdateImage& image)
{
    if (!keys.areAskedFor())
        return {};
    if (!keys.keys)
        return {SignatureState::KeyUnusable, QString(), keys.keys.problem().what};
    if (!signature)
        return {SignatureState::Missing, QString(), signature.problem().what};
    const Result<Signature> parsed = parseSignature(*signature);
    if (!parsed)
        return {SignatureState::Unreadable, QString(),
                QStringLiteral("%1; expected %2")
                    .arg(parsed.problem().what, parsed.problem().expected)};
    return verdictOn(*keys.keys, *parsed, content, image);
}

Signature signImage(const QByteArray& content, const UpdateImage& image, const SecretKey& key)
{
    Signature signature;
    signature.keyId = key.id();
    signature.signature = key.sign(fileHash(content));
    signature.trustedComment = signedComment(content, image);
    signature.globalSignature = key.sign(signature.signature + signature.trustedComment);
    return signature;
}

} // namespace hx

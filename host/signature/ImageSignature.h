/** @file
 * Whether an update image is signed by somebody who is trusted.
 */
#pragma once

#include "host/image/UpdateImage.h"
#include "host/signature/MinisignFile.h"
#include "host/signature/TrustedKeys.h"

namespace hx {

enum class SignatureState {
    NoKey,          /**< no key is known that images must be signed with */
    Unchecked,      /**< there is a key, and a person has asked not to look */
    Good,           /**< signed with a trusted key, and the comment is of this image */
    KeyUnusable,    /**< the file of the trusted keys cannot be read or used */
    Missing,        /**< there is no signature that could be read */
    Unreadable,     /**< the file of the signature is not one */
    OtherKey,       /**< made with a key that is not among the trusted ones */
    OtherFile,      /**< made of other bytes, or by somebody who does not have the key */
    CommentChanged, /**< the comment was changed after it was signed */
    CommentOther,   /**< the signed comment is of another image */
};

constexpr SignatureState lastSignatureState = SignatureState::CommentOther;

/** What is known of an image's origin. */
struct SignatureVerdict {
    SignatureState state = SignatureState::NoKey;
    QString keyId;  /**< of the key that the signature names; empty when there is none */
    QString detail; /**< one line on what is wrong, with the value; empty where nothing is */

    /** False: the image must not be sent. */
    bool allowsSending() const { return state <= SignatureState::Good; }
};

/**
 * The comment that the signature of this image carries: identifier, kind, version and SHA-256, by
 * the grammar of docs/formats/signature.md. `content` is the file as it lies on the disk.
 */
QByteArray signedComment(const QByteArray& content, const UpdateImage& image);

/** "IMAGE.minisig", where the signature of a file is looked for. */
QString signatureNameOf(const QString& imageName);

/**
 * Holds `content`, out of which `image` was taken, against its signature, which `signature` is the
 * content of. Anything but `Good` where there is a key means that nothing may be sent.
 */
SignatureVerdict checkSignature(const TrustedKeys& keys, const Result<QByteArray>& signature,
                                const QByteArray& content, const UpdateImage& image);

class SecretKey;

/** Signs `content`, out of which `image` was taken. */
Signature signImage(const QByteArray& content, const UpdateImage& image, const SecretKey& key);

} // namespace hx

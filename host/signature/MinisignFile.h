/** @file
 * Public keys and signatures in the text files of minisign, read strictly.
 */
#pragma once

#include "host/base/Result.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace hx {

struct PublicKey {
    QByteArray id;  /**< 8 bytes, drawn by whoever made the key */
    QByteArray key; /**< 32 bytes, Ed25519 */
};

struct Signature {
    QByteArray keyId;           /**< 8 bytes: that of the key which made it */
    QByteArray signature;       /**< 64 bytes, of the BLAKE2b-512 of the file */
    QByteArray trustedComment;  /**< signed too, by `globalSignature` */
    QByteArray globalSignature; /**< 64 bytes, of `signature` and `trustedComment` */
};

/** Files of keys and signatures above this size are refused. */
constexpr qint64 maxMinisignBytes = 16384;

/** "29EBD7B85C8E217E", as minisign shows it: the number without zeros before it. */
QString keyIdText(const QByteArray& id);

/**
 * The keys of a file, one after the other: at least one, at most 16, no identifier twice. The
 * problem names the line that is wrong and what belongs there.
 */
Result<std::vector<PublicKey>> parsePublicKeys(const QByteArray& text);

/** A signature of the kind "ED"; the older "Ed", which signs a file unhashed, is refused. */
Result<Signature> parseSignature(const QByteArray& text);

/** The content of a .minisig file. */
QByteArray signatureText(const Signature& signature);

} // namespace hx

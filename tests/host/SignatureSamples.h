// Keys and signatures for tests, in the text files of minisign.
#pragma once

#include "host/signature/ImageSignature.h"
#include "host/signature/SecretKey.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <sodium.h>

namespace samples {

struct KeyPair {
    QByteArray id;
    QByteArray publicKey;
    QByteArray secretKey;
};

// Two letters give two keys, one letter always the same.
inline KeyPair keyPair(char letter)
{
    const QByteArray seed(crypto_sign_SEEDBYTES, letter);
    KeyPair pair = {QByteArray(8, letter), QByteArray(crypto_sign_PUBLICKEYBYTES, '\0'),
                    QByteArray(crypto_sign_SECRETKEYBYTES, '\0')};
    crypto_sign_seed_keypair(reinterpret_cast<unsigned char*>(pair.publicKey.data()),
                             reinterpret_cast<unsigned char*>(pair.secretKey.data()),
                             reinterpret_cast<const unsigned char*>(seed.constData()));
    return pair;
}

inline QByteArray publicKeyText(const KeyPair& pair)
{
    return "untrusted comment: minisign public key\n" +
           ("Ed" + pair.id + pair.publicKey).toBase64() + '\n';
}

inline QByteArray secretText(const QByteArray& bytes)
{
    return "untrusted comment: minisign secret key\n" + bytes.toBase64() + '\n';
}

// As `minisign -G -W` makes it: without a password, and without a checksum.
inline QByteArray secretKeyText(const KeyPair& pair)
{
    return secretText("Ed" + QByteArray(2, '\0') + "B2" + QByteArray(48, '\0') + pair.id +
                      pair.secretKey + QByteArray(32, '\0'));
}

struct PasswordCost {
    quint64 operations = crypto_pwhash_scryptsalsa208sha256_OPSLIMIT_MIN;
    quint64 memory = crypto_pwhash_scryptsalsa208sha256_MEMLIMIT_MIN;
};

inline QByteArray littleEndian(quint64 number)
{
    QByteArray bytes(8, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

inline QByteArray encryptedKeyText(const KeyPair& pair, const QByteArray& password,
                                   const PasswordCost& cost = {})
{
    const QByteArray whole = "Ed" + pair.id + pair.secretKey;
    QByteArray checksum(32, '\0');
    crypto_generichash(reinterpret_cast<unsigned char*>(checksum.data()), 32,
                       reinterpret_cast<const unsigned char*>(whole.constData()),
                       size_t(whole.size()), nullptr, 0);
    QByteArray secret = pair.id + pair.secretKey + checksum;
    const QByteArray salt(crypto_pwhash_scryptsalsa208sha256_SALTBYTES, 's');
    QByteArray stream(secret.size(), '\0');
    const PasswordCost least;
    EXPECT_EQ(crypto_pwhash_scryptsalsa208sha256(
                  reinterpret_cast<unsigned char*>(stream.data()),
                  static_cast<unsigned long long>(stream.size()), password.constData(),
                  static_cast<unsigned long long>(password.size()),
                  reinterpret_cast<const unsigned char*>(salt.constData()), least.operations,
                  size_t(least.memory)),
              0);
    for (int i = 0; i < secret.size(); ++i)
        secret[i] = char(secret.at(i) ^ stream.at(i));
    return secretText("EdScB2" + salt + littleEndian(cost.operations) + littleEndian(cost.memory) +
                      secret);
}

inline hx::SecretKey secretKey(const KeyPair& pair)
{
    QByteArray text = secretKeyText(pair);
    hx::Result<hx::SecretKey> key = hx::SecretKey::open(text, nullptr);
    EXPECT_TRUE(bool(key));
    return std::move(*key);
}

inline hx::TrustedKeys trusted(const QByteArray& text)
{
    return {QStringLiteral("product.pub"), hx::parsePublicKeys(text)};
}

} // namespace samples

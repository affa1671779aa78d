#include "host/signature/SecretKey.h"

#include "qt/Saturated.h"

#include <QtEndian>

#include <array>
#include <cstddef>
#include <new>

#include <sodium.h>

namespace hx {

namespace {

template <size_t size>
using Bytes = std::array<quint8, size>;

constexpr char secretWord[] = "untrusted comment: ";
constexpr Bytes<2> ed25519 = {'E', 'd'};
constexpr Bytes<2> blake2 = {'B', '2'};
constexpr Bytes<2> scrypt = {'S', 'c'};
constexpr Bytes<2> noPassword = {0, 0};
constexpr quint64 mostMemory = quint64(1) << 30;     // both are what minisign takes
constexpr quint64 mostOperations = quint64(1) << 25; // for the keys that it makes

Problem keyProblem(const QString& what)
{
    return {ExitCode::FileError, what, QStringLiteral("a secret key as 'minisign -G' makes it"),
            QString()};
}

Problem passwordProblem(const QString& what)
{
    return {ExitCode::FileError, what, QStringLiteral("the password of the key"), QString()};
}

// The second of two lines; empty when there are not just two. It shares the text's memory.
QByteArray keyLine(const QByteArray& text)
{
    const int begin = saturated(text.indexOf('\n')) + 1;
    const int size = saturated(text.size()) - (text.endsWith('\n') ? 1 : 0);
    if (!text.startsWith(secretWord) || begin == 0 || begin >= size)
        return QByteArray();
    return QByteArray::fromRawData(text.constData() + begin, size - begin);
}

void wipeBytes(QByteArray& bytes)
{
    sodium_memzero(bytes.data(), size_t(bytes.size()));
}

} // namespace

// What the file has in base64. All from the identifier on is encrypted when there is a password.
struct SecretKey::Content {
    Bytes<2> algorithm{};
    Bytes<2> derivation{};
    Bytes<2> checksumKind{};
    Bytes<crypto_pwhash_scryptsalsa208sha256_SALTBYTES> salt{};
    Bytes<8> operations{};
    Bytes<8> memory{};
    Bytes<8> id{};
    Bytes<crypto_sign_SECRETKEYBYTES> key{};
    Bytes<crypto_generichash_BYTES> checksum{};

    quint8* secret() { return id.data(); }
    static constexpr size_t secretBytes = sizeof id + sizeof key + sizeof checksum;

    quint64 operationLimit() const { return qFromLittleEndian<quint64>(operations.data()); }
    quint64 memoryLimit() const { return qFromLittleEndian<quint64>(memory.data()); }

    bool decrypt(const QByteArray& password);
    bool fitsChecksum() const;
    bool isPair() const;
};

bool SecretKey::Content::decrypt(const QByteArray& password)
{
    Bytes<secretBytes> stream{};
    const bool done =
        crypto_pwhash_scryptsalsa208sha256(stream.data(), stream.size(), password.constData(),
                                           size_t(password.size()), salt.data(), operationLimit(),
                                           size_t(memoryLimit())) == 0;
    for (size_t i = 0; i < secretBytes; ++i)
        secret()[i] ^= stream[i];
    sodium_memzero(stream.data(), stream.size());
    return done;
}

bool SecretKey::Content::fitsChecksum() const
{
    crypto_generichash_state state{};
    Bytes<crypto_generichash_BYTES> sum{};
    crypto_generichash_init(&state, nullptr, 0, sum.size());
    crypto_generichash_update(&state, algorithm.data(), algorithm.size());
    crypto_generichash_update(&state, id.data(), id.size());
    crypto_generichash_update(&state, key.data(), key.size());
    crypto_generichash_final(&state, sum.data(), sum.size());
    sodium_memzero(&state, sizeof state);
    return sum == checksum;
}

// The second half of a key is the public one, which follows from the first.
bool SecretKey::Content::isPair() const
{
    Bytes<crypto_sign_PUBLICKEYBYTES> publicHalf{};
    Bytes<crypto_sign_SECRETKEYBYTES> whole{};
    crypto_sign_seed_keypair(publicHalf.data(), whole.data(), key.data());
    const bool same = sodium_memcmp(whole.data(), key.data(), key.size()) == 0;
    sodium_memzero(whole.data(), whole.size());
    return same;
}

void SecretKey::Wipe::operator()(Content* content) const
{
    sodium_free(content); // which wipes it
}

SecretKey::SecretKey(std::unique_ptr<Content, Wipe> content) : m_content(std::move(content)) {}

Result<SecretKey> SecretKey::open(QByteArray& text, const AskPassword& ask)
{
    static_assert(sizeof(Content) == 158 && std::is_standard_layout_v<Content>);
    void* memory = sodium_init() < 0 ? nullptr : sodium_malloc(sizeof(Content));
    if (memory == nullptr)
        return keyProblem(QStringLiteral("there is no protected memory for it"));
    std::unique_ptr<Content, Wipe> content(new (memory) Content);
    const QByteArray line = keyLine(text);
    size_t count = 0;
    const int refused = sodium_base642bin(static_cast<unsigned char*>(memory), sizeof(Content),
                                          line.constData(), size_t(line.size()), nullptr, &count,
                                          nullptr, sodium_base64_VARIANT_ORIGINAL);
    wipeBytes(text);
    if (refused != 0 || count != sizeof(Content) || content->algorithm != ed25519 ||
        content->checksumKind != blake2)
        return keyProblem(QStringLiteral("it is not a secret key of minisign"));
    if (const std::optional<Problem> problem = unlock(*content, ask))
        return *problem;
    if (!content->isPair())
        return keyProblem(QStringLiteral("it is damaged: its two halves do not belong together"));
    return SecretKey(std::move(content));
}

std::optional<Problem> SecretKey::unlock(Content& content, const AskPassword& ask)
{
    if (content.derivation == noPassword)
        return std::nullopt;
    if (content.derivation != scrypt || content.memoryLimit() > mostMemory ||
        content.operationLimit() > mostOperations)
        return keyProblem(QStringLiteral("it is encrypted in a way that is not known"));
    std::optional<QByteArray> password = ask();
    if (!password)
        return passwordProblem(QStringLiteral("it has a password, and none was given"));
    const bool isDecrypted = content.decrypt(*password);
    wipeBytes(*password);
    if (!isDecrypted)
        return keyProblem(QStringLiteral("its password takes %1 MiB of memory to check, which "
                                         "are not free")
                              .arg(content.memoryLimit() >> 20));
    if (!content.fitsChecksum())
        return passwordProblem(QStringLiteral("what was typed is not its password"));
    return std::nullopt;
}

QByteArray SecretKey::id() const
{
    return QByteArray(reinterpret_cast<const char*>(m_content->id.data()),
                      static_cast<int>(m_content->id.size()));
}

QByteArray SecretKey::sign(const QByteArray& bytes) const
{
    QByteArray signature(crypto_sign_BYTES, '\0');
    crypto_sign_detached(reinterpret_cast<unsigned char*>(signature.data()), nullptr,
                         reinterpret_cast<const unsigned char*>(bytes.constData()),
                         size_t(bytes.size()), m_content->key.data());
    return signature;
}

} // namespace hx

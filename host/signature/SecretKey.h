// The key that signs, in memory that is locked and wiped. Nothing here gives it away.
#pragma once

#include "host/base/Result.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <optional>

namespace hx {

class SecretKey {
public:
    // Gives the password of a key that has one; none: nobody can give it.
    using AskPassword = std::function<std::optional<QByteArray>()>;

    // Out of the content of a file that minisign made, which is wiped. `ask` is called once at
    // most. A problem when it is not such a file, or the password is not the key's.
    static Result<SecretKey> open(QByteArray& text, const AskPassword& ask);

    QByteArray id() const;

    // The Ed25519 signature of the bytes: 64 bytes.
    QByteArray sign(const QByteArray& bytes) const;

private:
    struct Content;
    struct Wipe {
        void operator()(Content* content) const;
    };

    explicit SecretKey(std::unique_ptr<Content, Wipe> content);
    static std::optional<Problem> unlock(Content& content, const AskPassword& ask);

    std::unique_ptr<Content, Wipe> m_content;
};

} // namespace hx

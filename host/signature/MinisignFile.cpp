#include "host/signature/MinisignFile.h"

#include "host/base/PrintableText.h"
#include "qt/Saturated.h"

#include <QList>

#include <algorithm>

#include <sodium.h>

namespace hx {

namespace {

constexpr char untrustedWord[] = "untrusted comment: ";
constexpr char trustedWord[] = "trusted comment: ";
constexpr char keyKind[] = "Ed";
constexpr char signatureKind[] = "ED"; // of a hash
constexpr int kindBytes = 2;
constexpr int keyIdBytes = 8;
constexpr int publicKeyBytes = 32;
constexpr int signatureBytes = 64;
constexpr int keyLines = 2;
constexpr int mostKeys = 16;
constexpr int signatureLines = 4;
constexpr int shownCharacters = 40;

Problem wrongText(const QString& what, const QString& expected)
{
    return {ExitCode::ImageRefused, what, expected, QString()};
}

Problem wrongLine(int number, const QByteArray& line, const QString& expected)
{
    const QString shown = printable(QString::fromLatin1(line.left(shownCharacters)));
    return wrongText(QStringLiteral("line %1 begins with \"%2\"").arg(number).arg(shown), expected);
}

// Each without its end, which the last may lack.
QList<QByteArray> textLines(const QByteArray& text)
{
    QList<QByteArray> lines = text.split('\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

bool isControlByte(char character)
{
    const auto code = quint8(character);
    return (code < 0x20 && character != '\t') || code == 0x7F;
}

// What follows the word at the beginning of a line of text.
Result<QByteArray> commentOf(const QList<QByteArray>& lines, int index, const char* word)
{
    const QByteArray& line = lines.at(index);
    if (line.startsWith(word) && std::none_of(line.begin(), line.end(), isControlByte))
        return line.mid(QLatin1String(word).size());
    return wrongLine(
        index + 1, line,
        QStringLiteral("\"%1\" and a text that ends with a line feed").arg(QLatin1String(word)));
}

// The bytes of a line that is base64 of exactly so many.
Result<QByteArray> bytesOf(const QList<QByteArray>& lines, int index, int size)
{
    const QByteArray& line = lines.at(index);
    QByteArray bytes(size, '\0');
    size_t count = 0;
    const int refused = sodium_base642bin(reinterpret_cast<unsigned char*>(bytes.data()),
                                          size_t(size), line.constData(), size_t(line.size()),
                                          nullptr, &count, nullptr, sodium_base64_VARIANT_ORIGINAL);
    if (refused == 0 && count == size_t(size))
        return bytes;
    return wrongLine(index + 1, line, QStringLiteral("base64 of %1 bytes").arg(size));
}

Result<PublicKey> keyAt(const QList<QByteArray>& lines, int index)
{
    const Result<QByteArray> comment = commentOf(lines, index, untrustedWord);
    if (!comment)
        return comment.problem();
    const Result<QByteArray> bytes =
        bytesOf(lines, index + 1, kindBytes + keyIdBytes + publicKeyBytes);
    if (!bytes)
        return bytes.problem();
    if (!bytes->startsWith(keyKind))
        return wrongLine(index + 2, lines.at(index + 1),
                         QStringLiteral("a public key of the kind \"Ed\""));
    return PublicKey{bytes->mid(kindBytes, keyIdBytes), bytes->mid(kindBytes + keyIdBytes)};
}

bool hasKey(const std::vector<PublicKey>& keys, const QByteArray& id)
{
    return std::any_of(keys.begin(), keys.end(),
                       [&id](const PublicKey& key) { return key.id == id; });
}

// Identifier and signature together, after the kind.
Result<QByteArray> signatureBlob(const QList<QByteArray>& lines)
{
    Result<QByteArray> bytes = bytesOf(lines, 1, kindBytes + keyIdBytes + signatureBytes);
    if (!bytes)
        return bytes;
    if (!bytes->startsWith(signatureKind))
        return wrongText(
            QStringLiteral("it is a signature of the kind \"%1\"")
                .arg(printable(QString::fromLatin1(bytes->left(kindBytes)))),
            QStringLiteral("one of the kind \"ED\", which minisign makes without its option -l"));
    return bytes->mid(kindBytes);
}

} // namespace

QString keyIdText(const QByteArray& id)
{
    quint64 number = 0;
    for (int i = saturated(id.size()) - 1; i >= 0; --i)
        number = number << 8 | static_cast<quint8>(id.at(i));
    return QString::number(number, 16).toUpper();
}

Result<std::vector<PublicKey>> parsePublicKeys(const QByteArray& text)
{
    const QList<QByteArray> lines = textLines(text);
    if (lines.isEmpty() || lines.size() % keyLines != 0 || lines.size() > keyLines * mostKeys)
        return wrongText(QStringLiteral("it has %1 lines").arg(lines.size()),
                         QStringLiteral("two lines for each of 1 to %1 public keys").arg(mostKeys));
    std::vector<PublicKey> keys;
    for (int index = 0; index < lines.size(); index += keyLines) {
        const Result<PublicKey> key = keyAt(lines, index);
        if (!key)
            return key.problem();
        if (hasKey(keys, key->id))
            return wrongText(QStringLiteral("the key %1 is in it twice").arg(keyIdText(key->id)),
                             QStringLiteral("each key once"));
        keys.push_back(*key);
    }
    return keys;
}

Result<Signature> parseSignature(const QByteArray& text)
{
    const QList<QByteArray> lines = textLines(text);
    if (lines.size() != signatureLines)
        return wrongText(QStringLiteral("it has %1 lines").arg(lines.size()),
                         QStringLiteral("%1 lines").arg(signatureLines));
    const Result<QByteArray> untrusted = commentOf(lines, 0, untrustedWord);
    if (!untrusted)
        return untrusted.problem();
    const Result<QByteArray> blob = signatureBlob(lines);
    if (!blob)
        return blob.problem();
    const Result<QByteArray> comment = commentOf(lines, 2, trustedWord);
    if (!comment)
        return comment.problem();
    const Result<QByteArray> global = bytesOf(lines, 3, signatureBytes);
    if (!global)
        return global.problem();
    return Signature{blob->left(keyIdBytes), blob->mid(keyIdBytes), *comment, *global};
}

QByteArray signatureText(const Signature& signature)
{
    const QByteArray blob = signatureKind + signature.keyId + signature.signature;
    return untrustedWord + QByteArray("signature of an update image\n") + blob.toBase64() + '\n' +
           trustedWord + signature.trustedComment + '\n' + signature.globalSignature.toBase64() +
           '\n';
}

} // namespace hx

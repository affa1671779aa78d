// Files of keys and signatures: taken exactly when the grammar allows it, and a good signature stays
// good only while nothing that counts is changed.
#include "fuzz/support/FuzzTarget.h"

#include "host/signature/ImageSignature.h"
#include "host/signature/SecretKey.h"

namespace {

using namespace hx;
using namespace hx::fuzz;

constexpr int kindAndId = 10;

// The only base64 of these bytes, or none.
QByteArray bytesOf(const QByteArray& line)
{
    const QByteArray bytes = QByteArray::fromBase64(line);
    return bytes.toBase64() == line ? bytes : QByteArray();
}

bool isComment(const QByteArray& line, const char* word)
{
    if (!line.startsWith(word))
        return false;
    for (const char character : line) {
        if ((quint8(character) < 0x20 && character != '\t') || character == 0x7F)
            return false;
    }
    return true;
}

QList<QByteArray> linesOf(QByteArray text)
{
    if (text.endsWith('\n'))
        text.chop(1);
    else if (text.isEmpty())
        return {};
    return text.split('\n');
}

bool isSignature(const QByteArray& text)
{
    const QList<QByteArray> lines = linesOf(text);
    return lines.size() == 4 && isComment(lines.at(0), "untrusted comment: ") &&
           bytesOf(lines.at(1)).size() == kindAndId + 64 && bytesOf(lines.at(1)).startsWith("ED") &&
           isComment(lines.at(2), "trusted comment: ") && bytesOf(lines.at(3)).size() == 64;
}

bool isKeys(const QByteArray& text)
{
    const QList<QByteArray> lines = linesOf(text);
    if (lines.isEmpty() || lines.size() > 32 || lines.size() % 2 != 0)
        return false;
    QList<QByteArray> ids;
    for (int i = 0; i < lines.size(); i += 2) {
        const QByteArray bytes = bytesOf(lines.at(i + 1));
        const QByteArray id = bytes.mid(2, 8);
        if (!isComment(lines.at(i), "untrusted comment: ") || bytes.size() != kindAndId + 32 ||
            !bytes.startsWith("Ed") || ids.contains(id))
            return false;
        ids << id;
    }
    return true;
}

void readText(const QByteArray& text)
{
    const Result<Signature> signature = parseSignature(text);
    requireSame(bool(signature), isSignature(text), "a signature");
    if (signature) {
        const QList<QByteArray> lines = linesOf(text);
        const QList<QByteArray> written = linesOf(signatureText(*signature));
        requireSame(written.mid(1), lines.mid(1), "what is read is written again");
    } else {
        require(!signature.problem().what.isEmpty(), "what is wrong is told");
    }
    const Result<std::vector<PublicKey>> keys = parsePublicKeys(text);
    requireSame(bool(keys), isKeys(text), "a file of keys");
    QByteArray secret(text.constData(), int(text.size()));
    const auto none = [] { return std::optional<QByteArray>(); };
    const Result<SecretKey> key = SecretKey::open(secret, none);
    require(!key || text.size() > 200, "a secret key");
    requireSame(secret, QByteArray(int(text.size()), '\0'), "the text of a secret key is wiped");
}

// The text with a few bytes replaced, put in or taken out.
QByteArray changed(QByteArray text, FuzzInput& input)
{
    while (!input.atEnd() && !text.isEmpty()) {
        const int how = input.byte() % 3;
        const int place = (input.byte() * 256 + input.byte()) % int(text.size());
        const char byte = static_cast<char>(input.byte());
        if (how == 0)
            text[place] = byte;
        else if (how == 1)
            text.insert(place, byte);
        else
            text.remove(place, 1);
    }
    return text;
}

// Made once by minisign, of the file "image", with the comment that belongs to it.
const QByteArray goodKeys = "untrusted comment: minisign public "
                            "key\nRWQ9FxKOsz+lx19IJzgtYNoR8DYjHjKSk9i1BnwW5IOoX0QpMiclwRJ3\n";
const QByteArray goodSignature =
    "untrusted comment: signature from minisign secret key\n"
    "RUQ9FxKOsz+lxzzNhdkRhQxuR8ZE/gPLGM9bEqYnD1nXDxM5kemuKDo4h/"
    "EbXGLsteITBSIlE5FTntlpwRb8idaxzDVfHZHDfAE=\n"
    "trusted comment: identifier=0x7F007F kind=unk version= "
    "sha256=6105d6cc76af400325e94d588ce511be5bfdbb73b437dc51eca43917d7a43e3d\n"
    "6rdNV+eGHasOZCx6On9sZaCr9YueMl6bM51XRWi26ulU/JiYZTLSI+QmzBHDswE6+mNIeUkx0jE+bd00FWAwBQ==\n";

void verifyChanged(FuzzInput& input)
{
    const bool changesKeys = input.flag();
    const QByteArray keyText = changesKeys ? changed(goodKeys, input) : goodKeys;
    const QByteArray text = changesKeys ? goodSignature : changed(goodSignature, input);
    const TrustedKeys keys = {QStringLiteral("keys"), parsePublicKeys(keyText)};
    const SignatureVerdict verdict = checkSignature(keys, text, "image", UpdateImage());
    const QList<QByteArray> lines = linesOf(text);
    const bool isSame = isKeys(keyText) && linesOf(keyText).contains(linesOf(goodKeys).at(1)) &&
                        isSignature(text) && lines.mid(1) == linesOf(goodSignature).mid(1);
    requireSame(verdict.state == SignatureState::Good, isSame, "a good signature");
    require(isSame || !verdict.allowsSending(), "nothing else may be sent");
    require(isSame || !verdict.detail.isEmpty(), "what is wrong is told");
}

void run(FuzzInput& input)
{
    if (input.flag())
        verifyChanged(input);
    else
        readText(input.rest());
}

const Target target("signature", run);

} // namespace

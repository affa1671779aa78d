#include "apps/hxhost/commands/ImageOrigin.h"

#include "apps/hxhost/commands/Options.h"
#include "apps/hxhost/report/StandardStreams.h"

#include "host/base/FileName.h"
#include "host/base/WholeFile.h"

namespace hx::host {

namespace {

// By the state of the signature: the word of the JSON document, and what is wrong with the image.
struct OriginWords {
    const char* state;
    const char* text;
};

// In the order of the states.
const OriginWords originWords[] = {
    {"not signed", "not signed: its origin is not known"},
    {"not checked", "not checked (--unsigned): its origin is not known"},
    {"good", "signed"},
    {"key unusable", "it cannot be checked, because the key is not usable"},
    {"missing", "it is not signed"},
    {"unreadable", "its signature cannot be read as one"},
    {"other key", "it is signed with a key that is not trusted here"},
    {"other file", "it is not what was signed"},
    {"comment changed", "its signature was changed"},
    {"comment of another image", "its signature is made for another image"},
};

static_assert(sizeof originWords / sizeof originWords[0] == size_t(lastSignatureState) + 1,
              "every state has its words");

const OriginWords& wordsOf(const SignatureVerdict& verdict)
{
    return originWords[size_t(verdict.state)];
}

QString signatureFileOf(const OriginOptions& options, const QString& image)
{
    return options.signature.empty() ? signatureNameOf(image) : fileNameText(options.signature);
}

Result<QByteArray> readSignature(const OriginOptions& options, const QString& image)
{
    if (options.signature.empty() && isStandardStream(image))
        return fileProblem(QStringLiteral("an image from standard input has none beside it"));
    const QString name = signatureFileOf(options, image);
    Result<QByteArray> content = readWholeFile(name, maxMinisignBytes);
    if (content && content->size() <= maxMinisignBytes)
        return content;
    const QString why = content ? QStringLiteral("it has more than %1 bytes").arg(maxMinisignBytes)
                                : content.problem().what;
    return fileProblem(QStringLiteral("\"%1\" cannot be read: %2").arg(name, why));
}

QString nextStep(const SignatureVerdict& verdict, const TrustedKeys& keys, const QString& signature)
{
    if (verdict.state == SignatureState::KeyUnusable)
        return QStringLiteral("put the maker's public key back into \"%1\"").arg(keys.file);
    if (verdict.state == SignatureState::Missing)
        return QStringLiteral("get \"%1\" from where the image came from, or "
                              "name it with --signature")
            .arg(signature);
    return QStringLiteral("get the image and its signature again, from the "
                          "maker");
}

void failOrigin(CommandContext& context, const OriginOptions& options, const TrustedKeys& keys,
                const LoadedImage& loaded)
{
    const SignatureVerdict& verdict = loaded.origin;
    const QString signature = signatureFileOf(
        options, isStandardStream(loaded.path) ? QStringLiteral("IMAGE") : loaded.path);
    context.fail(ExitCode::ImageRefused,
                 QStringLiteral("the image \"%1\" is refused: %2: %3")
                     .arg(loaded.path, QLatin1String(wordsOf(verdict).text), verdict.detail),
                 QStringLiteral("an image signed with a key of \"%1\"").arg(keys.file),
                 nextStep(verdict, keys, signature));
}

void addOrigin(CommandContext& context, const TrustedKeys& keys, const SignatureVerdict& verdict)
{
    Report& report = context.report;
    report.add(QStringLiteral("signature.state"), QLatin1String(wordsOf(verdict).state),
               originText(verdict));
    if (!keys.areAskedFor())
        return;
    report.add(QStringLiteral("signature.keyFile"), keys.file);
    if (!verdict.keyId.isEmpty())
        report.add(QStringLiteral("signature.key"), verdict.keyId);
    context.recorder.note(BusEventKind::Decided,
                          QStringLiteral("the image: ") + originText(verdict));
}

void lookAtSignature(const Result<QByteArray>& signature, const TrustedKeys& keys,
                     LoadedImage& loaded)
{
    loaded.origin = checkSignature(keys, signature, loaded.file.content, loaded.image);
    if (signature)
        loaded.signature = *signature;
}

// False, with the problem in the report, when there are keys and the image is not signed with one.
bool requireOrigin(CommandContext& context, const OriginOptions& options, const TrustedKeys& keys,
                   LoadedImage& loaded)
{
    if (keys.areAskedFor() && options.isUnsigned)
        loaded.origin.state = SignatureState::Unchecked;
    else if (keys.areAskedFor())
        lookAtSignature(readSignature(options, loaded.path), keys, loaded);
    else if (!options.signature.empty())
        return failWithoutKeys(context);
    addOrigin(context, keys, loaded.origin);
    if (!loaded.origin.allowsSending())
        failOrigin(context, options, keys, loaded);
    return loaded.origin.allowsSending();
}

} // namespace

void addOriginOptions(const Command& command, OriginOptions& options)
{
    command
        .addOption("--pubkey", options.publicKey,
                   "File of public keys; the image must be signed with one of them; default: the "
                   "plugin's name with the ending .pub, if there is such a file")
        .valueName("FILE");
    command
        .addOption("--signature", options.signature,
                   "Signature of the image; default: IMAGE.minisig")
        .valueName("FILE");
}

void addSendingOriginOptions(const Command& command, OriginOptions& options)
{
    addOriginOptions(command, options);
    command.addFlag("--unsigned", options.isUnsigned,
                    "Send the image without checking its signature");
}

bool failWithoutKeys(CommandContext& context)
{
    context.fail(ExitCode::Usage,
                 QStringLiteral("there is no public key to verify the image with: none is given, "
                                "and none is beside the plugin"),
                 QStringLiteral("a file of public keys"), QStringLiteral("give it with --pubkey"));
    return false;
}

TrustedKeys chosenKeys(const OriginOptions& options, const LoadedPlugin& plugin)
{
    return options.publicKey.empty() ? keysOf(plugin)
                                     : readTrustedKeys(fileNameText(options.publicKey));
}

std::optional<LoadedImage> readTrustedImage(CommandContext& context, const std::string& path,
                                            const OriginOptions& options, const TrustedKeys& keys,
                                            const ProductDescription& product)
{
    std::optional<LoadedImage> loaded = openImage(context, path, product);
    if (!loaded || failForeign(context, loaded->path, loaded->file.format))
        return std::nullopt;
    const bool isOurs = !loaded->image.isForOtherProduct; // which is said before who signed it
    if (isOurs && !requireOrigin(context, options, keys, *loaded))
        return std::nullopt;
    return requireGoodImage(context, *loaded) && isOurs ? loaded : std::nullopt;
}

QString originText(const SignatureVerdict& verdict)
{
    const QString text = QLatin1String(wordsOf(verdict).text);
    return verdict.state == SignatureState::Good
               ? QStringLiteral("%1 with the key %2").arg(text, verdict.keyId)
               : text;
}

} // namespace hx::host

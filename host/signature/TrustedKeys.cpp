#include "host/signature/TrustedKeys.h"

#include "host/base/FileName.h"
#include "host/base/WholeFile.h"

namespace hx {

namespace {

Result<std::vector<PublicKey>> keysIn(const QString& file)
{
    const Result<QByteArray> text = readWholeFile(file, maxMinisignBytes);
    if (!text)
        return text.problem();
    if (text->size() > maxMinisignBytes)
        return fileProblem(QStringLiteral("it has more than %1 bytes").arg(maxMinisignBytes));
    Result<std::vector<PublicKey>> keys = parsePublicKeys(*text);
    if (keys)
        return keys;
    return fileProblem(
        QStringLiteral("%1; expected %2").arg(keys.problem().what, keys.problem().expected));
}

} // namespace

TrustedKeys readTrustedKeys(const QString& file)
{
    return {file, keysIn(file)};
}

QString keyFileBeside(const QString& pluginFile)
{
    const std::filesystem::path place = filePath(pluginFile).replace_extension(".pub");
    std::error_code unseen; // what cannot be looked at is there: reading it says why
    const std::filesystem::file_status status = std::filesystem::symlink_status(place, unseen);
    const bool isThere = status.type() != std::filesystem::file_type::not_found;
    return isThere ? fileNameText(place.string()) : QString();
}

TrustedKeys keysOf(const LoadedPlugin& plugin)
{
    for (const QString& name : {plugin.givenPath(), plugin.filePath()}) {
        const QString file = keyFileBeside(name);
        if (!file.isEmpty())
            return readTrustedKeys(file);
    }
    return {};
}

} // namespace hx

#include "apps/hxhost/commands/ImageReport.h"

#include "apps/hxhost/commands/Readings.h"
#include "apps/hxhost/report/StandardStreams.h"

#include "host/base/FileName.h"
#include "host/base/HexText.h"

namespace hx::host {

namespace {

QJsonValue orNull(qint64 number)
{
    return number < 0 ? QJsonValue() : QJsonValue(double(number));
}

QJsonArray problemRows(const ImageProblems& problems)
{
    QJsonArray rows;
    for (const Problem& problem : problems) {
        const Place& place = problem.place;
        rows << QJsonObject{{"message", orNull(place.message < 0 ? -1 : place.message + 1)},
                            {"offset", orNull(place.offset)},
                            {"text", problem.what},
                            {"advice", problem.next}};
    }
    return rows;
}

void addContent(Report& report, const UpdateImage& image)
{
    report.add(QStringLiteral("image.kind"), QString(codeTypeTag(image.kind)));
    report.add(QStringLiteral("image.product"), image.identifier == unknownIdentifier
                                                    ? QString()
                                                    : identifierText(image.identifier));
    report.add(QStringLiteral("image.version"), image.version);
    report.add(QStringLiteral("image.messages"), image.messages.size());
    report.add(QStringLiteral("image.dataMessages"), image.dataMessages);
    report.add(QStringLiteral("image.bytes"), double(image.bytes));
    report.add(QStringLiteral("image.codeBytes"), image.code.size());
    report.add(QStringLiteral("image.wireSeconds"),
               double(image.wireMicroseconds()) / double(microsecondsPerSecond),
               durationText(image.wireMicroseconds()) +
                   QStringLiteral(" on a DIN MIDI wire, answers not counted"));
    if (image.ok() && image.checksumGroups > 0)
        report.add(QStringLiteral("image.checksum"), hexText(image.expectedChecksum()));
}

void failUnreadable(CommandContext& context, const QString& name, const QString& error)
{
    context.fail(ExitCode::FileError,
                 QStringLiteral("the image \"%1\" cannot be read: %2").arg(name, error),
                 QStringLiteral("an update image: .syx, hex text or Standard MIDI File"),
                 QStringLiteral("check the name and the permissions; \"-\" is standard input"));
}

} // namespace

bool failForeign(CommandContext& context, const QString& name, ImageFormat format)
{
    if (format != ImageFormat::WebPage && format != ImageFormat::Archive)
        return false;
    context.fail(ExitCode::ImageRefused,
                 QStringLiteral("This is a web page (or an archive), not an update. \"%1\" looks "
                                "like %2.")
                     .arg(name, format == ImageFormat::WebPage ? QStringLiteral("a web page")
                                                               : QStringLiteral("an archive")),
                 QStringLiteral("an update image: .syx, hex text or Standard MIDI File"),
                 format == ImageFormat::WebPage
                     ? QStringLiteral("Download the update again, and save the file, not the page.")
                     : QStringLiteral("Unpack it, and give the update that is in it."));
    return true;
}

LoadedImage imageIn(const QString& name, const QByteArray& content,
                    const ProductDescription& product)
{
    const ImageFile file = parseImageFile(content);
    return {name, file, parseUpdateImage(file, product)};
}

void addImage(Report& report, const LoadedImage& loaded)
{
    report.add(QStringLiteral("image.file"), loaded.path);
    report.add(QStringLiteral("image.format"), imageFormatName(loaded.file.format));
    report.add(QStringLiteral("image.fileBytes"), double(loaded.file.size));
    addContent(report, loaded.image);
    report.add(QStringLiteral("image.good"), loaded.image.ok());
    const QJsonArray problems = problemRows(loaded.image.problems);
    const QStringList columns = {QStringLiteral("message"), QStringLiteral("offset"),
                                 QStringLiteral("text"), QStringLiteral("advice")};
    if (problems.isEmpty())
        report.addHidden(QStringLiteral("image.problems"), problems);
    else
        report.addTable(QStringLiteral("image.problems"), columns, problems);
}

bool requireGoodImage(CommandContext& context, const LoadedImage& loaded)
{
    const ImageProblems& problems = loaded.image.problems;
    if (problems.empty())
        return true;
    if (failForeign(context, loaded.path, loaded.file.format))
        return false;
    const Problem& first = problems.front();
    Problem withoutAdvice = first;
    withoutAdvice.next.clear();
    QString what = QStringLiteral("the image \"%1\" is refused: %2")
                       .arg(loaded.path, imageProblemLine(withoutAdvice));
    if (problems.size() > 1)
        what += QStringLiteral(" (and %1 more)").arg(problems.size() - 1);
    context.fail(loaded.image.isForOtherProduct ? ExitCode::WrongProduct : ExitCode::ImageRefused,
                 what,
                 QStringLiteral("a whole update image: data messages, file check, closing message"),
                 first.next.isEmpty()
                     ? QStringLiteral("get the file again; 'hxhost image inspect' lists every "
                                      "problem")
                     : first.next);
    return false;
}

std::optional<LoadedImage> openImage(CommandContext& context, const std::string& path,
                                     const ProductDescription& product)
{
    const QString name = fileNameText(path);
    const Result<QByteArray> content = readInput(name, maxImageFileBytes);
    if (!content) {
        failUnreadable(context, name, content.problem().what);
        return std::nullopt;
    }
    LoadedImage loaded = imageIn(name, *content, product);
    for (const QString& warning : loaded.file.warnings)
        context.warn(warning);
    addImage(context.report, loaded);
    return loaded;
}

std::optional<LoadedImage> readImage(CommandContext& context, const std::string& path,
                                     const ProductDescription& product)
{
    std::optional<LoadedImage> loaded = openImage(context, path, product);
    if (loaded && !requireGoodImage(context, *loaded))
        return std::nullopt;
    return loaded;
}

QString durationText(qint64 microseconds)
{
    const qint64 seconds = (microseconds + microsecondsPerSecond - 1) / microsecondsPerSecond;
    const QString rest = QStringLiteral("%1 s").arg(seconds % 60);
    return seconds < 60 ? rest : QStringLiteral("%1 min %2").arg(seconds / 60).arg(rest);
}

} // namespace hx::host

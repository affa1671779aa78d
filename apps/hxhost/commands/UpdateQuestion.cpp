#include "apps/hxhost/commands/UpdateQuestion.h"

#include "apps/hxhost/commands/ImageOrigin.h"
#include "apps/hxhost/commands/Sentences.h"

#include <QVector>

namespace hx::host {

namespace {

// Empty when one part is not a number.
QVector<int> numbersOf(const QString& version)
{
    QVector<int> numbers;
    const QStringList parts = version.split(QLatin1Char('.'));
    for (const QString& part : parts) {
        bool isNumber = false;
        numbers << part.toInt(&isNumber);
        if (!isNumber)
            return {};
    }
    return numbers;
}

QString stepSentence(VersionStep step)
{
    switch (step) {
    case VersionStep::Downgrade:
        return QStringLiteral("This is a downgrade: the image is older than what the instrument "
                              "has.\n");
    case VersionStep::Reinstall:
        return QStringLiteral("This is a reinstall: the instrument has this version already.\n");
    case VersionStep::Upgrade:
    case VersionStep::Unknown:
        break;
    }
    return QString();
}

QString installedVersion(const UpdateResult& asked)
{
    return asked.versionBefore.good() ? asked.versionBefore.version : QString();
}

QString stepText(const UpdateResult& asked, const LoadedImage& loaded)
{
    return isSignedDowngrade(asked, loaded)
               ? signedDowngradeText + QLatin1Char('\n')
               : stepSentence(versionStep(installedVersion(asked), loaded.image.version));
}

} // namespace

const QString signedDowngradeText =
    QStringLiteral("This is a downgrade to an older signed version: faults that were mended since "
                   "come back.");

VersionStep versionStep(const QString& installed, const QString& offered)
{
    const QVector<int> now = numbersOf(installed);
    const QVector<int> then = numbersOf(offered);
    if (now.isEmpty() || now.size() != then.size())
        return VersionStep::Unknown;
    if (now == then)
        return VersionStep::Reinstall;
    return std::lexicographical_compare(now.begin(), now.end(), then.begin(), then.end())
               ? VersionStep::Upgrade
               : VersionStep::Downgrade;
}

QString sendingTime(const UpdateImage& image, const Pace& pace)
{
    if (pace.bytesPerSecond == 0 && pace.gap == 0)
        return QStringLiteral("as long as the port takes");
    const Microseconds pauses = pace.gap * image.messages.size();
    return QStringLiteral("about ") + durationText(pace.wireTime(image.bytes) + pauses);
}

bool isSignedDowngrade(const UpdateResult& asked, const LoadedImage& loaded)
{
    return loaded.origin.state == SignatureState::Good &&
           versionStep(installedVersion(asked), loaded.image.version) == VersionStep::Downgrade;
}

QString updateQuestion(const UpdateResult& asked, const LoadedImage& loaded,
                       const QString& productName, const QString& portName, const Pace& pace)
{
    const QString installed = installedVersion(asked);
    return QStringLiteral("%1 on %2\n"
                          "It holds %3; the image holds version %4 (%5).\n"
                          "The image is %6.\n"
                          "%7"
                          "The update takes %8. Leave the instrument on and connected until it is "
                          "done.\n"
                          "Type yes to start:")
        .arg(productText(productName, asked.esnBefore), portName,
             installed.isEmpty() ? QStringLiteral("no valid code")
                                 : QStringLiteral("version ") + installed,
             loaded.image.version, codeTypeTag(loaded.image.kind), originText(loaded.origin),
             stepText(asked, loaded), sendingTime(loaded.image, pace));
}

} // namespace hx::host

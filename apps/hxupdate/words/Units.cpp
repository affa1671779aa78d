#include "apps/hxupdate/words/Units.h"

#include "host/base/PrintableText.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>

namespace hxupdate {

namespace {

struct UnitWords {
    Q_DECLARE_TR_FUNCTIONS(UnitWords)
};

constexpr qint64 microsecondsPerSecond = 1000000;
constexpr qint64 secondsToMinutes = 120; // from here on minutes are exact enough

} // namespace

QString sizeText(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

QString durationText(qint64 microseconds)
{
    const qint64 whole = (microseconds + microsecondsPerSecond - 1) / microsecondsPerSecond;
    const int seconds = int(std::max<qint64>(whole, 1));
    if (seconds < secondsToMinutes)
        return UnitWords::tr("%n second(s)", nullptr, seconds);
    return UnitWords::tr("%n minute(s)", nullptr, (seconds + 59) / 60);
}

QString changeText(Change change)
{
    switch (change) {
    case Change::Upgrade:
        return UnitWords::tr("Upgrade: the image is newer than what is installed");
    case Change::Downgrade:
        return UnitWords::tr("Downgrade: the image is older than what is installed");
    case Change::Reinstall:
        return UnitWords::tr("Reinstall: the image is the version that is installed");
    case Change::Recover:
        break;
    }
    return UnitWords::tr("Recover: no valid code is installed");
}

QString kindText(CodeType kind)
{
    switch (kind) {
    case CodeType::Fwu:
        return UnitWords::tr("firmware, the first of two kinds (%1)").arg(hx::codeTypeTag(kind));
    case CodeType::Fwd:
        return UnitWords::tr("firmware, the second of two kinds (%1)").arg(hx::codeTypeTag(kind));
    case CodeType::Unknown:
        break;
    }
    return UnitWords::tr("not known");
}

QString originText(const hx::SignatureVerdict& origin)
{
    return origin.state == hx::SignatureState::Good
               ? UnitWords::tr("signed with the key %1").arg(origin.keyId)
               : UnitWords::tr("not signed: its origin is not known");
}

QString verbText(Change change, const QString& product)
{
    QString productName = hx::printable(product);
    productName.replace(QLatin1Char('&'), QLatin1String("&&"));
    switch (change) {
    case Change::Upgrade:
        return UnitWords::tr("&Upgrade %1").arg(productName);
    case Change::Downgrade:
        return UnitWords::tr("&Downgrade %1").arg(productName);
    case Change::Reinstall:
        return UnitWords::tr("&Reinstall %1").arg(productName);
    case Change::Recover:
        break;
    }
    return UnitWords::tr("&Recover %1").arg(productName);
}

} // namespace hxupdate

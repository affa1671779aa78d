#include "host/product/ProductRecognition.h"

#include "host/base/HexText.h"

namespace hx {

namespace {

ReturnVerdict other(const QString& now, const QString& before)
{
    return {ExchangeEnd::OtherProduct,
            QStringLiteral("another product is on the port since it is back: %1; expected %2")
                .arg(now, before)};
}

bool isSilent(const Reading& reading)
{
    return reading.state == ReadingState::NoAnswer || reading.state == ReadingState::PortLost ||
           reading.state == ReadingState::Interrupted;
}

ReturnVerdict untold(const Reading& reading)
{
    if (reading.state == ReadingState::PortLost)
        return {ExchangeEnd::PortLost, reading.reason};
    if (reading.state == ReadingState::Interrupted)
        return {ExchangeEnd::Interrupted, reading.reason};
    return {ExchangeEnd::TimedOut, reading.reason};
}

QString makerAndModel(const IdentityReading& identity)
{
    return QStringLiteral("maker %1, identifier %2")
        .arg(hexText(identity.manufacturer), identifierText(identity.fidpid));
}

ReturnVerdict compare(const IdentityReading& now, const IdentityReading& before)
{
    const bool isSame = now.manufacturer == before.manufacturer && now.fidpid == before.fidpid;
    return isSame ? ReturnVerdict() : other(makerAndModel(now), makerAndModel(before));
}

QString serialNumber(const EsnReading& esn)
{
    return esn.good() ? QStringLiteral("serial number ") + hexText(esn.number)
                      : QStringLiteral("no serial number (%1)").arg(esn.reason);
}

// Asked again until it says the same number as before, or the same twice, or nothing.
EsnReading askSerialNumber(ProductReader& reader, const EsnReading& before)
{
    EsnReading esn = reader.esn();
    for (int i = 1; i < questionAttempts && esn.number != before.number; ++i) {
        if (isSilent(esn))
            break;
        const HxMidiData said = esn.raw;
        esn = reader.esn();
        if (esn.raw.bytes == said.bytes)
            break;
    }
    return esn;
}

} // namespace

ReturnVerdict recognise(ProductReader& reader, const ProductMemory& before)
{
    if (!before.identity.good())
        return {};
    const IdentityReading identity = reader.identity();
    if (!identity.isTold())
        return untold(identity);
    ReturnVerdict verdict = compare(identity, before.identity);
    if (verdict.end != ExchangeEnd::Answered || !before.esn.good())
        return verdict;
    const EsnReading esn = askSerialNumber(reader, before.esn);
    if (isSilent(esn))
        return untold(esn);
    if (esn.number == before.esn.number)
        return {};
    return other(serialNumber(esn), serialNumber(before.esn));
}

} // namespace hx

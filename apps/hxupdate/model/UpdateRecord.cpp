#include "apps/hxupdate/model/UpdateRecord.h"

#include <QSysInfo>

namespace hxupdate {

namespace {

QString orUnknown(const QString& text)
{
    return text.isEmpty() ? QStringLiteral("not known") : text;
}

} // namespace

UpdateRecord::UpdateRecord(hx::PortBus& bus, hx::LoadedPlugin& plugin)
    : m_bus(bus), m_names(plugin.device()),
      m_writer((m_content.open(QIODevice::WriteOnly), m_content), bus.port().clock().now())
{
    m_writer.setNames([this](const QByteArray& message) { return m_names.nameOf(message); });
    m_writer.comment(QStringLiteral("program: hxupdate %1, Qt %2, %3")
                         .arg(QLatin1String(HXUPDATE_VERSION), QLatin1String(qVersion()),
                              QSysInfo::prettyProductName()));
    m_writer.comment(
        QStringLiteral("plugin: %1, %2").arg(plugin.className(), plugin.interfaceId()));
    m_bus.addObserver(&m_writer);
}

UpdateRecord::~UpdateRecord()
{
    m_bus.removeObserver(&m_writer);
}

void UpdateRecord::add(const ProductFacts& product)
{
    m_writer.comment(QStringLiteral("product: %1, serial number %2, version %3, port %4")
                         .arg(product.name, orUnknown(product.serial), orUnknown(product.version),
                              product.port));
}

void UpdateRecord::add(const ImageFacts& image)
{
    m_writer.comment(QStringLiteral("image: version %1, %2 messages, %3 bytes, key %4")
                         .arg(image.version, QString::number(image.messages),
                              QString::number(image.bytes), orUnknown(image.origin.keyId)));
}

void UpdateRecord::add(const hx::UpdateResult& result)
{
    m_writer.comment(
        QStringLiteral("outcome: %1. %2 %3")
            .arg(hx::updateOutcomeText(result.outcome), result.reason, result.productState));
}

} // namespace hxupdate

// Who the plugin is: every operation that states a constant. A QStringLiteral lies in the library
// and goes with it, so texts that a host may keep are made with fromLatin1.
#include "plugin/ValdrinBootInterface.h"

#include "plugin/ProductIdentity.h"
#include "plugin/ProtocolTable.h"

namespace {

constexpr auto interfaceName = "ValdrinBoot";

} // namespace

ValdrinBootInterface::ValdrinBootInterface(QObject* parent)
    : QObject(parent), protocolMap(hx::buildProtocolMap()), supportedGenders{hx::valdrinIdentifier}
{
}

bool ValdrinBootInterface::isBootcode() const
{
    return true;
}

QString ValdrinBootInterface::classVersion()
{
    return QString::fromLatin1("0.0.0.1");
}

quint32 ValdrinBootInterface::fidpid()
{
    return hx::valdrinIdentifier;
}

QString ValdrinBootInterface::productName() const
{
    return productNameText;
}

QString ValdrinBootInterface::productPortName() const
{
    return QString::fromLatin1("Valdrin Update");
}

QString ValdrinBootInterface::nickName()
{
    return QStringLiteral("MyValdrinBoot");
}

bool ValdrinBootInterface::canSupport(unsigned int identifier)
{
    return supportedGenders.contains(identifier);
}

QVector<unsigned int> ValdrinBootInterface::getGenderList() const
{
    return {hx::valdrinIdentifier};
}

QMap<unsigned int, QString> ValdrinBootInterface::getFidPidNameMap() const
{
    return {{hx::valdrinIdentifier, QString::fromLatin1(interfaceName)}};
}

QMap<QString, unsigned int> ValdrinBootInterface::getNameFidPidMap() const
{
    return {{QString::fromLatin1(interfaceName), hx::valdrinIdentifier}};
}

qint32 ValdrinBootInterface::versionNumber()
{
    doMidiIdent();
    return identity.versionNumber;
}

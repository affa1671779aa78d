// Everything that the plugin answers without asking the product.
#include "BootInterface.h"

#include "Product.h"
#include "ProtocolTable.h"

ExampleBootInterface::ExampleBootInterface() : m_protocol(buildProtocolTable()) {}

QString ExampleBootInterface::classVersion()
{
    return QString::fromLatin1(product::pluginVersion);
}

QString ExampleBootInterface::nickName()
{
    return QString::fromLatin1(product::nickName);
}

QString ExampleBootInterface::productName() const
{
    return QString::fromLatin1(product::name);
}

// Where input and output ports have different names, override productInPortName() and
// productOutPortName() as well.
QString ExampleBootInterface::productPortName() const
{
    return QString::fromLatin1(product::portName);
}

quint32 ExampleBootInterface::fidpid()
{
    return product::identifier;
}

bool ExampleBootInterface::canSupport(unsigned int identifier)
{
    return getGenderList().contains(identifier);
}

bool ExampleBootInterface::isBootcode() const
{
    return true;
}

// The two maps must be each other's inverse and name exactly the identifiers of this list.
QVector<unsigned int> ExampleBootInterface::getGenderList() const
{
    return {product::identifier};
}

QMap<unsigned int, QString> ExampleBootInterface::getFidPidNameMap() const
{
    return {{product::identifier, QString::fromLatin1(product::interfaceName)}};
}

QMap<QString, unsigned int> ExampleBootInterface::getNameFidPidMap() const
{
    return {{QString::fromLatin1(product::interfaceName), product::identifier}};
}

QVariant ExampleBootInterface::lookup(QString key) const
{
    return m_protocol.value(key);
}

int ExampleBootInterface::lookupInt(QString key) const
{
    return lookup(key).toInt();
}

QString ExampleBootInterface::lookupStr(QString key) const
{
    return lookup(key).toString();
}

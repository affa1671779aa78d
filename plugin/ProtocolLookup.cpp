// Reading the protocol dictionary by key.
#include "plugin/ValdrinBootInterface.h"

#include <QDebug>

QVariant ValdrinBootInterface::lookup(QString key) const
{
    QVariant value = protocolMap.value(key);
    if (!value.isValid())
        qDebug() << "ERROR: Missing MIDI Protocol for key: " << key;
    return value;
}

int ValdrinBootInterface::lookupInt(QString key) const
{
    return lookup(key).toInt();
}

QString ValdrinBootInterface::lookupStr(QString key) const
{
    return lookup(key).toString();
}

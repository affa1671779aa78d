// The names by which ports are listed, chosen and opened.
#pragma once

#include <QString>
#include <QStringList>

namespace hx {

// Names of all ports of one direction, in the library's order, each only once: CoreMIDI gives two
// devices of a kind the same name, and the second becomes "Boot loader (2)".
template <typename Ports>
QStringList portNames(Ports& ports)
{
    QStringList names;
    const unsigned count = ports.getPortCount();
    for (unsigned i = 0; i < count; ++i) {
        const QString given = QString::fromStdString(ports.getPortName(i));
        QString name = given;
        for (int number = 2; names.contains(name); ++number)
            name = QStringLiteral("%1 (%2)").arg(given).arg(number);
        names << name;
    }
    return names;
}

} // namespace hx

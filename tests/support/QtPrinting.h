// Lets GoogleTest print Qt's and our own values in failure messages.
#pragma once

#include "mididata/HxMidiData.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <ostream>

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QStringList& texts, std::ostream* out)
{
    *out << '[' << texts.join(QStringLiteral(" | ")).toStdString() << ']';
}
inline void PrintTo(const QByteArray& bytes, std::ostream* out)
{
    *out << bytes.toHex(' ').toStdString();
}
QT_END_NAMESPACE

inline void PrintTo(const HxMidiData& data, std::ostream* out)
{
    PrintTo(data.bytes, out);
}

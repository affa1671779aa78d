#include "tests/mididata/transcription/Transcription.h"

#include <QDebug>

#include <cstring>

namespace transcription {

namespace {

/** A value through "%02X" and back, as a number. */
unsigned int throughText(unsigned int value)
{
    return static_cast<unsigned int>(
        QString::asprintf("%02X", value).toInt(nullptr, 16)); // 0 when it does not convert back
}

void appendUtime(QByteArray& bytes, unsigned int v)
{
    appendNum(bytes, v >> 28);
    appendNum(bytes, (v >> 21) & 0x7F);
    appendNum(bytes, (v >> 14) & 0x7F);
    appendNum(bytes, (v >> 7) & 0x7F);
    appendNum(bytes, v & 0x7F);
}

void append32ThroughText(QByteArray& bytes, unsigned int v)
{
    appendNum(bytes, throughText(v >> 28));
    appendNum(bytes, throughText((v >> 21) & 0x7F));
    appendNum(bytes, throughText((v >> 14) & 0x7F));
    appendNum(bytes, throughText((v >> 7) & 0x7F));
    appendNum(bytes, throughText(v & 0x7F));
}

unsigned int bitsOf(float value)
{
    unsigned int bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

void appendNibbles(QByteArray& bytes, unsigned int v, int count)
{
    for (int i = count - 1; i >= 0; --i)
        appendNum(bytes, (v >> (4 * i)) & 0xF);
}

void logFailure(const char* fmt, const QString& token)
{
    qDebug() << "Invalid value for format( " << fmt << " ) at specifier " << token;
}

} // namespace

void vSetData(QByteArray& bytes, const char* fmt, va_list args)
{
    QStringList tokens = QString::fromLatin1(fmt).toUpper().split(QLatin1Char(' '));
    for (int i = 0; i < tokens.size(); ++i) {
        const QString token = tokens.at(i);
        if (token.isEmpty())
            continue;
        if (token == QLatin1String("VV") || token == QLatin1String("V8") ||
            token == QLatin1String("P8")) {
            const int v = va_arg(args, int);
            appendNum(bytes, throughText(static_cast<unsigned int>(v)));
        } else if (token == QLatin1String("P14") || token == QLatin1String("V14")) {
            const unsigned int v = va_arg(args, unsigned int);
            appendNum(bytes, (v >> 7) & 0x7F);
            appendNum(bytes, v & 0x7F);
        } else if (token == QLatin1String("UT")) {
            appendUtime(bytes, va_arg(args, unsigned int));
        } else if (token == QLatin1String("F32")) {
            appendUtime(bytes, bitsOf(static_cast<float>(va_arg(args, double))));
        } else if (token == QLatin1String("V32") || token == QLatin1String("I32")) {
            append32ThroughText(bytes, va_arg(args, unsigned int));
        } else if (token == QLatin1String("NIB24")) {
            appendNibbles(bytes, va_arg(args, unsigned int), 6);
        } else if (token == QLatin1String("NIB32")) {
            appendNibbles(bytes, va_arg(args, unsigned int), 8);
        } else if (token == QLatin1String("MSTR")) {
            const QByteArray text = fromText(va_arg(args, const char*));
            if (text.isEmpty()) {
                tokens.removeAt(i);
                logFailure(fmt, token);
            }
            bytes.append(text);
        } else if (token == QLatin1String("CSTR")) {
            const QByteArray text(va_arg(args, const char*));
            if (text.isEmpty()) {
                tokens.removeAt(i);
                logFailure(fmt, token);
            }
            bytes.append(text);
        } else {
            bool ok = false;
            const int value = token.trimmed().toInt(&ok, 16);
            if (ok)
                appendNum(bytes, static_cast<unsigned int>(value));
        }
    }
}

QByteArray setData(const char* fmt, ...)
{
    QByteArray bytes;
    va_list args;
    va_start(args, fmt);
    vSetData(bytes, fmt, args);
    va_end(args);
    return bytes;
}

} // namespace transcription

#include "tests/mididata/transcription/Transcription.h"

#include <QDebug>
#include <QRegularExpression>

#include <string>

namespace transcription {

QByteArray numHexToByteArray(unsigned int value)
{
    QByteArray result;
    if (value <= 255u) {
        result.append(char(value));
    } else if (value <= 65534u) {
        result.append('\0');
        result.append(char(value & 0xFF));
    } else if (value <= 16777214u) {
        result.append(char((value >> 16) & 0xFF));
        result.append(char((value >> 8) & 0xFF));
        result.append(char(value & 0xFF));
    } else if (value <= 4294967294u) {
        result.append(char((value >> 24) & 0xFF));
        result.append(char((value >> 16) & 0xFF));
        result.append(char((value >> 8) & 0xFF));
        result.append(char(value & 0xFF));
    } else {
        qDebug() << "HxMidiData::numHexToByteArray(quint32) - error";
    }
    return result;
}

bool appendNum(QByteArray& bytes, unsigned int value)
{
    const QByteArray number = numHexToByteArray(value);
    if (number.isEmpty())
        return false;
    bytes.append(number);
    return true;
}

namespace {

bool is0xHexStr(const QString& s)
{
    return s.length() >= 3 && s.left(2).compare(QLatin1String("0x"), Qt::CaseInsensitive) == 0;
}

QStringList pairsOf(const QString& text)
{
    QStringList pairs;
    for (int i = 0; i < text.length(); i += 2)
        pairs.append(text.mid(i, 2));
    return pairs;
}

} // namespace

QByteArray setText(const char* text)
{
    QByteArray result;
    const QString string = QString::fromLatin1(text).trimmed();
    if (string.length() < 2)
        return result;

    QStringList tokens;
    if (string.contains(QLatin1String(" ")) || string.contains(QLatin1String(","))) {
        tokens = string.split(QRegularExpression(QLatin1String("[ ,]+")));
    } else if (is0xHexStr(string)) {
        tokens.append(string);
    } else if (string.length() % 2 != 0) {
        qDebug() << "HxMidiData::HxMidiData(const char*,int) - invalid hex string format: "
                 << string;
        return result;
    } else {
        tokens = pairsOf(string);
    }

    for (const QString& token : tokens) {
        if (token.isEmpty())
            continue;
        bool ok = false;
        const int value = token.trimmed().toInt(&ok, 16);
        if (!ok) {
            qDebug() << "HxMidiData::HxMidiData(const char*,int) - error converting hex string: "
                     << string;
            continue;
        }
        if (!appendNum(result, static_cast<unsigned int>(value)))
            break;
    }
    return result;
}

QByteArray fromText(const QString& text)
{
    QString copy = text;
    copy.replace(QLatin1String("\n"), QLatin1String(""));
    copy.replace(QLatin1String(" "), QLatin1String(""));
    const std::string utf8 = copy.toStdString();
    return setText(utf8.c_str());
}

QByteArray fromText(const char* text)
{
    QString copy = QString::fromLatin1(text);
    copy.replace(QLatin1String(" "), QLatin1String(""));
    return setText(copy.toLatin1().constData());
}

} // namespace transcription

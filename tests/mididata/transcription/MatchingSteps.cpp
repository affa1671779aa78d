#include "tests/mididata/transcription/Transcription.h"

namespace transcription {

bool match(const QByteArray& bytes, const char* pattern, bool atStart)
{
    QString text = QString::fromLatin1(pattern);
    text.replace(QLatin1String(" "), QLatin1String(""));
    text = text.toUpper();
    text.replace(QLatin1String("XX"), QLatin1String(".."), Qt::CaseSensitive);
    const QString rendering = toString(bytes, -1);
    const QRegExp rx(text, Qt::CaseSensitive, QRegExp::RegExp);
    const int position = rx.indexIn(rendering, 0, QRegExp::CaretAtZero);
    return atStart ? position == 0 : position >= 0;
}

bool match(const QByteArray& bytes, QRegExp rx, bool atStart)
{
    rx.setCaseSensitivity(Qt::CaseInsensitive);
    const int position = rx.indexIn(toString(bytes, -1), 0);
    return atStart ? position == 0 : position >= 0;
}

bool containsRaw(const QByteArray& bytes, const QByteArray& raw)
{
    for (int from = 0; from + raw.size() <= bytes.size(); ++from) {
        int i = 0;
        while (i < raw.size() && bytes.at(from + i) == raw.at(i))
            ++i;
        if (i == raw.size())
            return true;
    }
    return false;
}

} // namespace transcription

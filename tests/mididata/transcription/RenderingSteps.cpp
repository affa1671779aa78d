#include "qt/Saturated.h"
#include "tests/mididata/transcription/Transcription.h"

namespace transcription {

namespace {

QString hexStep(const QByteArray& section)
{
    const QByteArray digits = section.toHex();
    const QString text(digits);
    return text.toUpper();
}

QString withSeparators(QString text, char sep)
{
    if (text.length() <= 2)
        return text;
    for (int position = 2; position < text.length(); position += 3)
        text.insert(position, QLatin1Char(sep));
    return text;
}

QString rowLabel(int offset)
{
    return QString(QLatin1String("%1 |"))
        .arg(QString(QLatin1String("%1")).arg(offset, 3, 16, QLatin1Char('0')).toUpper());
}

} // namespace

QString toString(const QByteArray& bytes, int count)
{
    return hexStep(bytes.mid(0, count));
}

QString toStringFromEnd(const QByteArray& bytes, int n)
{
    const int k = qMin(hx::saturated(bytes.size()), n);
    if (k <= 0)
        return QString();
    return hexStep(bytes.mid(bytes.size() - k, k));
}

QString toString(const QByteArray& bytes, char sep, int len)
{
    return withSeparators(hexStep(bytes.mid(0, len)), sep);
}

QString toString(const QByteArray& bytes, char sep, int start, int len)
{
    if (bytes.isEmpty())
        return QString();
    int s = start;
    if (start >= bytes.size())
        s = 0;
    const qint64 count = qMin(qint64(len) + s, qint64(bytes.size()));
    const int shortened = count < -1 ? -1 : int(count); // any negative count means to the end
    return withSeparators(hexStep(bytes.mid(s, shortened)), sep);
}

QString toStringDec(const QByteArray& bytes)
{
    QString text;
    for (int i = 0; i < bytes.size(); ++i) {
        text.append(QString::number(static_cast<unsigned char>(bytes.at(i))));
        text.append(QLatin1String(" "));
    }
    return text.trimmed();
}

QString toStringTable(const QByteArray& bytes, int len, int columns)
{
    if (columns < 1)
        return QString();
    QString text;
    int gapInterval = 0;
    if (columns == 16) {
        text.append(QLatin1String("      00 01 02 03 04 05 06 07   08 09 0A 0B 0C 0D 0E 0F\n"));
        text.append(QLatin1String("\t ------------------------ - -----------------------\n"));
        gapInterval = 8;
    }
    text.append(QLatin1String("000 | "));
    auto p = text.length() + 2;
    text.append(hexStep(bytes.mid(0, len)));
    auto k = text.length();
    if (p >= k)
        return text;

    int r = 1;
    bool pendingGap = false;
    for (int i = 0;; ++i) {
        if (i % columns == columns - 1) {
            const QString label = QLatin1String("\n") + rowLabel(r * columns);
            text.insert(p, label);
            p += label.length();
            k += label.length() + 1;
            ++r;
        } else if (gapInterval != 0 && i % gapInterval == gapInterval - 1) {
            pendingGap = true;
        }
        text.insert(p, QLatin1String(" "));
        auto q = p + 1;
        if (q >= text.length())
            return text;
        if (pendingGap) {
            text.insert(q, QLatin1String("- "));
            q = p + 3;
            k += 2;
            pendingGap = false;
        }
        const auto remembered = k;
        k += 1;
        p = q + 2;
        if (p > remembered)
            return text;
    }
}

} // namespace transcription

#include "contract/PatternSample.h"

#include "qt/Versions.h"

#include <QRegExp>

namespace hx {

namespace {

constexpr char open = '.'; // a digit that the pattern leaves open

QString firstAlternative(const QString& pattern)
{
    if (!pattern.startsWith(QLatin1Char('(')) || !pattern.endsWith(QLatin1Char(')')))
        return pattern;
    return pattern.mid(1, pattern.size() - 2).section(QLatin1Char('|'), 0, 0);
}

// The pattern as one digit for each place: of a class its first digit, of "any number of bytes"
// one.
QString oneDigitEach(QString pattern)
{
    pattern.replace(QLatin1String("..*"), QLatin1String(".."));
    return replaced(pattern, QRegExp(QStringLiteral("\\[(.)[^\\]]*\\]")), QStringLiteral("\\1"));
}

QString filled(QString digits, const QByteArray& fill)
{
    const QString hex = QString::fromLatin1(fill.toHex().toUpper());
    int used = 0;
    for (QChar& digit : digits) {
        if (digit == QLatin1Char(open) && !hex.isEmpty())
            digit = hex.at(used++ % hex.size());
    }
    return digits;
}

bool isHexBytes(const QString& digits)
{
    return digits.size() % 2 == 0 && QRegExp(QStringLiteral("[0-9A-F]+")).exactMatch(digits);
}

} // namespace

QByteArray sampleMessage(const QString& pattern, const QByteArray& fill)
{
    const QString compact = QString(pattern).remove(QLatin1Char(' '));
    QString digits = filled(oneDigitEach(firstAlternative(compact)), fill).toUpper();
    const bool fits = QRegExp(compact, Qt::CaseInsensitive).exactMatch(digits);
    if (!fits || !isHexBytes(digits))
        return {};
    if (!digits.endsWith(QLatin1String("F7")))
        digits += QLatin1String("F7");
    return QByteArray::fromHex(digits.toLatin1());
}

} // namespace hx

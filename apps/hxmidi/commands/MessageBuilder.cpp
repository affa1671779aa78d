#include "apps/hxmidi/commands/MessageBuilder.h"

#include "apps/hxmidi/findings/HexTextFindings.h"
#include "apps/hxmidi/findings/NumberFindings.h"
#include "apps/hxmidi/input/NumberText.h"

#include "mididata/Builder.h"
#include "mididata/NumberBytes.h"
#include "qt/Saturated.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace hx::midi {

namespace {

constexpr NumberRange intRange = {std::numeric_limits<qint32>::min(),
                                  std::numeric_limits<qint32>::max()};
constexpr NumberRange wordRange = {std::numeric_limits<qint32>::min(),
                                   std::numeric_limits<quint32>::max()};

QString fieldNames()
{
    QStringList names;
    for (const BuilderField& field : builderFields)
        names << QLatin1String(field.name.data(), int(field.name.size()));
    return names.join(QLatin1Char(' '));
}

// How many bits of a word reach the bytes.
int bitsOf(const BuilderField& field)
{
    return std::min(field.topShift + field.groupBits, 32);
}

void warnOfInteger(int value, const Place& place, Findings& findings)
{
    if (value >= 0 && value <= 0xFF)
        return;
    const HxMidiData given(numberBytes(static_cast<unsigned int>(std::max(value, 0))));
    const QString why = value < 0        ? QStringLiteral("a negative number gives one byte 00")
                        : value < 0xFFFF ? QStringLiteral("of 256 to 65534 the high byte is lost")
                                         : QStringLiteral("it takes more than one byte");
    findings.warning(
        QStringLiteral("%1 gives %2: %3").arg(QString::number(value), given.toString(' ', -1), why),
        QStringLiteral("give 0 to 255, or use a wider field"), place);
}

// The arguments as they are typed, and what is wrong with them and with their format.
class TypedArguments final : public BuilderArguments {
public:
    TypedArguments(const QByteArray& format, const QByteArrayList& arguments, Severity badPiece,
                   Findings& findings)
        : m_format{QString(), format}, m_arguments(arguments), m_badPiece(badPiece),
          m_findings(findings)
    {
    }

    std::optional<int> number(const FieldPlace& field) override
    {
        const auto place = take(field);
        if (!place)
            return std::nullopt;
        const auto value = readNumber(*place, intRange, harmless(tokenOf(field)), m_findings);
        if (!value)
            return std::nullopt;
        warnOfInteger(int(*value), *place, m_findings);
        return int(*value);
    }

    std::optional<quint32> word(const FieldPlace& field) override
    {
        const auto place = take(field);
        if (!place)
            return std::nullopt;
        const auto value = readNumber(*place, wordRange, harmless(tokenOf(field)), m_findings);
        if (!value)
            return std::nullopt;
        const auto word = static_cast<quint32>(*value);
        warnOfLostBits(word, field, *place);
        return word;
    }

    std::optional<double> real(const FieldPlace& field) override
    {
        const auto place = take(field);
        if (!place)
            return std::nullopt;
        bool ok = false;
        const double value = place->source.text.toDouble(&ok);
        if (ok && (!std::isfinite(value) || std::fabs(value) <= std::numeric_limits<float>::max()))
            return value;
        m_findings.error(QStringLiteral("%1 is not a number for %2")
                             .arg(quoted(place->source.text), harmless(tokenOf(field))),
                         QStringLiteral("a decimal number of single precision, such as 1.5 or "
                                        "-2e10"),
                         QStringLiteral("correct it"), *place);
        return std::nullopt;
    }

    std::optional<QByteArray> hexBytes(const FieldPlace& field) override
    {
        const auto place = take(field);
        if (!place)
            return std::nullopt;
        return readHexText(place->source.text, place->source, Blanks::Removed, m_badPiece,
                           m_findings);
    }

    std::optional<QByteArray> characters(const FieldPlace& field) override
    {
        const auto place = take(field);
        if (!place)
            return std::nullopt;
        return place->source.text;
    }

    void addProblem(const TextProblem& problem)
    {
        if (m_stopped)
            return;
        const Span span{int(problem.offset), int(problem.length)};
        if (problem.kind == TextProblemKind::FieldWithoutBytes)
            m_failed = span;
        else if (problem.kind == TextProblemKind::PieceSkipped)
            addFailure(span);
        else
            addLiteral(problem.kind, span);
    }

    // To be called when the format has been read to its end.
    void finish()
    {
        if (m_failed)
            addFailure({});
        for (int i = m_used; !m_stopped && i < m_arguments.size(); ++i) {
            m_findings.add(
                {m_skipped ? Severity::Warning : Severity::Error,
                 QStringLiteral("argument %1 is not used").arg(i + 1),
                 QStringLiteral("as many arguments as the format has fields, %1").arg(m_used),
                 QStringLiteral("take it away, or add a field to the format"),
                 Place{{QString(), m_arguments.at(i)}, {0, saturated(m_arguments.at(i).size())}}});
        }
    }

private:
    // The next argument; none, with a word on it, when all are used.
    std::optional<Place> take(const FieldPlace& field)
    {
        if (m_stopped)
            return std::nullopt;
        if (m_used < m_arguments.size()) {
            const QByteArray& text = m_arguments.at(m_used++);
            return Place{{QString(), text}, {0, saturated(text.size())}};
        }
        m_findings.error(QStringLiteral("there is no argument for %1").arg(quoted(tokenOf(field))),
                         QStringLiteral("one argument for every field of the format"),
                         QStringLiteral("add the field's value after the others"),
                         Place{m_format, {int(field.offset), int(field.length)}});
        return std::nullopt;
    }

    void warnOfLostBits(quint32 word, const FieldPlace& field, const Place& place)
    {
        const int bits = bitsOf(field.field);
        const quint32 kept = bits < 32 ? word & ((1u << bits) - 1) : word;
        if (kept != word)
            m_findings.warning(QStringLiteral("%1 has %2 bits, so %3 becomes %4")
                                   .arg(harmless(tokenOf(field)), QString::number(bits),
                                        harmless(place.source.text), QString::number(kept)),
                               QStringLiteral("give a smaller number, or use a wider field"),
                               place);
    }

    // What follows a failed field would only complain about the skipped token.
    void addFailure(Span skipped)
    {
        const QByteArray token = m_format.text.mid(m_failed->at, m_failed->length);
        QString what = QStringLiteral("argument %1, for %2, gives no bytes")
                           .arg(QString::number(m_used), harmless(token));
        if (skipped.length > 0)
            what += QStringLiteral(", so HxMidiData skips the token after it, %1")
                        .arg(quoted(m_format.text.mid(skipped.at, skipped.length)));
        m_findings.add(
            {m_badPiece, what, QStringLiteral("an argument with at least one byte"),
             QStringLiteral("give one, or take %1 out of the format").arg(harmless(token)),
             Place{m_format, *m_failed}});
        m_failed.reset();
        m_skipped = true;
        m_stopped = m_badPiece == Severity::Error;
    }

    void addLiteral(TextProblemKind kind, Span span)
    {
        const QByteArray token = m_format.text.mid(span.at, span.length);
        const QString next =
            token.contains(',')
                ? QStringLiteral("separate with blanks, not with commas")
                : QStringLiteral("write hex digits or one of the fields ") + fieldNames();
        m_findings.add(numberFinding(kind, token, Place{m_format, span}, m_badPiece, next));
    }

    QByteArray tokenOf(const FieldPlace& field) const
    {
        return m_format.text.mid(int(field.offset), int(field.length));
    }

    SourceText m_format;
    const QByteArrayList& m_arguments;
    Severity m_badPiece;
    Findings& m_findings;
    int m_used = 0;               // arguments
    std::optional<Span> m_failed; // a field without bytes, until the library goes on after it
    bool m_skipped = false;
    bool m_stopped = false;
};

} // namespace

HxMidiData buildMessage(const QByteArray& format, const QByteArrayList& arguments, bool lenient,
                        Findings& findings)
{
    const Severity badPiece = lenient ? Severity::Warning : Severity::Error;
    TypedArguments typed(format, arguments, badPiece, findings);
    HxMidiData data;
    appendMessage(data, format.constData(), typed,
                  [&typed](const TextProblem& problem) { typed.addProblem(problem); });
    typed.finish();
    return data;
}

} // namespace hx::midi

#include "apps/hxmidi/commands/MessageBuilder.h"

#include "apps/hxmidi/commands/BuilderField.h"
#include "apps/hxmidi/findings/HexTextCheck.h"
#include "apps/hxmidi/findings/HexToken.h"
#include "apps/hxmidi/input/NumberText.h"

#include <cmath>
#include <limits>

namespace hx {

namespace {

constexpr NumberRange intRange = {std::numeric_limits<qint32>::min(),
                                  std::numeric_limits<qint32>::max()};
constexpr NumberRange wordRange = {std::numeric_limits<qint32>::min(),
                                   std::numeric_limits<quint32>::max()};

class MessageBuilder {
public:
    MessageBuilder(const QByteArray& format, const QByteArrayList& arguments, bool lenient,
                   Findings& findings)
        : m_format{QString(), format}, m_arguments(arguments), m_lenient(lenient),
          m_findings(findings)
    {
    }

    HxMidiData build()
    {
        while (m_at <= m_format.text.size()) {
            const Span token = nextToken();
            if (token.length > 0 && !appendToken(token) && !skipAfter(token))
                return m_data; // what follows would only complain about the skipped token
        }
        complainOfUnused();
        return m_data;
    }

private:
    // Tokens are separated by single blanks, so there are empty ones.
    Span nextToken()
    {
        const int blank = m_format.text.indexOf(' ', m_at);
        const int end = blank < 0 ? m_format.text.size() : blank;
        const Span token{m_at, end - m_at};
        m_at = end + 1;
        return token;
    }

    // False when it is a field whose text argument gives no bytes.
    bool appendToken(Span span)
    {
        const QByteArray token = m_format.text.mid(span.at, span.length);
        const BuilderField* const field = findBuilderField(token);
        if (field == nullptr) {
            appendLiteral(token, span);
            return true;
        }
        if (m_used == m_arguments.size()) {
            m_findings.error(QStringLiteral("there is no argument for %1").arg(quoted(token)),
                             QStringLiteral("one argument for every field of the format"),
                             QStringLiteral("add the field's value behind the others"),
                             Place{m_format, span});
            return true;
        }
        return appendField(*field, token);
    }

    void appendLiteral(const QByteArray& token, Span span)
    {
        const HexToken read = readHexToken(token);
        const Place place{m_format, span};
        if (read.kind != HexToken::Kind::Number) {
            reportBadToken(token, read, place, badPiece(), adviceForLiteral(token), m_findings);
            return;
        }
        warnOfSurprise(token, read, place, m_findings);
        append(token.constData());
    }

    QString adviceForLiteral(const QByteArray& token) const
    {
        if (token.contains(','))
            return QStringLiteral("separate with blanks, not with commas");
        return QStringLiteral("write hex digits or one of the fields ") +
               QString::fromLatin1(builderFieldNames());
    }

    bool appendField(const BuilderField& field, const QByteArray& token)
    {
        const QByteArray& text = m_arguments.at(m_used++);
        const SourceText source{QString(), text};
        const Place place{source, {0, text.size()}};
        switch (field.type) {
        case ArgumentType::Integer:
            appendInteger(token, place);
            break;
        case ArgumentType::Word:
            appendWord(field, token, place);
            break;
        case ArgumentType::Real:
            appendReal(token, place);
            break;
        case ArgumentType::HexText:
            return appendHexText(token, source);
        case ArgumentType::Characters:
            if (text.isEmpty())
                return false;
            append(token.constData(), text.constData());
            return true;
        }
        return true;
    }

    void appendInteger(const QByteArray& token, const Place& place)
    {
        const auto value = readNumber(place, intRange, harmless(token), m_findings);
        if (!value)
            return;
        const int at = m_data.bytes.size();
        append(token.constData(), int(*value));
        if (*value < 0 || *value > 0xFF)
            warnOfInteger(int(*value), HxMidiData(m_data.mid(at, -1)), place);
    }

    void warnOfInteger(int value, const HxMidiData& given, const Place& place)
    {
        const QString why = value < 0 ? QStringLiteral("a negative number gives one byte 00")
                            : value < 0xFFFF
                                ? QStringLiteral("of 256 to 65534 the high byte is lost")
                                : QStringLiteral("it takes more than one byte");
        m_findings.warning(QStringLiteral("%1 gives %2: %3")
                               .arg(QString::number(value), given.toString(' ', -1), why),
                           QStringLiteral("give 0 to 255, or use a wider field"), place);
    }

    void appendWord(const BuilderField& field, const QByteArray& token, const Place& place)
    {
        const auto value = readNumber(place, wordRange, harmless(token), m_findings);
        if (!value)
            return;
        const auto word = static_cast<quint32>(*value);
        append(token.constData(), word);
        const quint32 kept = field.bits < 32 ? word & ((1u << field.bits) - 1) : word;
        if (kept != word)
            m_findings.warning(QStringLiteral("%1 has %2 bits, so %3 becomes %4")
                                   .arg(harmless(token), QString::number(field.bits),
                                        harmless(place.source.text), QString::number(kept)),
                               QStringLiteral("give a smaller number, or use a wider field"),
                               place);
    }

    void appendReal(const QByteArray& token, const Place& place)
    {
        bool ok = false;
        const double value = place.source.text.toDouble(&ok);
        const bool fits =
            !std::isfinite(value) || std::fabs(value) <= std::numeric_limits<float>::max();
        if (ok && fits)
            append(token.constData(), value);
        else
            m_findings.error(QStringLiteral("%1 is no number for %2")
                                 .arg(quoted(place.source.text), harmless(token)),
                             QStringLiteral("a decimal number of single precision, such as 1.5 or "
                                            "-2e10"),
                             QStringLiteral("correct it"), place);
    }

    bool appendHexText(const QByteArray& token, const SourceText& source)
    {
        const QByteArray text =
            checkHexText(source.text, source, Blanks::Removed, badPiece(), m_findings);
        if (HxMidiData(text.constData()).bytes.isEmpty())
            return false;
        append(token.constData(), text.constData());
        return true;
    }

    template <typename... Argument>
    void append(const char* token, Argument... argument)
    {
        HxMidiData piece;
        piece.setData(token, argument...);
        m_data.append(piece);
    }

    // The library takes a field that failed out of its list of tokens and so passes over the next.
    bool skipAfter(Span failed)
    {
        const QByteArray token = m_format.text.mid(failed.at, failed.length);
        const Span next = m_at <= m_format.text.size() ? nextToken() : Span{m_at, 0};
        m_skipped = true;
        QString what = QStringLiteral("argument %1, for %2, gives no bytes")
                           .arg(QString::number(m_used), harmless(token));
        if (next.length > 0)
            what += QStringLiteral(", so HxMidiData skips the token after it, %1")
                        .arg(quoted(m_format.text.mid(next.at, next.length)));
        m_findings.add(
            {badPiece(), what, QStringLiteral("an argument with at least one byte"),
             QStringLiteral("give one, or take %1 out of the format").arg(harmless(token)),
             Place{m_format, failed}});
        return m_lenient;
    }

    void complainOfUnused()
    {
        for (int i = m_used; i < m_arguments.size(); ++i) {
            const Severity severity = m_skipped && m_lenient ? Severity::Warning : Severity::Error;
            m_findings.add(
                {severity, QStringLiteral("argument %1 is not used").arg(i + 1),
                 QStringLiteral("as many arguments as the format has fields, %1").arg(m_used),
                 QStringLiteral("take it away, or add a field to the format"),
                 Place{{QString(), m_arguments.at(i)}, {0, m_arguments.at(i).size()}}});
        }
    }

    Severity badPiece() const { return m_lenient ? Severity::Warning : Severity::Error; }

    SourceText m_format;
    const QByteArrayList& m_arguments;
    bool m_lenient;
    Findings& m_findings;
    HxMidiData m_data;
    int m_at = 0;   // of the next token in the format
    int m_used = 0; // arguments
    bool m_skipped = false;
};

} // namespace

HxMidiData buildMessage(const QByteArray& format, const QByteArrayList& arguments, bool lenient,
                        Findings& findings)
{
    return MessageBuilder(format, arguments, lenient, findings).build();
}

} // namespace hx

#include "apps/hxmidi/input/Input.h"

#include "apps/hxmidi/findings/Characters.h"
#include "apps/hxmidi/findings/HexTextFindings.h"
#include "apps/hxmidi/input/NumberList.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>

namespace hx::midi {

namespace {

constexpr char byteOrderMark[] = "\xEF\xBB\xBF";
constexpr char littleEndianMark[] = "\xFF\xFE";
constexpr char bigEndianMark[] = "\xFE\xFF";
constexpr char other = '\xFF'; // in the place of a character that is not ASCII

bool isWhiteSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isTextCharacter(char c)
{
    return isWhiteSpace(c) || (c > ' ' && c <= '~');
}

bool isText(const QByteArray& content)
{
    return std::all_of(content.begin(), content.end(), isTextCharacter);
}

// The characters of a text in UTF-16, byte 0xFF for one that is not ASCII.
QByteArray narrowed(const QByteArray& content, bool isBigEndian)
{
    QByteArray text;
    for (int i = 2; i < content.size(); i += 2) {
        const bool isHalf = i + 1 == content.size();
        const char first = content.at(i);
        const char second = isHalf ? other : content.at(i + 1);
        const char high = isBigEndian ? first : second;
        text += high == 0 ? (isBigEndian ? second : first) : other;
    }
    return text;
}

// What a file that may be text says, whatever an editor saved it as.
QByteArray textOf(const QByteArray& content)
{
    if (content.startsWith(littleEndianMark) || content.startsWith(bigEndianMark))
        return narrowed(content, content.startsWith(bigEndianMark));
    return content.startsWith(byteOrderMark) ? content.mid(int(qstrlen(byteOrderMark))) : content;
}

// A name that is not UTF-8 is shown with its bytes written out.
QString shownName(const QByteArray& name)
{
    QString text = QString::fromUtf8(name);
    if (text.toUtf8() == name)
        return text;
    QString shown;
    for (const char byte : name)
        shown += isPrintable(byte) ? QString(QLatin1Char(byte))
                                   : QString::asprintf("\\x%02X", uint(uchar(byte)));
    return shown;
}

// Reads to the end, but never more than a byte beyond what may be used. False after a failure.
bool readToLimit(QIODevice& device, QByteArray& content)
{
    char part[65536];
    while (content.size() <= mostInputBytes) {
        const qint64 room = mostInputBytes + 1 - content.size();
        const qint64 got = device.read(part, std::min(room, qint64(sizeof(part))));
        if (got < 1)
            return got == 0;
        content.append(part, int(got));
    }
    return true;
}

std::filesystem::path pathOf(const QByteArray& name)
{
    return name.toStdString();
}

bool isRegularFile(const QByteArray& name)
{
    std::error_code unseen; // what cannot be looked at is not taken for one
    return std::filesystem::is_regular_file(pathOf(name), unseen);
}

bool isFolder(const QByteArray& name)
{
    std::error_code unseen;
    return std::filesystem::is_directory(pathOf(name), unseen);
}

// False, with the reason in `errno`, when it cannot be opened.
bool openFile(QFile& file, const QByteArray& name)
{
    std::FILE* stream = std::fopen(name.constData(), "rb");
    return stream != nullptr &&
           file.open(stream, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
}

class InputReader {
public:
    InputReader(const InputOptions& options, Outcome& outcome)
        : m_options(options), m_form(options.raw ? InputForm::Raw : options.form),
          m_outcome(outcome), m_findings(outcome.findings)
    {
    }

    HxMidiData read()
    {
        if (m_options.words.empty())
            readStandardInput();
        for (const std::string& word : m_options.words)
            readWord(QByteArray::fromStdString(word));
        endWords();
        return m_data;
    }

private:
    void readWord(const QByteArray& word)
    {
        if (!word.startsWith('@')) {
            m_words << word;
            return;
        }
        endWords();
        if (word == "@-")
            readStandardInput();
        else
            readFile(word.mid(1));
    }

    // Reads the words since the last file as one text.
    void endWords()
    {
        if (m_words.isEmpty())
            return;
        const QByteArray text = m_words.join(' ');
        const bool named = namesFile();
        m_words.clear();
        if (named)
            return;
        if (m_form == InputForm::Raw)
            m_findings.error(QStringLiteral("%1 cannot be raw bytes").arg(quoted(text)),
                             QStringLiteral("raw bytes from a file or from standard input"),
                             QStringLiteral("write @FILE or @-, or leave --raw out"));
        else
            readText({QString(), text});
    }

    // A file's name that was typed without its "@" is not called bad hex text.
    bool namesFile()
    {
        for (const QByteArray& word : qAsConst(m_words)) {
            if (!word.contains('.') && !word.contains('/'))
                continue;
            if (!isRegularFile(word))
                continue;
            m_findings.error(QStringLiteral("%1 is the name of a file").arg(quoted(word)),
                             QStringLiteral("hex text, or @ and a file's name"),
                             QStringLiteral("write @") + harmless(word));
            return true;
        }
        return false;
    }

    void readStandardInput()
    {
        QByteArray content;
        if (m_outcome.standardInputRead)
            m_findings.error(QStringLiteral("standard input is asked for twice"),
                             QStringLiteral("@- at most once, and data or @- for every command"),
                             QStringLiteral("save the input in a file and write @FILE"));
        else if (!readToLimit(m_outcome.standardInput, content))
            m_findings.error(QStringLiteral("standard input cannot be read: ") +
                                 m_outcome.standardInput.errorString(),
                             QStringLiteral("a pipe, a file or a terminal"),
                             QStringLiteral("give the data as words or as @FILE"));
        else
            readContent(QStringLiteral("standard input"), content);
        m_outcome.standardInputRead = true;
    }

    // Qt opens only names that the locale can write.
    void readFile(const QByteArray& name)
    {
        QFile file;
        QByteArray content;
        if (name.isEmpty())
            refuseFile(name, QStringLiteral("no name follows the @"));
        else if (isFolder(name))
            refuseFile(name, QStringLiteral("it is a folder"));
        else if (!openFile(file, name))
            refuseFile(name, qt_error_string(errno));
        else if (!readToLimit(file, content))
            refuseFile(name, file.errorString());
        else
            readContent(shownName(name), content);
    }

    void refuseFile(const QByteArray& name, const QString& why)
    {
        const QString shown = quoted(shownName(name).toUtf8());
        m_findings.error(QStringLiteral("%1 cannot be read: %2").arg(shown, why),
                         QStringLiteral("the name of a readable file after @"),
                         QStringLiteral("check the name and its permissions"));
    }

    void readContent(const QString& name, const QByteArray& content)
    {
        if (isTooMuch(content.size()))
            return;
        const QByteArray text = textOf(content);
        const bool raw = m_form == InputForm::Raw || (m_form == InputForm::Auto && !isText(text));
        if (m_form == InputForm::Auto && content.startsWith("MThd"))
            warnOfMidiFile(name);
        if (raw)
            m_data.append(HxMidiData(content));
        else
            readText({name, text});
    }

    // Else lengths and times would be shown as parts of messages, without a word.
    void warnOfMidiFile(const QString& name)
    {
        m_findings.warning(QStringLiteral("%1 is a Standard MIDI File: between its messages there "
                                          "are times, lengths and headers")
                               .arg(quoted(name.toUtf8())),
                           QStringLiteral("save its messages as a .syx file; --raw reads the "
                                          "bytes without this warning"));
    }

    bool isTooMuch(qsizetype more)
    {
        const bool tooMuch = more > mostInputBytes - m_data.bytes.size();
        if (tooMuch)
            m_findings.error(QStringLiteral("there is too much data"),
                             QStringLiteral("at most %1 bytes in all").arg(mostInputBytes),
                             QStringLiteral("cut it into parts"));
        return tooMuch;
    }

    void readText(const SourceText& source)
    {
        if (m_form == InputForm::Decimal || m_form == InputForm::CArray)
            m_data.bytes += m_form == InputForm::CArray ? readCArray(source, m_findings)
                                                        : readDecimalList(source, m_findings);
        else
            readHexLines(source);
    }

    // Line ends and tabs count as blanks.
    void readHexLines(const SourceText& source)
    {
        QByteArray blanked = source.text;
        std::replace_if(blanked.begin(), blanked.end(), isWhiteSpace, ' ');
        const Severity badPiece = m_options.lenient ? Severity::Warning : Severity::Error;
        const Blanks blanks = m_options.tokens ? Blanks::Split : Blanks::Removed;
        m_data.bytes += readHexText(blanked, source, blanks, badPiece, m_findings);
    }

    const InputOptions& m_options;
    InputForm m_form;
    Outcome& m_outcome;
    Findings& m_findings;
    QByteArrayList m_words;
    HxMidiData m_data;
};

} // namespace

HxMidiData readInput(const InputOptions& options, Outcome& outcome)
{
    return InputReader(options, outcome).read();
}

} // namespace hx::midi

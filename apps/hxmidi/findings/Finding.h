// What is wrong with, or remarkable about, a piece of what was typed or read.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace hx::midi {

enum class Severity { Error, Warning, Note };

// A text in which a piece can be pointed at. Texts from the command line have no name.
struct SourceText {
    QString name;
    QByteArray text;
};

// Some bytes of a text; a length of 0 points between two of them or after the last one.
struct Span {
    int at = 0;
    int length = 0;
};

struct Place {
    SourceText source;
    Span span;
};

struct Finding {
    Severity severity = Severity::Error;
    QString what;     // what happened, with the value
    QString expected; // what was expected instead; may be empty
    QString next;     // what to do now; may be empty
    std::optional<Place> place;
};

// All that was found, in the order in which it was. Of each severity only the first ones are kept,
// so that megabytes of bad input do not become gigabytes of complaints.
class Findings {
public:
    static constexpr int keptOfEach = 10;

    void add(const Finding& finding);

    void error(const QString& what, const QString& expected, const QString& next,
               const std::optional<Place>& place = std::nullopt);
    void warning(const QString& what, const QString& next,
                 const std::optional<Place>& place = std::nullopt);

    bool hasErrors() const { return count(Severity::Error) > 0; }
    int count(Severity severity) const { return m_counts[int(severity)]; }

    const QList<Finding>& kept() const { return m_kept; }

private:
    QList<Finding> m_kept;
    int m_counts[3] = {};
};

// A piece as it is named in a message: in quotes, cut to a readable length, without characters that
// could disturb a terminal.
QString quoted(const QByteArray& piece);

// Text for a terminal: control and formatting characters become question marks.
QString harmless(const QByteArray& text);

} // namespace hx::midi

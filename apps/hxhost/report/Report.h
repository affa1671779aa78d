// The result of a command: named values that become text, one JSON document or one single value.
#pragma once

#include "host/base/Problem.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QStringList>

#include <optional>
#include <vector>

namespace hx::host {

class Report {
public:
    // Adds a value under a dotted name such as "crc.stored"; the name is the label in the text, the
    // path in the JSON document and the argument of --field. `text` replaces the value's own text
    // where people read it.
    void add(const QString& name, const QJsonValue& value, const QString& text = QString());

    // Adds a list of objects; in the text it is a table with these members as columns. `shown`,
    // when it is not empty, stands for the rows where people read them.
    void addTable(const QString& name, const QStringList& columns, const QJsonArray& rows,
                  const QJsonArray& shown = {});

    // Adds a value to the JSON document alone, for what the text already says in other words.
    void addHidden(const QString& name, const QJsonValue& value);

    // Adds a sentence for people; the JSON document says the same in values.
    void say(const QString& sentence);

    // Whether what is added from now on is a detail, which people see only when they ask for it.
    void setDetail(bool isDetail) { m_isDetail = isDetail; }

    void warn(const QString& text) { m_warnings << text; }
    void fail(const Problem& problem) { m_problem = problem; }

    bool failed() const { return m_problem.has_value(); }
    const std::optional<Problem>& problem() const { return m_problem; }
    ExitCode exitCode() const { return m_problem ? m_problem->code : ExitCode::Success; }

    // Lines "name  value", tables indented under their name, then the sentences. Ends with a line
    // feed unless empty.
    QString toText(bool withDetails) const;

    // The whole document: command, ok, exitCode, exitName, result, warnings, error.
    QByteArray toJson(const QString& command) const;

    // One value as plain text: a text without quotes, a list one element a line, an object as
    // compact JSON. List elements are reached by number: "messages.0.kind". Empty when there is no
    // such name.
    std::optional<QString> field(const QString& name) const;

private:
    struct Line {
        QString name;
        QString text;
        QStringList columns; // not empty for a table
        QJsonArray rows;
        bool isDetail;
    };

    QJsonObject m_values;
    std::vector<Line> m_lines;
    QStringList m_sentences;
    bool m_isDetail = false;
    QStringList m_warnings;
    std::optional<Problem> m_problem;
};

} // namespace hx::host

#include "tests/sweep/Scenario.h"

#include <QStringList>

#include <algorithm>

namespace sweep {

namespace {

struct KindRow {
    FaultKind kind;
    const char* name;
    int radix; // of the value; 0: there is none
};

const std::vector<KindRow>& kindRows()
{
    static const std::vector<KindRow> rows = {
        {FaultKind::None, "none", 0},           {FaultKind::Drop, "drop", 0},
        {FaultKind::Duplicate, "duplicate", 0}, {FaultKind::Flip, "flip", 16},
        {FaultKind::Truncate, "truncate", 0},   {FaultKind::Insert, "insert", 16},
        {FaultKind::Delay, "delay", 10},        {FaultKind::Split, "split", 0},
        {FaultKind::Reorder, "reorder", 0},     {FaultKind::Merge, "merge", 0},
        {FaultKind::Splice, "splice", 0},       {FaultKind::Old, "old", 10},
        {FaultKind::Vanish, "vanish", 0},       {FaultKind::PowerOff, "power-off", 0},
        {FaultKind::PowerCut, "power-cut", 10}, {FaultKind::BadCell, "bad-cell", 10},
        {FaultKind::Deaf, "deaf", 10},          {FaultKind::Refuse, "refuse", 0},
        {FaultKind::Answer, "answer", 16},      {FaultKind::OtherModel, "other-model", 0},
    };
    return rows;
}

const KindRow& rowOf(FaultKind kind)
{
    return *std::find_if(kindRows().begin(), kindRows().end(),
                         [kind](const KindRow& row) { return row.kind == kind; });
}

// Takes the first word off; null when there is none.
QString take(QStringList* words)
{
    return words->isEmpty() ? QString() : words->takeFirst();
}

bool readNumber(const QString& text, int radix, int least, int* number)
{
    bool ok = false;
    *number = text.toInt(&ok, radix);
    return ok && *number >= least;
}

bool readDirection(const QString& word, Scenario* scenario)
{
    scenario->direction = word == QLatin1String("in") ? Direction::In : Direction::Out;
    return word == QLatin1String("in") || word == QLatin1String("out");
}

bool readPlace(const QString& word, Scenario* scenario)
{
    const QStringList parts = word.split(QLatin1Char('.'));
    return parts.size() == 2 && readNumber(parts.at(0), 10, 1, &scenario->message) &&
           readNumber(parts.at(1), 10, 0, &scenario->byte);
}

bool readFault(const QString& word, QStringList* words, Scenario* scenario)
{
    for (const KindRow& row : kindRows()) {
        if (word != QLatin1String(row.name))
            continue;
        scenario->fault = row.kind;
        return row.radix == 0 || readNumber(take(words), row.radix, 0, &scenario->value);
    }
    return false;
}

bool readStrikes(const QString& word, Scenario* scenario)
{
    scenario->strikes = 0;
    return word == QLatin1String("x*") || (word.startsWith(QLatin1Char('x')) &&
                                           readNumber(word.mid(1), 10, 1, &scenario->strikes));
}

QString wrong(const QString& word, const char* expected)
{
    return QStringLiteral("\"%1\" is not %2; a scenario reads \"out 3.17 flip 40 x1\"")
        .arg(word, QLatin1String(expected));
}

} // namespace

const std::vector<FaultKind>& allFaultKinds()
{
    static const std::vector<FaultKind> kinds = [] {
        std::vector<FaultKind> all;
        for (const KindRow& row : kindRows())
            all.push_back(row.kind);
        return all;
    }();
    return kinds;
}

const char* faultName(FaultKind kind)
{
    return rowOf(kind).name;
}

QString scenarioText(const Scenario& scenario)
{
    const KindRow& row = rowOf(scenario.fault);
    QString value;
    if (row.radix != 0)
        value = QLatin1Char(' ') + QString::number(scenario.value, row.radix)
                                       .toUpper()
                                       .rightJustified(row.radix == 16 ? 2 : 1, QLatin1Char('0'));
    return QStringLiteral("%1 %2.%3 %4%5 x%6")
        .arg(QLatin1String(scenario.direction == Direction::In ? "in" : "out"))
        .arg(scenario.message)
        .arg(scenario.byte)
        .arg(QLatin1String(row.name), value,
             scenario.strikes == 0 ? QStringLiteral("*") : QString::number(scenario.strikes));
}

std::optional<Scenario> parseScenario(const QString& line, QString* error)
{
    QStringList words = line.simplified().split(QLatin1Char(' '));
    Scenario scenario;
    QString word = take(&words);
    if (!readDirection(word, &scenario)) {
        *error = wrong(word, "a direction, \"out\" or \"in\"");
        return std::nullopt;
    }
    word = take(&words);
    if (!readPlace(word, &scenario)) {
        *error = wrong(word, "a message and a byte");
        return std::nullopt;
    }
    word = take(&words);
    if (!readFault(word, &words, &scenario)) {
        *error = wrong(word, "a fault with its value");
        return std::nullopt;
    }
    word = take(&words);
    if (!readStrikes(word, &scenario) || !words.isEmpty()) {
        *error = wrong(word, "the number of messages that are struck, at the end of the line");
        return std::nullopt;
    }
    return scenario;
}

} // namespace sweep

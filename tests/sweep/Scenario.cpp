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
        {FaultKind::None, "none", 0},
        {FaultKind::Drop, "drop", 0},
        {FaultKind::Duplicate, "duplicate", 0},
        {FaultKind::Flip, "flip", 16},
        {FaultKind::Truncate, "truncate", 0},
        {FaultKind::Insert, "insert", 16},
        {FaultKind::Delay, "delay", 10},
        {FaultKind::Split, "split", 0},
        {FaultKind::Reorder, "reorder", 0},
        {FaultKind::Merge, "merge", 0},
        {FaultKind::Splice, "splice", 0},
        {FaultKind::Old, "old", 10},
        {FaultKind::Vanish, "vanish", 0},
        {FaultKind::PowerOff, "power-off", 0},
        {FaultKind::PowerCut, "power-cut", 10},
        {FaultKind::BadCell, "bad-cell", 10},
        {FaultKind::HalfWrite, "half-write", 10},
        {FaultKind::UnsteadyWrite, "unsteady-write", 10},
        {FaultKind::Deaf, "deaf", 10},
        {FaultKind::Refuse, "refuse", 0},
        {FaultKind::Answer, "answer", 16},
        {FaultKind::OtherModel, "other-model", 0},
        {FaultKind::Packets, "packets", 10},
        {FaultKind::Cap, "cap", 10},
        {FaultKind::Abort, "abort", 0},
        {FaultKind::Garble, "garble", 10},
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

struct TopicRow {
    Topic topic;
    const char* name;
};

const std::vector<TopicRow>& topicRows()
{
    static const std::vector<TopicRow> rows = {
        {Topic::Identity, "identity"},     {Topic::Version, "version"}, {Topic::Data, "data"},
        {Topic::Check, "check"},           {Topic::Closing, "closing"}, {Topic::Stored, "stored"},
        {Topic::Calculated, "calculated"},
    };
    return rows;
}

bool readDirection(const QString& word, Fault* fault)
{
    fault->direction = word == QLatin1String("in") ? Direction::In : Direction::Out;
    return word == QLatin1String("in") || word == QLatin1String("out");
}

bool readMessage(const QString& word, Fault* fault)
{
    for (const TopicRow& row : topicRows()) {
        if (word == QLatin1String(row.name))
            fault->topic = row.topic;
    }
    return fault->topic != Topic::Any || readNumber(word, 10, 1, &fault->message);
}

bool readPlace(const QString& word, Fault* fault)
{
    const QStringList parts = word.split(QLatin1Char('.'));
    return parts.size() == 2 && readMessage(parts.at(0), fault) &&
           readNumber(parts.at(1), 10, 0, &fault->byte);
}

bool readKind(const QString& word, QStringList* words, Fault* fault)
{
    for (const KindRow& row : kindRows()) {
        if (word != QLatin1String(row.name))
            continue;
        fault->kind = row.kind;
        return row.radix == 0 || readNumber(take(words), row.radix, 0, &fault->value);
    }
    return false;
}

bool readStrikes(const QString& word, Fault* fault)
{
    fault->strikes = 0;
    return word == QLatin1String("x*") ||
           (fault->topic == Topic::Any && word.startsWith(QLatin1Char('x')) &&
            readNumber(word.mid(1), 10, 1, &fault->strikes));
}

QString wrong(const QString& word, const char* expected)
{
    return QStringLiteral("\"%1\" is not %2; a scenario reads \"out 3.17 flip 40 x1\"")
        .arg(word, QLatin1String(expected));
}

std::optional<Fault> parseFault(const QString& line, QString* error)
{
    QStringList words = line.simplified().split(QLatin1Char(' '));
    Fault fault;
    QString word = take(&words);
    if (!readDirection(word, &fault)) {
        *error = wrong(word, "a direction, \"out\" or \"in\"");
        return std::nullopt;
    }
    word = take(&words);
    if (!readPlace(word, &fault)) {
        *error = wrong(word, "a message and a byte");
        return std::nullopt;
    }
    word = take(&words);
    if (!readKind(word, &words, &fault)) {
        *error = wrong(word, "a fault with its value");
        return std::nullopt;
    }
    word = take(&words);
    if (!readStrikes(word, &fault) || !words.isEmpty()) {
        *error = wrong(word, "the number of messages that are struck, at the end of the line");
        return std::nullopt;
    }
    return fault;
}

QString placeText(const Fault& fault)
{
    for (const TopicRow& row : topicRows()) {
        if (row.topic == fault.topic)
            return QLatin1String(row.name);
    }
    return QString::number(fault.message);
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

const std::vector<Topic>& allTopics()
{
    static const std::vector<Topic> topics = [] {
        std::vector<Topic> all;
        for (const TopicRow& row : topicRows())
            all.push_back(row.topic);
        return all;
    }();
    return topics;
}

bool Scenario::isLasting() const
{
    return std::any_of(faults.begin(), faults.end(),
                       [](const Fault& fault) { return fault.isLasting(); });
}

bool Scenario::has(FaultKind kind) const
{
    return std::any_of(faults.begin(), faults.end(),
                       [kind](const Fault& fault) { return fault.kind == kind; });
}

QString faultText(const Fault& fault)
{
    const KindRow& row = rowOf(fault.kind);
    QString value;
    if (row.radix != 0)
        value = QLatin1Char(' ') + QString::number(fault.value, row.radix)
                                       .toUpper()
                                       .rightJustified(row.radix == 16 ? 2 : 1, QLatin1Char('0'));
    return QStringLiteral("%1 %2.%3 %4%5 x%6")
        .arg(QLatin1String(fault.direction == Direction::In ? "in" : "out"), placeText(fault))
        .arg(fault.byte)
        .arg(QLatin1String(row.name), value,
             fault.strikes == 0 ? QStringLiteral("*") : QString::number(fault.strikes));
}

QString scenarioText(const Scenario& scenario)
{
    QStringList texts;
    for (const Fault& fault : scenario.faults)
        texts << faultText(fault);
    return texts.join(QStringLiteral(" + "));
}

std::optional<Scenario> parseScenario(const QString& line, QString* error)
{
    Scenario scenario;
    const QStringList parts = line.split(QLatin1Char('+'));
    for (const QString& part : parts) {
        const std::optional<Fault> fault = parseFault(part, error);
        if (!fault)
            return std::nullopt;
        scenario.faults.push_back(*fault);
    }
    return scenario;
}

} // namespace sweep

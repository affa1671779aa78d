#include "simulator/FaultPlan.h"

#include <QStringList>

#include <algorithm>

namespace hx::sim {

namespace {

enum class Argument { None, Byte, Mask, Value, Milliseconds, Moment };

struct ArgumentForm {
    const char* name;
    const char* expected;
    int Fault::*field;
    Argument argument;
    int least;
    int most;
    int base;
};

constexpr ArgumentForm argumentForms[] = {
    {"BYTE", "a byte's position from -511 to 511", &Fault::position, Argument::Byte, -511, 511, 10},
    {"MASK", "hex digits from 01 to FF", &Fault::value, Argument::Mask, 0x01, 0xFF, 16},
    {"HEX", "hex digits from 00 to FF", &Fault::value, Argument::Value, 0x00, 0xFF, 16},
    {"MS", "milliseconds from 0 to 600000", &Fault::value, Argument::Milliseconds, 0, 600000, 10},
    {"MOMENT", "before, during, after, or memory writes from 0 to 9999", &Fault::value,
     Argument::Moment, 0, 9999, 10},
};

struct FaultForm {
    const char* name;
    FaultKind kind;
    Argument first;
    Argument second;
    int position; // what stands for the arguments that are left out
    int value;
    const char* meaning;
};

constexpr int lastBeforeEnd = -2;

constexpr FaultForm faultForms[] = {
    {"silent", FaultKind::Silent, Argument::None, Argument::None, 0, 0,
     "does not hear the message"},
    {"duplicate-message", FaultKind::DuplicateMessage, Argument::None, Argument::None, 0, 0,
     "hears the message twice"},
    {"damage-message", FaultKind::DamageMessage, Argument::Byte, Argument::Mask, lastBeforeEnd, 1,
     "hears the message with a byte changed by MASK (01)"},
    {"cut-message", FaultKind::CutMessage, Argument::Byte, Argument::None, lastBeforeEnd, 0,
     "hears only what is before BYTE"},
    {"insert-message", FaultKind::InsertMessage, Argument::Byte, Argument::Value, lastBeforeEnd, 0,
     "hears HEX (00) before BYTE"},
    {"refuse", FaultKind::Refuse, Argument::None, Argument::None, 0, 0,
     "refuses the message and does nothing"},
    {"wrong-model", FaultKind::WrongModel, Argument::None, Argument::None, 0, 0,
     "hears the message as its own and answers as the next model"},
    {"vanish", FaultKind::Vanish, Argument::None, Argument::None, 0, 0,
     "is gone, with its port, when the message comes"},
    {"bad-ack", FaultKind::BadAck, Argument::None, Argument::None, 0, 0,
     "calls the update message bad and does nothing"},
    {"failed-ack", FaultKind::FailedAck, Argument::None, Argument::None, 0, 0,
     "calls the update failed and does nothing"},
    {"power-cut", FaultKind::PowerCut, Argument::Moment, Argument::None, 0, cutDuringWrites,
     "loses power at the update message: before, during (so without MOMENT) or after its writes"},
    {"bad-write", FaultKind::BadWrite, Argument::None, Argument::None, 0, 0,
     "holds a wrong bit in its last code byte after the update message"},
    {"drop-reply", FaultKind::DropReply, Argument::None, Argument::None, 0, 0, "the reply is lost"},
    {"duplicate-reply", FaultKind::DuplicateReply, Argument::None, Argument::None, 0, 0,
     "the reply comes twice"},
    {"damage-reply", FaultKind::DamageReply, Argument::Byte, Argument::Mask, lastBeforeEnd, 1,
     "a byte of the reply is changed by MASK (01)"},
    {"cut-reply", FaultKind::CutReply, Argument::Byte, Argument::None, lastBeforeEnd, 0,
     "only what is before BYTE is sent"},
    {"insert-reply", FaultKind::InsertReply, Argument::Byte, Argument::Value, lastBeforeEnd, 0,
     "HEX (00) is sent before BYTE"},
    {"delay-reply", FaultKind::DelayReply, Argument::Milliseconds, Argument::None, 0, 3000,
     "the reply comes MS milliseconds (3000) later"},
    {"late-reply", FaultKind::LateReply, Argument::None, Argument::None, 0, 0,
     "the reply is kept back and sent before the next one"},
    {"swap-reply", FaultKind::SwapReply, Argument::None, Argument::None, 0, 0,
     "the reply is kept back and sent after the next one"},
    {"noise", FaultKind::Noise, Argument::None, Argument::None, 0, 0,
     "clock and active sensing bytes before, in and after the reply, and unasked every 20 ms"},
};

const ArgumentForm* formOf(Argument argument)
{
    const auto* found = std::find_if(std::begin(argumentForms), std::end(argumentForms),
                                     [=](const ArgumentForm& f) { return f.argument == argument; });
    return found == std::end(argumentForms) ? nullptr : found;
}

const FaultForm* formNamed(const QString& name)
{
    const auto* found =
        std::find_if(std::begin(faultForms), std::end(faultForms),
                     [&](const FaultForm& f) { return name == QLatin1String(f.name); });
    return found == std::end(faultForms) ? nullptr : found;
}

std::optional<int> numberIn(const QString& text, int least, int most, int base)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber, base);
    if (!isNumber || number < least || number > most)
        return std::nullopt;
    return number;
}

// "*", "N", "N-" or "N-M"
bool readWhich(const QString& text, Fault* fault)
{
    constexpr int most = 999999;
    if (text == QLatin1String("*"))
        return true;
    const QStringList ends = text.split(QLatin1Char('-'));
    const auto first = numberIn(ends.first(), 1, most, 10);
    if (!first || ends.size() > 2)
        return false;
    fault->first = *first;
    if (ends.size() == 2 && ends.last().isEmpty())
        return true;
    const auto last = numberIn(ends.last(), *first, most, 10);
    fault->last = last.value_or(0);
    return last.has_value();
}

bool readArgument(const QString& text, const ArgumentForm& form, Fault* fault)
{
    auto number = numberIn(text, form.least, form.most, form.base);
    if (form.argument == Argument::Moment && text == QLatin1String("before"))
        number = 0;
    if (form.argument == Argument::Moment && text == QLatin1String("during"))
        number = cutDuringWrites;
    if (form.argument == Argument::Moment && text == QLatin1String("after"))
        number = cutAfterWrites;
    if (number)
        fault->*form.field = *number;
    return number.has_value();
}

QString usage(const FaultForm& form)
{
    QString text = QLatin1String(form.name) + QLatin1String("[:WHICH");
    int open = 1;
    for (const Argument argument : {form.first, form.second}) {
        const ArgumentForm* known = formOf(argument);
        if (known == nullptr)
            continue;
        text += QLatin1String("[:") + QLatin1String(known->name);
        ++open;
    }
    return text + QString(open, QLatin1Char(']'));
}

QString faultNames()
{
    QStringList names;
    for (const FaultForm& form : faultForms)
        names.append(QLatin1String(form.name));
    return names.join(QLatin1String(", "));
}

std::nullopt_t refuse(QString* error, const QString& text)
{
    if (error != nullptr)
        *error = text;
    return std::nullopt;
}

std::nullopt_t refusePiece(QString* error, const QString& piece, const QString& fault,
                           const char* expected)
{
    return refuse(error, QString::fromLatin1("\"%1\" in the fault \"%2\" does not fit: expected %3")
                             .arg(piece, fault, QLatin1String(expected)));
}

} // namespace

std::optional<Fault> parseFault(const QString& text, QString* error)
{
    const QStringList pieces = text.split(QLatin1Char(':'));
    const FaultForm* form = formNamed(pieces.first());
    if (form == nullptr)
        return refuse(error, QString::fromLatin1("there is no fault \"%1\": expected one of %2")
                                 .arg(pieces.first(), faultNames()));
    Fault fault;
    fault.kind = form->kind;
    fault.position = form->position;
    fault.value = form->value;
    if (pieces.size() > 1 && !readWhich(pieces.at(1), &fault))
        return refusePiece(error, pieces.at(1), text, "N, N-M, N- or *, counted from 1 to 999999");
    for (int i = 2; i < pieces.size(); ++i) {
        const ArgumentForm* argument =
            i > 3 ? nullptr : formOf(i == 2 ? form->first : form->second);
        if (argument == nullptr)
            return refusePiece(error, pieces.at(i), text, qPrintable(usage(*form)));
        if (!readArgument(pieces.at(i), *argument, &fault))
            return refusePiece(error, pieces.at(i), text, argument->expected);
    }
    return fault;
}

QString faultHelp()
{
    constexpr int column = 40;
    QString help;
    for (const FaultForm& form : faultForms)
        help += usage(form).leftJustified(column) + QLatin1String(form.meaning) + QLatin1Char('\n');
    return help;
}

} // namespace hx::sim

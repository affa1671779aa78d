// hxmidi fields: typed values at places of a message.
#include "apps/hxmidi/commands/CommandLine.h"
#include "apps/hxmidi/commands/Commands.h"
#include "apps/hxmidi/commands/FieldReference.h"
#include "apps/hxmidi/commands/InputArguments.h"
#include "qt/Saturated.h"

#include <QJsonArray>

#include <memory>

namespace hx::midi {

namespace {

struct FieldsOptions {
    InputOptions input; // its words are the ones that are not fields
    std::vector<std::string> words;
    int fallback = 0;
    bool hasFallback = false;
};

QList<FieldReference> takeFields(FieldsOptions& options, Findings& findings)
{
    QList<FieldReference> fields;
    bool any = false;
    for (const std::string& word : options.words) {
        if (!looksLikeField(QByteArray::fromStdString(word))) {
            options.input.words.push_back(word);
            continue;
        }
        any = true;
        const auto field = readFieldReference(QByteArray::fromStdString(word), findings);
        if (field)
            fields += *field;
    }
    if (!any)
        findings.error(QStringLiteral("no field is named"),
                       QStringLiteral("one field or more, written TYPE@POSITION"),
                       QStringLiteral("add one, such as 14bit@7; see 'hxmidi fields --help'"));
    return fields;
}

void run(FieldsOptions options, Outcome& outcome)
{
    const QList<FieldReference> fields = takeFields(options, outcome.findings);
    if (outcome.findings.hasErrors())
        return;
    const HxMidiData data = readInput(options.input, outcome);
    if (outcome.findings.hasErrors())
        return;
    const auto fallback = options.hasFallback ? std::optional<int>(options.fallback) : std::nullopt;
    QJsonArray values;
    for (const FieldReference& field : fields) {
        const auto value = readField(data, field, fallback, outcome.findings);
        if (!value)
            continue;
        outcome.text += field.text + ' ' + value->text.toUtf8() + '\n';
        values.append(QJsonObject{{QStringLiteral("field"), QString::fromUtf8(field.text)},
                                  {QStringLiteral("value"), value->json}});
    }
    outcome.rows = saturated(values.size());
    outcome.result = [=] { return QJsonObject{{QStringLiteral("fields"), values}}; };
}

} // namespace

void addFieldsCommand(CommandLine& line)
{
    const auto options = std::make_shared<FieldsOptions>();
    const Command command = line.add("fields", "Read typed values at positions of a message");
    command.addWords("DATA|FIELD", options->words, "Data as everywhere, and fields TYPE@POSITION");
    addInputFormOptions(command, options->input);
    command
        .addNumber(
            "--fallback",
            [options](int value) {
                options->fallback = value;
                options->hasFallback = true;
            },
            "Value of number fields that are outside the data; without it they are errors")
        .valueName("N");
    line.explain(command,
                 "Types of fields:\n"
                 "  14bit        two 7-bit bytes\n"
                 "  utime        32 bits in five bytes, as a number from 0 to 4294967295\n"
                 "  32bit        the same bits, as a number from -2147483648 to 2147483647\n"
                 "  32bitle      as 32bit, the least significant byte first\n"
                 "  float32      a single-precision number in five bytes\n"
                 "  int1 int2    one signed byte; two 7-bit bytes\n"
                 "  int3 int4    three or four whole bytes\n"
                 "  string       characters of 7 bits: string@5+8, or without a length to\n"
                 "               the byte before the last\n"
                 "  ascii        characters of 8 bits: ascii@5+8, or to the last byte\n");
    line.setRun(command, [options](Outcome& outcome) { run(*options, outcome); });
}

} // namespace hx::midi

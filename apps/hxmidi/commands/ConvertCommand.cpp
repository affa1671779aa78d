// hxmidi convert: the bytes in another form of writing.
#include "apps/hxmidi/commands/CommandLine.h"
#include "apps/hxmidi/commands/Commands.h"
#include "apps/hxmidi/commands/InputArguments.h"

#include <algorithm>
#include <map>
#include <memory>

namespace hx::midi {

namespace {

enum class OutputForm { Hex, Compact, Raw, Decimal, CArray };

struct ConvertOptions {
    InputOptions input;
    OutputForm form = OutputForm::Hex;
};

QByteArray arrayLine(const QByteArray& bytes)
{
    QByteArray line = "   ";
    for (const char byte : bytes)
        line += " 0x" + QByteArray(1, byte).toHex().toUpper() + ',';
    return line + '\n';
}

// At least one byte: C knows no empty array.
QByteArray toCArray(const QByteArray& bytes)
{
    constexpr int bytesPerLine = 12;
    QByteArray text = "const unsigned char data[] = {\n";
    for (int at = 0; at < bytes.size(); at += bytesPerLine)
        text += arrayLine(bytes.mid(at, bytesPerLine));
    return text + "};\n";
}

QByteArray written(const HxMidiData& data, OutputForm form)
{
    switch (form) {
    case OutputForm::Raw:
        return data.bytes;
    case OutputForm::Decimal:
        return data.toStringDec().toLatin1() + '\n';
    case OutputForm::CArray:
        return toCArray(data.bytes);
    case OutputForm::Compact:
        return data.toString(-1).toLatin1() + '\n';
    case OutputForm::Hex:
        break;
    }
    return data.toString(' ', -1).toLatin1() + '\n';
}

void run(const ConvertOptions& options, Outcome& outcome)
{
    const HxMidiData data = readInput(options.input, outcome);
    if (options.form == OutputForm::CArray && data.bytes.isEmpty())
        outcome.findings.error(QStringLiteral("there are no bytes for a C array"),
                               QStringLiteral("one byte or more, as C knows no empty array"),
                               QStringLiteral("give some data"));
    outcome.text = written(data, options.form);
}

} // namespace

void addConvertCommand(CommandLine& line)
{
    static const std::map<std::string, OutputForm> forms = {{"hex", OutputForm::Hex},
                                                            {"compact", OutputForm::Compact},
                                                            {"raw", OutputForm::Raw},
                                                            {"decimal", OutputForm::Decimal},
                                                            {"c", OutputForm::CArray}};
    const auto options = std::make_shared<ConvertOptions>();
    const Command command = line.add("convert", "Write the bytes in another form", JsonForm::None);
    addInputOptions(command, options->input);
    command.addChoice("--to", forms, options->form,
                      "hex (F0 7E, the default), compact (F07E), raw, decimal (240 126) or c (an "
                      "array)");
    line.setRun(command, [options](Outcome& outcome) { run(*options, outcome); });
}

} // namespace hx::midi

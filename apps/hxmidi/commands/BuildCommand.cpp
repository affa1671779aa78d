// hxmidi build: a message from a builder format and its arguments.
#include "apps/hxmidi/commands/CommandLine.h"
#include "apps/hxmidi/commands/Commands.h"
#include "apps/hxmidi/commands/MessageBuilder.h"

#include <memory>

namespace hx::midi {

namespace {

struct BuildOptions {
    std::string format;
    std::vector<std::string> arguments;
    bool lenient = false;
};

void run(const BuildOptions& options, Outcome& outcome)
{
    QByteArrayList arguments;
    for (const std::string& argument : options.arguments)
        arguments << QByteArray::fromStdString(argument);
    const HxMidiData data = buildMessage(QByteArray::fromStdString(options.format), arguments,
                                         options.lenient, outcome.findings);
    const QString bytes = data.toString(' ', -1);
    outcome.text = bytes.toLatin1() + '\n';
    outcome.result = [=] {
        return QJsonObject{{QStringLiteral("bytes"), bytes},
                           {QStringLiteral("size"), data.bytes.size()}};
    };
}

} // namespace

void addBuildCommand(CommandLine& line)
{
    const auto options = std::make_shared<BuildOptions>();
    const Command command = line.add("build", "Build a message from a format and its arguments");
    command.addOption("FORMAT", options->format, "Hex numbers and fields, separated by blanks")
        .required()
        .valueName("");
    command.addWords("ARGUMENT", options->arguments, "One value for every field of the format");
    command.addFlag("--lenient", options->lenient,
                    "Ignore what HxMidiData ignores, with a warning");
    line.explain(command, "Fields:\n"
                          "  VV V8 P8   a number as one byte, 0 to 255\n"
                          "  P14 V14    14 bits in two 7-bit bytes\n"
                          "  NIB24      24 bits in six bytes of 4 bits\n"
                          "  NIB32      32 bits in eight bytes of 4 bits\n"
                          "  V32 I32 UT 32 bits in five bytes\n"
                          "  F32        a single-precision number in five bytes\n"
                          "  MSTR       hex text\n"
                          "  CSTR       characters as they are\n");
    line.setRun(command, [options](Outcome& outcome) { run(*options, outcome); });
}

} // namespace hx::midi

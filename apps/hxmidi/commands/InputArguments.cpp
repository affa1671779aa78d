#include "apps/hxmidi/commands/InputArguments.h"

#include <map>

namespace hx::midi {

namespace {

constexpr char inputGroup[] = "Data";

} // namespace

void addInputFormOptions(const Command& command, InputOptions& options)
{
    static const std::map<std::string, InputForm> forms = {{"auto", InputForm::Auto},
                                                           {"raw", InputForm::Raw},
                                                           {"hex", InputForm::Hex},
                                                           {"decimal", InputForm::Decimal},
                                                           {"c", InputForm::CArray}};
    const Option form =
        command
            .addChoice(
                "--from", forms, options.form,
                "How the data is written; auto: as raw bytes in a file that is not text, else "
                "as hex text")
            .group(inputGroup);
    command.addFlag("--raw", options.raw, "The same as --from raw")
        .excludes(form)
        .group(inputGroup);
    command
        .addFlag("--tokens", options.tokens,
                 "Split hex text at blanks, as setText() does: each word is a number; without it "
                 "blanks are removed, as by the constructors")
        .group(inputGroup);
    command
        .addFlag("--lenient", options.lenient,
                 "Leave bad pieces of hex text out, as HxMidiData does, with a warning")
        .group(inputGroup);
}

void addInputOptions(const Command& command, InputOptions& options)
{
    command.addWords("DATA", options.words, "Hex text, @FILE, or @- for standard input (default)");
    addInputFormOptions(command, options);
}

} // namespace hx::midi

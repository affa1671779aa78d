#include "apps/hxmidi/commands/InputArguments.h"

#include "apps/hxmidi/commands/CommandLine.h"

#include <map>

namespace hx {

namespace {

constexpr char inputGroup[] = "Data";

} // namespace

void addInputFormOptions(CLI::App& command, InputOptions& options)
{
    static const std::map<std::string, InputForm> forms = {{"auto", InputForm::Auto},
                                                           {"raw", InputForm::Raw},
                                                           {"hex", InputForm::Hex},
                                                           {"decimal", InputForm::Decimal},
                                                           {"c", InputForm::CArray}};
    CLI::Option* form =
        command
            .add_option("--from", options.form,
                        "How the data is written: auto, raw, hex, decimal or c; auto is hex text "
                        "unless a file holds a byte that no text has")
            ->type_name("FORM")
            ->transform(CLI::Transformer(forms).description(""))
            ->transform(CLI::IsMember(forms).description(""))
            ->group(inputGroup);
    command.add_flag("--raw", options.raw, "The same as --from raw")
        ->excludes(form)
        ->group(inputGroup);
    command
        .add_flag("--tokens", options.tokens,
                  "Split hex text at blanks as setText() does, each word a number; the "
                  "constructors, and this program without --tokens, remove blanks")
        ->group(inputGroup);
    command
        .add_flag("--lenient", options.lenient,
                  "Leave bad pieces of hex text out, as HxMidiData does, with a warning")
        ->group(inputGroup);
}

void addInputOptions(CLI::App& command, InputOptions& options)
{
    addWords(command, "DATA", options.words, "Hex text, @FILE, or @- for standard input (default)");
    addInputFormOptions(command, options);
}

} // namespace hx

"""Completion scripts for bash, zsh and fish, made from what a program's help says."""
import textwrap

PORTS = ("--port", "--in-port")
DATA = {"DATA", "FIRST", "SECOND"}
TEXTS = {"FORMAT", "ARGUMENT", "PATTERN"}  # which nobody can guess

BASH_FILES = '''_{name}_files()
{{
    local at=$1 found
    while IFS= read -r found; do
        [[ -d $found ]] && found+=/
        COMPREPLY+=("$at$found")
    done < <(compgen -f -- "${{cur#"$at"}}")
    compopt -o filenames -o nospace 2> /dev/null
}}
'''

BASH_PORTS = '''
_{name}_ports()
{{
    case $cur in
        simulator:*) _{name}_files simulator: ;;
        replay:*) _{name}_files replay: ;;
        device:*) _{name}_files device: ;;
        *)
            COMPREPLY=($(compgen -W "simulator simulator: replay: device:" -- "$cur"))
            compopt -o nospace 2> /dev/null ;;
    esac
    declare -F __ltrim_colon_completions > /dev/null && __ltrim_colon_completions "$cur"
}}
'''

BASH_BODY = '''
_{name}()
{{
    local cur prev words=() cword i command="" offers="" files=""
    if declare -F _get_comp_words_by_ref > /dev/null; then
        _get_comp_words_by_ref -n : cur prev words cword
    else
        words=("${{COMP_WORDS[@]}}") cword=$COMP_CWORD
        cur=${{words[cword]}} prev=${{words[cword - 1]}}
    fi
    COMPREPLY=()

    for ((i = 1; i < cword; i++)); do
        case "$command ${{words[i]}}" in
            {names}) command="${{command:+$command }}${{words[i]}}" ;;
        esac
    done

    case "$command $prev" in
{values}
    esac

    case $command in
{offers}
    esac

    if [[ $cur == -* || $files == none ]]; then
        COMPREPLY=($(compgen -W "$offers" -- "$cur"))
    elif [[ $files == data && $cur == @* ]]; then
        _{name}_files @
    elif [[ $files == fields && -n $cur && $cur != @* ]]; then
        COMPREPLY=($(compgen -S @ -W "{fields}" -- "$cur"))
        compopt -o nospace 2> /dev/null
    elif [[ $files == fields ]]; then
        _{name}_files @
    elif [[ $files == files ]]; then
        _{name}_files ""
    fi
}}

complete -F _{name} {name}
'''


def kind_of_value(option, program):
    """What an option's argument may be: a list of words, "files", "ports" or "text"."""
    if option.choices:
        return option.choices
    if option.long in PORTS:
        return "ports"
    if option.argument == "FAULT":
        return program.faults()
    return "files" if option.argument.startswith("FILE") else "text"


def kind_of_words(command):
    """What the words after a command may be: "none" of any use, "files", "data" or "fields"."""
    names = {argument.name for argument in command.arguments} - TEXTS
    if not names or command.below:
        return "none"
    if "DATA|FIELD" in names:
        return "fields"
    return "data" if names <= DATA else "files"


def patterns(words):
    """The words as alternatives of a case, on lines of a readable length."""
    joined = " | ".join(f'"{word}"'.replace(" ", "\0") for word in words)
    lines = textwrap.wrap(joined, 90, break_on_hyphens=False, break_long_words=False)
    return " \\\n            ".join(lines).replace("\0", " ")


def bash_action(kind, program):
    if kind == "files":
        return f'_{program.name}_files ""; '
    if kind == "ports":
        return f"_{program.name}_ports; "
    return "" if kind == "text" else f'COMPREPLY=($(compgen -W "{" ".join(kind)}" -- "$cur")); '


def bash_values(program):
    """A case for each kind of value, with every option of every command that takes it."""
    takers = {}
    for command in program.commands:
        for option in command.options:
            if option.argument:
                action = bash_action(kind_of_value(option, program), program)
                takers.setdefault(action, []).extend(" ".join((*command.words, flag)) for flag in option.flags)
    for action, words in takers.items():
        yield f"        {patterns(words)})"
        yield f"            {action}return ;;"


def bash(program):
    leaves = [command for command in program.commands if command.words]
    offers = []
    for command in program.commands:
        words = [*command.below, *(option.long for option in command.options)]
        offers.append(f'        "{" ".join(command.words)}") offers="{" ".join(words)}" '
                      f"files={kind_of_words(command)} ;;")
    names = patterns(f"{' '.join(command.words[:-1])} {command.words[-1]}" for command in leaves)
    has_ports = any(option.long in PORTS for command in leaves for option in command.options)
    return (f"# bash completion for {program.name}, made by scripts/options\n\n"
            + BASH_FILES.format(name=program.name)
            + (BASH_PORTS.format(name=program.name) if has_ports else "")
            + BASH_BODY.format(name=program.name, names=names, values="\n".join(bash_values(program)), offers="\n".join(offers),
                               fields=" ".join(program.field_types())))


ZSH_HELPERS = '''
_{name}_port()
{{
    if compset -P '(simulator|replay|device):'; then
        _files
    else
        compadd -S '' -- simulator simulator: replay: device:
    fi
}}

_{name}_data()
{{
    if [[ $PREFIX == @* ]]; then
        compset -P '@'
        _files
    else
        _message 'hex text, @FILE or @- for standard input'
    fi
}}

_{name}_field()
{{
    if [[ $PREFIX == @* || -z $PREFIX ]]; then
        _{name}_data
    else
        compadd -S @ -- {fields}
    fi
}}
'''


def zsh_text(text):
    return text.replace("'", "").replace("[", "\\[").replace("]", "\\]").replace(":", "\\:")


def zsh_option(option, program):
    if option.long in ("--help", "--version"):
        before = "(- *)"
    else:
        before = "*" if option.repeatable or option.long == "--verbose" else ""
        before += f"({' '.join(option.excluded)})" if option.excluded else ""
    flags = "{" + ",".join(option.flags) + "}" if len(option.flags) > 1 else ""
    value = ""
    if option.argument:
        kind = kind_of_value(option, program)
        action = {"files": "_files", "ports": f"_{program.name}_port", "text": ""}.get(
            kind if isinstance(kind, str) else "", f"({' '.join(kind)})")
        value = f":{option.argument.split('|')[0].lower()}:{action}"
    text = f"[{zsh_text(option.headline)}]{value}'"
    return f"'{before}'{flags}'{text}" if flags else f"'{before}{option.long}{text}"


def zsh_arguments(command, program):
    actions = {"none": "", "files": "_files", "data": f"_{program.name}_data", "fields": f"_{program.name}_field"}
    for index, argument in enumerate(command.arguments, 1):
        action = "" if argument.name in TEXTS else actions[kind_of_words(command)]
        place = "*" if argument.repeatable else index
        yield f"'{place}:{argument.name.lower().replace('|', ' or ')}:{action}'"


def zsh_function(program, command):
    below = {other.words[-1]: other for other in program.commands if other.words[:-1] == command.words and other.words}
    name = "_".join(("", program.name, *command.words))
    indent = " \\\n        "
    options = indent.join(zsh_option(option, program) for option in command.options)
    yield f"\n{name}()\n{{"
    if not below:
        yield f"    _arguments {indent.join([options, *zsh_arguments(command, program)])}"
    else:
        commands = "\n".join(f"        '{word}:{zsh_text(other.headline)}'" for word, other in below.items())
        cases = "\n".join(f"                {word}) {name}_{word} ;;" for word in below)
        yield (f"    local curcontext=$curcontext state line\n    local -a commands=(\n{commands})\n"
               f"    _arguments -C {options}{indent}'1:command:->command' '*::argument:->argument' && return\n"
               "    case $state in\n        command) _describe command commands ;;\n"
               f"        argument)\n            case $line[1] in\n{cases}\n            esac ;;\n    esac")
    yield "}"


def zsh(program):
    lines = [f"#compdef {program.name}\n# Made by scripts/options."]
    lines.append(ZSH_HELPERS.format(name=program.name, fields=" ".join(program.field_types())).rstrip())
    for command in program.commands:
        lines += zsh_function(program, command)
    return "\n".join(lines) + f'\n\n_{program.name} "$@"\n'


FISH_HELPERS = '''
# Whether the words so far name one of these commands.
function __{name}_at
    set -l at
    for word in (commandline -opc)[2..-1]
        if contains -- (string join ' ' $at $word) {names}
            set -a at $word
        end
    end
    contains -- "$at" $argv
end

function __{name}_files
    for found in (__fish_complete_path (string sub -s 2 -- (commandline -ct)))
        echo @$found
    end
end
'''


def fish_at(program, commands):
    words = " ".join(f"'{' '.join(command)}'" for command in commands)
    return f'complete -c {program.name} -n "__{program.name}_at {words}"'


def fish_option(option, commands, program):
    line = fish_at(program, commands)
    line += "".join(f" -l {flag[2:]}" if flag.startswith("--") else f" -s {flag[1:]}" for flag in option.flags)
    if option.argument:
        kind = kind_of_value(option, program)
        line += {"files": " -r -F", "ports": " -x -a 'simulator simulator: replay: device:'", "text": " -x"}.get(
            kind if isinstance(kind, str) else "", f" -x -a '{' '.join(kind)}'")
    return f"{line} -d '{option.headline}'"


def fish(program):
    names = " ".join(f"'{' '.join(command.words)}'" for command in program.commands if command.words)
    lines = [f"# fish completion for {program.name}, made by scripts/options",
             FISH_HELPERS.format(name=program.name, names=names)]
    options = {}
    for command in program.commands:
        if kind_of_words(command) != "files":
            lines.append(fish_at(program, [command.words]) + " -f")
        if kind_of_words(command) == "fields":
            fields = " ".join(f"{name}@" for name in program.field_types())
            lines.append(fish_at(program, [command.words]) + f" -a '{fields}'")
        if kind_of_words(command) in ("data", "fields"):
            lines.append(fish_at(program, [command.words])[:-1]
                         + f"; and string match -q '@*' -- (commandline -ct)\" -a '(__{program.name}_files)'")
        for option in command.options:
            options.setdefault(option, []).append(command.words)
        for other in program.commands:
            if other.words and other.words[:-1] == command.words:
                lines.append(fish_at(program, [command.words]) + f" -a {other.words[-1]} -d '{other.headline}'")
    lines += [fish_option(option, commands, program) for option, commands in options.items()]
    return "\n".join(lines) + "\n"

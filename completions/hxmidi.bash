# bash completion for hxmidi, made by scripts/options

_hxmidi_files()
{
    local at=$1 found
    while IFS= read -r found; do
        [[ -d $found ]] && found+=/
        COMPREPLY+=("$at$found")
    done < <(compgen -f -- "${cur#"$at"}")
    compopt -o filenames -o nospace 2> /dev/null
}

_hxmidi()
{
    local cur prev words=() cword i command="" offers="" files=""
    if declare -F _get_comp_words_by_ref > /dev/null; then
        _get_comp_words_by_ref -n : cur prev words cword
    else
        words=("${COMP_WORDS[@]}") cword=$COMP_CWORD
        cur=${words[cword]} prev=${words[cword - 1]}
    fi
    COMPREPLY=()

    for ((i = 1; i < cword; i++)); do
        case "$command ${words[i]}" in
            " parse" | " build" | " match" | " diff" | " dump" | " split" | " fields" | " sum" | \
            " hash" | " convert") command="${command:+$command }${words[i]}" ;;
        esac
    done

    case "$command $prev" in
        "parse --from" | "match --from" | "diff --from" | "dump --from" | "split --from" | \
            "fields --from" | "sum --from" | "hash --from" | "convert --from")
            COMPREPLY=($(compgen -W "auto c decimal hex raw" -- "$cur")); return ;;
        "diff --offset" | "diff --count" | "dump --columns" | "dump --length" | "split --size" | \
            "fields --fallback" | "sum --start" | "sum --end")
            return ;;
        "sum --kind")
            COMPREPLY=($(compgen -W "32bit 7bit complement" -- "$cur")); return ;;
        "convert --to")
            COMPREPLY=($(compgen -W "c compact decimal hex raw" -- "$cur")); return ;;
    esac

    case $command in
        "") offers="parse build match diff dump split fields sum hash convert --help --version" files=none ;;
        "parse") offers="--help --strict --json --from --raw --tokens --lenient" files=data ;;
        "build") offers="--help --lenient --strict --json" files=none ;;
        "match") offers="--help --start --each --quiet --strict --json --from --raw --tokens --lenient" files=data ;;
        "diff") offers="--help --offset --count --tolerant --strict --json --from --raw --tokens --lenient" files=data ;;
        "dump") offers="--help --columns --length --strict --from --raw --tokens --lenient" files=data ;;
        "split") offers="--help --size --status --strict --json --from --raw --tokens --lenient" files=data ;;
        "fields") offers="--help --fallback --strict --json --from --raw --tokens --lenient" files=fields ;;
        "sum") offers="--help --kind --start --end --strict --json --from --raw --tokens --lenient" files=data ;;
        "hash") offers="--help --strict --json --from --raw --tokens --lenient" files=data ;;
        "convert") offers="--help --to --strict --from --raw --tokens --lenient" files=data ;;
    esac

    if [[ $cur == -* || $files == none ]]; then
        COMPREPLY=($(compgen -W "$offers" -- "$cur"))
    elif [[ $files == data && $cur == @* ]]; then
        _hxmidi_files @
    elif [[ $files == fields && -n $cur && $cur != @* ]]; then
        COMPREPLY=($(compgen -S @ -W "14bit utime 32bit 32bitle float32 int1 int2 int3 int4 string ascii" -- "$cur"))
        compopt -o nospace 2> /dev/null
    elif [[ $files == fields ]]; then
        _hxmidi_files @
    elif [[ $files == files ]]; then
        _hxmidi_files ""
    fi
}

complete -F _hxmidi hxmidi

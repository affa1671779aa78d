# bash completion for hxmidi

_hxmidi_files()
{
    local at=$1 name
    while IFS= read -r name; do
        [[ -d $name ]] && name+=/
        COMPREPLY+=("$at$name")
    done < <(compgen -f -- "${cur#"$at"}")
    compopt -o filenames -o nospace 2> /dev/null
}

_hxmidi()
{
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
    local commands="parse build match diff dump split fields sum hash convert"
    local data="--from --raw --tokens --lenient"
    local all="--help --strict"
    local options i command=""
    COMPREPLY=()

    for ((i = 1; i < COMP_CWORD; i++)); do
        if [[ " $commands " == *" ${COMP_WORDS[i]} "* ]]; then
            command=${COMP_WORDS[i]}
            break
        fi
    done

    case $command in
        "") COMPREPLY=($(compgen -W "$commands --help --version" -- "$cur")); return ;;
        parse) options="$data --json" ;;
        build) options="--lenient --json" ;;
        match) options="$data --json --start --each --quiet" ;;
        diff) options="$data --json --offset --count --tolerant" ;;
        dump) options="$data --columns --length" ;;
        split) options="$data --json --size --status" ;;
        fields) options="$data --json --fallback" ;;
        sum) options="$data --json --kind --start --end" ;;
        hash) options="$data --json" ;;
        convert) options="$data --to" ;;
    esac

    case $command$prev in
        *--from) COMPREPLY=($(compgen -W "auto raw hex decimal c" -- "$cur")); return ;;
        convert--to) COMPREPLY=($(compgen -W "hex compact raw decimal c" -- "$cur")); return ;;
        sum--kind) COMPREPLY=($(compgen -W "7bit complement 32bit" -- "$cur")); return ;;
    esac

    if [[ $cur == @* && $command != build ]]; then
        _hxmidi_files @
    elif [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W "$options $all" -- "$cur"))
    elif [[ $command == fields && -n $cur ]]; then
        COMPREPLY=($(compgen -W "14bit@ utime@ float32@ 32bit@ 32bitle@ int1@ int2@ int3@ int4@ string@ ascii@" -- "$cur"))
        compopt -o nospace 2> /dev/null
    fi
}

complete -F _hxmidi hxmidi

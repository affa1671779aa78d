# bash completion for hxhost

_hxhost_files()
{
    local at=$1 name
    while IFS= read -r name; do
        [[ -d $name ]] && name+=/
        COMPREPLY+=("$at$name")
    done < <(compgen -f -- "${cur#"$at"}")
    compopt -o filenames -o nospace 2> /dev/null
}

_hxhost_ports()
{
    case $cur in
        simulator:*) _hxhost_files simulator: ;;
        replay:*) _hxhost_files replay: ;;
        *)
            COMPREPLY=($(compgen -W "simulator simulator: replay:" -- "$cur"))
            compopt -o nospace 2> /dev/null ;;
    esac
}

_hxhost()
{
    local cur prev words=() cword
    if declare -F _get_comp_words_by_ref > /dev/null; then
        _get_comp_words_by_ref -n : cur prev words cword
    else
        words=("${COMP_WORDS[@]}") cword=$COMP_CWORD
        cur=${words[cword]} prev=${words[cword - 1]}
    fi
    local commands="ports identify info update verify recover image inspect check monitor trace simulate support"
    local output="--json --field --progress --quiet --verbose --trace"
    local product="--plugin --port --in-port --rate --gap --fault"
    local faults="silent duplicate-message damage-message cut-message insert-message refuse
        wrong-model vanish bad-ack failed-ack power-cut bad-write drop-reply duplicate-reply
        damage-reply cut-reply insert-reply delay-reply late-reply swap-reply noise"
    local command=${words[1]} options=""
    COMPREPLY=()

    if ((cword == 1)); then
        COMPREPLY=($(compgen -W "$commands --help --version" -- "$cur"))
        return
    fi
    if [[ $command == image ]]; then
        if ((cword == 2)); then
            COMPREPLY=($(compgen -W "build inspect --help" -- "$cur"))
            return
        fi
        command="image ${words[2]}"
    fi

    case $command in
        ports) options="--probe --plugin" ;;
        identify | info | verify | recover) options=$product ;;
        update) options="$product --dry-run --yes --no-listen" ;;
        "image build") options="--plugin --output --kind --code-version" ;;
        inspect | "image inspect") options="--plugin" ;;
        check) options="--image" ;;
        support) options="$product --output --image --last-trace" ;;
        monitor) options="--count --seconds --plugin --port --fault" ;;
        trace) options="--svg" ;;
        simulate) options="--name --backend --state --seconds --rate --gap --fault" ;;
    esac

    case $prev in
        --progress) COMPREPLY=($(compgen -W "auto bar plain json none" -- "$cur")); return ;;
        --kind) COMPREPLY=($(compgen -W "fwu fwd" -- "$cur")); return ;;
        --backend) COMPREPLY=($(compgen -W "alsa jack core" -- "$cur")); return ;;
        --fault)
            COMPREPLY=($(compgen -W "$faults" -- "$cur"))
            compopt -o nospace 2> /dev/null
            return ;;
        --port | --in-port)
            _hxhost_ports
            declare -F __ltrim_colon_completions > /dev/null && __ltrim_colon_completions "$cur"
            return ;;
        --field | --rate | --gap | --count | --seconds | --name | --code-version) return ;;
    esac

    if [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W "$options $output --help" -- "$cur"))
    else
        _hxhost_files ""
    fi
}

complete -F _hxhost hxhost

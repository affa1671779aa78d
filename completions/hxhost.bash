# bash completion for hxhost, made by scripts/options

_hxhost_files()
{
    local at=$1 found
    while IFS= read -r found; do
        [[ -d $found ]] && found+=/
        COMPREPLY+=("$at$found")
    done < <(compgen -f -- "${cur#"$at"}")
    compopt -o filenames -o nospace 2> /dev/null
}

_hxhost_ports()
{
    case $cur in
        simulator:*) _hxhost_files simulator: ;;
        replay:*) _hxhost_files replay: ;;
        device:*) _hxhost_files device: ;;
        *)
            COMPREPLY=($(compgen -W "simulator simulator: replay: device:" -- "$cur"))
            compopt -o nospace 2> /dev/null ;;
    esac
    declare -F __ltrim_colon_completions > /dev/null && __ltrim_colon_completions "$cur"
}

_hxhost()
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
            " ports" | " identify" | " info" | " update" | " batch" | " verify" | " recover" | \
            " image" | "image build" | "image inspect" | "image sign" | "image verify" | " inspect" | \
            " check" | " monitor" | " trace" | " simulate" | " support") command="${command:+$command }${words[i]}" ;;
        esac
    done

    case "$command $prev" in
        "ports --field" | "identify --field" | "identify --rate" | "identify --gap" | \
            "identify --serial" | "info --field" | "info --rate" | "info --gap" | "info --serial" | \
            "update --field" | "update --rate" | "update --gap" | "update --serial" | "batch --ports" \
            | "batch --jobs" | "batch --traces" | "batch --field" | "batch --rate" | "batch --gap" | \
            "verify --field" | "verify --rate" | "verify --gap" | "verify --serial" | \
            "recover --field" | "recover --rate" | "recover --gap" | "recover --serial" | \
            "image build --code-version" | "image build --field" | "image inspect --field" | \
            "image sign --field" | "image verify --field" | "inspect --field" | "check --field" | \
            "monitor --count" | "monitor --seconds" | "monitor --field" | "monitor --serial" | \
            "trace --field" | "simulate --name" | "simulate --seconds" | "simulate --field" | \
            "simulate --rate" | "simulate --gap" | "simulate --serial" | "support --field" | \
            "support --rate" | "support --gap" | "support --serial")
            return ;;
        "ports --progress" | "identify --progress" | "info --progress" | "update --progress" | \
            "batch --progress" | "verify --progress" | "recover --progress" | "image build --progress" \
            | "image inspect --progress" | "image sign --progress" | "image verify --progress" | \
            "inspect --progress" | "check --progress" | "monitor --progress" | "trace --progress" | \
            "simulate --progress" | "support --progress")
            COMPREPLY=($(compgen -W "auto bar json none plain" -- "$cur")); return ;;
        "ports --trace" | "ports --plugin" | "identify --trace" | "identify --plugin" | \
            "info --trace" | "info --plugin" | "update --pubkey" | "update --signature" | \
            "update --trace" | "update --plugin" | "batch --report" | "batch --pubkey" | \
            "batch --signature" | "batch --trace" | "batch --plugin" | "verify --trace" | \
            "verify --plugin" | "recover --trace" | "recover --plugin" | "image build -o" | \
            "image build --output" | "image build --trace" | "image build --plugin" | \
            "image inspect --trace" | "image inspect --plugin" | "image sign --key" | "image sign -o" \
            | "image sign --output" | "image sign --trace" | "image sign --plugin" | \
            "image verify --pubkey" | "image verify --signature" | "image verify --trace" | \
            "image verify --plugin" | "inspect --trace" | "inspect --plugin" | "check --image" | \
            "check --trace" | "monitor --trace" | "monitor --plugin" | "trace --svg" | "trace --trace" \
            | "simulate --state" | "simulate --trace" | "simulate --plugin" | "support -o" | \
            "support --output" | "support --image" | "support --last-trace" | "support --trace" | \
            "support --plugin")
            _hxhost_files ""; return ;;
        "identify --port" | "identify --in-port" | "info --port" | "info --in-port" | \
            "update --port" | "update --in-port" | "verify --port" | "verify --in-port" | \
            "recover --port" | "recover --in-port" | "monitor --port" | "support --port" | \
            "support --in-port")
            _hxhost_ports; return ;;
        "identify --fault" | "info --fault" | "update --fault" | "verify --fault" | \
            "recover --fault" | "monitor --fault" | "simulate --fault" | "support --fault")
            COMPREPLY=($(compgen -W "silent duplicate-message damage-message cut-message insert-message refuse wrong-model vanish bad-ack failed-ack power-cut bad-write drop-reply duplicate-reply damage-reply cut-reply insert-reply delay-reply late-reply swap-reply noise" -- "$cur")); return ;;
        "image build --kind")
            COMPREPLY=($(compgen -W "fwd fwu" -- "$cur")); return ;;
        "simulate --backend")
            COMPREPLY=($(compgen -W "alsa jack core" -- "$cur")); return ;;
    esac

    case $command in
        "") offers="ports identify info update batch verify recover image inspect check monitor trace simulate support --help --version" files=none ;;
        "ports") offers="--help --probe --json --field --progress --quiet --verbose --trace --plugin" files=none ;;
        "identify") offers="--help --json --field --progress --quiet --verbose --trace --plugin --port --in-port --rate --gap --slow-host --fault --serial --stop-at-eof" files=none ;;
        "info") offers="--help --json --field --progress --quiet --verbose --trace --plugin --port --in-port --rate --gap --slow-host --fault --serial --stop-at-eof" files=none ;;
        "update") offers="--help --dry-run --yes --no-listen --pubkey --signature --unsigned --json --field --progress --quiet --verbose --trace --plugin --port --in-port --rate --gap --slow-host --fault --serial --stop-at-eof" files=files ;;
        "batch") offers="--help --ports --jobs --watch --skip-silent --no-listen --report --traces --pubkey --signature --unsigned --json --field --progress --quiet --verbose --trace --plugin --rate --gap --slow-host" files=files ;;
        "verify") offers="--help --json --field --progress --quiet --verbose --trace --plugin --port --in-port --rate --gap --slow-host --fault --serial --stop-at-eof" files=files ;;
        "recover") offers="--help --json --field --progress --quiet --verbose --trace --plugin --port --in-port --rate --gap --slow-host --fault --serial --stop-at-eof" files=none ;;
        "image") offers="build inspect sign verify --help" files=none ;;
        "image build") offers="--help --output --kind --code-version --json --field --progress --quiet --verbose --trace --plugin" files=files ;;
        "image inspect") offers="--help --json --field --progress --quiet --verbose --trace --plugin" files=files ;;
        "image sign") offers="--help --key --output --json --field --progress --quiet --verbose --trace --plugin" files=files ;;
        "image verify") offers="--help --pubkey --signature --json --field --progress --quiet --verbose --trace --plugin" files=files ;;
        "inspect") offers="--help --json --field --progress --quiet --verbose --trace --plugin" files=none ;;
        "check") offers="--help --image --json --field --progress --quiet --verbose --trace" files=files ;;
        "monitor") offers="--help --count --seconds --json --field --progress --quiet --verbose --trace --plugin --port --fault --serial" files=none ;;
        "trace") offers="--help --svg --json --field --progress --quiet --verbose --trace" files=files ;;
        "simulate") offers="--help --device --name --backend --state --seconds --json --field --progress --quiet --verbose --trace --plugin --rate --gap --fault --serial" files=files ;;
        "support") offers="--help --output --image --last-trace --json --field --progress --quiet --verbose --trace --plugin --port --in-port --rate --gap --slow-host --fault --serial --stop-at-eof" files=none ;;
    esac

    if [[ $cur == -* || $files == none ]]; then
        COMPREPLY=($(compgen -W "$offers" -- "$cur"))
    elif [[ $files == data && $cur == @* ]]; then
        _hxhost_files @
    elif [[ $files == fields && -n $cur && $cur != @* ]]; then
        COMPREPLY=($(compgen -S @ -W "" -- "$cur"))
        compopt -o nospace 2> /dev/null
    elif [[ $files == fields ]]; then
        _hxhost_files @
    elif [[ $files == files ]]; then
        _hxhost_files ""
    fi
}

complete -F _hxhost hxhost

# Completion of kdsim for bash: options, their words, and folders.

_kdsim() {
    local word=${COMP_WORDS[COMP_CWORD]} before='' words=''
    COMPREPLY=()
    [ "$COMP_CWORD" -gt 0 ] && before=${COMP_WORDS[COMP_CWORD - 1]}

    case $before in
    --product) words="KD3 KDX 2010 HALV TRAX" ;;
    --loader) words="rb kd" ;;
    --baud) words="9600 38400" ;;
    --loader-fault)
        words="drop-out early-end wrong-sum erased wrong-check silent-end silent-after-y second-go"
        ;;
    --port | --dives | --break-off | --drop | --flip | --pieces | --delay | --vanish | --unasked) return ;;
    esac
    if [ -z "$words" ] && [[ $word == -* ]]; then
        words="--help --version --port --unpaced --dives --third-version --product --keep --silent --break-off --drop"
        words+=" --flip --pieces --delay --vanish --unasked --loader --large-beacon --baud --loader-fault"
    fi
    if [ -n "$words" ]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -d -- "$word")
        compopt -o filenames 2>/dev/null
    fi
}

complete -F _kdsim kdsim

# Completion of benthorctl for bash: source this file, or lay it into a folder that bash-completion reads, such as
# ~/.local/share/bash-completion/completions, under the name "benthorctl". The package does that for everybody.

_benthorctl_reply() { # words to choose from, between blanks
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$word")
}

_benthorctl_paths() { # options of compgen
    mapfile -t COMPREPLY < <(compgen "$@" -- "$word")
    compopt -o filenames 2>/dev/null
}

# Files with an ending, in any case of letters, and the folders on the way to them.
_benthorctl_files() { # ending
    mapfile -t COMPREPLY < <(
        compgen -d -- "$word"
        shopt -s nocasematch
        compgen -f -- "$word" | while IFS= read -r path; do
            [[ -f $path && $path == *".$1" ]] && printf '%s\n' "$path"
        done
    )
    compopt -o filenames 2>/dev/null
}

_benthorctl() {
    local word=${COMP_WORDS[COMP_CWORD]} before='' command='' i
    local commands="list show samples check import export dataset merge verify stats"
    local selection="--all --since --until --find"
    COMPREPLY=()
    [ "$COMP_CWORD" -gt 0 ] && before=${COMP_WORDS[COMP_CWORD - 1]}

    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
        --folder | --since | --until | --find | --format | --output | --logbook) ((++i)) ;;
        -*) ;;
        *)
            command=${COMP_WORDS[i]}
            break
            ;;
        esac
    done

    case $before in
    --folder)
        _benthorctl_paths -d
        return
        ;;
    --format)
        _benthorctl_reply "uddf json csv zxu"
        return
        ;;
    --output)
        _benthorctl_paths -f
        return
        ;;
    --since | --until | --find | --logbook) return ;;
    esac

    if [[ $word == -* ]]; then
        local options="--folder --json --help"
        case $command in
        '') options+=" --version" ;;
        list | check) options+=" $selection" ;;
        export) options+=" --format --output --force $selection" ;;
        dataset) options+=" --logbook $selection" ;;
        merge) options+=" --dry-run" ;;
        esac
        _benthorctl_reply "$options"
        return
    fi

    case $command in
    '') _benthorctl_reply "$commands" ;;
    import) _benthorctl_files txt ;;
    verify) _benthorctl_files mdb ;;
    merge) _benthorctl_files mdb ;;
    dataset) _benthorctl_paths -d ;;
    esac
}

complete -F _benthorctl benthorctl

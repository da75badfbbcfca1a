# Completion of benthor for bash: options, the program folder, and the files that it opens.

_benthor() {
    local word=${COMP_WORDS[COMP_CWORD]} before=''
    COMPREPLY=()
    [ "$COMP_CWORD" -gt 0 ] && before=${COMP_WORDS[COMP_CWORD - 1]}

    if [ "$before" = --folder ]; then
        mapfile -t COMPREPLY < <(compgen -d -- "$word")
        compopt -o filenames 2>/dev/null
    elif [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--folder --help --version" -- "$word")
    else
        # Setups and firmware images, in any case of letters, and the folders on the way to them.
        mapfile -t COMPREPLY < <(
            compgen -d -- "$word"
            shopt -s nocasematch
            compgen -f -- "$word" | while IFS= read -r path; do
                [[ -f $path && ($path == *.mit || $path == *.sog) ]] && printf '%s\n' "$path"
            done
        )
        compopt -o filenames 2>/dev/null
    fi
}

complete -F _benthor benthor

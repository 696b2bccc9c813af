# Completion of the vemo command in bash.

_vemo() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
    # "--format=csv" comes in three words.
    if [[ $cur == "=" ]]; then
        cur=
    elif [[ $prev == "=" ]]; then
        prev=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    local words="" IFS=$' \t\n'
    case $prev in
        --format) words="table csv tsv markdown html json" ;;
        --color) words="auto always never" ;;
        --language) words="en de es fr ja" ;;
        --locale) words="en_US en_GB de_DE es_ES fr_FR ja_JP" ;;
        --timezone) words="UTC $(awk '!/^#/ { print $3 }' /usr/share/zoneinfo/zone1970.tab 2>/dev/null)" ;;
        --precision) words="0 1 2 3 4 6 8 10" ;;
        --extensions | --check-extensions)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$cur")
            return
            ;;
        -e | --expression | --now | --places) return ;;
        *)
            if [[ $cur == -* ]]; then
                words="-e --expression --watch -i --interactive -r --results --plain --format --json --short --precision --color
                    -q --quiet --explain --locale --language --timezone --now --rates --coins --places --offline
                    --extensions --check-extensions --debug -h --help --version"
            else
                compopt -o filenames
                mapfile -t COMPREPLY < <(compgen -f -- "$cur")
                return
            fi
            ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur")
}

complete -F _vemo vemo

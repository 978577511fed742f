# Completion of quor-gjf for bash: commands, options, job files, and the words of a route.

# Sets COMPREPLY to what completes the route that is being written; cur is the part behind the last break of words.
_quor_gjf_route() {
    local line=${COMP_LINE:0:COMP_POINT} command=$1 text kept word
    text=${line#*"$command"}
    text=${text//[\"\'\\]/}
    # What stands before the last separator of the word under the cursor is kept.
    kept=${cur%"${cur##*[=(,/: \"\']}"}
    COMPREPLY=()
    while IFS= read -r word; do
        [[ -n $word ]] && COMPREPLY+=("$kept$word")
    done < <("${COMP_WORDS[0]}" complete -- "${text# }" 2>/dev/null)
    compopt -o nospace 2>/dev/null
}

_quor_gjf() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev="" command="" options i
    ((COMP_CWORD > 0)) && prev=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
            --config) ((++i)) ;;
            -*) ;;
            *) command=${COMP_WORDS[i]}; break ;;
        esac
    done
    case $command in
        "") options="--help --version --config" ;;
        report | outline) options="--help --json --jobs" ;;
        check) options="--help --json --jobs --ignore --fail-on --list" ;;
        route | complete) options="--help --json" ;;
        edit) options="--help --set --unset --chk-from-name --title --charge --multiplicity --method --basis --add-keyword
            --remove-keyword --option --freeze --layer --fragment --translate --remove-atoms --section --remove-section
            --list-kinds --job --diff --dry-run --in-place --output --force --jobs" ;;
        format) options="--help --output --in-place --force --drop-comments" ;;
        split | join) options="--help --output --force" ;;
        schema) options="--help --json" ;;
    esac
    case $prev in
        --ignore)
            mapfile -t COMPREPLY < <(compgen -W "$("${COMP_WORDS[0]}" check --list 2>/dev/null | cut -d ' ' -f 1)" -- "$cur")
            return ;;
        --fail-on)
            mapfile -t COMPREPLY < <(compgen -W "error warning note" -- "$cur")
            return ;;
        --unset)
            mapfile -t COMPREPLY < <(compgen -W "mem nprocshared chk oldchk rwf cpu" -- "$cur")
            return ;;
        --remove-section)
            mapfile -t COMPREPLY < <(compgen -W "$("${COMP_WORDS[0]}" edit --list-kinds 2>/dev/null | awk '{print $2}')" -- "$cur")
            return ;;
        -j | --jobs | --job | --title | --charge | --multiplicity | --method | --basis | --add-keyword | --remove-keyword | \
            --option | --freeze | --layer | --fragment | --translate | --remove-atoms)
            return ;;
    esac
    if [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
        return
    fi
    case $command in
        "")
            if [[ $prev != --config ]]; then
                mapfile -t COMPREPLY < <(compgen -W "report check outline route complete edit format split join schema" -- "$cur")
                return
            fi ;;
        route | complete) _quor_gjf_route "$command"; return ;;
        schema)
            if [[ $prev == schema ]]; then
                mapfile -t COMPREPLY < <(compgen -W "validate show where" -- "$cur")
                return
            fi ;;
    esac
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$cur")
}

complete -F _quor_gjf quor-gjf

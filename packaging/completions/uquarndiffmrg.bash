# shellcheck shell=bash
# bash completion for uquarndiffmrg: options, encodings, and files where nothing is answered.

# The words before the current one, the program's name left out, include a contributor.
_uquarndiffmrg_has_contributor() {
    local word before=
    for word; do
        case $before in
        -out | -encoding | -fname | -favor_contrib) ;; # its value
        *) [[ $word == -* ]] || return 0 ;;
        esac
        before=$word
    done
    return 1
}

_uquarndiffmrg() {
    local word=${COMP_WORDS[COMP_CWORD]}
    local options='-out -blank_ignore -favor_contrib -encoding -fname'
    COMPREPLY=()
    if [[ ${COMP_WORDS[COMP_CWORD - 1]} == -encoding ]]; then
        options='utf-8 utf-16le utf-16be utf-32le utf-32be'
    elif [[ $word != -* ]]; then
        return
    elif ! _uquarndiffmrg_has_contributor "${COMP_WORDS[@]:1:COMP_CWORD-1}"; then
        options+=' -base' # the base comes before every contributor, and is one
    fi
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
}

complete -o bashdefault -o default -F _uquarndiffmrg uquarndiffmrg

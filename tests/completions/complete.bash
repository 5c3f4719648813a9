# shellcheck shell=bash
# complete.bash SCRIPT LINE: what bash offers at the end of LINE with the completion script, one word
# a line: the function's words, or files where it has none and its registration asks for them.
# shellcheck disable=SC1090 # the one under test
. "$1"
line=$2
read -ra COMP_WORDS <<<"$line"
[[ $line != *' ' ]] || COMP_WORDS+=('')
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
word=${COMP_WORDS[COMP_CWORD]}
registration=$(complete -p "${COMP_WORDS[0]}")
[[ $registration =~ ' -F '([^ ]+) ]]
"${BASH_REMATCH[1]}" "${COMP_WORDS[0]}" "$word" "${COMP_WORDS[COMP_CWORD - 1]}"
if [[ ${#COMPREPLY[@]} -eq 0 && $registration == *' -o default '* ]]; then
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
fi
printf '%s\n' "${COMPREPLY[@]}"

# fish completion for uquarndiffmrg: options, encodings, files.

# The words before the current one include a contributor.
function __uquarndiffmrg_has_contributor
    set -l before
    for word in (commandline -opc)[2..]
        switch "$before"
            case -out -encoding -fname -favor_contrib # its value
            case '*'
                string match -q -- '-*' $word; or return 0
        end
        set before $word
    end
    return 1
end

complete -c uquarndiffmrg -o out -r -F -d 'Ask for a merge into this file'
complete -c uquarndiffmrg -o blank_ignore -d 'Ignore blanks'
complete -c uquarndiffmrg -o favor_contrib -x -d 'The favoured contributor'
complete -c uquarndiffmrg -o encoding -x -d 'The encoding of all contributors' \
    -a 'utf-8 utf-16le utf-16be utf-32le utf-32be'
complete -c uquarndiffmrg -o fname -x -d 'Display name of the next contributor'
complete -c uquarndiffmrg -n 'not __uquarndiffmrg_has_contributor' -o base -r -F \
    -d 'The common ancestor, before every contributor'

# shellcheck shell=sh
# What difftool and mergetool share; sourced, never run.

# shellcheck disable=SC2034 # for those that source this
launcher=$(dirname "$0")/../../../bin/uquarndiffmrg
unset QUARNFOLD_ROOT # git's paths are whole

# encoding_by_mark DEFAULT FILE...: what the byte-order mark of the first file that has any bytes
# says.
encoding_by_mark() {
    default=$1
    shift
    for file in "$@"; do
        [ -s "$file" ] && break
    done
    case $(od -An -tx1 -N4 -- "$file" | tr -d ' \n') in
    fffe0000) echo utf-32le ;;
    0000feff) echo utf-32be ;;
    fffe*) echo utf-16le ;;
    feff*) echo utf-16be ;;
    *) echo "$default" ;;
    esac
}

# encoding_of PATH FILE...: the encoding of the FILEs, which are versions of what is at PATH in the
# work tree: the one that .gitattributes gives, else what they tell themselves.
encoding_of() {
    attribute=$(git check-attr working-tree-encoding -- "$1" 2>/dev/null)
    path=$1
    shift
    case $(printf %s "${attribute##*: }" | tr '[:upper:]' '[:lower:]') in
    '' | unspecified | unset | set) encoding_by_mark utf-8 "$@" ;;
    utf-8 | utf8) echo utf-8 ;;
    utf-16le | utf-16le-bom) echo utf-16le ;;
    utf-16be | utf-16be-bom) echo utf-16be ;;
    utf-16) encoding_by_mark utf-16be "$@" ;;
    utf-32le) echo utf-32le ;;
    utf-32be) echo utf-32be ;;
    utf-32) encoding_by_mark utf-32be "$@" ;;
    *)
        echo "uquarndiffmrg: $path: cannot read the working-tree-encoding ${attribute##*: }" >&2
        return 1
        ;;
    esac
}

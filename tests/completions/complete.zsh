# complete.zsh FUNCTIONS LINE: what zsh offers at the end of LINE with the completion functions in
# the folder FUNCTIONS, one word a line. Keys are typed into a shell on a terminal of its own, since
# zsh completes nowhere else; its settings are written to the folder ZDOTDIR.
zmodload zsh/zpty

cat >$ZDOTDIR/.zshrc <<'SETTINGS'
PS1='ready>'
unsetopt beep
fpath=($FUNCTIONS $fpath)
autoload -U compinit
compinit -D -u
compadd() {
    local -a offered
    # Calls that only ask for the matches add none.
    if [[ ${@[1,(i)(-|--)]} != *(-O|-A|-D)* ]]; then
        builtin compadd -A offered "$@"
        (($#offered)) && print -rl -- $offered >>$ZDOTDIR/offered
    fi
    builtin compadd "$@"
}
SETTINGS

: >$ZDOTDIR/offered
export FUNCTIONS=$1
zpty shell zsh -i
zpty -r -m shell ignored '*ready>*'
zpty -w -n shell "$2"$'\t\C-uexit\n'
while zpty -r shell ignored; do :; done
sort -u $ZDOTDIR/offered

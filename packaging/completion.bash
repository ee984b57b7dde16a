# Completes the words of kestrovactl; the tables in front are printed by `kestrovactl help --completion`.
# Where this answers nothing, bash names files.
_kestrovactl() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local command='' at=0 i words=''
    COMPREPLY=()
    [[ " $_kestrovactl_valued " != *" $before "* ]] || return 0
    for ((i = 1; i < COMP_CWORD; ++i)); do
        if [[ " $_kestrovactl_valued " == *" ${COMP_WORDS[i]} "* ]]; then
            ((++i))
        elif [[ ${COMP_WORDS[i]} != -* ]]; then
            command=${COMP_WORDS[i]} at=$i
            break
        fi
    done
    if [[ -z $command ]]; then
        words="${!_kestrovactl_verbs[*]} help --home --yes --no --json --version --help"
    elif [[ $word == -* ]]; then
        words=${_kestrovactl_options[$command]-}
    elif ((COMP_CWORD == at + 1)); then
        words=${_kestrovactl_verbs[$command]-}
        [[ $command != help ]] || words="${!_kestrovactl_verbs[*]} topics"
    fi
    [[ -z $words ]] || mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -o default -F _kestrovactl kestrovactl

_kestrova() {
    COMPREPLY=()
    [[ ${COMP_WORDS[COMP_CWORD]} != -* ]] ||
        mapfile -t COMPREPLY < <(compgen -W "--home --version --help" -- "${COMP_WORDS[COMP_CWORD]}")
}
complete -o default -F _kestrova kestrova

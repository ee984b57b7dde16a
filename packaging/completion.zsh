# Completes the words of kestrovactl and kestrova in zsh; the tables in front are printed by
# `kestrovactl help --completion zsh`.
_kestrovactl_words() {
    local before=$words[CURRENT-1] now=$words[CURRENT] command='' place
    integer at=0 i
    if [[ $service == kestrova ]]; then
        _arguments '--home[the folder of the program]:folder:_directories' '--version' '--help' '*:file:_files'
        return
    fi
    if [[ " $_kestrovactl_valued " == *" $before "* ]]; then
        _files
        return
    fi
    for ((i = 2; i < CURRENT; ++i)); do
        if [[ " $_kestrovactl_valued " == *" $words[i] "* ]]; then
            ((++i))
        elif [[ $words[i] != -* ]]; then
            command=$words[i] at=$i
            break
        fi
    done
    if [[ -z $command ]]; then
        compadd -- ${(k)_kestrovactl_verbs} help --home --yes --no --json --version --help
    elif [[ $now == -* ]]; then
        compadd -- ${=_kestrovactl_options[$command]}
    elif ((CURRENT == at + 1)) && [[ $command == help ]]; then
        compadd -- ${(k)_kestrovactl_verbs} topics
    elif ((CURRENT == at + 1)) && [[ -n $_kestrovactl_verbs[$command] ]]; then
        compadd -- ${=_kestrovactl_verbs[$command]}
    else
        _files
    fi
}
_kestrovactl_words

# Completes the words of kestrovactl and kestrova in fish; the lines in front are printed by
# `kestrovactl help --completion fish`, and ask these functions.

# The words that are no options and no values of options, without the program's name.
function __kestrovactl_words
    set -l skip 0
    for word in (commandline -opc)[2..-1]
        if test $skip = 1
            set skip 0
        else if contains -- $word $__kestrovactl_valued
            set skip 1
        else if not string match -q -- '-*' $word
            echo $word
        end
    end
end

# Behind the command COMMAND, or behind `help` for the place that a command has otherwise.
function __kestrovactl_in -a command
    set -l words (__kestrovactl_words)
    test "$words[1]" = "$command"
end

# PLACE [COMMAND]: a word of its own stands next, behind that many others, the command first.
function __kestrovactl_at -a place command
    set -l words (__kestrovactl_words)
    if test "$words[1]" = help -a $place = 0
        test (count $words) = 1
        return
    end
    test (count $words) = $place; or return 1
    test $place = 0; or test "$words[1]" = "$command"
end

complete -c kestrovactl -n '__kestrovactl_at 0' -f -a help -d 'help [COMMAND|TOPIC|topics]'
complete -c kestrovactl -n '__kestrovactl_in help' -f -a topics
complete -c kestrovactl -l home -r -d "the program's folder"
complete -c kestrovactl -l yes -d 'answers questions with yes'
complete -c kestrovactl -l no -d 'answers questions with no'
complete -c kestrovactl -l json -d 'the result as JSON'
complete -c kestrovactl -l version
complete -c kestrovactl -l help

complete -c kestrova -l home -r -d "the program's folder"
complete -c kestrova -l version
complete -c kestrova -l help

# Completion for fish: the command itself says what may come next.
complete -c appledger -a '(appledger complete -- (commandline -opc)[2..-1] (commandline -ct) 2>/dev/null | string replace "  " \t)'

# Completion for bash: the command itself says what may come next.
_appledger() {
    local line
    COMPREPLY=()
    while IFS= read -r line; do
        COMPREPLY+=("${line%%  *}")
    done < <("${COMP_WORDS[0]}" complete -- "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
    # Where it has no word, names of files are meant.
    [[ ${#COMPREPLY[@]} -gt 0 ]] || compopt -o default
}
complete -F _appledger appledger

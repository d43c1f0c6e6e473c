# Completion of tarvane for bash: the program itself says what may stand there.
_tarvane() {
    local candidate
    COMPREPLY=()
    # Of its own answer a name with blanks is one candidate.
    while IFS= read -r candidate; do
        case $candidate in
            $'\t'FILE) compopt -o default ;;
            $'\t'FOLDER) compopt -o dirnames ;;
            *) COMPREPLY+=("$candidate") ;;
        esac
    done < <("${1/#\~\//$HOME/}" complete-words "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
}
complete -F _tarvane tarvane

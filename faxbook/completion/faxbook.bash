# Completion of faxbook for bash.
_faxbook() {
    local word words=()
    for word in "${COMP_WORDS[@]:1:COMP_CWORD}"; do
        # The word as the program would get it.
        case $word in
            \"*) word=${word#\"} word=${word%\"} ;;
            \'*) word=${word#\'} word=${word%\'} ;;
            *) word=${word//\\/} ;;
        esac
        words+=("$word")
    done
    mapfile -t COMPREPLY < <("$1" complete "$((COMP_CWORD - 1))" -- "${words[@]}" 2>/dev/null)
    # Bash quotes what needs it, as it does in names of files.
    compopt -o filenames
}
complete -o default -F _faxbook faxbook faxbook.exe

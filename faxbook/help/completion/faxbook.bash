# Completion of faxbook for bash.
_faxbook() {
    # What is printed is quoted as it must stand in the place of the word that readline replaces, $2.
    mapfile -t COMPREPLY < <("$1" complete-line -- "${COMP_LINE:0:COMP_POINT}" "$2" 2>/dev/null)
}
complete -o default -F _faxbook faxbook faxbook.exe

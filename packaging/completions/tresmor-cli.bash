# Completions of tresmor-cli for bash. The program itself tells what fits.
_tresmor_cli() {
  local answer
  answer=$("$1" complete "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
  case $answer in
    files) compopt -o filenames && mapfile -t COMPREPLY < <(compgen -f -- "$2") ;;
    folders) compopt -o filenames && mapfile -t COMPREPLY < <(compgen -d -- "$2") ;;
    "") COMPREPLY=() ;;
    *) mapfile -t COMPREPLY < <(cut -f 1 <<<"$answer") ;;
  esac
}
complete -F _tresmor_cli tresmor-cli

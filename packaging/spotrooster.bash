# Completion of spotrooster for bash.

_spotrooster() {
  local word=$2
  local option=$3
  # Without spaces bash makes a word of the equals sign in --theme=dark.
  [ "$word" = "=" ] && word=""
  [ "$option" = "=" ] && option=${COMP_WORDS[COMP_CWORD - 2]}
  COMPREPLY=()
  case "$option" in
    --folder)
      mapfile -t COMPREPLY < <(compgen -d -- "$word")
      compopt -o filenames 2>/dev/null
      ;;
    --theme) mapfile -t COMPREPLY < <(compgen -W "light dark" -- "$word") ;;
    *) mapfile -t COMPREPLY < <(compgen -W "--folder --theme --version --help" -- "$word") ;;
  esac
}
complete -F _spotrooster spotrooster

# Completion of spotrooster-db for bash.

_spotrooster_db() {
  local word=$2
  local command=${COMP_WORDS[1]}
  local -A options=(
    [create]="--station --name"
    [demo]=""
    [tables]="--password"
    [schema]="--password"
    [dump]="--password"
    [sql]="--password"
    [measure]=""
    [check]="--password"
    [compact]="--password --zonder-reservekopie"
    [restore]="--zonder-reservekopie"
    [copy]="--refresh"
    [export]="--bestand-verwerkt --bestand-niet-verwerkt --station --vorige-verwerkt"
    [apply]="--from --folder --report --audio-to --program --dry-run --out-of-order"
    [conflicts]="--take --all"
    [spots]="--ending --station"
    [locate]="--station --write"
    [playout]="--form --to --at --station"
    [played]="--dag --password --aan --uit"
  )
  COMPREPLY=()
  if [ "$COMP_CWORD" -eq 1 ]; then
    mapfile -t COMPREPLY < <(compgen -W "${!options[*]} help --help" -- "$word")
  elif [ "$command" = help ]; then
    mapfile -t COMPREPLY < <(compgen -W "${!options[*]}" -- "$word")
  elif [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "${options[$command]:-} --help" -- "$word")
  else
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
    compopt -o filenames 2>/dev/null
  fi
}
complete -F _spotrooster_db spotrooster-db

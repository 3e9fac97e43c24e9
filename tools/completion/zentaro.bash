# bash completion of zentaro and zentaro-printer. Everything is asked from the program itself, so it never lists what is not there.

_zentaro_subcommands() {
  "$1" "${@:2}" --help 2>/dev/null | sed -nE '/^(Subcommands|Órdenes):/,$ s/^  ([a-z][a-z-]*) .*/\1/p'
}

_zentaro_options() {
  ZENTARO_LANG=en "$1" "${@:2}" --help 2>/dev/null | grep -oE -- '(^| |,)--[a-z][a-z-]*' | tr -d ' ,' | sort -u
}

# The members of the printer object: what stands indented before "(" or ":".
_zentaro_members() {
  ZENTARO_LANG=en "$1" members CZentaro 2>/dev/null | sed -n 's/^  \([A-Za-z]*\)[(:].*/\1/p'
}

_zentaro_settings() {
  ZENTARO_LANG=en "$1" settings list 2>/dev/null | sed -n 's/^\([A-Za-z0-9]*\)  *.*  \(default\|set\|machine\)$/\1/p'
}

_zentaro() {
  local program=${COMP_WORDS[0]} word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local command=${COMP_WORDS[1]} choices= at
  local -a path=()  # the words of the command in front, such as serve token add
  for ((at = 1; at < COMP_CWORD; at++)); do
    [[ ${COMP_WORDS[at]} =~ ^[a-z]+$ ]] || break
    path+=("${COMP_WORDS[at]}")
  done
  COMPREPLY=()
  if [[ $previous == --lang ]]; then
    choices='es en'
  elif [[ $previous == --port ]]; then
    choices='1 2 3 4 5 6 7 8'
  elif [[ $word == --* ]]; then
    choices=$(_zentaro_options "$program" "${path[@]}")
  elif [[ $command == help ]]; then
    choices=$(_zentaro_subcommands "$program")
  elif [[ $command == call || $command == members ]] && [[ $previous != --* || $previous == --json ]]; then
    choices=$(_zentaro_members "$program")
  elif [[ $command == cierre ]]; then
    choices='x z'
  elif [[ $command == printer ]] && ((COMP_CWORD == 2)); then
    choices=tell
  elif [[ $command == settings ]] && ((COMP_CWORD == 3)); then
    choices=$(_zentaro_settings "$program")
  elif ((${#path[@]} == COMP_CWORD - 1)); then
    choices=$(_zentaro_subcommands "$program" "${path[@]}")
  fi
  # Without choices, bash offers the names of files.
  [[ -n $choices ]] && mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$word")
}

_zentaro_printer() {
  local word=${COMP_WORDS[COMP_CWORD]}
  COMPREPLY=()
  # Without choices, bash offers the names of files.
  local choices=
  [[ $word == -* ]] && choices=$(_zentaro_options "${COMP_WORDS[0]}")
  [[ ${COMP_WORDS[COMP_CWORD - 1]} == --lang ]] && choices='es en'
  [[ -z $choices ]] || mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$word")
}

complete -o bashdefault -o default -F _zentaro zentaro
complete -o bashdefault -o default -F _zentaro_printer zentaro-printer

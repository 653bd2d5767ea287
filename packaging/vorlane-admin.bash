# Completion for vorlane-admin; commands and options are those that the program itself tells of.
_vorlane_admin() {
  local word=${COMP_WORDS[COMP_CWORD]}
  if [ "$COMP_CWORD" -eq 1 ]; then
    COMPREPLY=($(compgen -W "--help --version $("$1" --help 2>/dev/null | sed -n 's/^  \([a-z-]*\) .*/\1/p')" -- "$word"))
  elif [[ ${COMP_WORDS[COMP_CWORD - 1]} == --scale ]]; then
    COMPREPLY=($(compgen -W "small shop max" -- "$word"))
  elif [[ $word == -* ]]; then
    COMPREPLY=($(compgen -W "--help $("$1" "${COMP_WORDS[1]}" --help 2>/dev/null | sed -n 's/^  \(--[a-z-]*\) .*/\1/p')" -- "$word"))
  else
    compopt -o filenames
    COMPREPLY=($(compgen -f -- "$word"))
  fi
}
complete -F _vorlane_admin vorlane-admin

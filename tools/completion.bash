# bash completion of kx300-devhost and kx300-upssim, made of what their own --help says.

_kx300_complete() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} help value= words=
  help=$("$1" --help 2>/dev/null) || return 0
  case $before in
    --*) value=$(sed -n "s/^ *$before <\([^>]*\)>.*/\1/p" <<<"$help") ;;
  esac
  case $before:${value^^} in
    --scenario:*) words=$(sed -n '/^Scenarios:/,/^$/s/^  \([a-z-]*\) .*/\1/p' <<<"$help") ;;
    --palette:*) words='light dark' ;;
    *:DIR)
      compopt -o filenames 2>/dev/null || true # outside of a completion there are no options
      mapfile -t COMPREPLY < <(compgen -d -- "$word")
      return ;;
    *:FILE | *:LINK)
      compopt -o filenames 2>/dev/null || true # outside of a completion there are no options
      mapfile -t COMPREPLY < <(compgen -f -- "$word")
      return ;;
    *:) words=$(sed -n 's/^ *\(-[a-z?], \)*\(--[a-z-]*\).*/\2/p' <<<"$help") ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}

complete -F _kx300_complete kx300-devhost kx300-upssim

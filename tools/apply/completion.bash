# SPDX-License-Identifier: MIT
# Completion of kelvm-apply in bash.
_kelvm_apply() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} functions i
  COMPREPLY=()
  functions=$(kelvm-apply --list 2>/dev/null)
  case $before in
    --from | --to) mapfile -t COMPREPLY < <(compgen -W 'text npy raw' -- "$word"); return ;;
    --compare) mapfile -t COMPREPLY < <(compgen -W "mpfr A11 A21 A24 A26 A50 A53 $functions" -- "$word"); return ;;
    --info) mapfile -t COMPREPLY < <(compgen -W "$functions" -- "$word"); return ;;
    -x | --exponent) return ;;
    -o | --output) compopt -o default; return ;;
  esac
  if [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W '--output --exponent --from --to --compare --list --info --version --help' -- "$word")
    return
  fi
  for ((i = 1; i < COMP_CWORD; ++i)); do
    [[ ${COMP_WORDS[i]} == kels* ]] && { compopt -o default; return; } # a file
  done
  mapfile -t COMPREPLY < <(compgen -W "$functions" -- "$word")
}
complete -F _kelvm_apply kelvm-apply

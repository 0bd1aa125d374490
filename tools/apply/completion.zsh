#compdef kelvm-apply
# SPDX-License-Identifier: MIT
# Completion of kelvm-apply in zsh.
_kelvm_apply_functions() {
  compadd -- ${(f)"$(kelvm-apply --list 2>/dev/null)"}
}
_kelvm_apply_compare() {
  compadd mpfr A11 A21 A24 A26 A50 A53
  _kelvm_apply_functions
}

_arguments \
  '(-o --output)'{-o,--output}'[write to this file]:file:_files' \
  '(-x --exponent)'{-x,--exponent}'[exponent of a scalar-power function]:number: ' \
  '--from[format of the input]:format:(text npy raw)' \
  '--to[format of the output]:format:(text npy raw)' \
  '--compare[measure the error against this]:reference:_kelvm_apply_compare' \
  '(- *)--list[list all functions]' \
  '(- *)--info[describe a function]:function:_kelvm_apply_functions' \
  '(- *)--version[show the version]' \
  '(- *)--help[show the options]' \
  '1:function:_kelvm_apply_functions' \
  '*:file:_files'

# SPDX-License-Identifier: MIT
# Completion of kelvm-apply in fish.
function __kelvm_apply_wants_function
    not string match -q 'kels*' -- (commandline -opc)
end

complete -c kelvm-apply -n __kelvm_apply_wants_function -f -a '(kelvm-apply --list 2>/dev/null)'
complete -c kelvm-apply -s o -l output -r -F -d 'Write to this file'
complete -c kelvm-apply -s x -l exponent -x -d 'Exponent of a scalar-power function'
complete -c kelvm-apply -l from -x -a 'text npy raw' -d 'Format of the input'
complete -c kelvm-apply -l to -x -a 'text npy raw' -d 'Format of the output'
complete -c kelvm-apply -l compare -x -a 'mpfr A11 A21 A24 A26 A50 A53 (kelvm-apply --list 2>/dev/null)' -d 'Measure the error against this'
complete -c kelvm-apply -l list -f -d 'List all functions'
complete -c kelvm-apply -l info -x -a '(kelvm-apply --list 2>/dev/null)' -d 'Describe a function'
complete -c kelvm-apply -l version -f -d 'Show the version'
complete -c kelvm-apply -l help -f -d 'Show the options'

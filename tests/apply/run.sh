#!/usr/bin/env bash
# The program kelvm-apply: good runs give the right bytes; bad input gives one line, exit status 2 and no output.
# usage: run.sh PATH_OF_KELVM_APPLY
set -u
apply=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
failures=0

fail() {
  echo "FAILED: $*"
  failures=$((failures + 1))
}

# good EXPECTED_OUTPUT ARGUMENTS...: exit status 0, this output (printf notation), one line on standard error.
good() {
  local expected
  expected=$(printf '%b' "$1")
  shift
  local output
  output=$("$apply" "$@" 2>errors) || fail "$*: exit status $?: $(cat errors)"
  [[ $output == "$expected" ]] || fail "$*: wrote '$output', expected '$expected'"
  grep -qE '^kels[A-Za-z0-9_]+: [0-9]+ elements, status -?[0-9]+ \(.*\), [0-9.e+]+ elements per second$' errors ||
    fail "$*: report is '$(cat errors)'"
}

# bad LINE ARGUMENTS...: exit status 2, this line alone on standard error, the output file untouched, nothing beside it.
bad() {
  local line=$1 status
  shift
  mkdir out
  echo before >out/result
  "$apply" -o out/result "$@" >stdout 2>errors
  status=$?
  [[ $status == 2 ]] || fail "$*: exit status $status"
  [[ $(cat errors) == "$line" ]] || fail "$*: said '$(cat errors)', expected '$line'"
  [[ $(cat out/result) == before && $(ls -A out) == result && ! -s stdout ]] || fail "$*: left output: $(ls -A out)"
  rm -r out
}

printf '# three numbers\n 1.5 -2.5\t# two of them\n0x1p-1\r\n' >three
printf '0.1\n0.2\n1e308' >decimals
printf '1 2\n3 4' >four
printf '1\n2x\n' >word
printf '1 2\n\n1e999\n' >large
printf '1\n\n2\n3\n\n' >lines
printf '\n# nothing\n' >empty
printf '\x00\x00\x80\x3f\x00\x00\x20\xc0' >floats # 1 and -2.5
head -c 12 /dev/zero >zeros

# Text, comments, standard input, raw in both directions; digits that read back the same in either type.
good '2\n-3\n1' kelsRound_64f three
good '0.010000000000000002\n0.04000000000000001\ninf' kelsSqr_64f_A53 decimals
good '0.2\n0.4' kelsAdd_32f_A24 - <(echo 0.1 0.2) < <(echo 0.1 0.2)
good '1\n6.25' kelsSqr_32f_A24 --from raw floats
good '1 0\n-2 -0.5' kelsModf_32f --from raw - <floats
good 'inf\n-inf\nnan' kelsFloor_64f <(echo inf -infinity nan) # spelled out, they are numbers
printf '\xef\xbb\xbf7 -0e-999' >-marked # begins with a byte-order mark
good '7\n-0' kelsFloor_64f -- -marked
good '1e-310\n1e-310' kelsAbs_64f_A53 <(echo 1e-310 -1e-310) # subnormal numbers are numbers
cp floats keep
"$apply" kelsFloor_32f --from raw --to raw floats -o keep 2>/dev/null
[[ $(od -An -tx1 keep | tr -d ' \n') == 0000803f000040c0 ]] || fail "raw output replaces a file: $(od -An -tx1 keep)"
ln -s keep link
"$apply" kelsFloor_32f four -o link 2>/dev/null
[[ -L link && $(cat keep) == $'1\n2\n3\n4' ]] || fail "output through a symbolic link: $(cat keep)"
ln keep hard
"$apply" kelsFloor_32f three -o keep 2>/dev/null
[[ keep -ef hard && $(cat hard) == $'1\n-3\n0' ]] || fail "output into a file with two names: $(cat hard)"

bad 'kelvm-apply: no function named (--help shows how)'
bad 'kelvm-apply: unknown function kelsNope_64f (--list shows the functions)' kelsNope_64f three
bad 'kelvm-apply: unknown option --fast (--help shows them)' --fast kelsFloor_64f three
bad 'kelvm-apply: --output is given twice' -o other kelsFloor_64f three
bad 'kelvm-apply: --from is given twice' --from=text --from text kelsFloor_64f three
bad 'kelvm-apply: the format hex is none of text, raw and npy' --from hex kelsFloor_64f three
bad 'kelvm-apply: kelsAdd_64f_A53 takes two inputs, not 1' kelsAdd_64f_A53 three
bad 'kelvm-apply: kelsFloor_64f takes one input, not 2' kelsFloor_64f three three
bad 'kelvm-apply: standard input cannot be both inputs' kelsAdd_64f_A53 - -
bad 'kelvm-apply: kelsFloor_64f takes no exponent' kelsFloor_64f three -x 2
bad 'absent: cannot be read: No such file or directory' kelsFloor_64f absent
bad '.: cannot be read: Is a directory' kelsFloor_64f .
bad 'word:2: "2x" is not a number' kelsFloor_64f word
bad 'standard input:2: "2x" is not a number' kelsFloor_64f - <word
bad 'large:3: "1e999" is too large for a double' kelsFloor_64f large
bad 'standard input:1: "-1e-999" is too small for a double' kelsFloor_64f - <<<'-1e-999'
bad 'decimals:3: "1e308" is too large for a float' kelsFloor_32f decimals
bad 'empty:1: holds no numbers' kelsFloor_64f empty
bad 'lines:4: ends after 3 elements, before four does' kelsAdd_64f_A53 lines four
bad 'lines:4: ends after 3 elements, before four does' kelsAdd_64f_A53 four lines
bad 'floats: byte 8: ends after 2 elements, before zeros does' kelsAdd_32f_A24 --from raw floats zeros
printf 'abc' >>floats
bad 'floats: byte 11: ends inside a double' kelsFloor_64f --from raw floats

# An output that cannot be written.
"$apply" kelsFloor_64f three -o absent/result 2>errors
[[ $? == 2 && $(cat errors) == 'absent/result: cannot be written: No such file or directory' ]] ||
  fail "output into an absent directory: $(cat errors)"
mkdir out
echo before >out/result
seq 5000 >many
(trap '' XFSZ && ulimit -f 1 && exec "$apply" kelsFloor_64f many -o out/result) 2>errors
[[ $? == 2 && $(cat errors) == 'out/result: cannot be written: File too large' && $(cat out/result) == before &&
  $(ls -A out) == result ]] || fail "output that breaks off half-way: $(cat errors) $(ls -A out)"
rm -r out
chmod a-w three
as_user=()
[[ $(id -u) == 0 ]] && as_user=(setpriv --bounding-set=-dac_override) # root may write what others may not
"${as_user[@]}" "$apply" kelsFloor_64f decimals -o three 2>errors
[[ $? == 2 && $(cat errors) == 'three: cannot be written: Permission denied' && $(head -c1 three) == '#' ]] ||
  fail "output into a read-only file: $(cat errors)"
for request in '--list' '--help' 'kelsFloor_64f three'; do
  # shellcheck disable=SC2086 # the request is words
  "$apply" $request >/dev/full 2>errors
  [[ $? == 2 && $(cat errors) == 'standard output: cannot be written: No space left on device' ]] ||
    fail "$request to a full device: $(cat errors)"
  # shellcheck disable=SC2086
  "$apply" $request >&- 2>errors
  [[ $? == 2 && $(cat errors) == 'standard output: cannot be written: Bad file descriptor' ]] ||
    fail "$request to a closed output: $(cat errors)"
done

# The other shapes.
good '2 4\n6 8' kelsAdd_64fc_A53 four four
bad 'lines:4: an odd count of numbers, but complex numbers are pairs' kelsAdd_64fc_A53 lines lines
good '5\n1' kelsAbs_32fc_A24 <(echo 3 4 0 -1)
good '1 0' kelsCIS_64fc_A53 <(echo 0)
good '1\n4\n9\n16' kelsPowx_64f_A53 -x 2 four
bad 'kelvm-apply: kelsPowx_64f_A53 needs an exponent (-x)' kelsPowx_64f_A53 four
bad 'kelvm-apply: the exponent "2,1" is not a number of the function'"'"'s type' kelsPowx_64f_A53 -x 2,1 four
good '1 2\n3 4' kelsPowx_32fc_A24 -x 1,0 four
bad 'kelvm-apply: the exponent "2" is not a pair RE,IM of numbers of the function'"'"'s type' kelsPowx_32fc_A24 -x 2 four

# NumPy's arrays: shapes of either order, results beside each other, lengths known at the end only.
npy() { # SHAPE ORDER: the header of an array of doubles, on standard output
  printf "\x93NUMPY\1\0\x76\0%-117s\n" "{'descr': '<f8', 'fortran_order': $2, 'shape': $1, }"
}
doubles='\0\0\0\0\0\0\xf8\x3f\0\0\0\0\0\0\x04\xc0' # 1.5 and -2.5
{ npy '(1, 2)' False; printf "$doubles"; } >array.npy
good '2\n-3' kelsRound_64f array.npy
"$apply" kelsModf_64f array.npy -o parts.npy 2>/dev/null
{ npy '(1, 2, 2)' False; printf '\0\0\0\0\0\0\xf0\x3f\0\0\0\0\0\0\xe0\x3f\0\0\0\0\0\0\0\xc0\0\0\0\0\0\0\xe0\xbf'; } | cmp - parts.npy ||
  fail 'two results of an array'
{ npy '(1, 2)' True; printf "$doubles"; } | "$apply" kelsModf_64f --to npy - 2>/dev/null | head -c 128 |
  cmp - <(npy '(2, 1, 2)' True) || fail 'two results of an array in the order of Fortran'
echo 1.5 -2.5 | "$apply" kelsTrunc_64f - --to npy 2>/dev/null | head -c 128 | cmp - <(npy '(2,)' False) ||
  fail 'an array of text'
bad 'array.npy: has elements of type <f8, but the function takes <f4' kelsFloor_32f array.npy
{ npy '(3, 1)' False; printf "$doubles"; } >short.npy
bad 'short.npy: byte 144: ends before the array that its header promises' kelsFloor_64f short.npy
{ npy '(2, 1)' False; printf "$doubles"; } >other.npy
bad 'other.npy: is an array of another shape or order than array.npy' kelsAdd_64f_A53 array.npy other.npy
head -c 90 array.npy >broken.npy
bad 'broken.npy: has a broken header' kelsFloor_64f broken.npy

# Many pieces, of a file and of a pipe, words and comments across the borders of what is read at a time.
{ seq 0.5 99999.5; printf '#%0300000d\n' 0; seq 100000.5 299999.5; } >long
"$apply" kelsAbs_64f_A53 long 2>/dev/null | cmp - <(seq 0.5 299999.5) || fail 'a long file'
cat long | "$apply" kelsAbs_64f_A53 - --to raw 2>errors | "$apply" kelsAbs_64f_A53 - --from raw 2>/dev/null |
  cmp - <(seq 0.5 299999.5) || fail 'a long pipe'
grep -q '^kelsAbs_64f_A53: 300000 elements' errors || fail "a long pipe: $(cat errors)"
(timeout -s INT 0.2 "$apply" kelsFloor_64f <(yes 1) -o stopped) 2>errors
[[ -z $(compgen -G 'stopped*') ]] || fail "left behind after an interrupt: $(ls stopped*)"

# Comparisons: with another accuracy, whose exact results for small whole numbers are known, and with MPFR where it is.
"$apply" --compare kelsSqr_64f_A53 kelsSqr_32f_A24 <(echo 3 4097 5) >report || fail 'a comparison with another type'
grep -A1 'largest error       0.5000 ulp' report | grep -q 'element 2: 4097' || fail "squares: $(cat report)"
bad 'kelvm-apply: kelsSqr_64f_A53 cannot be compared with kelsSqr_32f_A24' --compare kelsSqr_32f_A24 kelsSqr_64f_A53 four
bad 'kelvm-apply: kelsExp_64f_A26 cannot be compared with kelsLn_64f_A53' --compare kelsLn_64f_A53 kelsExp_64f_A26 four
if "$apply" --compare mpfr kelsExp_32f_A11 <(echo 25.3) >report 2>errors; then
  grep -q 'largest error       2109.6753 ulp' report || fail "exponentials: $(cat report)"
  "$apply" --compare mpfr kelsMul_64fc_A53 four four >report || fail 'complex products'
  grep -q 'largest error       0.0000 ulp' report || fail "complex products: $(cat report)"
else
  grep -q 'was built without MPFR' errors || fail "a comparison with MPFR: $(cat errors)"
fi

"$apply" --info kelsLn_64fc_A50 >report || fail '--info'
for words in '^kelStatus kelsLn_64fc_A50(const Complex64f' 'natural logarithm' 'Tested to hold: bits' 'Max relative error 2^-5'; do
  grep -q "$words" report || fail "--info lacks '$words': $(cat report)"
done
"$apply" --info kelsSqrt_64f_A53 | grep -qE '^  -1 +-?nan +status 19$' || fail 'special values'

[[ $failures == 0 ]] && echo "all good"
exit $((failures != 0))

#!/bin/sh
# What dtv-same prints, and its exit status.
# usage: same_test.sh DTV_SAME [EMULATOR...]
set -eu
export LC_ALL=C
same=$1
shift
emulator=$*
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
failed=0

# check STATUS TEXT ARGUMENT...: the exit status, and everything that is printed except the usage.
check() {
    expected=$1
    text=$2
    shift 2
    actual=0
    # shellcheck disable=SC2086 # a list of words
    $emulator "$same" "$@" >out 2>&1 || actual=$?
    printed=$(sed '/^usage/,$d' out)
    if [ "$actual" != "$expected" ] || [ "$printed" != "$text" ]; then
        failed=1
        printf 'dtv-same %s: status %s\n%s\n' "$*" "$actual" "$printed"
    fi
}

printf 'one(),  1,x\npid = 1\nthree\n' >a
printf 'one(),  1,x\npid = 2\nthree\n' >b
printf 'one(),  2,x\npid = 1\nthree\n' >lines
printf 'one(),  1,x\npid = 1\n' >short
printf 'one(),  1,x\npid = 1\nfour\n' >other
: >empty

check 0 "the same trace of 3 lines" a b
check 1 "a:3: three
other:3: four" a other
check 1 "a:3: three
short:3: the file ends before this line" a short
check 1 "a:1: one(),  1,x
lines:1: one(),  2,x" a lines
check 0 "the same trace of 3 lines" --ignore-source-lines a lines
check 2 "dtv-same: cannot open none: No such file or directory" a none
check 2 "dtv-same: . is a directory" . a
check 2 "dtv-same: empty is empty" empty empty
check 2 "dtv-same: two traces are compared" a
check 2 "dtv-same: two traces are compared" a b a
check 2 "dtv-same: unknown option --all" --all a b
check 0 "" --help
actual=0
# shellcheck disable=SC2086 # a list of words
$emulator "$same" a b >/dev/full 2>out || actual=$?
if [ "$actual" -ne 2 ]; then
    failed=1
    echo "status $actual when the answer cannot be written"
fi

[ "$failed" -eq 0 ] && echo "passed"

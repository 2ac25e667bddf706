#!/bin/sh
# tcpdump opens the file that libDtv captures to, and dtv-show prints it.
# usage: tcpdump_test.sh DTV_SHOW CAPTURE_SAMPLE [EMULATOR...]
set -eu
export LC_ALL=C TZ=UTC
show=$1
sample=$2
shift 2
emulator=$*
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
capture=$folder/sample.pcapng
failed=0

# run PROGRAM ARGUMENT...
run() {
    # shellcheck disable=SC2086 # a list of words
    $emulator "$@"
}

# check WHAT EXPECTED ACTUAL
check() {
    if [ "$2" != "$3" ]; then
        failed=1
        printf '%s\n--- expected\n%s\n--- is\n%s\n' "$1" "$2" "$3"
    fi
}

# The contents of a longer file are dropped.
head -c 100000 /dev/zero >"$capture"
DTV_CAPTURE_FILE=$capture run "$sample"

check "tcpdump's count" "8 packets" "$(tcpdump --count -r "$capture" 2>"$folder/tcpdump.err")"
check "tcpdump's link type and limit" "link-type 147, snapshot length 65536" \
    "$(sed -n 's/ ([^)]*)//; s/^reading from file .*, \(link-type .*\)$/\1/p' "$folder/tcpdump.err")"
check "tcpdump's bytes of the first packet" "0101" \
    "$(tcpdump -n -r "$capture" -c 1 2>/dev/null | sed -n 's/.*0x0000:  \(....\) .*/\1/p')"

# Times and thread numbers differ from run to run.
shown() {
    run "$@" | sed -E -e 's/^[0-9:]{8}\.[0-9]{6} /TIME /' -e 's/\([0-9]+\)/(ID)/' \
        -e 's/^[0-9]{4}(-[0-9]{2}){2}$/DATE/' | tr -s ' \n' ' '
}
check "dtv-show" "$(tr -s ' \n' ' ' <<'END'
DATE
TIME sample (ID) -> SelectChannel 0x10000006, 12 bytes, TS_BROADCAST_INFO_REQ
    handle            3
    physical_channel  32
    service_no        1
TIME sample (ID) -> Release_Sync 0x10000038, 2 bytes, TS_HANDLE_REQ
    handle  3
TIME sample (ID) <- Release_Sync 0x10000038 returned 0, 8 bytes, TS_COMMON_SYNC_REPLY
    handle        3
    return_value  -5
TIME sample (ID) -> SetScreenDisplay 0x1000000c, 8 bytes, TS_SCREEN_DISPLAY_REQ, 1 surface
    handle  3
    screen
        surface_width   320
        surface_height  180
        screen_rotate   0
        screen_mode     0
TIME sample (ID) <- SetScreenDisplay 0x1000000c returned -1
TIME DtvEvent-1 (ID) <- SelectChannelReply 0x10000054, 16 bytes, TS_SERVICE_REPLY
    handle            3
    result            0
    physical_channel  32
    service_no        1
TIME DtvEvent-1 (ID) <- BmlPermissionReq 0x10000042, size -1, no record
TIME DtvEvent-1 (ID) -> BmlPermissionReq 0x10000042 returned 1
8 messages
END
)" "$(shown "$show" "$capture")"

check "--only" "$(tr -s ' \n' ' ' <<'END'
DATE
TIME sample (ID) -> Release_Sync 0x10000038, 2 bytes, TS_HANDLE_REQ
    handle  3
TIME sample (ID) <- Release_Sync 0x10000038 returned 0, 8 bytes, TS_COMMON_SYNC_REPLY
    handle        3
    return_value  -5
TIME DtvEvent-1 (ID) <- BmlPermissionReq 0x10000042, size -1, no record
TIME DtvEvent-1 (ID) -> BmlPermissionReq 0x10000042 returned 1
4 of 8 messages
END
)" "$(shown "$show" --only Release_Sync --only BmlPermissionReq "$capture")"

# A line for each message. The times between messages differ from run to run.
brief() {
    run "$@" | sed -E -e 's/^( *[0-9]+) [0-9:.]{12} /\1 TIME /' -e 's/ [0-9.]+(ns|us|ms|s)$/ SPAN/' \
        -e 's/^[0-9]{4}(-[0-9]{2}){2}$/DATE/'
}
check "--brief" "$(cat <<'END'
DATE
     1 TIME sample     -> SelectChannel h=3
     2 TIME sample     -> Release_Sync h=3
     3 TIME sample     <- Release_Sync h=3 r=-5 #2 SPAN
     4 TIME sample     -> SetScreenDisplay h=3
     5 TIME sample     <- SetScreenDisplay h=3 ret=-1 #4 SPAN
     6 TIME DtvEvent-1 <- SelectChannelReply h=3 r=0 #1 SPAN
     7 TIME DtvEvent-1 <- BmlPermissionReq cut
     8 TIME DtvEvent-1 -> BmlPermissionReq ret=1 #7 SPAN
8 messages
END
)" "$(brief "$show" --brief "$capture")"
check "--brief with filters" "$(cat <<'END'
DATE
     3 TIME sample     <- Release_Sync h=3 r=-5 #2 SPAN
     5 TIME sample     <- SetScreenDisplay h=3 ret=-1 #4 SPAN
2 of 8 messages
END
)" "$(brief "$show" --brief --session 3 --thread sample --kind answer "$capture")"
check "--to before the capture" "0 of 8 messages" "$(run "$show" --to 2020-01-01 "$capture")"
check "--from before the capture" "8 of 8 messages" \
    "$(run "$show" --from 2020-01-01 "$capture" | tail -n 1)"

# status EXPECTED COMMAND...: the exit status; standard error goes to a file.
errors=$folder/errors
status() {
    expected=$1
    shift
    actual=0
    run "$@" >"$folder/out" 2>"$errors" || actual=$?
    check "exit status of $*" "$expected" "$actual"
}

head -c 200 "$capture" >"$folder/cut"
status 1 "$show" "$folder/cut"
check "messages about a cut file" \
    "dtv-show: $folder/cut: the file ends at byte 200, in the middle of the block at byte 180" \
    "$(cat "$errors")"
check "output for a cut file" "1 message" "$(tail -n 1 "$folder/out")"
echo "no capture" >"$folder/text"
status 1 "$show" "$folder/text"
check "messages about another file" \
    "dtv-show: $folder/text: this is not a pcapng file: no section header at byte 0" \
    "$(cat "$errors")"
# The third message's length is damaged: the others are shown.
cp "$capture" "$folder/damaged"
first=$((88 + $(od -An -tu4 -j 92 -N 4 "$capture")))
second=$((first + $(od -An -tu4 -j $((first + 4)) -N 4 "$capture")))
length=$(($(od -An -tu4 -j $((second + 4)) -N 4 "$capture")))
printf '\001' | dd of="$folder/damaged" bs=1 seek=$((second + 4)) conv=notrunc 2>/dev/null
status 1 "$show" "$folder/damaged"
check "messages about a damaged file" "dtv-show: $folder/damaged: the block at byte $second cannot \
be $(((length & ~255) + 1)) bytes long; skipped $length bytes, to byte $((second + length))" \
    "$(cat "$errors")"
check "output for a damaged file" "7 messages" "$(tail -n 1 "$folder/out")"

# Standard input, in pieces that are no whole blocks; each message is printed as soon as it is
# complete.
whole=$(run "$show" "$capture")
slowly() {
    offset=0
    while [ "$offset" -lt "$(wc -c <"$capture")" ]; do
        tail -c +$((offset + 1)) "$capture" | head -c 97
        offset=$((offset + 97))
        sleep 0.02
    done
}
check "output for a slow pipe" "$whole" "$(slowly | run "$show" -)"
mkfifo "$folder/pipe"
run "$show" - <"$folder/pipe" >"$folder/live" &
shower=$!
exec 3>"$folder/pipe"
head -c "$second" "$capture" >&3
tries=0
while [ "$(grep -c SelectChannel "$folder/live")" -eq 0 ] ||
    [ "$(grep -c Release_Sync "$folder/live")" -eq 0 ]; do
    tries=$((tries + 1))
    if [ "$tries" -gt 400 ]; then
        failed=1
        echo "a message is not printed before the next one comes"
        break
    fi
    sleep 0.05
done
exec 3>&-
wait "$shower"
check "output for a pipe that ends" "2 messages" "$(tail -n 1 "$folder/live")"
status 1 "$show" - </dev/null
check "messages about empty input" "dtv-show: standard input: the file is empty" "$(cat "$errors")"

# The file grows while it is read, in pieces that are no whole blocks, until a signal comes.
: >"$folder/growing"
# What an earlier program printed there would be taken for this one's.
: >"$folder/live"
# shellcheck disable=SC2086 # a list of words
(exec $emulator "$show" --follow --brief "$folder/growing") >"$folder/live" 2>"$errors" &
shower=$!
appear() {
    tries=0
    while [ "$(grep -c -e "$1" "$folder/live")" -eq 0 ]; do
        tries=$((tries + 1))
        if [ "$tries" -gt 400 ]; then
            failed=1
            echo "--follow does not show $1"
            break
        fi
        sleep 0.05
    done
}
head -c "$first" "$capture" >>"$folder/growing"
appear "-> SelectChannel"
tail -c +$((first + 1)) "$capture" | head -c 10 >>"$folder/growing"
sleep 0.2
tail -c +$((first + 11)) "$capture" | head -c $((second - first - 10)) >>"$folder/growing"
appear "-> Release_Sync"
# Half of a block is there when the signal comes.
tail -c +$((second + 1)) "$capture" | head -c 50 >>"$folder/growing"
kill -TERM "$shower"
actual=0
wait "$shower" || actual=$?
check "exit status after --follow" 0 "$actual"
check "messages after --follow" "" "$(cat "$errors")"
check "output of --follow" "2 messages" "$(tail -n 1 "$folder/live")"
check "commands that wait" "2 commands without an answer: #1 #2" \
    "$(tail -n 2 "$folder/live" | head -n 1)"
: >"$folder/live"
# shellcheck disable=SC2086 # a list of words
(exec $emulator "$show" --follow --json "$folder/growing") >"$folder/live" 2>"$errors" &
shower=$!
appear Release_Sync
: >"$folder/growing"
actual=0
wait "$shower" || actual=$?
check "exit status when a followed file becomes shorter" 1 "$actual"
check "messages when a followed file becomes shorter" \
    "dtv-show: $folder/growing: it became shorter while it was followed: another capture has begun" \
    "$(tail -n 1 "$errors")"
check "the error in the document" 1 "$(grep -c '"error_count":1,.*another capture' "$folder/live")"
check "the end of the document" ']}' "$(tail -c 3 "$folder/live")"
status 2 "$show" --follow "$folder/none"
check "messages about no file to follow" \
    "dtv-show: cannot open $folder/none: No such file or directory" "$(cat "$errors")"
status 2 "$show" --follow "$folder/pipe"
check "messages about a pipe to follow" \
    "dtv-show: $folder/pipe is no regular file: --follow waits at the end of one" "$(cat "$errors")"

status 2 "$show" "$folder/none"
check "messages about no file" "dtv-show: cannot open $folder/none: No such file or directory" \
    "$(cat "$errors")"
status 2 "$show" "$folder"
check "messages about a folder" "dtv-show: $folder is a directory" "$(cat "$errors")"
status 2 "$show" --only SelectChanel "$capture"
check "messages about a wrong name" \
    "dtv-show: no message is named SelectChanel; the nearest is SelectChannel" "$(cat "$errors")"
for wrong in "" "--only" "--nothing $capture" "$capture $capture" "--list $capture" \
    "--only Create" "--list --only Create"; do
    # shellcheck disable=SC2086 # a list of words
    status 2 "$show" $wrong
    check "usage after '$wrong'" "usage: dtv-show [OPTION]... FILE" "$(sed -n 2p "$errors")"
done
status 0 "$show" --help
check "usage on standard output" "usage: dtv-show [OPTION]... FILE" \
    "$(head -n 1 "$folder/out")"
status 0 "$show" --list
check "lines of the list" 158 "$(wc -l <"$folder/out")"
check "a line of the list" \
    "0x10000006   12 SelectChannel                    TS_BROADCAST_INFO_REQ" \
    "$(grep 0x10000006 "$folder/out")"
if [ -e /dev/full ]; then
    actual=0
    run "$show" --list >/dev/full 2>"$errors" || actual=$?
    check "exit status when the list cannot be written" 1 "$actual"
    for options in --brief --json "--follow --brief" "--follow --json"; do
        actual=0
        # shellcheck disable=SC2086 # a list of words
        run "$show" $options "$capture" >/dev/full 2>"$errors" || actual=$?
        check "exit status when the output of $options cannot be written" 1 "$actual"
        check "messages when the output of $options cannot be written" \
            "dtv-show: cannot write to standard output" "$(cat "$errors")"
    done
fi

[ "$failed" -eq 0 ] && echo "passed"

# Which tests concern a source: what `./test --for FILE` runs. To be sourced.

# Labels that the folders of the tests give them; see tests/CMakeLists.txt.
all_of_the_bridge="harness|records|entry|binding|commands|events"

# labels_of FILE: those of the tests that concern it, separated by |, as a path from the root.
labels_of() {
    case $1 in
    src/commands/*) echo "commands|trace" ;;
    tests/commands/*) echo commands ;;
    src/events/*) echo "events|trace" ;;
    tests/events/* | tests/hostile/* | campaigns/records/*) echo events ;;
    src/binding/*) echo "binding|entry|commands|events" ;;
    tests/binding/*) echo binding ;;
    src/entry/*) echo "entry|binding" ;;
    tests/entry/*) echo entry ;;
    src/records/*) echo "$all_of_the_bridge|sessions|show|redact|simulator" ;;
    tests/records/*) echo records ;;
    tests/trace/*) echo trace ;;
    tests/harness/* | tests/strict_jni/* | tests/java/*) echo "$all_of_the_bridge" ;;
    java/*) echo "$all_of_the_bridge|desk|rows|show" ;;
    platform/*) echo "$all_of_the_bridge|platform|show|simulator|desk" ;;
    tests/platform/*) echo platform ;;
    simulator/tests/*) echo simulator ;;
    simulator/*) echo "simulator|desk" ;;
    sessions/log/*) echo "sessions|trace|explain|redact|$all_of_the_bridge" ;;
    sessions/*) echo "sessions|show|redact|replay|explain" ;;
    desk/redact/*) echo redact ;;
    desk/explain/* | tests/field/*) echo explain ;;
    replay/* | desk/tenrik/desk/replay/* | tests/replay/*) echo replay ;;
    desk/report/*) echo report ;;
    desk/native/*) echo "desk|replay" ;;
    desk/show/* | desk/pictures/*) echo show ;;
    desk/* | tests/desk/* | run | test) echo desk ;;
    tools/rows/*) echo rows ;;
    tests/field/*) echo field ;;
    campaigns/* | campaign) echo campaigns ;;
    tests/image/*) echo image ;;
    tests/sources/* | docs/*) echo "sources|desk|campaigns" ;;
    *) return 1 ;;
    esac
}

# concerned_labels ROOT FILES: an expression for ctest's -L that chooses the tests which concern the
# files, one a line. Says why and answers 1 when there is none for a file.
concerned_labels() {
    concerned=
    concerned_rest=$2
    while [ -n "$concerned_rest" ]; do
        concerned_file=${concerned_rest%%"
"*}
        case $concerned_rest in
        *"
"*) concerned_rest=${concerned_rest#*"
"} ;;
        *) concerned_rest= ;;
        esac
        [ -n "$concerned_file" ] || continue
        concerned_more=$(labels_of "${concerned_file#"$1"/}") || {
            echo "test: no test is known to concern $concerned_file: ./test runs them all" >&2
            return 1
        }
        concerned="$concerned|$concerned_more"
    done
    echo "^(${concerned#|})\$"
}

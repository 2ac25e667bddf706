# How ./run builds what it starts. To be sourced.

# build_desk SOURCES FOLDER: builds the desk there. One at a time: a second call waits for the first,
# and says so when that takes longer than a second. Silent when it succeeds; 1 when not, after it has
# said why.
build_desk() {
    build_log=$2/build.log
    if ! build_reason=$( (mkdir -p "$2" && : >>"$2/lock" && : >>"$build_log") 2>&1); then
        echo "run: $2 cannot be written: ${build_reason##*: }; --build FOLDER uses a build as it is" >&2
        return 1
    fi
    # The lock ends with the descriptor, however this process ends.
    exec 9>>"$2/lock"
    if ! flock -w 1 9; then
        echo "run: waiting for another run that builds in $2" >&2
        flock 9
    fi
    build_status=0
    { cmake -G Ninja -S "$1" -B "$2" -DDTV_BUILD_TESTS=OFF -DCMAKE_BUILD_TYPE=Release &&
        cmake --build "$2"; } >"$build_log" 2>&1 </dev/null || build_status=1
    if [ "$build_status" -ne 0 ]; then
        cat "$build_log" >&2
        echo "run: the build failed; its output is above and in $build_log" >&2
    fi
    exec 9>&-
    return "$build_status"
}

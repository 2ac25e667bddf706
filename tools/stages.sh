# How ./test measures its stages, and what it prints about them at the end. To be sourced; the current
# folder is the root.

# Seconds that a stage takes at most on a quiet machine of two processors, from a clean clone and
# without a compiler cache.
stage_budget() {
    case $1 in
    format) echo 5 ;;
    clang-tidy) echo 85 ;;
    # With all there are the long tests besides.
    gcc) [ -n "$all" ] && echo 165 || echo 150 ;;
    gcc-sanitized) echo 85 ;;
    gcc-thread) echo 20 ;;
    clang) echo 70 ;;
    clang-sanitized) echo 65 ;;
    i386) echo 85 ;;
    armhf) echo 110 ;;
    benchmarks) echo 30 ;;
    # Three minutes of it are the campaign's own.
    campaign) echo 240 ;;
    *) echo - ;;
    esac
}

stage=
stage_rows=
not_run=
stage_seconds=0
stage_cases=0
stage_budgets=0

# begin_stage NAME: prints it. What is printed and counted until end_stage belongs to it.
begin_stage() {
    stage=$1
    stage_began=$(date +%s)
    stage_passed=-
    echo "== $stage"
}

# stage_built: prints how long the stage has taken to build.
stage_built() {
    [ -n "$plan" ] || echo "built in $(($(date +%s) - stage_began)) s"
}

# count_cases JUNIT_FILE: counts the cases that ctest's report holds as those of the stage.
count_cases() {
    counted=$(/usr/bin/python3 tools/test_cases.py "$1")
    stage_passed=${counted% *}
    stage_cases=$((stage_cases + stage_passed))
    if [ "${counted#* }" -ne 0 ]; then
        not_run="$not_run
${counted#* } skipped cases of $stage: its output names them"
    fi
}

# left_out WHAT COMMAND: what the stages left out, and the command that runs it.
left_out() {
    not_run="$not_run
$1: $2"
}

# end_stage WHOLE: prints its time, beside its budget when the whole stage was run.
end_stage() {
    [ -z "$plan" ] || return 0
    taken=$(($(date +%s) - stage_began))
    budget=-
    [ "$1" != yes ] || budget=$(stage_budget "$stage")
    note=
    if [ "$budget" != - ]; then
        stage_budgets=$((stage_budgets + budget))
        [ "$taken" -le "$budget" ] || note="  OVER ITS BUDGET"
    fi
    stage_seconds=$((stage_seconds + taken))
    stage_rows="$stage_rows
$(printf '%-16s %6s %8s %8s%s' "$stage" "$taken" "$budget" "$stage_passed" "$note")"
    echo "$stage: $taken s$([ "$budget" = - ] || echo " of $budget s")$note"
}

# print_sum: the stages with their times, budgets and cases, and by name what was left out.
print_sum() {
    [ -z "$plan" ] || return 0
    echo "== sum"
    printf '%-16s %6s %8s %8s\n' stage s budget cases
    printf '%s\n' "${stage_rows#?}"
    printf '%-16s %6s %8s %8s\n' all "$stage_seconds" "$stage_budgets" "$stage_cases"
    [ -n "$not_run" ] || return 0
    echo "not run:"
    printf '%s\n' "${not_run#?}" | fold -s -w 76 | sed 's/^/    /'
}

# use_compiler_cache: has the builds that are configured from now on use ccache, unless the caller has
# said what to use. An object is found again in another clone and in the copies that tests make.
use_compiler_cache() {
    [ -z "${CMAKE_CXX_COMPILER_LAUNCHER+set}" ] || return 0
    command -v ccache >/dev/null || return 0
    # ccache fails the compilation when it has no folder that it may write to.
    cache_folder=$(ccache --get-config cache_dir 2>/dev/null) || return 0
    { mkdir -p "$cache_folder" && [ -w "$cache_folder" ]; } 2>/dev/null || return 0
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    export CCACHE_SLOPPINESS="${CCACHE_SLOPPINESS:-pch_defines,time_macros,include_file_mtime,include_file_ctime}"
    export CCACHE_BASEDIR="${CCACHE_BASEDIR:-$PWD}" CCACHE_NOHASHDIR=yes CCACHE_DEPEND=yes
}

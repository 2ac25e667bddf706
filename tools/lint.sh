# What `./test --lint` checks besides the compilers. To be sourced; the current folder is the root.

# The folders of our C++ sources.
source_folders="src platform simulator sessions replay desk tools tests benchmarks campaigns"

# Those that clang-tidy checks. The macros of GoogleTest count as the complexity of a test, and more.
lint_folders="src platform simulator sessions replay desk benchmarks"

# Whether every source is formatted as .clang-format says.
check_format() {
    # shellcheck disable=SC2086 # a list of words
    find $source_folders \( -name '*.cpp' -o -name '*.h' \) -exec clang-format --dry-run --Werror {} +
}

# The sources and headers that differ from the branch main, new ones included.
changed_files() {
    if ! lint_base=$(git merge-base HEAD main 2>/dev/null ||
        git merge-base HEAD origin/main 2>/dev/null); then
        echo "test: there is no branch main to compare with; --all-files checks all" >&2
        return 2
    fi
    # shellcheck disable=SC2086 # a list of words
    {
        git diff --name-only --diff-filter=d "$lint_base" -- $lint_folders
        git ls-files --others --exclude-standard -- $lint_folders
    } | grep -E '\.(cpp|h)$' | grep -v /tests/ | sort -u || true
}

# includers_of HEADER PATTERN: the files whose names match the pattern and that include the header, by
# its folder and name, or by its name from the same folder.
includers_of() {
    lint_name=$(basename "$1")
    lint_folder=$(dirname "$1")
    # shellcheck disable=SC2086 # a list of words
    grep -rlE --include="$2" "#include [\"<]([^\">]*/)?$(basename "$lint_folder")/${lint_name}[\">]" \
        $source_folders || true
    # shellcheck disable=SC2086 # a pattern
    grep -lE "#include \"$lint_name\"" "$lint_folder"/$2 2>/dev/null || true
}

# source_of FILE: the source through which clang-tidy sees a file: a source itself, for a header its
# namesake, or else one that includes it, if only through another header. Says when there is none.
source_of() {
    case $1 in
    *.cpp)
        echo "$1"
        return
        ;;
    esac
    if [ -f "${1%.h}.cpp" ]; then
        echo "${1%.h}.cpp"
        return
    fi
    lint_source=$(includers_of "$1" '*.cpp' | head -n 1)
    if [ -n "$lint_source" ]; then
        echo "$lint_source"
        return
    fi
    lint_header=$(includers_of "$1" '*.h' | head -n 1)
    if [ -n "$lint_header" ]; then
        source_of "$lint_header"
    else
        echo "test: no source includes $1: clang-tidy does not see it" >&2
    fi
}

# sources_of FILE...: the sources of all of them.
sources_of() {
    for lint_file in "$@"; do
        source_of "$lint_file"
    done | sort -u
}

# run_clang_tidy BUILD_FOLDER JOBS ALL: clang-tidy over the changed files, or over all when ALL is
# yes, as they are compiled in a configured build folder. 1 when it finds anything.
run_clang_tidy() {
    if [ "$3" = yes ]; then
        # shellcheck disable=SC2086 # a list of words
        lint_sources=$(find $lint_folders -name '*.cpp' -not -path '*/tests/*' | sort)
    else
        lint_changed=$(changed_files) || return 2
        # shellcheck disable=SC2086 # a list of words
        lint_sources=$(sources_of $lint_changed)
    fi
    # Some sources are compiled for a sanitized build alone.
    lint_known=
    for lint_source in $lint_sources; do
        if grep -qF "\"file\": \"$PWD/$lint_source\"" "$1/compile_commands.json"; then
            lint_known="$lint_known $lint_source"
        else
            echo "$lint_source is not part of the build $1: it is left out"
        fi
    done
    if [ -z "$lint_known" ]; then
        echo "no source to check"
        return 0
    fi
    # Of what is generated, what the sources include.
    cmake --build "$1" --target dtv_trace_calls >/dev/null || return 1
    # What clang-tidy prints about a source without a finding is a count of what it left out.
    # shellcheck disable=SC2016,SC2086 # the inner shell's words; a list of words
    printf '%s\n' $lint_known | xargs -P "$2" -n 1 sh -c '
        found=$(clang-tidy -p "$0" --quiet --warnings-as-errors="*" "$1" 2>&1) || {
            printf "%s\n" "$found"
            exit 1
        }' "$1" || return 1
    # shellcheck disable=SC2086 # a list of words
    echo "$(printf '%s\n' $lint_known | wc -l) sources checked"
}

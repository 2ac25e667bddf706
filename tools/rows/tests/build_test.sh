#!/bin/sh
# Builds with DTV_JAVA in a copy of the sources, and looks at how a wrong letter ends the build.
# Only the comparison is built: the image of this build has empty libraries.
# usage: build_test.sh SOURCE JAR COMPILER
set -eu
source=$1
jar=$2
compiler=$3

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
copy=$folder/source
build=$folder/build
mkdir -p "$copy" "$folder/image/lib" "$folder/image/include"
cp -r "$source/CMakeLists.txt" "$source/cmake" "$source/src" "$source/tools" "$copy"
for library in Dtv binder android_runtime gui utils; do
    : >"$folder/image/lib/lib$library.so"
done

fail() {
    echo "$1"
    cat "$folder/log"
    exit 1
}
# configure ARGUMENT...: an image's build, with a log.
configure() {
    cmake -G Ninja -S "$copy" -B "$build" -DCMAKE_CXX_COMPILER="$compiler" \
        -DDTV_IMAGE="$folder/image" "$@" >"$folder/log" 2>&1
}
compare() {
    cmake --build "$build" --target dtv_rows >"$folder/log" 2>&1
}
# expect TEXT: the log holds it.
expect() {
    grep -qF -- "$1" "$folder/log" || fail "the log lacks: $1"
}

# Without a jar there is nothing to compare with, which is said.
configure || fail "an image's build without DTV_JAVA is refused"
expect "DTV_JAVA names no jar: the bridge's rows are not compared with Java"

configure -DDTV_JAVA="$folder/missing.jar" && fail "a jar that is missing is accepted"
expect "DTV_JAVA names $folder/missing.jar, which does not exist"

configure -DDTV_JAVA="$jar" || fail "DTV_JAVA is refused"
compare || fail "the tables differ from Java"
# The library waits for the comparison.
ninja -C "$build" -t inputs Dtv_jni >"$folder/log" 2>&1 || fail "there is no target Dtv_jni"
grep -qx dtv_rows "$folder/log" || fail "the library does not need the comparison"

# A letter of a table, and then the letter as it was.
table=$copy/src/commands/native_table.def
line=$(grep -n '^NATIVE(PausePlay,' "$table" | cut -d: -f1)
cp -p "$table" "$folder/table"
sed -i "${line}s/(PausePlay,/(PausePley,/" "$table"
compare && fail "a wrong letter is accepted"
error="error: DtvServerProxy has no method DtvSvLib_PausePley, it has DtvSvLib_PausePlay"
expect "src/commands/native_table.def:$line: $error"
compare && fail "a wrong letter is accepted when it is built again"
cp "$folder/table" "$table"
compare || fail "the tables still differ from Java"

# Jars that cannot be compared with.
: >"$folder/classes.dex"
(cd "$folder" && jar --create --no-manifest --file dex.jar classes.dex)
configure -DDTV_JAVA="$folder/dex.jar" || fail "a jar of .dex is refused too early"
compare && fail "a jar without class files is accepted"
expect "dex.jar: this jar holds no class files"

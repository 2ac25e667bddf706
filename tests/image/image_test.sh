#!/bin/sh
# Builds the bridge as it is built for a device, with an image's headers and libraries alone, and
# checks the symbols, links and size of the result. The image is made from the desk's platform.
# usage: image_test.sh SOURCE BUILD COMPILER
#   BUILD      a build of this project, whose lib/ has the platform's libraries
#   DTV_UTILS, DTV_HEADERS, DTV_STRIP in the environment: libutils.so, the folders of the platform's
#   headers and of jni.h (separated by colons), and the strip program
set -eu
source=$1
build=$2
compiler=$3

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
image=$folder/image
mkdir -p "$image/include" "$image/lib"
echo "$DTV_HEADERS:$source/platform/include" | tr : '\n' | while read -r headers; do
    cp -r "$headers/." "$image/include"
done
cp "$build/lib/libDtv.so" "$build/lib/libbinder.so" "$build/lib/libgui.so" \
    "$build/lib/libandroid_runtime.so" "$image/lib"
cp -L "$DTV_UTILS" "$image/lib/libutils.so"

# configure IMAGE: as for a device.
configure() {
    cmake -G Ninja -S "$source" -B "$folder/build" -DCMAKE_BUILD_TYPE=MinSizeRel \
        -DCMAKE_CXX_COMPILER="$compiler" -DDTV_IMAGE="$1" >"$folder/log" 2>&1
}

mkdir "$folder/empty"
if configure "$folder/empty"; then
    echo "an image without libraries was accepted"
    exit 1
fi
grep -q "empty/lib/libDtv.so is missing" "$folder/log"
rm -rf "$folder/build"

if ! { configure "$image" && cmake --build "$folder/build" >>"$folder/log" 2>&1; }; then
    cat "$folder/log"
    exit 1
fi
DTV_DEVICE=1 "$source/tests/image/library_test.sh" "$folder/build/lib/libDtv_jni.so" "$DTV_STRIP"

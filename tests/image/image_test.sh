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

# The build stays for the next time: the times of what is copied tell what has to be built again.
folder=$build/image
image=$folder/image
rm -rf "$image" "$folder/refused"
mkdir -p "$image/include" "$image/lib" "$folder/empty"
echo "$DTV_HEADERS:$source/platform/include" | tr : '\n' | while read -r headers; do
    cp -rp "$headers/." "$image/include"
done
cp -p "$build/lib/libDtv.so" "$build/lib/libbinder.so" "$build/lib/libgui.so" \
    "$build/lib/libandroid_runtime.so" "$image/lib"
cp -Lp "$DTV_UTILS" "$image/lib/libutils.so"

# configure IMAGE FOLDER: as for a device.
configure() {
    cmake -G Ninja -S "$source" -B "$2" -DCMAKE_BUILD_TYPE=MinSizeRel \
        -DCMAKE_CXX_COMPILER="$compiler" -DDTV_IMAGE="$1" >"$folder/log" 2>&1
}

if configure "$folder/empty" "$folder/refused"; then
    echo "an image without libraries was accepted"
    exit 1
fi
grep -q "empty/lib/libDtv.so is missing" "$folder/log"

if ! { configure "$image" "$folder/build" && cmake --build "$folder/build" >>"$folder/log" 2>&1; }; then
    cat "$folder/log"
    exit 1
fi
DTV_DEVICE=1 "$source/tests/image/library_test.sh" "$folder/build/lib/libDtv_jni.so" "$DTV_STRIP"

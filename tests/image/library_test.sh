#!/bin/sh
# Checks a built libDtv_jni.so from outside: what it exports, what it imports and from where, how it
# is linked, and how large it is.
# usage: outside_test.sh LIBRARY [STRIP]
#   DTV_DEVICE in the environment: the library is built for a device. It has no RUNPATH then, and on
#   ARM its size is limited.
set -eu
export LC_ALL=C
library=$1
allowed=$(dirname -- "$0")/allowed_imports.txt
passed=0
failed=0

# check WHAT EXPECTED ACTUAL
check() {
    if [ "$2" = "$3" ]; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        printf '%s\n  expected: %s\n  is:       %s\n' "$1" "$(echo "$2" | tr '\n' ' ')" \
            "$(echo "$3" | tr '\n' ' ')"
    fi
}

dynamic=$(readelf --dynamic --wide "$library")
value() {
    echo "$dynamic" | sed -n "s/.*($1).*\[\(.*\)\]/\1/p" | sort
}

check "exported symbols" "JNI_OnLoad" \
    "$(nm --dynamic --defined-only "$library" | awk '{print $3}' | sort)"

# Imports of the C and C++ runtimes carry a version; the others are the platform's. The virtual table
# of the listener names the members of its bases, and a compiler may name more of them than another.
check "imported from the platform" "$(sort <<'END'
DtvSvCom_GetMyTaskName
DtvSvCom_Log
DtvSvLibListener::DtvSvLibListener()
DtvSvLibListener::sendEventToServer(int, void*, int, TS_DTVSV_SP*, void*, int*)
DtvSvLibListener::sendEventToServer(int, void*, int, void*, int*)
DtvSvLibListener::~DtvSvLibListener()
android::AndroidRuntime::registerNativeMethods(JNIEnv_*, char const*, JNINativeMethod const*, int)
END
)" "$(nm --dynamic --undefined-only --demangle "$library" | sed 's/^ *[Uw] //' | grep -v '@' |
    grep -E '^(DtvSv|android::AndroidRuntime)' | sort -u)"
check "other imports without a version" "" \
    "$(nm --dynamic --undefined-only --demangle "$library" | sed 's/^ *[Uw] //' | grep -v '@' |
        grep -vE '^(DtvSv|android::(AndroidRuntime|BBinder|IBinder|RefBase)::|android::sp_report_)' |
        grep -vE '^virtual thunk to (DtvSvLibListener|android::(BBinder|IBinder))::~' |
        grep -vE '^(_ITM_|__gmon_start__)' | sort)"
check "imports that are not on the list" "" \
    "$(nm --dynamic --undefined-only --demangle "$library" | sed 's/^ *[Uw] //; s/@.*//' |
        sed 's/^\(non-\)\{0,1\}virtual thunk to //; s/(.*//' | sort -u |
        grep -vxF -f "$allowed" || true)"
check "runtimes but those of C and C++" "" \
    "$(nm --dynamic --undefined-only "$library" | sed -n 's/.*@\([A-Z]*\)_.*/\1/p' |
        grep -vxE 'CXXABI|GCC|GLIBC|GLIBCXX' | sort -u)"

check "libraries that are linked" "$(printf '%s\n' libDtv.so libandroid_runtime.so libbinder.so libgui.so libutils.so.0)" \
    "$(value NEEDED | grep -vE '^(libc\.so\.6|libstdc\+\+\.so\.6|libgcc_s\.so\.1|libm\.so\.6|ld-linux.*)$')"
check "soname" libDtv_jni.so "$(value SONAME)"
if [ -n "${DTV_DEVICE:-}" ]; then
    check "RUNPATH" "" "$(value RUNPATH)"
else
    check "found through RUNPATH" yes "$(value RUNPATH | grep -q ORIGIN && echo yes)"
fi
check "RPATH, which LD_LIBRARY_PATH could not override" "" "$(value RPATH)"
check "text relocations" "" "$(echo "$dynamic" | grep -o TEXTREL || true)"
check "stack" "RW" \
    "$(readelf --program-headers --wide "$library" | awk '$1 == "GNU_STACK" {print $7}')"

stripped=$(mktemp)
"${2:-strip}" -o "$stripped" "$library"
size=$(wc -c <"$stripped")
echo "stripped: $size bytes"
if [ -n "${DTV_DEVICE:-}" ] && readelf --file-header "$library" | grep -q 'Machine: *ARM'; then
    check "at most 128 KiB" yes "$([ "$size" -le 131072 ] && echo yes || echo "$size bytes")"
fi
# What the loader has to adjust before the first call. Compilers differ by a few.
relocations=$(readelf --relocs --wide "$library" | grep -c ' R_')
echo "load-time relocations: $relocations"
if readelf --file-header "$library" | grep -q 'Machine:.*X86-64'; then
    check "at most 450 load-time relocations" yes \
        "$([ "$relocations" -le 450 ] && echo yes || echo "$relocations")"
fi
rm -f "$stripped"

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]

# Another architecture's Debian packages, unpacked into a folder. To be sourced, after packages.sh.
#
# Packages of two architectures cannot all be installed side by side (each brings the same files), so
# apt resolves and fetches them with a state of its own, and dpkg only unpacks them. The machine's own
# packages are left as they are.

# What the tests of another architecture run on: the VM, the C and C++ runtimes, the platform's own
# libraries, and what is linked.
sysroot_packages="
    libc6
    libstdc++6
    libgcc-s1
    zlib1g
    zlib1g-dev
    openjdk-17-jre-headless
    android-libutils
    android-libutils-dev
    libgtest-dev
    libgmock-dev
    libffi-dev
    libdvbv5-dev
    libjsoncpp-dev
    libpugixml-dev"

# Lays the packages of architecture $1 into folder $2. Does nothing when they are there; says why and
# answers 1 when they cannot be had.
lay_sysroot() {
    sysroot_arch=$1
    sysroot=$2
    # shellcheck disable=SC2086 # a list of words
    sysroot_wanted=$(echo $sysroot_packages)
    if [ "$(cat "$sysroot/.packages" 2>/dev/null)" = "$sysroot_wanted" ]; then
        return 0
    fi
    rm -rf "$sysroot"
    mkdir -p "$sysroot" "$sysroot.apt/state/lists/partial" "$sysroot.apt/cache/archives/partial"
    sysroot_log=$sysroot.apt/log
    echo "Fetching the packages of $sysroot_arch" >&2
    set -- -oAPT::Architecture="$sysroot_arch" -oAPT::Architectures="$sysroot_arch" \
        -oDir::State="$sysroot.apt/state" -oDir::State::status=/dev/null \
        -oDir::Cache="$sysroot.apt/cache" -oAPT::Sandbox::User=root
    # A mirror in the middle of its sync may refuse one list and still serve the rest: the update's
    # failure counts only if packages are then missing.
    apt-get "$@" update >"$sysroot_log" 2>&1 </dev/null || true
    # shellcheck disable=SC2086 # a list of words
    if ! apt-get "$@" install --yes --download-only --no-install-recommends \
        $sysroot_packages >>"$sysroot_log" 2>&1 </dev/null; then
        cat "$sysroot_log" >&2
        echo "The packages of $sysroot_arch cannot be fetched; what apt-get says is above." >&2
        return 1
    fi
    for sysroot_package in "$sysroot.apt/cache/archives/"*.deb; do
        dpkg -x "$sysroot_package" "$sysroot" || return 1
    done
    rm -rf "$sysroot.apt"
    echo "$sysroot_wanted" >"$sysroot/.packages"
}

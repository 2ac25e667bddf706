# The Debian packages that the scripts at the root need, and how they get them. To be sourced.

# To build the bridge, the desk's stand-ins for the platform, the simulator, and to run them.
build_packages="
    cmake
    ninja-build
    g++
    openjdk-17-jdk-headless
    android-libutils-dev
    android-platform-frameworks-native-headers
    libdvbv5-dev
    libgoogle-gson-java
    libjline3-java
    libjsoncpp-dev
    libpicocli-java
    libpugixml-dev
    node-d3
    dtv-scan-tables
    python3
    zlib1g-dev"

# To build and run the tests besides.
test_packages="
    ccache
    clang
    clang-format
    libclang-rt-dev
    libffi-dev
    libgmock-dev
    libgtest-dev
    lld
    junit4
    protobuf-compiler
    python3-pexpect
    tcpdump
    tshark"

# To drive the pages of reports in a browser besides, with `./test --all`.
browser_packages="
    chromium
    chromium-driver
    python3-selenium"

# To check the sources with `./test --lint` besides.
lint_packages=clang-tidy

# To build and run the tests of another architecture besides.
i386_packages=g++-i686-linux-gnu
armhf_packages="g++-arm-linux-gnueabihf qemu-user"

# To build and run the benchmarks besides.
bench_packages="
    libjna-java
    libjnr-ffi-java
    python3"

# Installs those of the packages that are missing, with apt-get, as root or through sudo. Silent when
# none is; what apt-get says is shown when it fails.
need() {
    missing=
    for package in "$@"; do
        if ! dpkg-query --show --showformat='${db:Status-Status}\n' "$package" 2>/dev/null |
            grep -qx installed; then
            missing="$missing $package"
        fi
    done
    [ -n "$missing" ] || return 0

    as_root=
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing, and there is no sudo to install them with:" >&2
            echo " $missing" >&2
            echo "As root: apt-get install$missing" >&2
            return 1
        fi
        as_root=sudo
    fi
    echo "Installing$missing" >&2
    apt_log=$(mktemp)
    # shellcheck disable=SC2086 # both are lists of words
    if ! { $as_root apt-get update &&
        $as_root env DEBIAN_FRONTEND=noninteractive \
            apt-get install --yes --no-install-recommends $missing; } >"$apt_log" 2>&1 </dev/null
    then
        cat "$apt_log" >&2
        rm -f "$apt_log"
        return 1
    fi
    rm -f "$apt_log"
}

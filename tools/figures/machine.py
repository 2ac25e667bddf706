"""Where the figures were measured."""

import datetime
import glob
import os
import platform
import re
import subprocess

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))


def output_of(*command):
    try:
        done = subprocess.run(command, capture_output=True, check=True, text=True, cwd=ROOT)
    except (OSError, subprocess.CalledProcessError):
        return ""
    return done.stdout.strip()


def version_of(package):
    return output_of("dpkg-query", "--show", "--showformat=${Version}", package)


def compiler_of(build):
    """The compiler that CMake has found, by name and version."""
    for path in glob.glob(f"{build}/CMakeFiles/*/CMakeCXXCompiler.cmake"):
        with open(path, encoding="utf-8") as file:
            found = dict(re.findall(r'^set\((\w+) "(.*)"\)$', file.read(), re.MULTILINE))
        return f"{found['CMAKE_CXX_COMPILER_ID']} {found['CMAKE_CXX_COMPILER_VERSION']}"
    return ""


def machine(build):
    with open("/proc/cpuinfo", encoding="utf-8") as info:
        model = re.search(r"^model name\s*: (.*)$", info.read(), re.MULTILINE)
    # The figures themselves are no change of what was measured.
    changed = output_of("git", "status", "--porcelain", "--untracked-files=no", "--", ".",
                        ":!docs/testing", ":!docs/testing.md", ":!docs/performance.md")
    return {
        "commit": output_of("git", "rev-parse", "--short=12", "HEAD")
        + (" with changes" if changed else ""),
        "date": datetime.datetime.now().astimezone().strftime("%Y-%m-%d %H:%M %z"),
        "cpu": model[1] if model else platform.machine(),
        "cores": os.cpu_count(),
        "kernel": platform.release(),
        "compiler": compiler_of(build),
        "vm": "",
        "jna": version_of("libjna-java"),
        "jnr-ffi": version_of("libjnr-ffi-java"),
    }

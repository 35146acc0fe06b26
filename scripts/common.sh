# What the scripts share; they source it.

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
JOBS=${JOBS:-$(nproc 2>/dev/null || echo 2)}
CMAKE_AT_LEAST=3.25

# Debian's names of what the library, the sample charts and the example need, and of what the tests and
# benchmarks need besides.
BUILD_PACKAGES=(g++ cmake ninja-build libcairo2-dev fonts-dejavu-core)
TEST_PACKAGES=(libgtest-dev libbenchmark-dev locales libproj-dev libgeographiclib-dev liblapacke-dev
               libeigen3-dev libtiff-dev pkgconf gpsd gpsd-clients python3-gps)

# Of what the viewer needs besides the first ones.
VIEWER_PACKAGES=(libsdl2-dev libxml2-dev libgps-dev)

# Of what the Python package and its tests need besides, and of what those of its tests need that .ci/run does not
# let be skipped.
PYTHON_PACKAGES=(python3-dev python3-venv pybind11-dev libdeflate-dev libwebp-dev python3-numpy python3-tqdm python3-pytest)
PYTHON_TEST_PACKAGES=(python3-distributed python3-tifffile python3-pil python3-matplotlib mypy geotiff-bin
                      libjs-leaflet chromium chromium-driver python3-selenium)

# And of what builds and runs the tests for another system.
CROSS_PACKAGES=(cmake ninja-build googletest locales pkgconf)
WINDOWS_PACKAGES=(g++-mingw-w64-x86-64-posix wine wine64)
WINDOWS32_PACKAGES=(g++-mingw-w64-i686-posix wine wine64 patchelf)
ARM64_PACKAGES=(g++-aarch64-linux-gnu qemu-user)

# Of what checks the sources: layout, analysers, sanitizers, fuzzers, reference.
ANALYSIS_PACKAGES=(clang libclang-rt-14-dev clang-format clang-tidy cppcheck doxygen)

# Of what compiles for Visual C++'s ABI: clang-cl, and the headers of wine and of the viewer's libraries.
MSVC_PACKAGES=(cmake ninja-build pkgconf clang-19 clang-tools-19 lld-19 llvm-19 libc++-19-dev libwine-dev libcairo2-dev
               libxml2-dev)

say() { printf '== %s\n' "$*"; }

fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

has() { command -v "$1" >/dev/null 2>&1; }

is_installed() { dpkg-query -W -f '${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed; }

# Whether as_root can work: as root, or through a sudo that asks nothing or has somebody to ask.
can_be_root() { [ "$(id -u)" -eq 0 ] || { has sudo && { [ -t 0 ] || sudo -n true 2>/dev/null; }; }; }

as_root() { if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi; }

# need_packages PACKAGE...: installs those that are missing, or says in one line what to install.
need_packages() {
    local package missing=()
    if ! has dpkg-query; then
        has cmake && has ninja || fail "please install what Debian calls: $*"
        return
    fi
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    { has apt-get && can_be_root; } || fail "please install: apt-get install ${missing[*]}"
    say "installing ${missing[*]}"
    { as_root apt-get update -qq &&
        as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
            "${missing[@]}" >/dev/null; } || fail "please install: apt-get install ${missing[*]}"
}

# need_wine32: unpacks 32-bit wine and the libraries that it loads in build/wine32, unless wine32 is installed. This needs
# neither root nor packages of another architecture on the system.
need_wine32() {
    local package folder=$ROOT/build/wine32
    # With FreeType but without Fontconfig, wine starts processes without end.
    local -a packages=({libwine,wine32,libc6,libgcc-s1,libfreetype6,libfontconfig1,libexpat1,libpng16-16,zlib1g,libbrotli1}:i386)
    ! is_installed wine32:i386 && [ ! -d "$folder/usr" ] || return 0
    say "fetching 32-bit wine to build/wine32"
    rm -rf "$folder"
    mkdir -p "$folder/lists/partial" "$folder/cache/archives/partial" "$folder/unpacked"
    cat >"$folder/apt.conf" <<END
APT::Architectures { "amd64"; "i386"; };
APT::Sandbox::User "$(id -un)";
Dir::State::lists "$folder/lists";
Dir::Cache "$folder/cache";
END
    (
        set -e
        cd "$folder"
        export APT_CONFIG=$folder/apt.conf
        apt-get update -qq >/dev/null 2>&1 || true  # an index of another source may be broken
        apt-get download -qq "${packages[@]}" >/dev/null 2>&1
        for package in *.deb; do dpkg-deb -x "$package" unpacked; done
        # What the packages' own installation does: wine takes only marked files for its own.
        cp /usr/lib/x86_64-linux-gnu/wine/i386-windows/zlib1.dll unpacked/usr/lib/i386-linux-gnu/wine/i386-windows
        for program in wine wineserver32; do
            patchelf --set-interpreter "$folder/lib/ld-linux.so.2" "unpacked/usr/lib/wine/$program"
        done
        mv unpacked/lib unpacked/usr .
        rm -rf lists cache unpacked apt.conf ./*.deb
    ) || true
    [ -d "$folder/usr" ] || fail "please install wine32:i386: dpkg --add-architecture i386; apt-get update; apt-get install wine32:i386"
}

need_cmake() {
    local version
    version=$(cmake --version | sed -n '1s/[^0-9]*//p')
    [ "$(printf '%s\n' "$CMAKE_AT_LEAST" "$version" | sort -V | head -n 1)" = "$CMAKE_AT_LEAST" ] ||
        fail "please install CMake $CMAKE_AT_LEAST or later, this one is $version"
}

# need_build_folder FOLDER: fails if FOLDER cannot be written or was copied. Waits until no other script builds, and
# keeps the others waiting until this one ends or closes descriptor 9.
need_build_folder() {
    local made_in
    mkdir -p "$1" 2>/dev/null && [ -w "$1" ] ||
        fail "cannot write to $1: copy the sources to a folder that you may write to"
    made_in=$(sed -n 's/^CMAKE_CACHEFILE_DIR:INTERNAL=//p' "$1/CMakeCache.txt" 2>/dev/null || true)
    [ -z "$made_in" ] || [ "$made_in" -ef "$1" ] || fail "$1 was copied from $made_in: delete it"
    has flock || return 0
    exec 9>>"$ROOT/build/lock"
    flock --nonblock 9 || { say "waiting for another script in $ROOT" && flock 9; }
}

# build PRESET [OPTION...]: configures a preset, with further options of cmake, and builds it.
build() {
    local preset=$1
    shift
    need_cmake
    cd "$ROOT"
    need_build_folder "$ROOT/build/$preset"
    say "configuring build/$preset"
    cmake --preset "$preset" "$@"
    say "building build/$preset"
    cmake --build --preset "$preset" --parallel "$JOBS"
}

# test_python [OPTION...]: installs the Python package in build/venv, with further options of cmake, and tests it. Debian's
# packages belong to Debian's own interpreter.
test_python() {
    local python=/usr/bin/python3
    [ -x "$python" ] || python=python3
    cd "$ROOT"
    say "installing the Python package in build/venv"
    "$python" -m venv --clear --system-site-packages build/venv
    CMAKE_ARGS="$*" build/venv/bin/pip install --quiet --no-index ./python
    say "testing the Python package"
    build/venv/bin/python -m pytest python
}

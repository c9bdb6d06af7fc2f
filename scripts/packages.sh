# Sourced by the commands at the root: ensure_packages NAME ... installs the Debian packages that are missing, as root or
# through sudo; says nothing when none is.

build_packages=(
    cmake ninja-build g++ pkg-config ccache
    libsdl2-dev libx11-dev libstb-dev libfreetype-dev xfonts-terminus-dos
)
display_packages=(xvfb xdotool imagemagick)
test_packages=(libgtest-dev libgmock-dev libxtst-dev assimp-utils libjpeg-turbo-progs clang-format python3 "${display_packages[@]}")
fuzz_packages=(clang libclang-rt-14-dev)
bench_packages=(libbenchmark-dev libsdl2-image-dev libssl-dev libxtst-dev xvfb imagemagick)
tidy_packages=(clang-tidy)
valgrind_packages=(valgrind libc6-dbg)
deb_packages=(dpkg-dev gzip man-db lintian desktop-file-utils appstream)

ensure_packages() {
    local package missing=() as_root=()
    for package in "$@"; do
        [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
    done
    ((${#missing[@]})) || return 0

    if ((EUID != 0)); then
        command -v sudo >/dev/null || {
            echo "These packages are missing and need root to install: ${missing[*]}" >&2
            return 1
        }
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}" >&2
    "${as_root[@]}" apt-get update -qq >&2
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" \
        >/dev/null
}

# Configures and builds a preset; what the tools print is shown only when one of them fails, and progress on a terminal.
build_preset() {
    local preset=$1 log
    shift
    # A checkout that was copied or moved brings a build folder that knows itself under its old name.
    if [[ -f build/$preset/CMakeCache.txt ]] &&
        ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" "build/$preset/CMakeCache.txt"; then
        rm -rf "build/$preset"
    fi
    if [[ -t 2 ]]; then
        { cmake --preset "$preset" >/dev/null && cmake --build --preset "$preset" "$@"; } >&2
        return
    fi
    echo "Building (preset $preset)" >&2
    log=$(mktemp)
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" "$@"; } >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        return 1
    fi
    rm -f "$log"
}

# Shared by ./run and ./test: installs what is missing and configures a preset.

BUILD_PACKAGES=(
    cmake ninja-build pkg-config
    qt6-base-dev qt6-declarative-dev qt6-declarative-dev-tools qt6-svg-dev libgl-dev libvulkan-dev
    qcoro-qt6-dev libsimdjson-dev rapidjson-dev
    libcpp-httplib-dev libsqlite3-dev libsodium-dev libsecret-1-dev libcmark-dev
    python3-fonttools python3-brotli
)
RUN_PACKAGES=(
    qml6-module-qtquick qml6-module-qtquick-templates qml6-module-qtquick-layouts
    qml6-module-qtquick-controls qml6-module-qtquick-window qml6-module-qtqml-workerscript
    qml6-module-qtqml qml6-module-qtqml-models qt6-qpa-plugins fonts-noto-cjk xdg-utils
)
TEST_PACKAGES=(
    libgtest-dev libgmock-dev libbenchmark-dev qml6-module-qttest curl dbus gnome-keyring python3
    xvfb xdotool at-spi2-core python3-gi gir1.2-atspi-2.0
    desktop-file-utils appstream
)
# The first that the distribution has; every one of them builds the coroutines right.
COMPILERS=(16 17 18 19 20)

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        echo "This needs root: $*" >&2
        sudo "$@"
    else
        echo "Root is needed for: $*" >&2
        echo "Run that as root, then start this again." >&2
        exit 1
    fi
}

installed() { dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null | grep -qx installed; }

find_compiler() {
    for version in "${COMPILERS[@]}"; do
        # The archiver of the link-time code is in no package that the compiler's own one needs.
        if command -v "clang++-$version" >/dev/null && command -v "ld.lld-$version" >/dev/null &&
            command -v "llvm-ar-$version" >/dev/null; then
            compiler=$version
            return 0
        fi
    done
    return 1
}

# Installs those of the named packages that are missing, and a compiler where there is none.
setup_packages() {
    if ! command -v dpkg-query >/dev/null; then
        find_compiler || { echo "clang 16 or newer is needed; see the README for the rest." >&2; exit 1; }
        return
    fi
    local missing=() package
    for package in "$@"; do
        installed "$package" || missing+=("$package")
    done
    local wants_compiler=no
    find_compiler || wants_compiler=yes
    if [ "${#missing[@]}" -gt 0 ] || [ "$wants_compiler" = yes ]; then
        as_root apt-get update -q
        if [ "$wants_compiler" = yes ]; then
            for version in "${COMPILERS[@]}"; do
                if apt-cache show "clang-$version" >/dev/null 2>&1; then
                    missing+=("clang-$version" "lld-$version" "llvm-$version")
                    break
                fi
            done
        fi
        as_root env DEBIAN_FRONTEND=noninteractive \
            apt-get install -q -y --no-install-recommends "${missing[@]}"
    fi
    find_compiler
    local tool
    for tool in "clang-tidy-$compiler" "clang-format-$compiler" "libclang-rt-$compiler-dev"; do
        if [[ " $* " == *" libgtest-dev "* ]] && ! installed "$tool"; then
            as_root env DEBIAN_FRONTEND=noninteractive \
                apt-get install -q -y --no-install-recommends "$tool"
        fi
    done
}

# Configures a preset; further arguments go to CMake.
configure() {
    cmake --preset "$1" -DCMAKE_CXX_COMPILER="clang++-$compiler" "${@:2}"
}

# For the other scripts: where the project is, and installing what is missing. Sourced, not run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Debian packages by what needs them.
BUILD_PACKAGES="g++ cmake ninja-build qt6-base-dev libfreeimage-dev libexpat1-dev liblzma-dev liblz4-dev zlib1g-dev libx11-dev libxi-dev libcli11-dev libgtest-dev libgmock-dev libbenchmark-dev fonts-dejavu-core"
SCREEN_PACKAGES="xvfb xauth openbox xdotool scrot"
# To build and run what speaks to Windows alone; the whole Windows program; its installer and archive; its tests.
SEAM_PACKAGES="g++-mingw-w64-x86-64-posix wine64 googletest"
WINDOWS_PACKAGES="g++-mingw-w64-x86-64-posix libz-mingw-w64-dev"
PACK_PACKAGES="nsis zip"
WINE_PACKAGES="wine64 fonts-wine googletest"
# The Debian package; its tests, beside a screen.
DEBIAN_PACKAGES="dpkg-dev file"
DEBIAN_TEST_PACKAGES="appstream debootstrap desktop-file-utils lintian"
SDK_PACKAGES="$WINDOWS_PACKAGES cmake ninja-build qt6-base-dev qt6-base-dev-tools dpkg-dev nasm"

# need PACKAGE...: installs those that are missing, as root or with sudo.
need() {
  local missing="" package
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing="$missing $package"
  done
  [ -n "$missing" ] || return 0
  local sudo=""
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "These packages are missing; install them as root:$missing" >&2; exit 1; }
    sudo=sudo
  fi
  echo "Installing:$missing"
  $sudo apt-get update -qq
  # shellcheck disable=SC2086
  $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null
}

# configure PRESET [CMAKE ARGUMENT...]
configure() {
  local preset=$1
  shift
  cmake --preset "$preset" "$@" >"build/$preset.log" 2>&1 || { cat "build/$preset.log" >&2; exit 1; }
}

# build PRESET [CMAKE ARGUMENT...]: configures and builds.
build() {
  configure "$@"
  cmake --build --preset "$1"
}
mkdir -p build

# wait_for SECONDS COMMAND...: until the command succeeds; fails when the time is over.
wait_for() {
  local until=$((SECONDS + $1))
  shift
  until "$@" >/dev/null 2>&1; do
    [ "$SECONDS" -lt "$until" ] || { echo "Gave up waiting for: $*" >&2; return 1; }
    sleep 0.1
  done
}

# configure_windows SDK [CMAKE ARGUMENT...]: configures build/windows. The sample theater and the demo tape are made by
# programs of this machine.
configure_windows() {
  local sdk fresh=""
  sdk=$(realpath "$1")
  shift
  # One that was made before the simulator's files needed these.
  [ -e "$sdk/lib/liblz4.a" ] || packaging/windows/build-sdk --add "$sdk"
  # What was found in another SDK is not to be used.
  grep -qs "^QT_CHAINLOAD_TOOLCHAIN_FILE:.*=$sdk/mingw-toolchain.cmake$" build/windows/CMakeCache.txt || fresh=--fresh
  configure release
  cmake --build --preset release --target sample-theater sample-tape guide-pages
  # shellcheck disable=SC2086
  cmake $fresh -G Ninja -S . -B build/windows -DCMAKE_TOOLCHAIN_FILE="$sdk/lib/cmake/Qt6/qt.toolchain.cmake" \
    -DQT_CHAINLOAD_TOOLCHAIN_FILE="$sdk/mingw-toolchain.cmake" -DQT_HOST_PATH=/usr \
    -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(gcc -print-multiarch)/cmake" -DCMAKE_BUILD_TYPE=Release \
    -DKESTREL_SAMPLE_THEATER="$PWD/build/release/tools/sample-theater" \
    -DKESTREL_SAMPLE_TAPE="$PWD/build/release/tools/sample-tape" \
    -DKESTREL_GUIDE_PAGES="$PWD/build/release/tools/guide-pages" "$@" >build/windows.log 2>&1 ||
    { cat build/windows.log >&2; exit 1; }
}

# Wine: Debian's 64-bit one, which has no name of its own on the path.
WINE=${WINE:-/usr/lib/wine/wine64}
WINESERVER=${WINESERVER:-/usr/lib/wine/wineserver64}
# windows_name PATH: as programs under Wine name it.
windows_name() { echo "Z:$(tr / '\\' <<<"$1")"; }

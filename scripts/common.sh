# For the other scripts: where the project is, and installing what is missing. Sourced, not run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Debian packages by what needs them.
BUILD_PACKAGES="g++ cmake ninja-build qt6-base-dev libfreeimage-dev libx11-dev libxi-dev zlib1g-dev libgtest-dev libgmock-dev libbenchmark-dev fonts-dejavu-core"
SCREEN_PACKAGES="xvfb xauth openbox xdotool scrot"
WINDOWS_PACKAGES="g++-mingw-w64-x86-64-posix wine64 googletest"

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

# build PRESET [CMAKE ARGUMENT...]: configures and builds.
build() {
  local preset=$1
  shift
  cmake --preset "$preset" "$@" >"build/$preset.log" 2>&1 || { cat "build/$preset.log" >&2; exit 1; }
  cmake --build --preset "$preset"
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

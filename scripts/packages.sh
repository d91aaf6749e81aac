# Installs what a fresh Debian 12 lacks. Sourced by the other scripts; nothing happens when all is
# there.

# packages_for_...: what is needed to build, to draw the pictures and photographs, to make the
# package, to measure, to test the page, to fuzz, by Debian's names.
packages_for_build="g++ cmake ninja-build pkg-config libexpat1-dev libpng-dev libjpeg62-turbo-dev \
libdeflate-dev libcairo2-dev libfreetype-dev libharfbuzz-dev libfontconfig-dev fontconfig fonts-inter \
nlohmann-json3-dev libcli11-dev libcpp-httplib-dev libgtest-dev"
packages_for_pictures="librsvg2-bin"
packages_for_package="lowdown dpkg-dev"
packages_for_bench="libbenchmark-dev libboost1.81-dev libplist-dev librsvg2-bin \
libjpeg-turbo-progs python3"
packages_for_page="chromium procps"
packages_for_fuzz="clang-14 libclang-rt-14-dev llvm-14 libplist-dev"
packages_for_photographs="povray povray-includes libjpeg-turbo-progs"

install_packages() {
  local missing="" package
  for package in "$@"; do
    if [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
      missing="$missing $package"
    fi
  done
  [ -z "$missing" ] && return 0
  echo "Installing:$missing"
  local as_root=""
  [ "$(id -u)" -eq 0 ] || as_root="sudo"
  $as_root apt-get update -qq
  # shellcheck disable=SC2086 # a list of words
  $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing
}

# build PRESET [TARGET...]: configures and builds, in build/PRESET; all of it when no target is named.
build() {
  # shellcheck disable=SC2086 # a list of words
  install_packages $packages_for_build
  [ -f "build/$1/build.ninja" ] || cmake --preset "$1"
  local preset="$1"
  shift
  cmake --build --preset "$preset" ${1:+--target "$@"}
}

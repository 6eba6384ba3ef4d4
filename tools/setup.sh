# What ./run, ./test and tools/make_package share; sourced by them from the top of the repository.

build_packages="g++ cmake ninja-build pkg-config libutf8proc-dev libcli11-dev nlohmann-json3-dev \
qt6-base-dev qt6-svg-dev libwmf-dev libemf2svg-dev breeze-icon-theme fonts-dejavu-core"
test_packages="libgtest-dev libgmock-dev clang-format clang-tidy python3 locales xvfb openbox xdotool x11-utils imagemagick pandoc"
coverage_packages="gcovr"
fuzz_packages="clang libclang-rt-dev llvm"
story_packages="libreoffice-calc-nogui gvfs libglib2.0-bin dbus"
package_packages="pandoc librsvg2-bin dpkg-dev file fakeroot desktop-file-utils appstream lintian"

# The programs that these packages stand for, for systems that name their packages otherwise.
build_tools="g++ cmake ninja pkg-config"
test_tools="clang-format clang-tidy run-clang-tidy python3 Xvfb openbox xdotool xprop convert"
coverage_tools="gcovr"
fuzz_tools="clang++ llvm-symbolizer"
story_tools="soffice gio dbus-run-session"
package_tools="pandoc rsvg-convert dpkg-deb dpkg-shlibdeps desktop-file-validate appstreamcli lintian"

say() { echo "$*" >&2; }

missing_packages() {
  for package; do
    dpkg-query -W -f '${db:Status-Abbrev}' "$package" 2>/dev/null | grep -q '^ii' || echo "$package"
  done
}

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# install PACKAGE...: installs those that are missing.
install() {
  missing=$(missing_packages "$@" | xargs)
  [ -n "$missing" ] || return 0
  say "Installing $missing ..."
  quietly as_root apt-get update
  quietly as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing
}

# need TOOL...: on a system without Debian's packages, says what has to be there and stops where a program isn't.
# Libraries are looked for by the build itself.
need() {
  say "This is no Debian system, so nothing is installed. Tresmor needs: $*, a compiler for C++20, CMake 3.25 or newer,"
  say "and the libraries utf8proc, CLI11 and nlohmann-json; its window also needs Qt 6, libwmf and libemf2svg, and its tests"
  say "GoogleTest with GoogleMock."
  absent=
  for tool; do
    command -v "$tool" >/dev/null || absent="$absent $tool"
  done
  if [ -n "$absent" ]; then
    say "Missing here:$absent. Install them and start again."
    exit 1
  fi
}

# provide PACKAGES TOOLS: sees to it that what the two lists name is there.
provide() {
  if [ -e /etc/debian_version ] && command -v apt-get >/dev/null && command -v dpkg-query >/dev/null; then
    install $1
  else
    need $2
  fi
}

# quietly COMMAND...: its output shows only if it fails.
quietly() {
  log=$(mktemp "${TMPDIR:-/tmp}/tresmor-log.XXXXXX")
  if "$@" >"$log" 2>&1; then
    rm -f "$log"
  else
    status=$?
    cat "$log" >&2
    rm -f "$log"
    say "Failed: $*"
    return $status
  fi
}

# build PRESET [OPTION...]: configures, with these options too, and builds.
build() {
  preset=$1
  shift
  quietly cmake --preset "$preset" "$@"
  quietly cmake --build --preset "$preset"
}

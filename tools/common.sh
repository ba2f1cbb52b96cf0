# Shared by ./run, ./test and the scripts of tools/: sourced, never run. Sets `root` and goes there.
script=$(realpath "$0")
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

# Compiler results are shared between clones of this tree, as paths below it are hashed as relative.
# The cache is ccache's default folder, so a new clone builds fast.
export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1

started=$SECONDS
# One line for each long step, with the time since the start.
say() { printf '[%3d:%02d] %s\n' $(((SECONDS - started) / 60)) $(((SECONDS - started) % 60)) "$*"; }
fail() {
  say "$*" >&2
  exit 1
}

# usage STATUS: prints the comment at the head of the script, which ends at its "set", and ends it.
usage() {
  sed -n '2,/^set/s/^# \{0,1\}//p' "$script"
  exit "$1"
}

product_version() { sed -nE 's/^project\(Quorvel VERSION ([0-9.]+).*/\1/p' CMakeLists.txt; }

# result_of COMMAND...: the last line that it prints; all of them go to stderr.
result_of() { "$@" | tee >(cat >&2) | tail -n 1; }

jobs() { nproc 2>/dev/null || echo 2; }

# build PRESET [OPTION...] -- [TARGET...]: configures and builds one preset, with visible progress.
build() {
  local preset=$1 options=()
  shift
  while [ $# -gt 0 ] && [ "$1" != -- ]; do
    options+=("$1")
    shift
  done
  [ $# -eq 0 ] || shift
  say "configure $preset"
  mkdir -p "build/$preset"
  if ! cmake --preset "$preset" "${options[@]}" >"build/$preset/configure.log" 2>&1; then
    cat "build/$preset/configure.log"
    return 1
  fi
  say "build $preset${*:+ ($*)}"
  cmake --build --preset "$preset" --parallel "$(jobs)" ${*:+--target "$@"} |
    awk -f tools/quiet_ninja.awk
}

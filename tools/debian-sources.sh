# Fetches Debian's source packages for a cross build: sourced by win-deps.sh and win-converter.
# Wants `work`, a folder for sources, logs and the state of apt. Needs no root.

say() { printf '[%3ds] %s\n' $SECONDS "$*"; }

# Private source lists with private state; the system's are untouched. The lists are made from the
# machine's own. A second set reads the next release: a mirror may lack a file.
source_apt() { # SUITE APT-GET-ARGUMENT...
  local state=$work/apt-$1
  shift
  apt-get -o Dir::Etc::sourcelist="$state/sources.list" -o Dir::Etc::sourceparts="$state/parts" \
    -o Dir::State::lists="$state/lists" -o Dir::Cache="$state/cache" -o APT::Sandbox::User=root \
    -o Acquire::Languages=none -q "$@" >>"$work/apt.log" 2>&1
}
make_lists() { # SUITE SED-PROGRAM
  local state=$work/apt-$1 file
  mkdir -p "$state"/{parts,lists/partial,cache/archives/partial}
  : >"$state/sources.list"
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ -e "$file" ] || continue
    sed -nE "s/^deb(-src)? /deb-src /; $2; /^deb-src/p" "$file" | sort -u >>"$state/sources.list"
  done
  for file in /etc/apt/sources.list.d/*.sources; do
    [ -e "$file" ] || continue
    sed -E "s/^Types:.*/Types: deb-src/; $2" "$file" >"$state/parts/$(basename "$file")"
  done
  source_apt "$1" update
}
fetch() { # SUITE PACKAGE
  (cd "$work/src" && rm -rf "$2"-*/ && source_apt "$1" source --only-source "$2")
}
fetch_all() { # PACKAGE...
  local package
  mkdir -p "$work/src"
  make_lists this ''
  say "source lists read"
  for package in "$@"; do
    fetch this "$package" && continue
    say "$package: not on the mirror, trying the next release"
    [ -d "$work/apt-next" ] || make_lists next 's/\bbookworm/trixie/g'
    fetch next "$package"
  done
  say "sources fetched and patched"
}
source_of() { # PACKAGE
  local folder
  for folder in "$work"/src/"$1"-*/; do echo "${folder%/}"; done
}

#!/bin/bash
# Builds the libraries of the Windows cross build as static libraries, from Debian's source packages.
# Usage: tools/win-deps.sh [PREFIX]. Without PREFIX they go to the user's cache, and a second call
# finds them there. Prints the prefix as its last line. Needs no root; about a minute.
# Debian packages: tools/setup base windows.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
recipe=$(cat "$0" "$here/cmake/mingw-w64-x86_64.cmake" | sha256sum | cut -c1-12)
prefix=$(realpath -m "${1:-${XDG_CACHE_HOME:-$HOME/.cache}/quorvel/win-deps-$recipe}")
if [ -e "$prefix/complete" ]; then
  echo "$prefix"
  exit 0
fi
work=$prefix.work
toolchain=$here/cmake/mingw-w64-x86_64.cmake
host=x86_64-w64-mingw32
rm -rf "$prefix" "$work"
mkdir -p "$prefix"/{include,lib} "$work/build"
. "$here/tools/debian-sources.sh"

with_cmake() { # NAME SOURCE-FOLDER CMAKE-ARGUMENT...
  local name=$1 source=$2
  shift 2
  cmake -S "$source" -B "$work/build/$name" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
    -DWIN_DEPS="$prefix" -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib \
    -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBUILD_SHARED_LIBS=OFF \
    -DCMAKE_POLICY_DEFAULT_CMP0077=NEW "$@" >"$work/$name.log" 2>&1
  cmake --build "$work/build/$name" --target install >>"$work/$name.log" 2>&1
  say "$name"
}

# Debian's tarball lacks parts of doc/: lib and include are built alone.
build_theora() {
  local source
  source=$(source_of libtheora)
  mkdir -p "$work/build/libtheora"
  (
    cd "$work/build/libtheora"
    PKG_CONFIG_LIBDIR="$prefix/lib/pkgconfig" PKG_CONFIG_PATH='' \
      "$source/configure" --host=$host --build="$(gcc -dumpmachine)" --prefix="$prefix" \
      --disable-shared --enable-static --disable-examples --disable-spec --disable-doc \
      --disable-oggtest --disable-vorbistest --disable-sdltest \
      --with-ogg="$prefix" --with-vorbis="$prefix" CC=$host-gcc-posix CFLAGS="-O2 -g"
    make -j"$(nproc)" -C lib all
    make -C lib install
    make -C include install
    make install-pkgconfigDATA
  ) >"$work/libtheora.log" 2>&1
  say libtheora
}

# Two files, compiled by hand: its own build would need a cross file for the same result.
build_inih() {
  local source
  source=$(source_of libinih)
  (
    cd "$work/build"
    $host-gcc-posix -O2 -g -c "$source/ini.c" -o ini.o
    $host-g++-posix -std=c++17 -O2 -g -I"$source" -c "$source/cpp/INIReader.cpp" -o INIReader.o
    $host-ar rcs "$prefix/lib/libinih.a" ini.o
    $host-ar rcs "$prefix/lib/libINIReader.a" INIReader.o
    cp "$source/ini.h" "$source/cpp/INIReader.h" "$prefix/include/"
  )
  say inih
}

# Copies of only the needed trees, so that the build machine's headers are never on the path. Of
# zlib the static library: beside it in the sysroot lies the import library of the DLL.
copy_headers() {
  local header
  for header in boost stb utf8 utf8.h; do cp -rL "/usr/include/$header" "$prefix/include/"; done
  cp /usr/$host/include/{zlib,zconf}.h "$prefix/include/"
  cp /usr/$host/lib/libz.a "$prefix/lib/"
  say "headers of boost, stb and utfcpp; zlib"
}

trap 'status=$?; [ $status = 0 ] || { echo "win-deps.sh failed; the logs are in $work" >&2;
  tail -n 5 "$work"/*.log >&2; }' EXIT
fetch_all libogg libvorbis libtheora tinyxml2 libinih
with_cmake libogg "$(source_of libogg)" -DINSTALL_DOCS=OFF -DBUILD_TESTING=OFF
with_cmake libvorbis "$(source_of libvorbis)"
with_cmake tinyxml2 "$(source_of tinyxml2)" -DBUILD_TESTING=OFF -Dtinyxml2_BUILD_TESTING=OFF
with_cmake googletest /usr/src/googletest -DBUILD_GMOCK=ON
build_theora
build_inih
copy_headers
rm -rf "$work"
touch "$prefix/complete"
say "done: $(du -sh "$prefix" | cut -f1)"
echo "$prefix"

#!/usr/bin/env bash
# Installs a build to a folder of its own, moves it, and builds a host's project against it: through the CMake package and
# through pkg-config, with the static and with the shared library.
#
# Usage: Installation.sh SOURCE BUILD
set -euo pipefail
source_folder=$1 build=$2
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT

cmake --install "$build" --prefix "$place/first" >"$place/install.log"
mv "$place/first" "$place/moved here"
prefix="$place/moved here"
libraries=$(dirname "$(find "$prefix" -name 'libZelBase.a')")

expected="Zeearend draws 2.75 m; the line is seen, 10.0 m of it"
demand() {  # WHAT PROGRAM
  local said
  said=$(LD_LIBRARY_PATH=$libraries "$2")
  [ "$said" = "$expected" ] || { echo "$1 said: $said"; exit 1; }
}

cmake -S "$source_folder/tests/package/outside" -B "$place/outside" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_BUILD_TYPE=Release \
  >"$place/configure.log"
cmake --build "$place/outside" >"$place/build.log" || { cat "$place/build.log"; exit 1; }
demand "The project with the static library" "$place/outside/outside_static"
demand "The project with the shared library" "$place/outside/outside_shared"
needs_shared() { readelf -d "$1" | grep -q 'NEEDED.*libZelBase.so'; }
needs_shared "$place/outside/outside_shared" || { echo "outside_shared does not need the shared library"; exit 1; }
! needs_shared "$place/outside/outside_static" || { echo "outside_static needs the shared library"; exit 1; }

export PKG_CONFIG_PATH=$libraries/pkgconfig
mapfile -t flags < <(pkg-config --cflags zelbase | xargs -n1)
mapfile -t linked < <(pkg-config --libs zelbase | xargs -n1)
"${CXX:-c++}" -std=c++20 "$source_folder/tests/package/outside/main.cpp" "${flags[@]}" "${linked[@]}" -o "$place/by_pkg_config"
demand "The program by pkg-config" "$place/by_pkg_config"
mapfile -t linked < <(pkg-config --static --libs zelbase | xargs -n1)
"${CXX:-c++}" -std=c++20 "$source_folder/tests/package/outside/main.cpp" "${flags[@]}" "${linked[@]/#-lZelBase/-l:libZelBase.a}" \
  -o "$place/by_pkg_config_static"
demand "The static program by pkg-config" "$place/by_pkg_config_static"

# The program and its plug-ins run from the new place, too.
"$prefix/bin/zel" format span 90061000 | grep -q . || { echo "the installed zel says nothing"; exit 1; }
echo "installed, moved and linked four ways"

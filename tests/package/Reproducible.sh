#!/usr/bin/env bash
# Builds the library twice, in two folders whose names differ in length, with another locale, time zone, home and order of compilation, and
# compares what comes out byte for byte: a few of its sources, archived and linked; with `all` the whole of it, installed.
# No compiler cache stands between: what it hands out twice is equal by itself.
#
# Usage: Reproducible.sh SOURCE [all]
set -euo pipefail
source_folder=$1 scope=${2:-some}
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
some=(frame/Trim frame/detail/FixedDigits config/CRCChecksum errors/ErrorString frame/StringCompare geometry/Point xml/XmlFault)

if found=$(grep -rnE '^[^/]*__(DATE|TIME|TIMESTAMP)__' "$source_folder/zelbase" "$source_folder/adapters"); then
  echo "The time of the build is compiled in: $found"
  exit 1
fi

make_one() {  # FOLDER JOBS
  mkdir -p "$1"
  cp -r "$source_folder/CMakeLists.txt" "$source_folder/cmake" "$source_folder/zelbase" "$1/"
  cmake -S "$1" -B "$1/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DZELBASE_CCACHE=OFF -DZELBASE_BUILD_TESTS=OFF -DZELBASE_BUILD_APPS=OFF \
    -DZELBASE_BUILD_BENCHMARKS=OFF -DZELBASE_BUILD_ADAPTERS=OFF >"$1/configure.log"
  if [ "$scope" = all ]; then
    cmake --build "$1/build" -j "$2" -- --quiet
    cmake --install "$1/build" --prefix "$1/out" >/dev/null
    return
  fi
  local objects=()
  for name in "${some[@]}"; do objects+=("zelbase/CMakeFiles/ZelBase.dir/$name.cpp.o"); done
  ninja -C "$1/build" --quiet -j "$2" "${objects[@]}"
  mkdir "$1/out"
  (cd "$1/build" && ar qc ../out/libPart.a "${objects[@]}" && ranlib ../out/libPart.a &&
    "${CXX:-c++}" -shared -Wl,-soname,libPart.so -Wl,--unresolved-symbols=ignore-all "${objects[@]}" -o ../out/libPart.so)
}

mkdir -p "$place/home"
make_one "$place/a" "$(nproc)"
LC_ALL=C TZ=Pacific/Chatham HOME=$place/home make_one "$place/a longer name of a folder/b" 1
diff -r "$place/a/out" "$place/a longer name of a folder/b/out" || { echo "two builds differ"; exit 1; }
if found=$(grep -rlF "$place" "$place/a/out"); then
  echo "The folder of the build is compiled in: $found"
  exit 1
fi
echo "$(find "$place/a/out" -type f | wc -l) files are equal in two builds"

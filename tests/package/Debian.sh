#!/usr/bin/env bash
# Makes the Debian packages of a build, installs them to a system of their own in a folder, and uses what lies there: the program
# runs, and a host's program is built with the headers and both libraries.
#
# Usage: Debian.sh SOURCE BUILD
# shellcheck disable=SC2016 # ${...} in single quotes is dpkg-query's
set -euo pipefail
source_folder=$1 build=$2
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT

fail() { echo "$1"; exit 1; }

(cd "$place" && cpack --config "$build/CPackConfig.cmake" -B "$place/packages") >"$place/cpack.log" 2>&1 || fail "$(cat "$place/cpack.log")"
mapfile -t packages < <(find "$place/packages" -maxdepth 1 -name '*.deb' | sort)
[ ${#packages[@]} -eq 3 ] || fail "packages made: ${packages[*]}"

# A package data base of its own: the machine's stays as it is. What the packages depend on is the machine's, hence the force.
root=$place/root
mkdir -p "$root/var/lib/dpkg/updates" "$root/var/lib/dpkg/info"
touch "$root/var/lib/dpkg/status"
package_manager() {  # LOG ARGUMENTS
  fakeroot dpkg --root="$root" --log="$place/dpkg.log" --force-not-root --force-depends --force-script-chrootless "${@:2}" >"$1" 2>&1 ||
    fail "$(cat "$1")"
}
told() { dpkg-query --admindir="$root/var/lib/dpkg" -W -f="$1\n" "$2"; }

package_manager "$place/install.log" -i "${packages[@]}"
for package in libzelbase4 libzelbase-dev zelbase; do
  [ "$(told '${db:Status-Status}' "$package")" = installed ] || fail "$package is not installed"
done
told '${Depends}' libzelbase4 | grep -q libstdc++6 || fail "the library depends on nothing"
told '${Depends}' libzelbase-dev | grep -q "libzelbase4 (= $(told '${Version}' libzelbase4))" || fail "the headers fit no library"

libraries=$(dirname "$(find "$root/usr/lib" -name 'libZelBase.a')")
"$root/usr/bin/zel" --help >/dev/null
for way in "$libraries/libZelBase.a" "-L$libraries -lZelBase"; do
  # shellcheck disable=SC2086 # two words
  "${CXX:-c++}" -std=c++20 -I"$root/usr/include" "$source_folder/tests/package/outside/main.cpp" $way -pthread -ldl -o "$place/outside"
  said=$(LD_LIBRARY_PATH=$libraries "$place/outside")
  [ "$said" = 'Zeearend draws 2.75 m; the line is seen, 10.0 m of it' ] || fail "$way: $said"
done

package_manager "$place/remove.log" -P zelbase libzelbase-dev libzelbase4
left=$(find "$root" -path "$root/var" -prune -o -type f -print | wc -l)
[ "$left" -eq 0 ] || fail "left after the removal: $left files"
echo "${#packages[@]} packages made, installed, used and removed"

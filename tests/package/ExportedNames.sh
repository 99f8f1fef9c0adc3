#!/usr/bin/env bash
# Compares the names that the shared library exports with the reviewed list: a name that goes, or one that nobody meant to
# export, is a change of the binary interface. With --update the list is written anew, for the review of the change.
#
# Usage: ExportedNames.sh LIBRARY LIST [--update]
set -euo pipefail
library=$1 list=$2
# Names of the standard library's templates, and of inline functions, come and go with the compiler: weak, and not listed.
exported() { nm -D --defined-only "$library" | awk '$2 ~ /^[TDBR]$/ {print $3}' | c++filt | LC_ALL=C sort -u; }
if [ "${3:-}" = --update ]; then
  exported >"$list"
  exit
fi
if ! difference=$(diff <(exported) "$list"); then
  echo "Exported names (<) differ from $list (>):"
  echo "$difference" | grep '^[<>]' | head -40
  echo "When meant: tests/package/ExportedNames.sh $library $list --update, and say it in CHANGELOG.md"
  exit 1
fi
echo "$(wc -l <"$list") names as listed"

#!/usr/bin/env bash
# release.sh SOURCES: releases a copy of the tree twice. The version is the same everywhere, and what may not be released is not.
set -euo pipefail
command -v git >/dev/null || { echo "skipped: git is missing"; exit 0; }
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
export HOME=$folder GIT_CONFIG_NOSYSTEM=1
git config --global user.name Tester
git config --global user.email tester@zentaro.example
tar -C "$1" -c CMakeLists.txt CHANGELOG.md debian scripts .gitignore | tar -C "$folder" -x --one-top-level=tree
cd "$folder/tree"
git init -q && git add -A && git commit -qm "All there is"

refused() {  # WHY VERSION: says so, and changes nothing
  local before
  before=$(git rev-parse HEAD && git status --porcelain && git tag)
  ! scripts/release "$2" --only-tag >"$folder/said" 2>&1 || { echo "released: $1"; exit 1; }
  grep -q "$1" "$folder/said" || { echo "instead of \"$1\": $(cat "$folder/said")"; exit 1; }
  [ "$before" = "$(git rev-parse HEAD && git status --porcelain && git tag)" ] || { echo "$1: refused, and changed"; exit 1; }
}
released() {  # VERSION ENTRIES: in CMake's file, both changelogs and the tag, which has the notes
  scripts/release "$1" --only-tag >/dev/null
  [ -z "$(git status --porcelain)" ]
  grep -q "^project(Zentaro VERSION $1 " CMakeLists.txt
  grep -q "^## $1, 20[0-9-]*$" CHANGELOG.md
  [ "$(grep -c '^zentaro (' debian/changelog)" = "$2" ]
  [ "$(head -1 debian/changelog)" = "zentaro ($1) unstable; urgency=medium" ]
  git for-each-ref "refs/tags/v$1" --format='%(contents)' | grep '^- ' >/dev/null
}

refused "VERSION" 1.2
refused "older" 0.0.9
released 0.1.0 1
refused "nothing under" 0.2.0
refused "released already" 0.1.0
sed -i 's/^## Not released$/&\n\n### Fixed\n\n- Something./' CHANGELOG.md
refused "not committed" 0.2.0
git commit -qam "Fix something"
released 0.2.0 2
echo "released twice"

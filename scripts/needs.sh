# Sourced by ./demo, ./test and its legs. need PACKAGE... installs the Debian packages that are missing.
need() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep "ok installed" >/dev/null || missing+=("$package")
  done
  [ "${#missing[@]}" -eq 0 ] && return
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "Please install as root: apt-get install ${missing[*]}" >&2
      exit 1
    fi
    as_root=(sudo)
  fi
  echo "Installing ${missing[*]}"
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# sources PATTERN...: the project's files, separated by NUL; in a tree without .git all files outside build/.
sources() {
  if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
    git ls-files -z -- "$@"
  else
    local names=() pattern
    for pattern in "$@"; do names+=(-o -path "./$pattern"); done
    find . -path ./build -prune -o -type f \( "${names[@]:1}" \) -print0
  fi
}

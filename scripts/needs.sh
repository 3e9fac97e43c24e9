# Sourced by ./demo and ./test: need PACKAGE... installs the Debian packages that are missing.
need() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
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

# Sourced by the other scripts. need_packages NAME...: installs the Debian packages that are missing, as root or
# through sudo; does nothing, and needs no rights, where all are there.
need_packages() {
  local missing=() package as_root=()
  for package in "$@"; do
    [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
  done
  [[ ${#missing[@]} == 0 ]] && return
  echo "Installing ${missing[*]}"
  if [[ $(id -u) != 0 ]]; then
    command -v sudo >/dev/null || {
      echo "$0: needs root or sudo to install ${missing[*]}" >&2
      return 1
    }
    as_root=(sudo)
  fi
  as_root+=(env DEBIAN_FRONTEND=noninteractive)
  "${as_root[@]}" apt-get update -q </dev/null
  "${as_root[@]}" apt-get install -q -y --no-install-recommends "${missing[@]}" </dev/null
}

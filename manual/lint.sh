#!/usr/bin/env bash
# The pages are well-formed manual pages, and what they refer to is there. usage: lint.sh MANDOC DIRECTORY_OF_PAGES
set -eu
cd "$2"
mapfile -t pages < <(find man? -type f)
# mandoc looks for other pages where they would be installed.
complaints=$("$1" -T lint "${pages[@]}" | grep -v 'referenced manual not found') || true
while read -r _ name section _; do
  [[ -e man$section/$name.$section ]] || complaints+=$'\n'"no $name($section)"
done < <(grep -h '^\.Xr' "${pages[@]}" | sort -u)
echo "${complaints:-${#pages[@]} pages are clean}"
[[ -z $complaints ]]

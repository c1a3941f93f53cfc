#!/bin/sh
# Installs the named Debian packages that are missing; as root directly, otherwise by sudo.
set -eu
missing=""
for package in "$@"; do
  dpkg -s "$package" >/dev/null 2>&1 || missing="$missing $package"
done
[ -z "$missing" ] && exit 0
run=""
[ "$(id -u)" -eq 0 ] || run="sudo"
export DEBIAN_FRONTEND=noninteractive
$run apt-get update -qq
# shellcheck disable=SC2086
$run apt-get install -y -qq --no-install-recommends $missing

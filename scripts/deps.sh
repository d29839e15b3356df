#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the demo need (as root, or with sudo).
set -euo pipefail
pkgs=(build-essential cmake ninja-build ccache qt6-base-dev libqt6sql6-sqlite
      libqscintilla2-qt6-dev libgl-dev libsqlite3-dev libgtest-dev libgmock-dev libbenchmark-dev
      xauth)
missing=()
for p in "${pkgs[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  SUDO=""
  [ "$(id -u)" -eq 0 ] || SUDO="sudo"
  export DEBIAN_FRONTEND=noninteractive
  $SUDO apt-get update
  $SUDO apt-get install -y --no-install-recommends "${missing[@]}"
fi

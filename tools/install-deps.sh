#!/usr/bin/env bash
# Installs the Debian packages the build, the demo host and the tests need.
# Does nothing when everything is already there, so make targets can call it freely.
set -euo pipefail

PACKAGES=(
  build-essential cmake ninja-build ccache pkg-config clang-format
  qt6-base-dev qt6-base-dev-tools
  qt6-webengine-dev qt6-webengine-dev-tools libqt6webenginecore6-bin
  qt6-webchannel-dev
  qt6-svg-dev libqt6svg6
  qt6-tools-dev qt6-tools-dev-tools
  libqscintilla2-qt6-dev
  libhunspell-dev hunspell-en-us hunspell-de-de
  libcurl4-openssl-dev
  python3-pyftpdlib python3-openssl openssl python3-asyncssh
  breeze-icon-theme
  fonts-dejavu-core fonts-liberation2
  poppler-utils
)

missing=()
for p in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "Installing missing packages: ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then
  SUDO="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -q
$SUDO apt-get install -y -q --no-install-recommends "${missing[@]}"

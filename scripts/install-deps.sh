#!/usr/bin/env bash
# Installs the Debian packages the project builds with, only those that are missing.
# Usage: scripts/install-deps.sh [--fuzz]   (--fuzz adds clang and its sanitizer runtime)
set -euo pipefail

packages=(build-essential cmake ninja-build pkg-config ccache libicu-dev libxml2-dev libssl-dev
          libgtest-dev libgmock-dev libbenchmark-dev libcli11-dev nlohmann-json3-dev libcsv-dev
          libsystemd-dev uuid-dev dbus-daemon shared-mime-info zip unzip p7zip-full
          qt6-base-dev qt6-image-formats-plugins qt6-tools-dev libqt6opengl6-dev xvfb xauth
          libespeak-ng-dev espeak-ng unrtf)
if [[ "${1:-}" == "--fuzz" ]]; then
  packages+=(clang-14 libclang-rt-14-dev)
fi

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$package")
  fi
done
if ((${#missing[@]} == 0)); then
  exit 0
fi

echo "Installing: ${missing[*]}"
sudo=""
if [[ $(id -u) -ne 0 ]]; then sudo="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"

#!/usr/bin/env bash
# Installs the Debian packages the build needs, skipping those already present.
# Usage: scripts/install-deps.sh [--fuzz]   (--fuzz adds clang and its runtime)
set -euo pipefail

packages=(cmake ninja-build g++ pkg-config libicu-dev libgtest-dev libgmock-dev libbenchmark-dev libspdlog-dev locales)
if [[ "${1:-}" == "--fuzz" ]]; then
  packages+=(clang libclang-rt-14-dev)
fi

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$package")
  fi
done

if (( ${#missing[@]} > 0 )); then
  echo "Installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

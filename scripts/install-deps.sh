#!/usr/bin/env bash
# Installs the Debian packages the build needs, skipping those already present.
# Usage: scripts/install-deps.sh [--fuzz] [--browser]
#   --fuzz     adds clang and its runtime (the fuzz preset)
#   --browser  adds chromium, which the test of the zupic serve page drives
set -euo pipefail

packages=(cmake ninja-build g++ pkg-config libicu-dev libgtest-dev libgmock-dev libbenchmark-dev
          libcpp-httplib-dev nlohmann-json3-dev libssl-dev
          libspdlog-dev libmimalloc-dev locales)
for option in "$@"; do
  case "$option" in
    --fuzz) packages+=(clang libclang-rt-14-dev) ;;
    --browser) packages+=(chromium) ;;
    *) echo "install-deps.sh: unknown option $option" >&2; exit 2 ;;
  esac
done

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

#!/usr/bin/env bash
# Installs the Debian packages the build needs, when any is missing.
# Runs apt-get as root, or through sudo for an ordinary user.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config ccache
  qt6-base-dev libqt6printsupport6 qt6-qpa-plugins libgl-dev
  # Charts are exported as SVG through Qt SVG.
  qt6-svg-dev
  libzip-dev zlib1g-dev libpugixml-dev libsquish-dev
  libgtest-dev libgmock-dev
  # The screen tests that read back what a real X server shows run on Xvfb.
  xvfb
  # The installed icon's PNG, the .deb's dependencies (dpkg-shlibdeps), and the checks of
  # the desktop entry and file types.
  librsvg2-bin dpkg-dev file
  desktop-file-utils shared-mime-info libxml2-utils libglib2.0-bin
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "Installing missing packages: ${missing[*]}"
if [ "$(id -u)" -eq 0 ]; then
  as_root=()
elif command -v sudo >/dev/null 2>&1; then
  as_root=(sudo)
else
  echo "These packages are missing and neither root nor sudo is available: ${missing[*]}" >&2
  exit 1
fi
"${as_root[@]}" apt-get update -q
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"

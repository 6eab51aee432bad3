#!/usr/bin/env bash
# Installs the Debian packages that building, running and testing Normaris need.
# Installs nothing when all are present; as a non-root user it prints the command to run.
set -euo pipefail

packages=(
  build-essential cmake pkg-config clang-format
  qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite
  libsqlite3-dev sqlite3 libzip-dev libxlsxwriter-dev
  xvfb xauth unzip
  fonts-ipafont-mincho fonts-ipafont-gothic
  # the tests read produced documents back: .docx to PDF, PDF to text and images
  libreoffice-writer-nogui poppler-utils
  # Qt's own texts (text box menus, file dialogs) in Japanese
  qt6-translations-l10n
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done

[ ${#missing[@]} -eq 0 ] && exit 0

if [ "$(id -u)" -ne 0 ]; then
  echo "Missing packages. Run as root:" >&2
  echo "  apt-get update && apt-get install -y ${missing[*]}" >&2
  exit 1
fi

echo "Installing: ${missing[*]}"
apt-get update
DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"

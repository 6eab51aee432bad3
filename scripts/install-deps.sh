#!/usr/bin/env bash
# Installs the Debian packages that building, running and testing Normaris need, and
# the font aliases that let a word processor show its documents in one face.
# Installs nothing when all are present; as a non-root user it prints the commands to run.
set -euo pipefail

packages=(
  build-essential cmake pkg-config clang-format
  qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite
  libsqlite3-dev sqlite3 libzip-dev libxlsxwriter-dev
  xvfb xauth unzip
  fonts-ipafont-mincho fonts-ipafont-gothic
  # the finished documents, the lists and the help in front of the user: the
  # desktop's launcher, and a word processor with a window (it also reads the
  # produced documents back in the tests: .docx to PDF)
  xdg-utils libreoffice-writer
  # the tests read PDFs back: to text and images
  poppler-utils
  # Qt's own texts (text box menus, file dialogs) in Japanese
  qt6-translations-l10n
  # a client's current rules read from a PDF
  libpoppler-cpp-dev
  # the lists and reports open in a spreadsheet, a PDF in a light viewer
  libreoffice-calc mupdf
  # the tests read finished documents as other programs do: headings, bookmarks
  pandoc python3-docx qpdf
  # the office store: Qt's PostgreSQL driver, and the server the tests start
  libqt6sql6-psql postgresql
)

# The alias file goes where fontconfig reads the system's own settings, beside
# them: the user's configuration is left alone.
here=$(cd "$(dirname "$0")" && pwd)
alias_file=65-normaris-japanese.conf
alias_dir=/etc/fonts/conf.d

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
alias_missing=0
cmp -s "$here/fontconfig/$alias_file" "$alias_dir/$alias_file" || alias_missing=1

[ ${#missing[@]} -eq 0 ] && [ $alias_missing -eq 0 ] && exit 0

if [ "$(id -u)" -ne 0 ]; then
  echo "Missing packages or settings. Run as root:" >&2
  [ ${#missing[@]} -eq 0 ] || echo "  apt-get update && apt-get install -y ${missing[*]}" >&2
  [ $alias_missing -eq 0 ] || echo "  install -m 644 $here/fontconfig/$alias_file $alias_dir/$alias_file" >&2
  exit 1
fi

if [ ${#missing[@]} -ne 0 ]; then
  echo "Installing: ${missing[*]}"
  apt-get update
  DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
fi
if [ $alias_missing -eq 1 ]; then
  echo "Installing the font aliases: $alias_dir/$alias_file"
  install -D -m 644 "$here/fontconfig/$alias_file" "$alias_dir/$alias_file"
fi

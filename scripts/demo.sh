#!/usr/bin/env bash
# The main job, headless: a new company from the seed in out/demo.
set -euo pipefail
appdir=${1:-build/bin}
root=out/demo
cli() { "$appdir/normaris-cli" --root "$root" --yes "$@"; }
rm -rf "$root"
mkdir -p out
cli company new サンプル株式会社
cli company list
echo "demo company: $root/Data/サンプル株式会社/サンプル株式会社.sqlite"

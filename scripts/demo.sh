#!/usr/bin/env bash
# The main job, headless: a new company from the seed in out/demo, its basic settings
# filled with a sample company, an effective date for every composed document, then
# データ作成, 設定項目の置換 and データをWordへ送る for each, into out/*.docx with the PDF
# that the program lays out itself and a text record beside each, and the filing forms.
set -euo pipefail
appdir=${1:-build/bin}
root=out/demo
company=サンプル株式会社
cli() { "$appdir/normaris-cli" --root "$root" --yes "$@"; }
rm -rf "$root" out/*.docx out/*.txt out/*.pdf
mkdir -p out
# On the office's server (NORMARIS_STORE) the company of an earlier run is still there.
if cli company list | grep -xF "$company" >/dev/null; then
  cli company delete "$company"
fi
cli company new "$company"
cli settings set --company "$company" \
  事業所名=サンプル株式会社 郵便番号=100-0005 所在地1=東京都千代田区丸の内一丁目1番1号 所在地2=サンプルビル5階 \
  tel=03-5555-0123 使用者職名=代表取締役 使用者氏名=見本太郎 労働組合名=サンプル労働組合 \
  従業員職名=営業部主任 従業員氏名=山田花子 パート職名=店舗スタッフ パート氏名=佐藤一郎 \
  業種=小売業 労働者数=120 労働保険番号=13101123456000 管轄の労基署=中央
cli settings representative --company "$company" 2

# The composed documents of the seed: style, code, name.
mapfile -t docs < <(cli docs list --company "$company" --selected)
for line in "${docs[@]}"; do
  IFS=$'\t' read -r style code _ _ <<<"$line"
  cli dates add --company "$company" --doc "$code" 2026/4/1 >/dev/null
  cli build --company "$company" --style "$style" --doc "$code"
done
# Substitution after every build: documents cite one another.
for line in "${docs[@]}"; do
  IFS=$'\t' read -r style code _ _ <<<"$line"
  cli substitute --company "$company" --style "$style" --doc "$code"
done
# Each prints as what it is: rules with cover and contents, an agreement with its signatures.
for line in "${docs[@]}"; do
  IFS=$'\t' read -r style code name _ <<<"$line"
  cli export --company "$company" --style "$style" --doc "$code" \
    --out "out/${code}_${name}.docx" --pdf "out/${code}_${name}.pdf" --text "out/${code}_${name}.txt"
done
cli export --company "$company" --kind filing --filing new --out out/就業規則届.docx --pdf out/就業規則届.pdf --text out/就業規則届.txt
ls -1 out/*.docx out/*.pdf

#!/usr/bin/env bash
# Loads the zupic serve page in headless Chromium and checks the rendered DOM:
# a date formatted in fr_FR, numbers in de_DE and the all-locales table.
# Saves a screenshot of the page as OUT_DIR/zupic_serve_page.png.
#   browser_test.sh /path/to/zupic OUT_DIR
# Exit status 77 (skipped) when no chromium is installed.
set -uo pipefail

zupic=$1
out_dir=$2
browser=$(command -v chromium || command -v chromium-browser || command -v google-chrome || true)
if [[ -z "$browser" ]]; then
  echo "SKIPPED: no chromium; install it with: bash scripts/install-deps.sh --browser"
  exit 77
fi

work=$(mktemp -d)
server_pid=""
cleanup() {
  [[ -n "$server_pid" ]] && kill "$server_pid" 2>/dev/null && wait "$server_pid" 2>/dev/null
  rm -rf "$work"
}
trap cleanup EXIT

"$zupic" serve --port 0 >"$work/server.log" 2>&1 &
server_pid=$!
url=""
for _ in $(seq 1 100); do
  url=$(grep -o 'http://[^ ]*/' "$work/server.log" | head -1)
  [[ -n "$url" ]] && break
  sleep 0.05
done
if [[ -z "$url" ]]; then
  echo "FAILED: zupic serve printed no URL"; cat "$work/server.log"; exit 1
fi

# Every browser process gets a fresh profile and no network but this server.
run_browser() {
  timeout 60 "$browser" --headless --no-sandbox --disable-gpu --disable-dev-shm-usage \
    --no-first-run --no-default-browser-check --disable-extensions \
    --user-data-dir="$work/profile-$1" --virtual-time-budget=10000 "${@:2}" 2>>"$work/browser.log"
}

encode() { printf '%s' "$1" | od -An -tx1 -v | tr -d ' \n' | sed 's/../%&/g'; }

failures=0
expect() {  # expect NAME FILE TEXT: FILE must contain TEXT
  if grep -qF -- "$3" "$2"; then
    echo "ok: $1"
  else
    echo "FAILED: $1: [$3] not in the rendered page"
    failures=$((failures + 1))
  fi
}

# A date in fr_FR, the all-locales table of a number, the fr_FR locale view.
page1="${url}?picture=$(encode 'date{EEEE D MMMM YYYY}')&values=$(encode $'2024-03-05\n2024-12-25\nnot a date')"
page1+="&locale=fr_FR&run=format&allPicture=$(encode 'num{z,zz9.99}')&allValue=1234.5&all=1&view=fr_FR"
run_browser 1 --dump-dom "$page1" >"$work/page1.html"
expect "date in fr_FR" "$work/page1.html" '<td class="text result">mardi 5 mars 2024</td>'
expect "second date in fr_FR" "$work/page1.html" '<td class="text result">mercredi 25 décembre 2024</td>'
expect "mismatch marked" "$work/page1.html" 'does not match</td>'
expect "all locales: de_DE" "$work/page1.html" '<tr data-locale="de_DE"><td class="text">de_DE</td><td>Deutsch</td><td class="text result">1.234,50</td>'
expect "all locales: ar_EG" "$work/page1.html" '<td class="text result">١٬٢٣٤٫٥٠</td>'
expect "all locales: ja_JP" "$work/page1.html" '<tr data-locale="ja_JP">'
expect "locale view" "$work/page1.html" '<td class="text">janvier, février, mars'
expect "page ready" "$work/page1.html" 'data-ready="1"'
rows=$(grep -o '<tr data-locale=' "$work/page1.html" | wc -l)
if (( rows < 180 )); then
  echo "FAILED: the all-locales table has $rows rows"; failures=$((failures + 1))
else
  echo "ok: the all-locales table has $rows rows"
fi

# Numbers in de_DE, parsed back, with a library error beside them.
page2="${url}?picture=$(encode 'num{z,zz9.99}|num{9} text{X}')&values=$(encode $'1.234,50\n-0,25\nabc')"
page2+="&locale=de_DE&run=parse"
run_browser 2 --dump-dom "$page2" >"$work/page2.html"
expect "number in de_DE" "$work/page2.html" '<td class="text result">1234.5</td>'
expect "negative number in de_DE" "$work/page2.html" '<td class="text result">-0.25</td>'
expect "library error with its id" "$work/page2.html" 'error 16480: Compound pictures are not supported'

# The guide, rendered from the embedded Markdown.
run_browser 3 --dump-dom "${url}guide" >"$work/guide.html"
expect "guide" "$work/guide.html" '<h2 id="numeric-pictures">Numeric pictures</h2>'

run_browser 4 --screenshot="$out_dir/zupic_serve_page.png" --window-size=1400,1100 \
  --hide-scrollbars "$page1" >/dev/null
if [[ -s "$out_dir/zupic_serve_page.png" ]]; then
  echo "ok: screenshot $out_dir/zupic_serve_page.png"
else
  echo "FAILED: no screenshot"; failures=$((failures + 1))
fi

if (( failures > 0 )); then
  echo "browser log:"; tail -20 "$work/browser.log"
  exit 1
fi
echo "browser test: all checks passed"

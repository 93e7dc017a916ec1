#!/usr/bin/env bash
# Builds the release preset and shows the zupic command line at work on the
# library's built-in locale data: values formatted and parsed through picture
# clauses in several locales. Arguments, when given, go to zupic instead.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
cmake --preset release
cmake --build --preset release --target zupic
zupic=./build/release/bin/zupic
if [ "$#" -gt 0 ]; then
  exec "$zupic" "$@"
fi

show() {
  printf '$ zupic'
  printf ' %q' "$@"
  printf '\n'
  "$zupic" "$@" || true
  printf '\n'
}

show --version
show format 'date{EEEE, D MMMM YYYY}' 2024-03-05 --locale fr_FR
show format 'date{EEEE D. MMMM YYYY}' 2024-03-05 --locale de_DE
show format 'date.long{}' 2024-03-05 --locale ja_JP
show format 'num{z,zz9.99}' 1234.5 -0.25 --locale de_DE
show format 'num.currency{}' 1234.5 --locale en_US
show format 'num{z,zz9.99}|num{9.99E}' 1234.5 98765432 --locale en_US
show format 'text{999-AA}' 123AB --locale en_US
show format 'time{h:MM A}' 13:45:00 --locale en_US
show format "date{D MMM YYYY}' at 'time{HH:MM}" 2024-03-05T13:45:00 --locale en_GB
show format 'null{'"'"'n/a'"'"'}|zero{'"'"'none'"'"'}|num{zz9}' 0 7 --locale en_US
show parse 'date{EEEE, D MMMM YYYY}' 'mardi, 5 mars 2024' --locale fr_FR
show parse 'num{z,zz9.99}' '1.234,50' --locale de_DE
show parse 'time{h:MM A}' '1:45 PM' --locale en_US
show length 72pt 6pc 25.4mm '1.5 inches' --to in
printf '$ zupic locales | head\n'
"$zupic" locales | head || true

#!/usr/bin/env bash
# Runs every example of the given Markdown files and compares its output.
#   check_examples.sh BIN_DIR FILE.md...
# An example is a fenced block opened by ```console: each line starting with
# "$ " is a command (run by bash, with BIN_DIR first on PATH, TZ=UTC and no
# locale in the environment), and the lines after it, up to the next command
# or the end of the block, are what it must print: standard output, then
# standard error. A difference fails the check, naming the file and line.
set -uo pipefail

bin_dir=$(cd "$1" && pwd)
shift
export PATH="$bin_dir:$PATH" TZ=UTC
unset LC_ALL LC_MESSAGES LANG LANGUAGE

examples=0
failures=0

# Runs the command of $command (read at $file:$line) and compares.
check() {
  local actual expected
  actual=$(cd "$work_dir" && bash -c "$command" </dev/null 2>"$work_dir/stderr"; cat "$work_dir/stderr")
  expected=$(printf '%s' "$output")
  examples=$((examples + 1))
  if [[ "$actual" != "$expected" ]]; then
    failures=$((failures + 1))
    printf '%s:%d: $ %s\n' "$file" "$line" "$command"
    diff <(printf '%s\n' "$expected") <(printf '%s\n' "$actual") | sed 's/^/    /'
  fi
}

work_dir=$(mktemp -d)
trap 'rm -rf "$work_dir"' EXIT

for file in "$@"; do
  in_block=0
  command=""
  number=0
  while IFS= read -r text || [[ -n "$text" ]]; do
    number=$((number + 1))
    if (( !in_block )); then
      [[ "$text" == '```console' ]] && in_block=1
      continue
    fi
    if [[ "$text" == '```' || "$text" == '$ '* ]]; then
      [[ -n "$command" ]] && check
      command=""
      if [[ "$text" == '```' ]]; then
        in_block=0
      else
        command=${text#'$ '}
        line=$number
        output=""
      fi
      continue
    fi
    output+="$text"$'\n'
  done <"$file"
  if (( in_block )); then
    printf '%s: a ```console block is not closed\n' "$file"
    failures=$((failures + 1))
  fi
done

echo "docs examples: $((examples - failures)) passed, $failures failed"
(( examples > 0 && failures == 0 ))

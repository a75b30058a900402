#!/usr/bin/env bash
# Makes the evidence anew: docs/accuracy.md and docs/reliability.md.
#   scripts/evidence.sh                 everything; takes hours
#   scripts/evidence.sh fuzz coverage   only these parts; the rest of the pages stays
# A part is the folder tests/PART with a script evidence.sh in it, which builds and runs what it needs and prints a section of
# the page: a line "## Title", then the command and its figures. What it tells on the way goes to standard error. It ends with 10 when a
# goal is missed, and this script then with 1. What ends otherwise has not come to its end: the page keeps what it says of it.
set -euo pipefail
cd "$(dirname "$0")/.."

# The sections of docs/reliability.md, in their order there; accuracy is a page of its own.
sections=(bits fuzz faults threads allocation coverage mutation)
parts=("$@")
[[ $# -gt 0 ]] || parts=(accuracy "${sections[@]}")

pages=build/evidence/pages
status=0
rm -rf "$pages"
mkdir -p "$pages"

# Keeps what the page says of the parts that are not made anew.
write_reliability_page() {
  local page=docs/reliability.md section
  {
    printf '# Reliability\n\nWhat was tried to break the library, by which command, and what came of it. '
    printf '`scripts/evidence.sh` makes this page anew, `scripts/evidence.sh PART` one section.\n'
    for section in "${sections[@]}"; do
      [[ -f $pages/$section.md ]] || section_of_page "$section" "$page" >"$pages/$section.md"
      [[ -s $pages/$section.md ]] || continue
      printf '\n<!-- %s -->\n' "$section"
      cat "$pages/$section.md"
    done
  } >"$pages/reliability.md"
  mv "$pages/reliability.md" "$page"
}

section_of_page() {
  [[ ! -f $2 ]] || awk -v mark="<!-- $1 -->" '/^<!-- .* -->$/ { inside = ($0 == mark); next } inside' "$2" | sed -e :a -e '/^\n*$/{$d;N;ba' -e '}'
}

for part in "${parts[@]}"; do
  if [[ ! -x tests/$part/evidence.sh ]]; then
    echo "evidence.sh: no part '$part'; there are: accuracy ${sections[*]}" >&2
    exit 2
  fi
  echo "=== $part" >&2
  # What falls short of its goal has a section, too, which says so.
  outcome=0
  "tests/$part/evidence.sh" >"$pages/$part.new" || outcome=$?
  case $outcome in
    0) ;;
    10) echo "evidence.sh: $part falls short" >&2 ;;
    *) echo "evidence.sh: $part broke off" >&2 ;;
  esac
  [[ $outcome == 0 ]] || status=1
  [[ $outcome != 0 && $outcome != 10 ]] || mv "$pages/$part.new" "$pages/$part.md"
done

[[ ! -f $pages/accuracy.md ]] || cp "$pages/accuracy.md" docs/accuracy.md
write_reliability_page
exit $status

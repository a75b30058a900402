#!/usr/bin/env python3
"""Prints what gcov counted in a build, as a section of the page on reliability: the figures, then every line and branch that no
test takes, with its reason from left-out.txt."""

import sys
from collections import defaultdict
from pathlib import Path

from counts import ROOT, library_counts

FEWEST_BRANCHES = 0.95  # of all branches, that some test takes
FALLS_SHORT = 10  # what a part of the evidence ends with then
LEFT_OUT = Path(__file__).with_name('left-out.txt')


def read_reasons():
    """left-out.txt: a source, one of its lines, and the reason, in blocks parted by blank lines."""
    reasons = {}
    for block in LEFT_OUT.read_text().strip().split('\n\n'):
        lines = [each.strip() for each in block.splitlines() if not each.startswith('//')]
        if lines:
            reasons[lines[0], lines[1]] = ' '.join(lines[2:])
    return reasons


def main():
    reasons = read_reasons()
    figures = defaultdict(lambda: [0, 0, 0, 0])
    left_out = []
    for path, lines in sorted(library_counts(sys.argv[1]).items()):
        text = (ROOT / path).read_text().splitlines()
        for number, (runs, ways) in lines.items():
            taken = sum(count > 0 for count in ways)
            for row in (path.split('/')[1] if path.count('/') > 1 else '(frame)', 'all'):
                figures[row] = [a + b for a, b in zip(figures[row], (runs > 0, 1, taken, len(ways)))]
            if runs == 0 or taken < len(ways):
                what = 'line' if runs == 0 else f'{len(ways) - taken} of {len(ways)} branches'
                left_out.append((path, text[number - 1].strip(), what))

    print('## Coverage of the library\n\n    tests/coverage/evidence.sh\n')
    print('A branch is a way out of a condition: of `if`, `switch`, a loop, `?:`, `&&` and `||`. What the compiler makes of calls, of '
          'cleaning up and of members without words in the source is none. The instances of a template count as one.\n')
    print('| sources | lines | run | branches | taken |\n|---|---:|---:|---:|---:|')
    for row in [*sorted(each for each in figures if each != 'all'), 'all']:
        run, lines, taken, branches = figures[row]
        print(f'| {row} | {lines} | {100 * run / max(lines, 1):.1f} % | {branches} | {100 * taken / max(branches, 1):.1f} % |')
    run, lines = figures['all'][:2]
    print(f'\nGoals: every line, and {100 * FEWEST_BRANCHES:.0f} % of the branches. {lines - run} lines are short of it, listed below.')
    print('\nWhat is left, and why:\n')
    for path, line, what in left_out:
        print(f'- `{path}`, {what}: `{line}`\n  {reasons.get((path, line), "**not explained**")}')
    unused = reasons.keys() - {(path, line) for path, line, _ in left_out}
    for path, line in sorted(unused):
        print(f'left-out.txt: tests do take what is left out here: {path}: {line}', file=sys.stderr)
    unexplained = any((path, line) not in reasons for path, line, _ in left_out)
    return FALLS_SHORT if unexplained or figures['all'][2] < FEWEST_BRANCHES * figures['all'][3] else 0


if __name__ == '__main__':
    sys.exit(main())

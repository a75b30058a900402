#!/usr/bin/env python3
"""Prints what a run of gcovr counted, as a section of the page on reliability: the figures, then every line and branch that no
test takes, with its reason from left-out.txt."""

import json
import re
import sys
from collections import defaultdict
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
FEWEST_BRANCHES = 0.95  # of all branches, that some test takes
LEFT_OUT = Path(__file__).with_name('left-out.txt')


def read_reasons():
    """left-out.txt: a source, one of its lines, and the reason, in blocks parted by blank lines. For the source * the line is a
    pattern, and any line that begins so is meant, but for its branches only. \return the reasons, and those of patterns."""
    reasons = {}
    patterns = []
    for block in LEFT_OUT.read_text().strip().split('\n\n'):
        lines = [each.strip() for each in block.splitlines() if not each.startswith('//')]
        if lines and lines[0] == '*':
            patterns.append((re.compile(lines[1]), ' '.join(lines[2:])))
        elif lines:
            reasons[lines[0], lines[1]] = ' '.join(lines[2:])
    return reasons, patterns


def merged_lines(records):
    """Number of the line -> (runs, runs of each branch). A line of a template has a record for each of its instances: a way out of
    it counts as taken when any of them takes it."""
    lines = {}
    for record in records:
        runs, branches = lines.get(record['line_number'], (0, []))
        counts = [branch['count'] for branch in record.get('branches', [])]
        width = max(len(branches), len(counts))
        padded = [(each + [0] * width)[:width] for each in (branches, counts)]
        lines[record['line_number']] = (runs + record['count'], [a + b for a, b in zip(*padded)])
    return lines


def main():
    files = json.loads(Path(sys.argv[1]).read_text())['files']
    reasons, patterns = read_reasons()
    figures = defaultdict(lambda: [0, 0, 0, 0])
    left_out = []
    for file in sorted(files, key=lambda each: each['file']):
        path = file['file']
        text = (ROOT / path).read_text().splitlines()
        counted = [record for record in file['lines'] if not record.get('gcovr/noncode')]
        for number, (runs, branches) in sorted(merged_lines(counted).items()):
            taken = sum(count > 0 for count in branches)
            for row in ('/'.join(path.split('/')[1:2]) if path.count('/') > 1 else '(frame)', 'all'):
                figures[row] = [a + b for a, b in zip(figures[row], (runs > 0, 1, taken, len(branches)))]
            if runs == 0 or taken < len(branches):
                what = 'line' if runs == 0 else f'{len(branches) - taken} of {len(branches)} branches'
                left_out.append((path, number, text[number - 1].strip(), what))

    print('## Coverage of the library\n\n    tests/coverage/evidence.sh\n')
    print('A branch is a way out of a condition; ways that only an exception takes, and those that the compiler proves to be dead, '
          'are not counted.\n')
    print('| sources | lines | run | branches | taken |\n|---|---:|---:|---:|---:|')
    for row in [*sorted(each for each in figures if each != 'all'), 'all']:
        run, lines, taken, branches = figures[row]
        print(f'| {row} | {lines} | {100 * run / max(lines, 1):.1f} % | {branches} | {100 * taken / max(branches, 1):.1f} % |')
    print('\nWhat is left, and why:\n')
    unexplained_lines = 0
    for path, number, line, what in left_out:
        reason = reasons.get((path, line))
        if what != 'line' and not reason:
            reason = next((reason for pattern, reason in patterns if pattern.match(line)), None)
        unexplained_lines += what == 'line' and not reason
        print(f'- `{path}`, {what}: `{line}`\n  {reason or "**not explained**"}')
    return 1 if unexplained_lines or figures['all'][2] < FEWEST_BRANCHES * figures['all'][3] else 0


if __name__ == '__main__':
    sys.exit(main())

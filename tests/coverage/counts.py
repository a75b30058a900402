"""What gcov counted in a build: how often each line of the library ran, and each way out of its conditions."""

import json
import re
import subprocess
from collections import defaultdict
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
LIBRARY = ROOT / 'ZORBase'

NO_CODE = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])\'|^[ \t]*#[^\n]*', re.DOTALL | re.MULTILINE)
# A reference to a temporary, "T&& x", has no blank before its two signs.
CONDITION = re.compile(r'\b(if|for|while|switch)\b|\?|\|\||\s&&')


def lines_with_conditions(text):
    """\\return the numbers of the lines of all statements that decide something. A statement ends at a semicolon outside of
    parentheses, and at a brace."""
    code = NO_CODE.sub(lambda found: re.sub(r'[^\n]', ' ', found.group()), text)
    lines = set()
    parentheses = [0]  # that are open, in each of the open braces
    begin = 0
    for end, sign in enumerate(code):
        if sign in '()':
            parentheses[-1] += 1 if sign == '(' else -1
        if sign not in '{};' or (sign == ';' and parentheses[-1] > 0):
            continue
        statement = code[begin:end]
        if CONDITION.search(statement):
            first = code.count('\n', 0, begin + len(statement) - len(statement.lstrip())) + 1
            lines.update(range(first, first + statement.strip().count('\n') + 1))
        begin = end + 1
        if sign == '{':
            parentheses.append(0)
        elif sign == '}' and len(parentheses) > 1:
            parentheses.pop()
    return lines


def ways_out(branches):
    """\\return how often each way was taken. Beside the way that an exception takes out of a call stands the ordinary one; these two
    are no decision."""
    ways = []
    for index in range(0, len(branches) - len(branches) % 2, 2):
        if not any(branch['throw'] for branch in branches[index:index + 2]):
            ways += [branch['count'] for branch in branches[index:index + 2]]
    return ways + [branch['count'] for branch in branches[len(branches) - len(branches) % 2:] if not branch['throw']]


def files_of_gcov(build):
    """What gcov tells of each of the library's sources, for each object file that has code of it."""
    counters = [str(path) for path in sorted(Path(build).rglob('*.gcda'))]
    command = ['gcov', '--stdout', '--json-format', '--branch-probabilities', *counters]
    for line in subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines():
        for file in json.loads(line)['files']:
            path = ROOT / file['file']
            if path.is_relative_to(LIBRARY):
                yield str(path.relative_to(ROOT)), file['lines']


def library_counts(build):
    """\\return source -> line -> (runs, ways). The instances of a template, and the copies that programs have of a function, are one:
    a way counts as taken where any of them takes it. Where instances decide differently much, each number of ways stands for itself."""
    runs = defaultdict(lambda: defaultdict(int))
    instances = defaultdict(lambda: defaultdict(list))
    for path, lines in files_of_gcov(build):
        for line in lines:
            number = line['line_number']
            runs[path][number] += line['count']
            instances[path][number].append(ways_out(line['branches']))
    counts = {}
    for path in runs:
        text = (ROOT / path).read_text()
        conditions = lines_with_conditions(text)
        code = {number for number, line in enumerate(text.splitlines(), 1) if line.strip('{}(); \t')}
        counts[path] = {}
        for number in sorted(runs[path].keys() & code):
            kinds = defaultdict(list)
            for ways in instances[path][number] if number in conditions else []:
                kinds[len(ways)].append(ways)
            ways = [sum(counts) for kind in kinds.values() for counts in zip(*kind)]
            counts[path][number] = (runs[path][number], ways)
    return counts

"""Finds the places of a C++ source where a small mistake can be planted, and plants it.

A mutant is one line of a source written differently: a flipped comparison, a swapped operator, a changed constant, a dropped
statement. Comments, texts, preprocessor lines and declarations are left alone. The layout that clang-format gives the sources
tells a comparison (blanks on both sides) from the brackets of a template.
"""

import hashlib
import re
from dataclasses import dataclass

SWAPS = {
    '<': ('<=', '>='), '<=': ('<', '>'), '>': ('>=', '<='), '>=': ('>', '<'), '==': ('!=',), '!=': ('==',),
    '+': ('-',), '-': ('+',), '*': ('/',), '/': ('*',), '%': ('/',),
    '+=': ('-=',), '-=': ('+=',), '*=': ('/=',), '/=': ('*=',), '&&': ('||',), '||': ('&&',),
}
WORDS = {
    'std::min': 'std::max', 'std::max': 'std::min', 'std::sin': 'std::cos', 'std::cos': 'std::sin',
    'true': 'false', 'false': 'true', 'break': 'continue', 'continue': 'break',
}

BINARY = re.compile(r'(?<= )(' + '|'.join(sorted(map(re.escape, SWAPS), key=len, reverse=True)) + r')(?= |$)')
WORD = re.compile(r'(?<![\w:])(' + '|'.join(map(re.escape, WORDS)) + r')(?!\w)')
NEGATION = re.compile(r'(?<=[ (\[{])[-!](?=[\w(])')
NUMBER = re.compile(r"(?<![\w.'])(\d[\d']*(?:\.\d*)?(?:[eE][-+]?\d+)?)([uUlLfF]*)(?![\w.'])")
# A call or an assignment that stands on a line of its own, perhaps behind a condition.
STATEMENT = re.compile(r'(?:(?:if|for|while) \(.*\) )?(?:\*|\(|\+\+|--)?[A-Za-z_][\w:]*(?:[.(\[]|->|\+\+|--| [-+*/]?= ).*;')
MASKED = re.compile(r'//[^\n]*|/\*.*?\*/|R"\((?:.|\n)*?\)"|"(?:\\.|[^"\\\n])*"|(?<!\w)\'(?:\\.|[^\'\\\n])+\'', re.DOTALL)
ARRAY_TYPE = re.compile(r'std::array<[^()]*?>(?= |\()')
TYPE_HEAD = re.compile(r'\b(?:namespace|struct|class|enum|union|extern)\b[^()]*$')
NOT_CODE = re.compile(r'\s*(?:#|static_assert\b|using\b|template\b|typedef\b|requires\b)')


@dataclass(frozen=True)
class Mutant:
    path: str
    number: int  # of the line, from 1
    before: str
    after: str
    kind: str
    occurrence: int  # among equal lines of the file, from 1

    @property
    def name(self):
        """Says which mutant this is also when the lines around it change."""
        return '\n'.join((self.path, self.before.strip(), self.after.strip(), str(self.occurrence)))

    def rank(self, seed):
        """The mutants with the lowest ranks are a sample that edits elsewhere leave alone."""
        return hashlib.sha256(f'{seed}\n{self.name}'.encode()).hexdigest()

    def planted_in(self, text):
        lines = text.split('\n')
        assert lines[self.number - 1] == self.before
        lines[self.number - 1] = self.after
        return '\n'.join(lines)


def mask(text):
    """The text with comments and strings blanked, every character and line in its place."""
    return MASKED.sub(lambda found: re.sub(r'[^\n]', ' ', found.group()), text)


def code_columns(masked):
    """For each line, the column from which on it is code of a function or the value of a constant; None where there is none."""
    columns = []
    braces = []  # whether each open brace belongs to a function
    head = ''  # what was read since the last brace or semicolon
    for line in masked.split('\n'):
        start = 0 if braces and braces[-1] else None
        if start is None and re.search(r'\bconstexpr\b[^()]* = ', line) and not (braces and braces[-1]):
            start = line.index(' = ') + 2
        for column, character in enumerate(line):
            if character == '{':
                in_function = bool(braces and braces[-1]) or ('(' in head and not TYPE_HEAD.search(head))
                braces.append(in_function)
                if in_function and start is None:
                    start = column + 1
            elif character == '}' and braces:
                braces.pop()
            head = '' if character in '{};' else head + character
        head += ' '
        columns.append(None if start is None or NOT_CODE.match(line) else start)
    return columns


def changed_numbers(number, suffix):
    """Neighbours of a literal: an integer one more or less, any other number doubled."""
    plain = number.replace("'", '')
    if re.fullmatch(r'\d+', plain):
        value = int(plain)
        return [f'{n}{suffix}' for n in ([1] if value == 0 else [value + 1, value - 1])]
    value = float(plain)
    return [f'{1.0 if value == 0 else 2 * value!r}{suffix}']


def changes_of_line(masked, start):
    """Yields (kind, column, length, replacement) for all changes of a line of code."""
    code = ' ' * start + ARRAY_TYPE.sub(lambda found: ' ' * len(found.group()), masked[start:])
    for found in BINARY.finditer(code):
        operator = found.group()
        if 'operator' in code[:found.start()]:
            continue
        kind = 'comparison' if operator in ('<', '<=', '>', '>=', '==', '!=') else 'operator'
        for swap in SWAPS[operator]:
            yield kind, found.start(), len(operator), swap
    for found in WORD.finditer(code):
        yield 'operator', found.start(), len(found.group()), WORDS[found.group()]
    for found in NEGATION.finditer(code):
        yield 'operator', found.start(), 1, ''
    for found in NUMBER.finditer(code):
        for replacement in changed_numbers(*found.groups()):
            yield 'constant', found.start(), len(found.group()), replacement
    statement = code.strip()
    if STATEMENT.fullmatch(statement) and statement.count('(') == statement.count(')'):
        yield 'statement', code.index(statement), len(statement), ';'


def mutants_of(path, text):
    """All mutants of a source, line by line."""
    lines = text.split('\n')
    masked = mask(text)
    masked_lines = masked.split('\n')
    seen = {}
    for number, start in enumerate(code_columns(masked), 1):
        line = lines[number - 1]
        occurrence = seen[line.strip()] = seen.get(line.strip(), 0) + 1
        if start is None:
            continue
        starts_statement = number == 1 or re.search(r'(?:[;{}:]|^)\s*$', masked_lines[number - 2]) or \
            re.match(r'\s*(?:for|if|while) \(.*\)$', masked_lines[number - 2])
        followed_by_else = number < len(lines) and re.match(r'\s*else\b', masked_lines[number])
        for kind, column, length, replacement in changes_of_line(masked_lines[number - 1], start):
            if kind == 'statement' and (not starts_statement or followed_by_else):
                continue
            after = line[:column] + replacement + line[column + length:]
            yield Mutant(path, number, line, after, kind, occurrence)

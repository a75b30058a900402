#!/usr/bin/env python3
"""Plants small mistakes in the library, one at a time, and sees whether the tests notice.

  tests/mutation/mutation.py list             the sample, as changes of lines
  tests/mutation/mutation.py run              builds and tests what has no result yet
  tests/mutation/mutation.py report           the figures, in Markdown, with the reason for every survivor

It works on a copy of the sources in build/mutation, so the tree may change meanwhile; the next run takes the changes over. A
result stays true until the mutant's own source changes; what survived is tried again when the tests change. Whoever survives for a
good reason stands with it in survivors.txt.
"""

import argparse
import fcntl
import hashlib
import json
import os
import re
import resource
import shutil
import signal
import subprocess
import sys
import time
from collections import Counter, defaultdict
from pathlib import Path

from mutants import mutants_of

ROOT = Path(__file__).resolve().parents[2]
WORK = ROOT / 'build' / 'mutation'
TREE = WORK / 'tree'
BUILD = WORK / 'build'
RESULTS = WORK / 'results.jsonl'
SURVIVORS = Path(__file__).with_name('survivors.txt')

# What computes; the C interface and what handles files and logs has no numbers of its own.
NUMERIC = ('ZORBase/kernels/', 'ZORBase/ZORGeometry/', 'ZORBase/ZORBaseAlg/', 'ZORBase/common/Cadtypes/',
           'ZORBase/common/RisingZero.h', 'ZORBase/common/Sign.h', 'ZORBase/common/TableLookup.h', 'ZORBase/common/BaseServices/NumberText.cpp',
           'ZORBase/common/BaseServices/PlainDecimal.h', 'ZORBase/common/BaseServices/NumberRow.cpp',
           'ZORBase/common/BaseServices/Extended.h')
PROGRAMS = {'common': 'common_tests', 'ZORGeometry': 'geometry_tests', 'ZORBaseAlg': 'algorithm_tests', 'capi': 'capi_tests'}

# A test may take this much longer than without a mistake, in seconds of the processor, before it counts as hanging.
SLOWER, GRACE = 2, 5
WALL_LIMIT = 1200  # by the clock; whoever gets there on an idle machine waits for something that does not come
MEMORY_LIMIT = 6 << 30
FILE_LIMIT = 1 << 30
COMPILED_LIMIT = 600

FEWEST_KILLED = 0.85
SHORT_OF_GOAL = 10  # the exit status that scripts/evidence.sh understands


def shown(path):
    return str(path.relative_to(ROOT))


# The copy and its build

def sources_of_tree():
    listed = subprocess.run(['git', 'ls-files', '-co', '--exclude-standard'], cwd=ROOT, check=True, capture_output=True, text=True)
    return [name for name in listed.stdout.splitlines() if (ROOT / name).is_file()]


def copied_sources():
    return sorted(str(path.relative_to(TREE)) for path in TREE.rglob('*') if path.is_file())


def take_over(names):
    """Makes the copy equal to the tree; what is the same keeps its time, so that it is not compiled again."""
    for name in names:
        here, there = ROOT / name, TREE / name
        if not there.exists() or there.read_bytes() != here.read_bytes():
            there.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(here, there)
    wanted = {TREE / name for name in names}
    for path in [path for path in TREE.rglob('*') if path.is_file() and path not in wanted]:
        path.unlink()


def configure():
    subprocess.run(['cmake', '-S', TREE, '-B', BUILD, '-G', 'Ninja', '-DCMAKE_BUILD_TYPE=Release', '-DCMAKE_CXX_FLAGS_RELEASE=-O2 -DNDEBUG',
                    '-DCMAKE_LINK_DEPENDS_NO_SHARED=ON', '-DZORBASE_TOOLS=OFF', '-DZORBASE_EXAMPLES=OFF'],
                   check=True, stdout=sys.stderr)


def build(jobs=1, quiet=True):
    """Whether the library and the tests that compile its code themselves can be built."""
    command = ['ninja', '-C', str(BUILD), f'-j{jobs}', 'ZORBase', *PROGRAMS.values()]
    output = subprocess.DEVNULL if quiet else sys.stderr
    return subprocess.run(command, stdout=output, stderr=output, timeout=None if not quiet else COMPILED_LIMIT).returncode == 0


def digest(paths):
    total = hashlib.sha256()
    for path in sorted(paths):
        total.update(path.read_bytes())
    return total.hexdigest()


def objects_by_source():
    """The compiled files that depend on each source, as the build knows them."""
    listed = subprocess.run(['ninja', '-C', str(BUILD), '-t', 'deps'], check=True, capture_output=True, text=True).stdout
    users = defaultdict(set)
    compiled = None
    for line in listed.splitlines():
        if line.startswith('    '):
            path = os.path.normpath(BUILD / line.strip())
            if path.startswith(f'{TREE}/'):
                users[os.path.relpath(path, TREE)].add(compiled)
        elif line:
            compiled = BUILD / line.split(':')[0]
    return users


# The sample

def is_affordable(name, users):
    """Headers that the tests of a folder, which are compiled in one go, have code from take minutes to rebuild: they are left out."""
    if not name.startswith(NUMERIC) or not name.endswith(('.cpp', '.h')):
        return False
    return bool(users[name]) and not any(path.name.startswith('unity') for path in users[name])


def left_out(users):
    """The numeric headers with code that could be changed, but not affordably."""
    return [f'`{name}`' for name in copied_sources() if name.startswith(NUMERIC) and name.endswith('.h')
            and not is_affordable(name, users) and any(mutants_of(name, (TREE / name).read_text()))]


def sample(count, seed, users):
    found = []
    for name in copied_sources():
        if is_affordable(name, users):
            found += mutants_of(name, (TREE / name).read_text())
    return sorted(found, key=lambda mutant: mutant.rank(seed))[:count], len(found)


# Which tests come first

def suites_in(folder_or_stem):
    """The names of the test suites in the sources of a folder, or in those whose name begins like a module's."""
    files = [*TREE.glob(f'tests/{folder_or_stem}/**/*.cpp'), *TREE.glob(f'tests/{folder_or_stem}*.cpp')]
    pattern = re.compile(r'\b(?:TEST|TEST_F|TEST_P|RC_GTEST_PROP|RC_GTEST_FIXTURE_PROP|TYPED_TEST)\(\s*(\w+)')
    return {suite for file in files for suite in pattern.findall(file.read_text())}


def modules_using(kernel):
    """The modules that a kernel works for, through other kernels, too."""
    header = kernel.replace('.cpp', '.h')
    modules = set()
    for path in (TREE / 'ZORBase').rglob('*.[ch]*'):
        name = str(path.relative_to(TREE))
        if name.replace('.cpp', '.h') == header or f'<{header}>' not in path.read_text():
            continue
        modules |= modules_using(name) if name.startswith('ZORBase/kernels/') else {module_of(name)}
    return modules


def module_of(name):
    """ZORBaseAlg/uFFT of ZORBase/ZORBaseAlg/uFFT/TFFT.cpp, and of ZORBase/ZORBaseAlg/uFFT.cpp."""
    return '/'.join(name.split('/')[1:3]).split('.')[0]


def order_of_tests(name):
    """Yields (program, filter): first the suites that stand next to the source, then the rest of their programs, then the others."""
    kernels = name.startswith('ZORBase/kernels/')
    modules = sorted(modules_using(name) if kernels else {module_of(name)})
    near = defaultdict(set)
    for module in modules:
        near[module.split('/')[0]] |= suites_in(module)
    for folder in sorted(near):
        if near[folder]:
            yield PROGRAMS[folder], ':'.join(f'{suite}.*:*/{suite}.*' for suite in sorted(near[folder]))
    for folder in sorted(near, key=lambda each: not near[each]) + [each for each in PROGRAMS if each not in near]:
        rest = '-' + ':'.join(f'{suite}.*:*/{suite}.*' for suite in sorted(near[folder])) if near.get(folder) else '*'
        yield PROGRAMS[folder], rest


# Running

def passes(program, tests, seconds):
    """Whether the tests pass within their time of the processor; a hang, a crash and a hunger for memory are failures."""
    def limit():
        resource.setrlimit(resource.RLIMIT_CPU, (int(seconds), int(seconds) + 5))
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
        resource.setrlimit(resource.RLIMIT_FSIZE, (FILE_LIMIT, FILE_LIMIT))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    command = [BUILD / 'tests' / program, '--gtest_brief=1', '--gtest_fail_fast', f'--gtest_filter={tests}']
    environment = {**os.environ, 'RC_PARAMS': 'seed=1'}
    try:
        done = subprocess.run(command, preexec_fn=limit, timeout=WALL_LIMIT, env=environment, cwd=WORK,
                              stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    except subprocess.TimeoutExpired:
        return False
    return done.returncode == 0


def processor_time(program):
    """How long the tests take without a mistake; ends everything when they fail."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    if not passes(program, '*', WALL_LIMIT):
        sys.exit(f'mutation.py: {program} fails without any mistake planted')
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def outcome_of(mutant, codes, limits):
    """'killed by PROGRAM', 'survived', 'does not compile' or 'same code'; codes has the objects of the source and their digests."""
    path = TREE / mutant.path
    original = path.read_text()
    try:
        path.write_text(mutant.planted_in(original))
        try:
            if not build():
                return 'does not compile'
        except subprocess.TimeoutExpired:
            return 'does not compile'
        if all(digest([compiled]) == code for compiled, code in codes.items()):
            return 'same code'
        for program, tests in order_of_tests(mutant.path):
            if not passes(program, tests, limits[program]):
                return f'killed by {program}'
        return 'survived'
    finally:
        path.write_text(original)


def is_open(mutant, results, tests, reasons):
    """Whether a mutant has to be tried: it was not yet, or its source changed, or it survived other tests than today's."""
    known = results.get(mutant.name)
    if not known or known['source'] != digest([TREE / mutant.path]):
        return True
    return known['outcome'] == 'survived' and known['tests'] != tests and mutant.name not in reasons


def run(count, seed, is_frozen):
    WORK.mkdir(parents=True, exist_ok=True)
    lock = open(WORK / 'lock', 'w')
    try:
        fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except OSError:
        sys.exit('mutation.py: another run is going on')
    if not is_frozen:
        take_over(sources_of_tree())
    configure()
    if not build(jobs=os.cpu_count(), quiet=False):
        sys.exit('mutation.py: the sources do not build')
    limits = {program: SLOWER * processor_time(program) + GRACE for program in PROGRAMS.values()}
    print('limits in seconds of the processor:', {program: round(limit) for program, limit in limits.items()}, file=sys.stderr)
    users = objects_by_source()
    codes = {compiled: digest([compiled]) for compiled in set().union(*users.values())}
    mutants, _ = sample(count, seed, users)
    results, reasons = read_results(), read_reasons()
    tests = digest([TREE / name for name in copied_sources() if name.startswith('tests/') and name.endswith(('.cpp', '.h', '.inc'))])
    open_ones = [mutant for mutant in mutants if is_open(mutant, results, tests, reasons)]
    with RESULTS.open('a') as file:
        for number, mutant in enumerate(open_ones, 1):
            start = time.monotonic()
            source = digest([TREE / mutant.path])
            outcome = outcome_of(mutant, {each: codes[each] for each in users[mutant.path]}, limits)
            record = {'name': mutant.name, 'source': source, 'tests': tests, 'outcome': outcome}
            file.write(json.dumps(record) + '\n')
            file.flush()
            print(f'{number}/{len(open_ones)} {time.monotonic() - start:.0f} s {outcome}: {mutant.path}:{mutant.number} '
                  f'{mutant.after.strip()}', file=sys.stderr, flush=True)
    build()


# Reporting

def read_results():
    if not RESULTS.exists():
        return {}
    return {record['name']: record for record in map(json.loads, RESULTS.read_text().splitlines())}


def read_reasons():
    """survivors.txt: the source, the line before (-) and after (+), its number among equal lines (#, when not 1), the reason."""
    reasons = {}
    for block in SURVIVORS.read_text().strip().split('\n\n') if SURVIVORS.exists() else []:
        lines = [line for line in block.splitlines() if not line.startswith('//')]
        if not lines:
            continue
        path, before, after, *rest = lines
        occurrence = rest.pop(0)[2:] if rest[0].startswith('# ') else '1'
        reasons['\n'.join((path, before[2:], after[2:], occurrence))] = ' '.join(line.strip() for line in rest)
    return reasons


def report(count, seed):
    mutants, available = sample(count, seed, objects_by_source())
    results, reasons = read_results(), read_reasons()
    missing = sum(is_open(mutant, results, results[mutant.name]['tests'], reasons) if mutant.name in results else True
                  for mutant in mutants)
    figures = defaultdict(Counter)
    survivors = []
    for mutant in mutants:
        outcome = results.get(mutant.name, {'outcome': 'not tried'})['outcome'].split(' by ')[0]
        for row in ('/'.join(mutant.path.split('/')[1:2]), 'all'):
            figures[row][outcome] += 1
        if outcome == 'survived':
            survivors.append(mutant)
    print(f'{count} of {available} mutants, drawn with the seed {seed}: flipped comparisons, changed constants, swapped operators and '
          'dropped statements in the numeric sources. Not counted: those that do not compile and those whose compiled code is the '
          'same. Left out, as all tests of a folder would be compiled anew for each of their mutants, are headers whose code the tests '
          f'take in: {", ".join(left_out(objects_by_source()))}.\n')
    if missing:
        print(f'**{missing} are not tried yet.**\n')
    print('| sources | mutants | do not compile | same code | killed | survived | killed of those that count |')
    print('|---|---:|---:|---:|---:|---:|---:|')
    for row in [*sorted(each for each in figures if each != 'all'), 'all']:
        f = figures[row]
        counted = f['killed'] + f['survived']
        share = f'{100 * f["killed"] / counted:.1f} %' if counted else ''
        print(f'| {row} | {sum(f.values())} | {f["does not compile"]} | {f["same code"]} | {f["killed"]} | {f["survived"]} | {share} |')
    unexplained = 0
    if figures['all']['killed'] < FEWEST_KILLED * (figures['all']['killed'] + figures['all']['survived']):
        unexplained += 1
    print(f'\nGoal: {100 * FEWEST_KILLED:.0f} % killed of those that count.')
    print('\nWho survived, and why that is right. Errors of memory among them were not tried under the address sanitizer.\n')
    for mutant in sorted(survivors, key=lambda each: (each.path, each.number)):
        reason = reasons.get(mutant.name)
        unexplained += not reason
        print(f'`{mutant.path}`: {reason or "**not explained**"}\n')
        print(f'```diff\n- {mutant.before.strip()}\n+ {mutant.after.strip()}\n```\n')
    return unexplained + missing


def main():
    parser = argparse.ArgumentParser(description=__doc__.split('\n')[0])
    parser.add_argument('action', choices=('list', 'run', 'report'))
    parser.add_argument('--count', type=int, default=300, help='how many mutants (300)')
    parser.add_argument('--seed', type=int, default=1, help='which ones (1)')
    parser.add_argument('--frozen', action='store_true', help='run: go on with the copy as it is, without changes of the tree')
    arguments = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # so that a planted mistake is taken out again
    if arguments.action == 'run':
        run(arguments.count, arguments.seed, arguments.frozen)
        return 0
    if arguments.action == 'report':
        return SHORT_OF_GOAL if report(arguments.count, arguments.seed) else 0
    for mutant in sample(arguments.count, arguments.seed, objects_by_source())[0]:
        print(f'{mutant.path}:{mutant.number} {mutant.kind}\n- {mutant.before.strip()}\n+ {mutant.after.strip()}')
    return 0


if __name__ == '__main__':
    sys.exit(main())

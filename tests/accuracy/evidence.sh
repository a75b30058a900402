#!/usr/bin/env bash
# The page docs/accuracy.md: reference sets ten times those of the tests, a million random cases where laws need no references.
# Fails where the generator does not give the sets that are checked in; ends with 10 where an operation misses its goal or its limit.
set -euo pipefail
cd "$(dirname "$0")/../.."
scripts/install-packages.sh build test evidence >&2

cmake -S . -B build/accuracy -G Ninja -DCMAKE_BUILD_TYPE=Release -DZORBASE_TOOLS=OFF -DZORBASE_EXAMPLES=OFF >/dev/null
cmake --build build/accuracy --target zorbase_accuracy >&2

# The Python of the system, which is the one that finds the system's packages.
references() { /usr/bin/python3 -B tests/accuracy/references/References.py "$@" >&2; }
folder=build/accuracy/references
rm -rf "$folder"
mkdir -p "$folder/once" "$folder/ten-times"
references "$folder/once"
for set in "$folder"/once/*.txt; do
  diff -q "$set" tests/accuracy/references/ >&2
done
references "$folder/ten-times" 10

cat <<END
# Accuracy

How far the results of the library are off: the largest and the mean error of every operation that rounds, and the input of the
largest one. \`scripts/evidence.sh accuracy\` makes this page anew; this one was made with $(${CXX:-c++} --version | head -n 1) and
$(ldd --version | head -n 1).

Operations are held against the sets of \`tests/accuracy/references\`, computed with 50 digits by \`References.py\` from fixed seeds;
this page uses ten times as many cases as the files there; case k of a set is its line k + 1, below its heading, in the sets that
the command leaves in \`build/accuracy/references/ten-times\`. Laws and comparisons with the extended format draw their input from
\`TPortableRandom\` (\`tests/support/PortableRandom.h\`). A short input stands in the table itself; of a longer one there are its
number, counted from 0, and the seed of the generator, from which the loop below the row's name in \`tests/accuracy\` draws one after
another. Forms for many have no rows of their own, as they give the bits of the single form; nor has what only copies, picks or
decides.

A goal was set before anything was measured. A limit is what an ordinary test holds the operation to, with fewer cases. Where there
is a goal, it is the limit, too, but for the shortfalls, whose limits are looser. Elsewhere 0.501 ulp is the limit of what is
rounded once, and 0 that of what is exact; the other limits were put above the largest error that was measured, mostly at two to
four times of it: they tell of a change for the worse, and promise nothing.

| unit | meaning |
|---|---|
| ulp | units of the last place of each number of the result; the worst number counts |
| eps | 2^-52 times the largest number of the exact result, or times the magnitudes that a sum or product adds up |
| relative | parts of the same |
| absolute, rad | the error itself |

An error that is there by design, because the interface settles a formula or a tolerance, says so in its remark.
END
status=0
build/accuracy/tests/accuracy/zorbase_accuracy "$folder/ten-times" || status=$?
[[ $status != 1 ]] || exit 10
exit $status

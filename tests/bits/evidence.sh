#!/usr/bin/env bash
# The section "The same bits" of docs/reliability.md: builds the corpus with both compilers at three levels of optimisation and for
# each instruction set, runs it on emulated processors as well, and compares the hashes of the results.
set -euo pipefail
cd "$(dirname "$0")/../.."
scripts/install-packages.sh build test evidence >&2

results=build/bits/results
rm -rf "$results"
mkdir -p "$results"
rows=()  # "name|what ran", in the order of the table

# run NAME DESCRIPTION COMMAND...: keeps the hashes that the command prints.
run() {
  local name=$1 description=$2
  shift 2
  echo "--- $description" >&2
  "$@" >"$results/$name.txt"
  rows+=("$name|$description")
}

program() { echo "build/bits/$1/tests/bits/zorbase_bits"; }

# build_and_run FOLDER NAME DESCRIPTION CMAKE_ARGUMENT...: builds the corpus below build/bits/FOLDER.
build_and_run() {
  local folder=$1 name=$2 description=$3
  shift 3
  cmake -S . -B "build/bits/$folder" -G Ninja -DCMAKE_BUILD_TYPE=Release -DZORBASE_TOOLS=OFF -DZORBASE_EXAMPLES=OFF "$@" >/dev/null
  cmake --build "build/bits/$folder" --target zorbase_bits >&2
  run "$name" "$description" "$(program "$folder")"
}

for compiler in g++ clang++; do
  for level in O0 O2 O3; do
    build_and_run "$compiler-$level" "$compiler-$level" "$compiler -$level" \
      -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS_RELEASE="-$level" -DZORBASE_TARGET=
  done
done
# The C library picks its functions by processor, so that its own variants take part, too.
for processor in Nehalem max; do
  run "qemu-$processor" "g++ -O2 on an emulated processor, \`qemu-x86_64 -cpu $processor\`" \
    qemu-x86_64 -cpu "$processor" "$(program g++-O2)"
done
# Only the kernels are compiled again.
for variant in baseline avx2; do
  build_and_run g++-O2 "g++-$variant" "g++ -O2, kernels for $variant only" -DZORBASE_TARGET=$variant
done
for compiler in clang++ g++; do
  build_and_run "$compiler-mavx2" "$compiler-mavx2" "$compiler -O2 -mavx2, everything for AVX2" \
    -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS_RELEASE="-O2 -mavx2"
done

# The hash of all results of a kind.
hash_of() { awk -v kind="$2" '$1 == kind && $4 == "all" && NF == 4 { print $2 }' "$results/$1.txt"; }
count_of() { awk -v kind="$2" '$1 == kind && $4 == "all" && NF == 4 { print $3 }' "$results/$1.txt"; }
operations_of() { awk -v kind="$2" '$1 == kind && !($4 == "all" && NF == 4)' "$results/$1.txt" | wc -l; }

first=${rows[0]%%|*}
checked_in=$(awk '$1 == "exact" && $4 == "all" && NF == 4 { print $2 }' tests/bits/expected-hash.txt)
verdict="All are equal, and equal to the one that is checked in."
status=0
for row in "${rows[@]}"; do
  [[ $(hash_of "${row%%|*}" exact) == "$checked_in" ]] && continue
  verdict="**They are not all equal to the one that is checked in, $checked_in.**"
  status=10
done

cat <<END
## The same bits

\`scripts/evidence.sh bits\`, with $(g++ --version | head -n 1), $(clang++ --version | head -n 1), $(ldd --version | head -n 1).

\`tests/bits\` runs the operations of the library on seeded input and hashes the bits of every result. $(operations_of "$first" exact)
groups of operations, $(count_of "$first" exact) results, rest on sums, products, quotients, square roots and conversions alone;
the nodes of the quadrature begin with a cosine, which six Newton steps and a correction forget.
$verdict An ordinary test compares each of them in every build, also under the sanitizers.

The other $(operations_of "$first" library) groups, $(count_of "$first" library) results, take sines, cosines, arcs or powers from the C library, which has
variants with and without fused multiply-add and chooses by processor. Their bits are the library's own affair only as far as
those functions agree.

| build and processor | exact | with the C library's functions |
|---|---|---|
END
for row in "${rows[@]}"; do
  name=${row%%|*}
  printf '| %s | %s | %s |\n' "${row#*|}" "$(hash_of "$name" exact)" "$(hash_of "$name" library)"
done

# Names the operations of the C library's kind whose hash is not the first build's, run by run.
printf '\nOperations that inherit the C library, and on which of the runs their bits differ from those of the first:\n\n| operation | results | differs on |\n|---|---|---|\n'
awk '$1 == "library" && !($4 == "all" && NF == 4)' "$results/$first.txt" | while read -r _ hash count operation; do
  differing=()
  for row in "${rows[@]}"; do
    grep -qF "$hash" "$results/${row%%|*}.txt" || differing+=("${row#*|}")
  done
  printf '| %s | %s | %s |\n' "$operation" "$count" "$(IFS=';'; echo "${differing[*]:-none}")"
done
exit $status

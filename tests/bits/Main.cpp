// Prints what the library makes of a corpus of input, down to the last bit, so that two builds can be compared.
//   zorbase_bits                  a hash of each operation's results, and one of all in each kind of arithmetic
//   zorbase_bits --values         the results themselves as well, as hexadecimal floats, ahead of the hashes
//   zorbase_bits --check FILE     compares the exact operations' hashes with those of FILE; 1 where one differs
#include <algorithm>
#include <cinttypes>
#include <cstring>
#include <fstream>

#include "Corpus.h"

namespace ZORBase::Test {
namespace {

std::vector<TOperationHash> HashesOfAll(std::FILE* Values) {
  TCorpus corpus(Values);
  AddNumbers(corpus);
  AddPoints(corpus);
  AddTransforms(corpus);
  AddOrientations(corpus);
  AddCurves(corpus);
  AddSegments(corpus);
  AddSolvers(corpus);
  AddInterpolators(corpus);
  AddSignals(corpus);
  return corpus.Hashes();
}

const char* NameOf(TArithmetic Arithmetic) { return Arithmetic == TArithmetic::Exact ? "exact" : "library"; }

// "exact 0123456789abcdef 4000 Name", the form of expected-hash.txt.
std::string LineOf(const TOperationHash& Hash) {
  char text[64];
  std::snprintf(text, sizeof text, "%-7s %016" PRIx64 " %6zu ", NameOf(Hash.Arithmetic), Hash.Hash, Hash.Count);
  return text + Hash.Name;
}

TOperationHash SumOf(const std::vector<TOperationHash>& Hashes, TArithmetic Arithmetic) {
  std::size_t count = 0;
  TResults all("all", Arithmetic, nullptr);
  for (const TOperationHash& hash : Hashes) {
    if (hash.Arithmetic != Arithmetic) continue;
    all(std::string_view(LineOf(hash)));
    count += hash.Count;
  }
  TOperationHash sum = all.Hash();
  sum.Count = count;
  return sum;
}

void Print(const std::vector<TOperationHash>& Hashes) {
  for (const TOperationHash& hash : Hashes) std::printf("%s\n", LineOf(hash).c_str());
  for (const TArithmetic arithmetic : {TArithmetic::Exact, TArithmetic::Inherited}) {
    std::printf("%s\n", LineOf(SumOf(Hashes, arithmetic)).c_str());
  }
}

int Check(const std::vector<TOperationHash>& Hashes, const char* FileName) {
  std::ifstream file(FileName);
  std::vector<std::string> expected;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("exact")) expected.push_back(line);
  }
  std::vector<std::string> found;
  for (const TOperationHash& hash : Hashes) {
    if (hash.Arithmetic == TArithmetic::Exact) found.push_back(LineOf(hash));
  }
  found.push_back(LineOf(SumOf(Hashes, TArithmetic::Exact)));
  if (found == expected) return 0;
  std::printf("The bits are not those of %s, whose lines are marked -, these +:\n", FileName);
  const auto printMissing = [](char Mark, const auto& Lines, const auto& Others) {
    for (const std::string& line : Lines) {
      if (std::find(Others.begin(), Others.end(), line) == Others.end()) std::printf("%c %s\n", Mark, line.c_str());
    }
  };
  printMissing('-', expected, found);
  printMissing('+', found, expected);
  return 1;
}

}  // namespace
}  // namespace ZORBase::Test

int main(int Count, char** Words) {
  using namespace ZORBase::Test;
  if (Count == 1) {
    Print(HashesOfAll(nullptr));
    return 0;
  }
  if (Count == 2 && std::strcmp(Words[1], "--values") == 0) {
    Print(HashesOfAll(stdout));
    return 0;
  }
  if (Count == 3 && std::strcmp(Words[1], "--check") == 0) return Check(HashesOfAll(nullptr), Words[2]);
  std::fprintf(stderr, "usage: zorbase_bits [--values | --check FILE]\n");
  return 2;
}

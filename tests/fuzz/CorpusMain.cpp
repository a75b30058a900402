// fuzz_corpus TARGET FOLDER: runs every input of the folder once. Without libFuzzer this is what the targets are good for, and it
// keeps what was found from coming back.
#include "fuzz/FuzzTarget.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

int main(int argc, char** argv) {
  namespace fs = std::filesystem;
  if (argc != 3) return 2;
  const ZORBase::Test::TFuzzFunction target = ZORBase::Test::FindFuzzTarget(argv[1]);
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(argv[2])) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  if (!target || files.empty()) {
    std::fprintf(stderr, "fuzz_corpus: there is no target %s, or no input in %s\n", argv[1], argv[2]);
    return 2;
  }
  for (const fs::path& file : files) {
    std::fprintf(stderr, "%s\n", file.filename().c_str());
    std::ifstream stream(file, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    ZORBase::Test::RunFuzzTarget(target, text);
  }
  return 0;
}

// Pose files of a million lines. The plain versions go line by line with <charconv>, in as few steps as they can be written
// down; the slow ones use streams, as one does without a thought.
#include <ZORBase/ZORBase.h>
#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "PythonPeer.h"

namespace ZORBase::Bench {
namespace {

constexpr int kPoses = 1'000'000;
constexpr int kDecimals = 6;

using TPlainPose = std::array<double, 6>;

TPoint6DList Path() {
  TPoint6DList measured;
  measured.LoadFromFile(ZORBASE_SAMPLE_DATA "/swept-plane.poses.txt");
  TPoint6DList path;
  path.Reserve(kPoses);
  // No two poses are the same, so that no branch can be learnt by heart.
  for (int i = 0; i < kPoses; ++i) path.Add(measured[i % measured.Count()] * (1.0 + 1e-4 * (i % 7919)));
  return path;
}

// A file of its own for each benchmark, in memory where there is such a place, gone at the end.
class TScratchFile {
 public:
  TScratchFile() {
    static int count = 0;
    const std::filesystem::path memory("/dev/shm");
    const auto folder = std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path();
    FPath = folder / ("zorbase-bench-" + std::to_string(count++) + ".txt");
  }
  ~TScratchFile() { std::filesystem::remove(FPath); }
  TScratchFile(const TScratchFile&) = delete;
  TScratchFile& operator=(const TScratchFile&) = delete;
  std::string Name() const { return FPath.string(); }

 private:
  std::filesystem::path FPath;
};

using TStdFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;
TStdFile Open(const TScratchFile& File, const char* Mode) {
  return {std::fopen(File.Name().c_str(), Mode), std::fclose};
}

void CountBytes(benchmark::State& State, const TScratchFile& File) {
  State.SetBytesProcessed(State.iterations() * static_cast<std::int64_t>(std::filesystem::file_size(File.Name())));
}

// ---------------------------------------------------------------------------------------------- loading

void LoadLibrary(benchmark::State& State) {
  const TScratchFile file;
  Path().SaveToFile(file.Name(), kDecimals);
  for (auto _ : State) {
    TPoint6DList poses;
    poses.LoadFromFile(file.Name());
    if (poses.Count() != kPoses) State.SkipWithError("poses are missing");
  }
  CountBytes(State, file);
}

// The whole file at once, then number after number.
void LoadFromChars(benchmark::State& State) {
  const TScratchFile file;
  Path().SaveToFile(file.Name(), kDecimals);
  for (auto _ : State) {
    std::string text(std::filesystem::file_size(file.Name()), '\0');
    if (std::fread(text.data(), 1, text.size(), Open(file, "rb").get()) != text.size()) State.SkipWithError("no file");
    std::vector<TPlainPose> poses;
    const char* place = text.data();
    const char* const end = place + text.size();
    while (place != end) {
      TPlainPose pose{};
      for (double& value : pose) {
        const auto parsed = std::from_chars(place, end, value);
        if (parsed.ec != std::errc()) State.SkipWithError("no number");
        place = parsed.ptr + 1;  // "," or CR
      }
      ++place;  // LF
      poses.push_back(pose);
    }
    if (poses.size() != kPoses) State.SkipWithError("poses are missing");
  }
}

void LoadStream(benchmark::State& State) {
  const TScratchFile file;
  Path().SaveToFile(file.Name(), kDecimals);
  for (auto _ : State) {
    std::vector<TPlainPose> poses;
    std::ifstream stream(file.Name());
    for (std::string line; std::getline(stream, line);) {
      std::istringstream items(line);
      TPlainPose pose{};
      std::string item;
      for (double& value : pose) {
        std::getline(items, item, ',');
        value = std::stod(item);
      }
      poses.push_back(pose);
    }
    if (poses.size() != kPoses) State.SkipWithError("poses are missing");
  }
}

// ---------------------------------------------------------------------------------------------- saving

void SaveLibrary(benchmark::State& State) {
  const TScratchFile file;
  const TPoint6DList path = Path();
  for (auto _ : State) path.SaveToFile(file.Name(), kDecimals);
  CountBytes(State, file);
}

// Number after number into a block, block after block into the file.
void SaveToChars(benchmark::State& State) {
  const TScratchFile file;
  const TPoint6DList path = Path();
  for (auto _ : State) {
    const TStdFile stream = Open(file, "wb");
    std::vector<char> block(1 << 18);
    std::size_t used = 0;
    for (const TPoint6D& P : path) {
      constexpr std::size_t kLineRoom = 6 * 330;
      if (block.size() - used < kLineRoom) {
        std::fwrite(block.data(), 1, used, stream.get());
        used = 0;
      }
      char* place = block.data() + used;
      for (const double value : P.ToArray()) {
        place = std::to_chars(place, block.data() + block.size(), value, std::chars_format::fixed, kDecimals).ptr;
        *place++ = ',';
      }
      place[-1] = '\r';
      *place++ = '\n';
      used = static_cast<std::size_t>(place - block.data());
    }
    std::fwrite(block.data(), 1, used, stream.get());
  }
}

void SavePrintf(benchmark::State& State) {
  const TScratchFile file;
  const TPoint6DList path = Path();
  for (auto _ : State) {
    const TStdFile stream = Open(file, "wb");
    for (const TPoint6D& P : path) {
      std::fprintf(stream.get(), "%.*f,%.*f,%.*f,%.*f,%.*f,%.*f\r\n", kDecimals, P.X, kDecimals, P.Y, kDecimals, P.Z,
                   kDecimals, P.A, kDecimals, P.B, kDecimals, P.C);
    }
  }
}

BENCHMARK(LoadFromChars)->Name("load/plain")->Unit(benchmark::kMillisecond);
BENCHMARK(LoadLibrary)->Name("load/library")->Unit(benchmark::kMillisecond);
BENCHMARK(LoadStream)->Name("load/streams")->Unit(benchmark::kMillisecond);
BENCHMARK(SaveToChars)->Name("save/plain")->Unit(benchmark::kMillisecond);
BENCHMARK(SaveLibrary)->Name("save/library")->Unit(benchmark::kMillisecond);
BENCHMARK(SavePrintf)->Name("save/printf")->Unit(benchmark::kMillisecond);

const bool kHasPeers = [] {
  RegisterPythonPeer("load/NumPy", "load", kPoses);
  RegisterPythonPeer("save/NumPy", "save", kPoses);
  return true;
}();

}  // namespace
}  // namespace ZORBase::Bench

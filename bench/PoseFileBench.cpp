// Pose files: loading and saving 100 000 poses.
#include <ZORBase/ZORBase.h>
#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace ZORBase::Bench {
namespace {

constexpr int kPoses = 100'000;
constexpr int kDecimals = 6;

TPoint6DList Path() {
  TPoint6DList measured;
  measured.LoadFromFile(ZORBASE_SAMPLE_DATA "/swept-plane.poses.txt");
  TPoint6DList path;
  for (int i = 0; i < kPoses; ++i) path.Add(measured[i % measured.Count()]);
  return path;
}

// A file of its own for each benchmark, gone at the end of it.
class TScratchFile {
 public:
  explicit TScratchFile(const std::string& Name) : FPath(std::filesystem::temp_directory_path() / Name) {}
  ~TScratchFile() { std::filesystem::remove(FPath); }
  TScratchFile(const TScratchFile&) = delete;
  TScratchFile& operator=(const TScratchFile&) = delete;
  std::string Name() const { return FPath.string(); }

 private:
  std::filesystem::path FPath;
};

void LoadLibrary(benchmark::State& State) {
  const TScratchFile file("zorbase-bench-load.txt");
  Path().SaveToFile(file.Name(), kDecimals);
  for (auto _ : State) {
    TPoint6DList poses;
    poses.LoadFromFile(file.Name());
    if (poses.Count() != kPoses) State.SkipWithError("poses are missing");
  }
}

void LoadPlain(benchmark::State& State) {
  const TScratchFile file("zorbase-bench-load-plain.txt");
  Path().SaveToFile(file.Name(), kDecimals);
  for (auto _ : State) {
    std::vector<std::array<double, 6>> poses;
    std::ifstream stream(file.Name());
    for (std::string line; std::getline(stream, line);) {
      std::istringstream items(line);
      std::array<double, 6> pose{};
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

void SaveLibrary(benchmark::State& State) {
  const TScratchFile file("zorbase-bench-save.txt");
  const TPoint6DList path = Path();
  for (auto _ : State) path.SaveToFile(file.Name(), kDecimals);
}

void SavePlain(benchmark::State& State) {
  const TScratchFile file("zorbase-bench-save-plain.txt");
  const TPoint6DList path = Path();
  for (auto _ : State) {
    std::ofstream stream(file.Name(), std::ios::binary);
    std::array<char, 256> line{};
    for (const TPoint6D& P : path) {
      const int length = std::snprintf(line.data(), line.size(), "%.*f,%.*f,%.*f,%.*f,%.*f,%.*f\r\n", kDecimals, P.X,
                                       kDecimals, P.Y, kDecimals, P.Z, kDecimals, P.A, kDecimals, P.B, kDecimals, P.C);
      stream.write(line.data(), length);
    }
  }
}

BENCHMARK(LoadPlain)->Name("load/plain")->Unit(benchmark::kMillisecond);
BENCHMARK(LoadLibrary)->Name("load/library")->Unit(benchmark::kMillisecond);
BENCHMARK(SavePlain)->Name("save/plain")->Unit(benchmark::kMillisecond);
BENCHMARK(SaveLibrary)->Name("save/library")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace ZORBase::Bench

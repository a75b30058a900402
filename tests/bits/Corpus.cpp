#include "Corpus.h"

#include <bit>
#include <cmath>
#include <limits>

namespace ZORBase::Test {

void TResults::AddByte(std::uint64_t Byte) {
  constexpr std::uint64_t prime = 0x100000001b3U;
  FHash.Hash = (FHash.Hash ^ Byte) * prime;
}

void TResults::Add(double Value) {
  // Which of its many forms a NaN has is nobody's result.
  const double value = std::isnan(Value) ? std::numeric_limits<double>::quiet_NaN() : Value;
  const auto bits = std::bit_cast<std::uint64_t>(value);
  for (unsigned shift = 0; shift < 64; shift += 8) AddByte((bits >> shift) & 0xffU);
  ++FHash.Count;
  if (FValues != nullptr) std::fprintf(FValues, "%s: %a\n", FHash.Name.c_str(), value);
}

void TResults::Add(std::string_view Text) {
  for (const char character : Text) AddByte(static_cast<unsigned char>(character));
  AddByte('\n');
  ++FHash.Count;
  if (FValues != nullptr)
    std::fprintf(FValues, "%s: %.*s\n", FHash.Name.c_str(), static_cast<int>(Text.size()), Text.data());
}

void TResults::Add(std::span<const double> Values) {
  for (const double value : Values) Add(value);
}

void TResults::Add(const TMatrix3D& M) {
  for (const auto& row : M.fm) Add(std::span<const double>(row));
}

void TResults::Add(const TMatrix4D& M) {
  for (const auto& row : M.fm) Add(std::span<const double>(row));
}

void TCorpus::Run(std::string Name, TArithmetic Arithmetic, const TOperation& Operation) {
  TResults results(std::move(Name), Arithmetic, FValues);
  Operation(results);
  FHashes.push_back(results.Hash());
}

}  // namespace ZORBase::Test

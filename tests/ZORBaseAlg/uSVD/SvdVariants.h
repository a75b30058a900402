// SvdVariants: the decomposition compiled for one instruction set each, so that a machine can compare them. What the library
// itself chooses depends on the machine it starts on.
#pragma once

#include <span>
#include <vector>

namespace ZORBase::Test {

/// What a decomposition gives: U and V row by row.
struct TSvdResult {
  int Status = 0;
  std::vector<double> U;
  std::vector<double> W;
  std::vector<double> V;
};

TSvdResult BaselineSvd(std::span<const double> A, int M, int N);
TSvdResult BaselineSvdWithoutU(std::span<const double> A, int M, int N);

/// To be called only where the machine has AVX2.
bool HasAvx2();
TSvdResult Avx2Svd(std::span<const double> A, int M, int N);

}  // namespace ZORBase::Test

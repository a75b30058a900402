#include <ZORBase/kernels/FFTKernel.h>

#include <ZORBase/kernels/TargetClones.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>
#include <utility>

namespace ZORBase::FFTKernel {
namespace {

// Columns that are worked on side by side: a cache line of doubles.
constexpr std::size_t kLanes = 8;

// Shorter transforms are done as the definition says: they have no eight columns of eight.
constexpr std::size_t kShortest = kLanes * 8;

// A block that is done stage by stage: 16 bytes times this fits into the first-level cache.
constexpr std::size_t kSmallBlock = 2048;

// From this length on the work arrays are larger than the second-level cache.
constexpr std::size_t kLong = std::size_t{1} << 17;

// Stages whose factors are kept for good.
constexpr int kKeptStages = 20;

// ---------------------------------------------------------------------------------------------- twiddle factors

// Every second factor is one of the stage before.
TTwiddles MakeTwiddles(int Stage, const TTwiddles* Before) {
  const std::size_t size = std::size_t{1} << (Stage - 1);
  TTwiddles twiddles{AllocateDoubles(2 * size)};
  double* const re = twiddles.Values.get();
  double* const im = re + size;
  for (std::size_t r = 0; r < size; ++r) {
    if (Before != nullptr && r % 2 == 0) {
      re[r] = Before->Re[r / 2];
      im[r] = Before->Im[r / 2];
    } else {
      const double a = 2.0 * std::numbers::pi * static_cast<double>(r) / static_cast<double>(2 * size);
      re[r] = std::cos(a);
      im[r] = -std::sin(a);
    }
  }
  twiddles.Re = re;
  twiddles.Im = im;
  return twiddles;
}

// One static for each stage: the language sees to it that one thread computes it and the others wait.
template <int Stage>
const TTwiddles& KeptTwiddles() {
  if constexpr (Stage == 1) {
    static const TTwiddles twiddles = MakeTwiddles(1, nullptr);
    return twiddles;
  } else {
    static const TTwiddles twiddles = MakeTwiddles(Stage, &KeptTwiddles<Stage - 1>());
    return twiddles;
  }
}

template <std::size_t... Is>
constexpr auto ListOfKeptTwiddles(std::index_sequence<Is...>) {
  return std::array{&KeptTwiddles<static_cast<int>(Is) + 1>...};
}

constexpr auto kKeptTwiddles = ListOfKeptTwiddles(std::make_index_sequence<kKeptStages>());

// ---------------------------------------------------------------------------------------------- the passes

ZORBASE_INLINE void Butterfly(TComplex& A, TComplex& B, const TComplex& W) {
  const TComplex t = B * W;
  B = A - t;
  A = A + t;
}

// The butterfly of two real samples with W = (1, -0), whose product with B is (B + 0, -0 B + 0): not just (B, 0) where
// B is a negative zero or not finite. Its imaginary part is 0 or NaN, hence also that of the sum and the difference.
ZORBASE_INLINE void FirstButterfly(double A, double B, TComplex& Sum, TComplex& Difference) {
  const TComplex t{B + 0.0, B * -0.0 + 0.0};
  Sum = {A + t.real, t.imag};
  Difference = {A - t.real, t.imag};
}

// Stages 1 to 3 of eight columns. The column i has the samples In[i + t Stride], t = 0..7, taken in the order of
// reversed bits; its results t = 0..7, neighbours in the work array, come to Re[8 t + i] and Im[8 t + i].
// W: the factor of stage 1, also the first of stages 2 and 3; the second of stage 2; the other three of stage 3.
ZORBASE_INLINE void EightColumns(const double* In, std::size_t Stride, const TComplex (&W)[5], double* Re, double* Im) {
  ZORBASE_INDEPENDENT
  for (std::size_t i = 0; i < kLanes; ++i) {
    const double* const in = In + i;
    TComplex x0, x1, x2, x3, x4, x5, x6, x7;
    FirstButterfly(in[0], in[4 * Stride], x0, x1);
    FirstButterfly(in[2 * Stride], in[6 * Stride], x2, x3);
    FirstButterfly(in[Stride], in[5 * Stride], x4, x5);
    FirstButterfly(in[3 * Stride], in[7 * Stride], x6, x7);
    Butterfly(x0, x2, W[0]);
    Butterfly(x1, x3, W[1]);
    Butterfly(x4, x6, W[0]);
    Butterfly(x5, x7, W[1]);
    Butterfly(x0, x4, W[0]);
    Butterfly(x1, x5, W[2]);
    Butterfly(x2, x6, W[3]);
    Butterfly(x3, x7, W[4]);
    double* const re = Re + i;
    double* const im = Im + i;
    re[0] = x0.real, re[8] = x1.real, re[16] = x2.real, re[24] = x3.real;
    re[32] = x4.real, re[40] = x5.real, re[48] = x6.real, re[56] = x7.real;
    im[0] = x0.imag, im[8] = x1.imag, im[16] = x2.imag, im[24] = x3.imag;
    im[32] = x4.imag, im[40] = x5.imag, im[48] = x6.imag, im[56] = x7.imag;
  }
}

// The bits of 0..7 reversed.
constexpr std::size_t kReversed[kLanes] = {0, 4, 2, 6, 1, 5, 3, 7};

// Adds 1 to the number whose bits, reversed, are Reversed; Count, a power of two, is the count of such numbers.
ZORBASE_INLINE void AdvanceReversed(std::size_t& Reversed, std::size_t Count) {
  std::size_t bit = Count / 2;
  while ((Reversed & bit) != 0) {
    Reversed ^= bit;
    bit /= 2;
  }
  Reversed ^= bit;
}

// The reordering and the stages 1 to 3 of N samples, N >= 64. Eight columns come as one line from each of eight places
// and go as one line to each of eight others. Those jump through memory, so in a long array they are asked for ahead.
ZORBASE_TARGET_CLONES
void FirstThreeStages(const double* In, std::size_t N, const TComplex (&W)[5], double* Re, double* Im) {
  const std::size_t stride = N / 8;
  const std::size_t blocks = stride / kLanes;
  alignas(64) double re[8 * kLanes];
  alignas(64) double im[8 * kLanes];
  std::size_t reversed = 0;
  for (std::size_t block = 0; block < blocks; ++block) {
    std::size_t next = reversed;
    AdvanceReversed(next, blocks);
    if (N >= kLong) {
      for (std::size_t i = 0; i < kLanes; ++i) ZORBASE_PREFETCH(Re + 8 * (i * blocks + next));
      for (std::size_t i = 0; i < kLanes; ++i) ZORBASE_PREFETCH(Im + 8 * (i * blocks + next));
    }
    EightColumns(In + kLanes * block, stride, W, re, im);
    for (std::size_t i = 0; i < kLanes; ++i) {
      const std::size_t to = 8 * (kReversed[i] * blocks + reversed);
      for (std::size_t t = 0; t < 8; ++t) Re[to + t] = re[kLanes * t + i];
      for (std::size_t t = 0; t < 8; ++t) Im[to + t] = im[kLanes * t + i];
    }
    reversed = next;
  }
}

// The stage that joins halves of H to blocks of 2 H, over Size numbers. H is a multiple of 8.
ZORBASE_TARGET_CLONES
void OneStage(double* Re, double* Im, std::size_t Size, std::size_t H, const TTwiddles& Twiddles) {
  const double* const wRe = Twiddles.Re;
  const double* const wIm = Twiddles.Im;
  for (std::size_t base = 0; base < Size; base += 2 * H) {
    double* const re = Re + base;
    double* const im = Im + base;
    ZORBASE_INDEPENDENT
    for (std::size_t r = 0; r < H; ++r) {
      TComplex a{re[r], im[r]};
      TComplex b{re[r + H], im[r + H]};
      Butterfly(a, b, {wRe[r], wIm[r]});
      re[r] = a.real, im[r] = a.imag;
      re[r + H] = b.real, im[r + H] = b.imag;
    }
  }
}

// The two stages that join quarters of H to blocks of 4 H, over Size numbers. H is a multiple of 8.
ZORBASE_TARGET_CLONES
void TwoStages(double* Re, double* Im, std::size_t Size, std::size_t H, const TTwiddles& First,
               const TTwiddles& Second) {
  const double* const w1Re = First.Re;
  const double* const w1Im = First.Im;
  const double* const w2Re = Second.Re;
  const double* const w2Im = Second.Im;
  for (std::size_t base = 0; base < Size; base += 4 * H) {
    double* const re = Re + base;
    double* const im = Im + base;
    ZORBASE_INDEPENDENT
    for (std::size_t r = 0; r < H; ++r) {
      TComplex a{re[r], im[r]};
      TComplex b{re[r + H], im[r + H]};
      TComplex c{re[r + 2 * H], im[r + 2 * H]};
      TComplex d{re[r + 3 * H], im[r + 3 * H]};
      const TComplex w1{w1Re[r], w1Im[r]};
      Butterfly(a, b, w1);
      Butterfly(c, d, w1);
      Butterfly(a, c, {w2Re[r], w2Im[r]});
      Butterfly(b, d, {w2Re[r + H], w2Im[r + H]});
      re[r] = a.real, im[r] = a.imag;
      re[r + H] = b.real, im[r + H] = b.imag;
      re[r + 2 * H] = c.real, im[r + 2 * H] = c.imag;
      re[r + 3 * H] = d.real, im[r + 3 * H] = d.imag;
    }
  }
}

// The last two stages; the sums of the second one are the lower half of the result.
ZORBASE_TARGET_CLONES
void LastTwoStages(const double* Re, const double* Im, std::size_t H, const TTwiddles& First, const TTwiddles& Second,
                   TComplex* Spectrum) {
  const double* const w1Re = First.Re;
  const double* const w1Im = First.Im;
  const double* const w2Re = Second.Re;
  const double* const w2Im = Second.Im;
  ZORBASE_INDEPENDENT
  for (std::size_t r = 0; r < H; ++r) {
    TComplex a{Re[r], Im[r]};
    TComplex b{Re[r + H], Im[r + H]};
    TComplex c{Re[r + 2 * H], Im[r + 2 * H]};
    TComplex d{Re[r + 3 * H], Im[r + 3 * H]};
    const TComplex w1{w1Re[r], w1Im[r]};
    Butterfly(a, b, w1);
    Butterfly(c, d, w1);
    Spectrum[r] = a + c * TComplex{w2Re[r], w2Im[r]};
    Spectrum[r + H] = b + d * TComplex{w2Re[r + H], w2Im[r + H]};
  }
}

TComplex Factor(const TTwiddles& Twiddles, std::size_t Index) { return {Twiddles.Re[Index], Twiddles.Im[Index]}; }

}  // namespace

TPlan::TPlan(std::size_t N) : FN(N), FStages(std::countr_zero(N)) {
  for (int stage = 1; stage <= std::min(FStages, kKeptStages); ++stage) {
    FTwiddles[static_cast<std::size_t>(stage)] = &kKeptTwiddles[static_cast<std::size_t>(stage) - 1]();
  }
  if (FStages > kKeptStages) FOwnTwiddles.reserve(static_cast<std::size_t>(FStages - kKeptStages));
  for (int stage = kKeptStages + 1; stage <= FStages; ++stage) {
    const auto s = static_cast<std::size_t>(stage);
    FOwnTwiddles.push_back(MakeTwiddles(stage, FTwiddles[s - 1]));
    FTwiddles[s] = &FOwnTwiddles.back();
  }
  if (N >= kShortest) FWork = AllocateDoubles(2 * N);
}

void TPlan::TransformReal(std::span<const double> Samples, std::span<TComplex> Spectrum) noexcept {
  if (FN < kShortest) {
    TransformShort(Samples, Spectrum);
    return;
  }
  const auto last = static_cast<std::size_t>(FStages);
  const TComplex w[5] = {Factor(*FTwiddles[1], 0), Factor(*FTwiddles[2], 1), Factor(*FTwiddles[3], 1),
                         Factor(*FTwiddles[3], 2), Factor(*FTwiddles[3], 3)};
  double* const re = FWork.get();
  double* const im = re + FN;
  FirstThreeStages(Samples.data(), FN, w, re, im);
  const std::size_t quarter = FN / 4;
  for (std::size_t i = 0; i < FN; i += quarter) FinishBlock(re + i, im + i, quarter);
  LastTwoStages(re, im, quarter, *FTwiddles[last - 1], *FTwiddles[last], Spectrum.data());
}

// The definition itself.
void TPlan::TransformShort(std::span<const double> Samples, std::span<TComplex> Spectrum) const noexcept {
  std::array<TComplex, kShortest> x;
  for (std::size_t i = 0, j = 0; i < FN; ++i) {
    x[j] = {Samples[i], 0.0};
    AdvanceReversed(j, FN);
  }
  for (int stage = 1; stage <= FStages; ++stage) {
    const std::size_t h = std::size_t{1} << (stage - 1);
    for (std::size_t r = 0; r < h; ++r) {
      const TComplex w = Factor(*FTwiddles[static_cast<std::size_t>(stage)], r);
      for (std::size_t k = r; k < FN; k += 2 * h) Butterfly(x[k], x[k + h], w);
    }
  }
  std::copy_n(x.begin(), Spectrum.size(), Spectrum.begin());
}

// The stages from 4 on that stay inside a block of Size numbers, 16 or more; those of its quarters first.
void TPlan::FinishBlock(double* Re, double* Im, std::size_t Size) const noexcept {
  if (Size <= kSmallBlock) {
    FinishSmallBlock(Re, Im, Size);
    return;
  }
  const std::size_t quarter = Size / 4;
  for (std::size_t i = 0; i < Size; i += quarter) FinishBlock(Re + i, Im + i, quarter);
  const auto stage = static_cast<std::size_t>(std::countr_zero(Size));
  TwoStages(Re, Im, Size, quarter, *FTwiddles[stage - 1], *FTwiddles[stage]);
}

// One stage where their number is odd, then two at a time.
void TPlan::FinishSmallBlock(double* Re, double* Im, std::size_t Size) const noexcept {
  std::size_t stage = 4;
  if (std::countr_zero(Size) % 2 == 0) {
    OneStage(Re, Im, Size, 8, *FTwiddles[stage]);
    ++stage;
  }
  for (std::size_t h = std::size_t{1} << (stage - 1); h < Size; h *= 4, stage += 2) {
    TwoStages(Re, Im, Size, h, *FTwiddles[stage], *FTwiddles[stage + 1]);
  }
}

}  // namespace ZORBase::FFTKernel

#include <ZORBase/kernels/FFTKernel.h>

#include <ZORBase/kernels/Lanes.h>
#include <ZORBase/kernels/TargetClones.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>
#include <utility>

namespace ZORBase::FFTKernel {
namespace {

// Columns that are worked on side by side: a cache line of samples.
constexpr std::size_t kColumns = 8;

// Shorter transforms are done as the definition says: they have no eight columns of eight.
constexpr std::size_t kShortest = kColumns * 8;

// A block that is done stage by stage: with its factors, 32 bytes times this fit into the first-level cache.
constexpr std::size_t kSmallBlock = 1024;

// From this length on the work space is larger than the second-level cache.
constexpr std::size_t kLong = std::size_t{1} << 16;

// Stages whose factors are kept for good.
constexpr int kKeptStages = 20;

// ---------------------------------------------------------------------------------------------- twiddle factors

// Every second factor is one of the stage before.
TTwiddles MakeTwiddles(int Stage, const TTwiddles* Before) {
  const std::size_t size = std::size_t{1} << (Stage - 1);
  TTwiddles twiddles(size);
  for (std::size_t r = 0; r < size; ++r) {
    const double a = 2.0 * std::numbers::pi * static_cast<double>(r) / static_cast<double>(2 * size);
    const bool isKnown = Before != nullptr && r % 2 == 0;
    twiddles.Set(r, isKnown ? Before->Get(r / 2) : TComplex{std::cos(a), -std::sin(a)});
  }
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

// Four complex numbers.
struct TFour {
  TLanes Re;
  TLanes Im;
};

static_assert(TGroups::kGroup == kLanes);

ZORBASE_INLINE TFour LoadFour(const double* From) { return {Load(From), Load(From + kLanes)}; }

ZORBASE_INLINE void StoreFour(double* To, const TFour& X) {
  Store(To, X.Re);
  Store(To + kLanes, X.Im);
}

ZORBASE_INLINE TFour SplatFour(const TComplex& X) { return {Splat(X.real), Splat(X.imag)}; }

ZORBASE_INLINE TFour operator*(const TFour& A, const TFour& B) {
  return {A.Re * B.Re - A.Im * B.Im, A.Re * B.Im + A.Im * B.Re};
}
ZORBASE_INLINE TFour operator+(const TFour& A, const TFour& B) { return {A.Re + B.Re, A.Im + B.Im}; }
ZORBASE_INLINE TFour operator-(const TFour& A, const TFour& B) { return {A.Re - B.Re, A.Im - B.Im}; }

// Of numbers or of fours.
template <class T>
ZORBASE_INLINE void Butterfly(T& A, T& B, const T& W) {
  const T t = B * W;
  B = A - t;
  A = A + t;
}

// The butterfly of real samples with W = (1, -0), whose product with B is (B + 0, -0 B + 0): not just (B, 0) where
// B is a negative zero or not finite. Its imaginary part is 0 or NaN, hence also that of the sum and the difference.
ZORBASE_INLINE void FirstButterfly(const TLanes& A, const TLanes& B, TFour& Sum, TFour& Difference) {
  const TLanes zero = Splat(0.0);
  const TFour t{B + zero, B * Splat(-0.0) + zero};
  Sum = {A + t.Re, t.Im};
  Difference = {A - t.Re, t.Im};
}

// Stages 1 to 3 of four columns. The column i has the samples In[i + t Stride], t = 0..7, taken in the order of
// reversed bits; its results t = 0..7 come to To + i Step.
// W: the factor of stage 1, also the first of stages 2 and 3; the second of stage 2; the other three of stage 3.
ZORBASE_INLINE void FourColumns(const double* In, std::size_t Stride, const TComplex (&W)[5], double* const (&To)[4]) {
  TFour x[8];
  FirstButterfly(Load(In), Load(In + 4 * Stride), x[0], x[1]);
  FirstButterfly(Load(In + 2 * Stride), Load(In + 6 * Stride), x[2], x[3]);
  FirstButterfly(Load(In + Stride), Load(In + 5 * Stride), x[4], x[5]);
  FirstButterfly(Load(In + 3 * Stride), Load(In + 7 * Stride), x[6], x[7]);
  Butterfly(x[0], x[2], SplatFour(W[0]));
  Butterfly(x[1], x[3], SplatFour(W[1]));
  Butterfly(x[4], x[6], SplatFour(W[0]));
  Butterfly(x[5], x[7], SplatFour(W[1]));
  Butterfly(x[0], x[4], SplatFour(W[0]));
  Butterfly(x[1], x[5], SplatFour(W[2]));
  Butterfly(x[2], x[6], SplatFour(W[3]));
  Butterfly(x[3], x[7], SplatFour(W[4]));
  ZORBASE_UNROLL
  for (std::size_t half = 0; half < 2; ++half) {
    TFour* const group = x + kLanes * half;
    Transpose(group[0].Re, group[1].Re, group[2].Re, group[3].Re);
    Transpose(group[0].Im, group[1].Im, group[2].Im, group[3].Im);
    ZORBASE_UNROLL
    for (std::size_t i = 0; i < kLanes; ++i) StoreFour(To[i] + 2 * kLanes * half, group[i]);
  }
}

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
// and go as two lines to each of eight others. Those jump through memory, so in a long array they are asked for ahead.
ZORBASE_TARGET_CLONES
void FirstThreeStages(const double* In, std::size_t N, const TComplex (&W)[5], double* Out) {
  constexpr std::size_t kPlace = 2 * std::size_t{8};  // numbers of a column's results
  const std::size_t stride = N / 8;
  const std::size_t blocks = stride / kColumns;
  std::size_t reversed = 0;
  for (std::size_t block = 0; block < blocks; ++block) {
    std::size_t next = reversed;
    AdvanceReversed(next, blocks);
    if (N >= kLong) {
      for (std::size_t i = 0; i < kColumns; ++i) {
        double* const place = Out + kPlace * (i * blocks + next);
        ZORBASE_PREFETCH(place);
        ZORBASE_PREFETCH(place + kPlace / 2);
      }
    }
    // The columns 0..7 go to the places whose bits are theirs reversed: 0, 4, 2, 6, 1, 5, 3, 7.
    const std::size_t apart = kPlace * blocks;
    double* const first = Out + kPlace * reversed;
    double* const second = first + apart;
    const double* const in = In + kColumns * block;
    FourColumns(in, stride, W, {first, first + 4 * apart, first + 2 * apart, first + 6 * apart});
    FourColumns(in + kLanes, stride, W, {second, second + 4 * apart, second + 2 * apart, second + 6 * apart});
    reversed = next;
  }
}

// The stage that joins halves of H to blocks of 2 H, over Size numbers. H is a multiple of 8.
ZORBASE_TARGET_CLONES
void OneStage(double* Numbers, std::size_t Size, std::size_t H, const double* W) {
  for (double* block = Numbers; block != Numbers + 2 * Size; block += 4 * H) {
    for (std::size_t i = 0; i < 2 * H; i += 2 * kLanes) {
      TFour a = LoadFour(block + i);
      TFour b = LoadFour(block + i + 2 * H);
      Butterfly(a, b, LoadFour(W + i));
      StoreFour(block + i, a);
      StoreFour(block + i + 2 * H, b);
    }
  }
}

// The two stages that join quarters of H to blocks of 4 H, over Size numbers. H is a multiple of 8.
ZORBASE_TARGET_CLONES
void TwoStages(double* Numbers, std::size_t Size, std::size_t H, const double* W1, const double* W2) {
  for (double* block = Numbers; block != Numbers + 2 * Size; block += 8 * H) {
    for (std::size_t i = 0; i < 2 * H; i += 2 * kLanes) {
      TFour a = LoadFour(block + i);
      TFour b = LoadFour(block + i + 2 * H);
      TFour c = LoadFour(block + i + 4 * H);
      TFour d = LoadFour(block + i + 6 * H);
      const TFour w1 = LoadFour(W1 + i);
      Butterfly(a, b, w1);
      Butterfly(c, d, w1);
      Butterfly(a, c, LoadFour(W2 + i));
      Butterfly(b, d, LoadFour(W2 + i + 2 * H));
      StoreFour(block + i, a);
      StoreFour(block + i + 2 * H, b);
      StoreFour(block + i + 4 * H, c);
      StoreFour(block + i + 6 * H, d);
    }
  }
}

// Real and imaginary parts take turns.
ZORBASE_INLINE void StoreInTurns(TComplex* To, const TFour& X) {
  double* const to = &To->real;
  StoreInterleaved(to, X.Re, X.Im);
}

// The last two stages; the sums of the second one are the lower half of the result.
ZORBASE_TARGET_CLONES
void LastTwoStages(const double* Numbers, std::size_t H, const double* W1, const double* W2, TComplex* Spectrum) {
  for (std::size_t r = 0; r < H; r += kLanes) {
    const std::size_t i = 2 * r;
    TFour a = LoadFour(Numbers + i);
    TFour b = LoadFour(Numbers + i + 2 * H);
    TFour c = LoadFour(Numbers + i + 4 * H);
    TFour d = LoadFour(Numbers + i + 6 * H);
    const TFour w1 = LoadFour(W1 + i);
    Butterfly(a, b, w1);
    Butterfly(c, d, w1);
    StoreInTurns(Spectrum + r, a + c * LoadFour(W2 + i));
    StoreInTurns(Spectrum + r + H, b + d * LoadFour(W2 + i + 2 * H));
  }
}

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
  if (N >= kShortest) FWork = TGroups(N);
}

void TPlan::TransformReal(std::span<const double> Samples, std::span<TComplex> Spectrum) noexcept {
  if (FN < kShortest) {
    TransformShort(Samples, Spectrum);
    return;
  }
  const auto last = static_cast<std::size_t>(FStages);
  const TComplex w[5] = {FTwiddles[1]->Get(0), FTwiddles[2]->Get(1), FTwiddles[3]->Get(1), FTwiddles[3]->Get(2),
                         FTwiddles[3]->Get(3)};
  FirstThreeStages(Samples.data(), FN, w, FWork.Parts());
  const std::size_t quarter = FN / 4;
  for (std::size_t i = 0; i < FN; i += quarter) FinishBlock(FWork.Parts(i), quarter);
  LastTwoStages(FWork.Parts(), quarter, FTwiddles[last - 1]->Parts(), FTwiddles[last]->Parts(), Spectrum.data());
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
      const TComplex w = FTwiddles[static_cast<std::size_t>(stage)]->Get(r);
      for (std::size_t k = r; k < FN; k += 2 * h) Butterfly(x[k], x[k + h], w);
    }
  }
  std::copy_n(x.begin(), Spectrum.size(), Spectrum.begin());
}

// The stages from 4 on that stay inside a block of Size numbers, 16 or more; those of its quarters first.
void TPlan::FinishBlock(double* Block, std::size_t Size) const noexcept {
  if (Size <= kSmallBlock) {
    FinishSmallBlock(Block, Size);
    return;
  }
  const std::size_t quarter = Size / 4;
  for (std::size_t i = 0; i < Size; i += quarter) FinishBlock(Block + TGroups::PlaceOf(i), quarter);
  const auto stage = static_cast<std::size_t>(std::countr_zero(Size));
  TwoStages(Block, Size, quarter, FTwiddles[stage - 1]->Parts(), FTwiddles[stage]->Parts());
}

// One stage where their number is odd, then two at a time.
void TPlan::FinishSmallBlock(double* Block, std::size_t Size) const noexcept {
  std::size_t stage = 4;
  if (std::countr_zero(Size) % 2 == 0) {
    OneStage(Block, Size, 8, FTwiddles[stage]->Parts());
    ++stage;
  }
  for (std::size_t h = std::size_t{1} << (stage - 1); h < Size; h *= 4, stage += 2) {
    TwoStages(Block, Size, h, FTwiddles[stage]->Parts(), FTwiddles[stage + 1]->Parts());
  }
}

}  // namespace ZORBase::FFTKernel

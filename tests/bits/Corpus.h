// Corpus: what every operation of the library makes of the same input, as hashes of its bits.
#pragma once

#include <ZORBase/ZORBase.h>

#include <cstdint>
#include <cstdio>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ZORBase::Test {

/// Which arithmetic an operation rests on.
enum class TArithmetic {
  Exact,     ///< sums, products, quotients, square roots, conversions: IEC 60559 settles every bit
  Inherited  ///< also sines, cosines, arcs or powers of the C library, which may differ from system to system
};

/// The hash of an operation's results.
struct TOperationHash {
  std::string Name;
  TArithmetic Arithmetic;
  std::size_t Count;   ///< of results
  std::uint64_t Hash;  ///< FNV-1a, 64 bits, over the results' bytes from the lowest on
};

/// Takes the results of one operation.
class TResults {
 public:
  /// \param Values  where the results are printed as well, one a line; a null pointer for nowhere.
  TResults(std::string Name, TArithmetic Arithmetic, std::FILE* Values)
      : FHash{std::move(Name), Arithmetic, 0, kEmpty}, FValues(Values) {}

  template <class... TItems>
  void operator()(const TItems&... Items) {
    (Add(Items), ...);
  }

  const TOperationHash& Hash() const { return FHash; }

 private:
  static constexpr std::uint64_t kEmpty = 0xcbf29ce484222325U;

  void Add(double Value);
  void Add(std::string_view Text);
  void Add(std::span<const double> Values);
  void Add(int Value) { Add(static_cast<double>(Value)); }
  void Add(bool Value) { Add(Value ? 1.0 : 0.0); }
  void Add(const std::vector<double>& Values) { Add(std::span(Values)); }
  void Add(const TDoubleList& Values) { Add(std::span<const double>(Values.data(), Values.size())); }
  void Add(const TPoint2D& P) { (*this)(P.X, P.Y); }
  void Add(const TPoint3D& P) { (*this)(P.X, P.Y, P.Z); }
  void Add(const TPoint6D& P) { Add(std::span<const double>(P.ToArray())); }
  void Add(const TPointXD& P) { Add(P.Coordinates()); }
  void Add(const TEulerAng& E) { (*this)(E.Rx, E.Ry, E.Rz); }
  void Add(const TEulerPoint& P) { Add(std::span<const double>(P.ToArray())); }
  void Add(const TQuaternion& Q) { (*this)(Q.a, Q.b, Q.c, Q.d); }
  void Add(const TComplex& C) { (*this)(C.real, C.imag); }
  void Add(const TMatrix3D& M);
  void Add(const TMatrix4D& M);
  void Add(const TCubicBezXD& B) { (*this)(B.FP0, B.FP1, B.FP2, B.FP3, B.FLength); }
  void AddByte(std::uint64_t Byte);

  TOperationHash FHash;
  std::FILE* FValues;
};

/// Collects the hashes of operations.
class TCorpus {
 public:
  explicit TCorpus(std::FILE* Values) : FValues(Values) {}

  using TOperation = std::function<void(TResults&)>;
  void Exact(std::string Name, const TOperation& Operation) { Run(std::move(Name), TArithmetic::Exact, Operation); }
  void Inherited(std::string Name, const TOperation& Operation) {
    Run(std::move(Name), TArithmetic::Inherited, Operation);
  }

  const std::vector<TOperationHash>& Hashes() const { return FHashes; }

 private:
  void Run(std::string Name, TArithmetic Arithmetic, const TOperation& Operation);

  std::FILE* FValues;
  std::vector<TOperationHash> FHashes;
};

/// The operations, subject by subject.
void AddNumbers(TCorpus& Corpus);
void AddPoints(TCorpus& Corpus);
void AddTransforms(TCorpus& Corpus);
void AddOrientations(TCorpus& Corpus);
void AddCurves(TCorpus& Corpus);
void AddSegments(TCorpus& Corpus);
void AddSolvers(TCorpus& Corpus);
void AddInterpolators(TCorpus& Corpus);
void AddSignals(TCorpus& Corpus);

}  // namespace ZORBase::Test

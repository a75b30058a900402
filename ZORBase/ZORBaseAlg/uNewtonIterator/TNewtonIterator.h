#pragma once

#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Export.h>

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ZORBase {

/// A function of the unknowns: the residuals of all equations, or their derivatives as one flat list. Nothing where it has no
/// value; so counts a function that is not there.
using TEquationFunc = std::function<std::optional<TDoubleList>(const TDoubleList&)>;

/// Takes a line of the log, UTF-8 without a line end.
using TLogProc = std::function<void(const std::string&)>;

/// Solves F(X) = 0 for P unknowns and E >= P equations by Newton-Gauss steps: dX solves J dX = F by least squares, and X becomes
/// X - dX, until every |dX[i]| is below the tolerance of its unknown. Where no X makes all residuals 0, the steps lead to a place
/// where their sum of squares is stationary. There is no damping: a bad start may run away.
///
/// Settings persist from run to run; nothing else does. F, J and the logger are called on the caller's thread. Use an iterator on
/// one thread at a time.
class ZORBASE_API TNewtonIterator {
 public:
  /// \param ParamNum     P, the number of unknowns
  /// \param EquationNum  E, the number of equations
  /// \param ErrFunc      F: P unknowns to E residuals
  /// \param JacobFunc    J: P unknowns to E P derivatives
  /// \param ReadByRow    how J lists them: equation after equation when true, unknown after unknown when false
  /// \throws the general error "TNewtonIterator Input Err (ZORBaseAlg\uNewtonIterator, line 230)" unless 1 <= P <= E, and a
  ///         general error when E P is more than a list holds.
  TNewtonIterator(int ParamNum, int EquationNum, TEquationFunc ErrFunc, TEquationFunc JacobFunc, bool ReadByRow);
  virtual ~TNewtonIterator();
  TNewtonIterator(TNewtonIterator&&) noexcept;             ///< moves settings and functions
  TNewtonIterator& operator=(TNewtonIterator&&) noexcept;  ///< moves settings and functions
  TNewtonIterator(const TNewtonIterator&) = delete;
  TNewtonIterator& operator=(const TNewtonIterator&) = delete;

  /// One tolerance for all unknowns. It is 0.001 for each of them to begin with.
  void SetConvergeTor(double AConvergeTor);

  /// A tolerance for each unknown; the list is handed over.
  /// \throws the general error "TNewtonIterator.SetConvergeTor Err (ZORBaseAlg\uNewtonIterator, line 252)" without a list and for
  ///         one that has not P values.
  void SetConvergeTor(std::optional<TDoubleList> AConvergeTor);

  /// Sends the log to AProc. An empty one leaves the logger as it is: there is no way to remove it.
  void SetLogger(TLogProc AProc);

  /// Iterates from the guess in XList and writes the solution there.
  /// \return true when the steps went through, also when 300 of them did not converge: the log has "CheckErr Exceed Max IterNum"
  ///         then. False, with XList as it was, for no list or one that has not P values, and when F or J gave nothing or a list
  ///         of the wrong length: the log says which. It ends with the number of steps, the last residuals and the last step.
  /// \throws what F, J, the logger or the linear solver raises; XList is as it was, unless it was the logger in the lines after
  ///         the last step.
  /// Cost: a singular value decomposition of E x P per step.
  bool CalcParam(TDoubleList* XList);

  ///@{
  /// What the iterator was made with, and its settings.
  int ParamNum() const { return FParamNum; }
  int EquationNum() const { return FEquationNum; }
  const TEquationFunc& ErrFunc() const { return FErrFunc; }
  const TEquationFunc& JacobFunc() const { return FJacobFunc; }
  bool ReadByRow() const { return FReadByRow; }
  std::span<const double> ConvergeTor() const { return FConvergeTor; }
  int IterMaxNum() const { return FIterMaxNum; }
  const TLogProc& Logger() const { return FLogger; }
  ///@}

 protected:
  /// J at X, or nothing. X is the working copy of a run, which a Jacobian by differences moves.
  virtual std::optional<TDoubleList> CalcJacobian(TDoubleList& X) const;

 private:
  struct TRun;

  void AddLog(const std::string& Message) const;
  bool Iterate(TRun& Run) const;
  bool Step(TRun& Run) const;
  bool Evaluate(TRun& Run) const;
  bool IsConverged(const TDoubleList& dX) const;
  void LogEnd(const TRun& Run) const;

  int FParamNum;
  int FEquationNum;
  TEquationFunc FErrFunc;
  TEquationFunc FJacobFunc;
  bool FReadByRow;
  std::vector<double> FConvergeTor;
  int FIterMaxNum = 300;
  TLogProc FLogger;
};

}  // namespace ZORBase

#include <ZORBase/common/BaseServices/TGeneralError.h>

#include "support/TestSupport.h"

#include <type_traits>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::RaisesGeneralError;

static_assert(std::is_base_of_v<std::runtime_error, TGeneralError> && std::is_final_v<TGeneralError>);

TEST(TGeneralError, CarriesItsTextUnchanged) {
  EXPECT_THAT(Calling([] { RaiseGeneralError("两点重合, 100 %s"); }), RaisesGeneralError("两点重合, 100 %s"));
  EXPECT_THAT(Calling([] { RaiseGeneralError(""); }), RaisesGeneralError(""));
}

TEST(TGeneralError, IsCaughtAsAStandardError) {
  EXPECT_THROW(RaiseGeneralError("x"), std::runtime_error);
  EXPECT_THROW(RaiseGeneralError("x"), std::exception);
}

TEST(TGeneralError, AnAssertionNamesItsSourceAndLine) {
  EXPECT_THAT(Calling([] { RaiseAssertion("N must be even", "uFFT.cpp", 42); }),
              RaisesGeneralError("N must be even (uFFT.cpp, line 42)"));
}

}  // namespace
}  // namespace ZORBase

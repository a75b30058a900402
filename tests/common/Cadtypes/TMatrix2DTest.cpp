#include <ZORBase/common/Cadtypes/TMatrix2D.h>

#include "support/TestSupport.h"

#include <type_traits>

namespace ZORBase {
namespace {

static_assert(std::is_trivially_copyable_v<TMatrix2D>);

TEST(TMatrix2D, IsAllZeroByDefault) {
  const TPoint2D image = TMatrix2D().Transform(TPoint2D::Create(3, 4));
  EXPECT_EQ(image.X, 0);
  EXPECT_EQ(image.Y, 0);
}

TEST(TMatrix2D, TheIdentityMovesNothing) {
  const TPoint2D image = TMatrix2D::CreateIdent().Transform(TPoint2D::Create(3, -4));
  EXPECT_EQ(image.X, 3);
  EXPECT_EQ(image.Y, -4);
}

TEST(TMatrix2D, RowsMultiplyThePointAndTheShiftIsAdded) {
  const TPoint2D image = TMatrix2D::Create(1, 2, 3, 4, 10, 20).Transform(TPoint2D::Create(5, 7));
  EXPECT_EQ(image.X, 1 * 5 + 2 * 7 + 10);
  EXPECT_EQ(image.Y, 3 * 5 + 4 * 7 + 20);
}

TEST(TMatrix2D, AQuarterTurnTakesXToY) {
  const TPoint2D image = TMatrix2D::Create(0, -1, 1, 0, 0, 0).Transform(TPoint2D::Create(1, 0));
  EXPECT_EQ(image.X, 0);
  EXPECT_EQ(image.Y, 1);
}

}  // namespace
}  // namespace ZORBase

#include <ZORBase/common/BaseServices/TPersistent.h>

#include "support/TestSupport.h"

namespace ZORBase {
namespace {

using Test::Calling;
using Test::RaisesGeneralError;

class TCounter : public TPersistent {
 public:
  int Value = 0;

  void Assign(const TPersistent& Source) override {
    if (const auto* const other = dynamic_cast<const TCounter*>(&Source)) {
      Value = other->Value;
    } else {
      TPersistent::Assign(Source);
    }
  }
  std::string_view ClassName() const override { return "TCounter"; }
};

class TStranger : public TPersistent {
  std::string_view ClassName() const override { return "TStranger"; }
};

class TUnnamed : public TPersistent {};

TEST(TPersistent, AssignThroughTheBaseReachesTheDerivedClass) {
  TCounter source;
  source.Value = 7;
  TCounter target;
  TPersistent& base = target;
  base.Assign(source);
  EXPECT_EQ(target.Value, 7);
  base.Assign(target);
  EXPECT_EQ(target.Value, 7);
}

TEST(TPersistent, AForeignSourceIsRefusedByNameAndChangesNothing) {
  TCounter target;
  target.Value = 7;
  EXPECT_THAT(Calling([&] { target.Assign(TStranger()); }),
              RaisesGeneralError("Cannot assign a TStranger to a TCounter"));
  EXPECT_EQ(target.Value, 7);
}

TEST(TPersistent, AClassWithoutAssignTakesNothing) {
  TUnnamed target;
  EXPECT_THAT(Calling([&] { target.Assign(TUnnamed()); }),
              RaisesGeneralError("Cannot assign a TPersistent to a TPersistent"));
}

}  // namespace
}  // namespace ZORBase

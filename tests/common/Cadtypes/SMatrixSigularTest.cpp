#include <ZORBase/common/Cadtypes/SMatrixSigular.h>

#include "support/TestSupport.h"

namespace ZORBase {
namespace {

TEST(SMatrixSigular, SaysWhatIsWrong) { EXPECT_THAT(std::string(SMatrixSigular), testing::HasSubstr("singular")); }

}  // namespace
}  // namespace ZORBase

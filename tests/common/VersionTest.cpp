#include <ZORBase/Version.h>

#include "support/TestSupport.h"

#include <fstream>
#include <string>

namespace ZORBase::Test {
namespace {

TEST(Version, OfHeadersAndLibraryIsTheOneInTheFileVersion) {
  std::ifstream file(SampleFile("../VERSION"));
  std::string version;
  ASSERT_TRUE(std::getline(file, version));
  EXPECT_EQ(LibraryVersion(), version);
  EXPECT_EQ(ZORBASE_VERSION, version);
  EXPECT_EQ(std::to_string(ZORBASE_VERSION_MAJOR) + "." + std::to_string(ZORBASE_VERSION_MINOR) + "." +
                std::to_string(ZORBASE_VERSION_PATCH),
            version);
}

}  // namespace
}  // namespace ZORBase::Test

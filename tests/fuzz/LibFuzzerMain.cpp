// What libFuzzer calls: the one target that is linked.
#include "fuzz/FuzzTarget.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  static const ZORBase::Test::TFuzzFunction target = ZORBase::Test::FindFuzzTarget("");
  ZORBase::Test::RunFuzzTarget(target, {reinterpret_cast<const char*>(Data), Size});
  return 0;
}

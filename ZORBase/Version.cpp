#include <ZORBase/Version.h>

namespace ZORBase {

const char* LibraryVersion() { return ZORBASE_VERSION; }

}  // namespace ZORBase

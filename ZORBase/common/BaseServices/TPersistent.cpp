#include <ZORBase/common/BaseServices/TPersistent.h>

#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <string>

namespace ZORBase {

TPersistent::~TPersistent() = default;

void TPersistent::Assign(const TPersistent& Source) {
  RaiseGeneralError("Cannot assign a " + std::string(Source.ClassName()) + " to a " + std::string(ClassName()));
}

std::string_view TPersistent::ClassName() const { return "TPersistent"; }

}  // namespace ZORBase

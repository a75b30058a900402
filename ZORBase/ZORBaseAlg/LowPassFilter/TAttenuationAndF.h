#pragma once

#include <ZORBase/common/BaseServices/TList.h>

#include <vector>

namespace ZORBase {

/// A row of a filter's attenuation table.
struct TAttenuationAndF {
  double atten = 0.0;  ///< magnitude of the frequency response; 1 is no attenuation
  double frq = 0.0;    ///< frequency, in the unit of the sample frequency
};

class TAttenuationAndFList : public TList<TAttenuationAndF> {
 public:
  using TList<TAttenuationAndF>::TList;
};

using TDoubleArray = std::vector<double>;

}  // namespace ZORBase

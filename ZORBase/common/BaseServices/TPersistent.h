#pragma once

#include <ZORBase/common/Export.h>

#include <string_view>

namespace ZORBase {

/// Base of the classes whose objects take over the contents of another one with Assign.
class ZORBASE_API TPersistent {
 public:
  virtual ~TPersistent();

  /// Takes over the contents of Source. A derived class copies from its own kind and hands every other Source to this one.
  /// \throws the general error "Cannot assign a X to a Y" when the classes do not fit; the object stays as it was.
  virtual void Assign(const TPersistent& Source);

  /// \return the name of the object's class, as error messages give it.
  virtual std::string_view ClassName() const;

 protected:
  ///@{
  /// For derived classes only: an object of this class alone is none.
  TPersistent() = default;
  TPersistent(const TPersistent&) = default;
  TPersistent(TPersistent&&) = default;
  TPersistent& operator=(const TPersistent&) = default;
  TPersistent& operator=(TPersistent&&) = default;
  ///@}
};

}  // namespace ZORBase

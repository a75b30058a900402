// Call: how the calls of the C interface meet the classes. Internal.
//   Call                              runs the work of a call, and turns what it raises into a status and a text
//   Given, Items, TextOf              arguments, checked
//   GiveText, GiveItems               results as many as there are
//   TGrowing, TakeGrowing             structs that begin with their size
//   Twin, Twins                       structs of the mathematics as the library's own types, and back
//   CreateHandle                      objects
#pragma once

#include <ZORBase/capi/zorbase.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ZORBase::capi {

// ---------------------------------------------------------------------------------------------- statuses

/// Ends the work of a call with a status of its own.
[[noreturn]] void Refuse(zorbase_status Status, const std::string& Text);

/// To be called where an exception has been caught. Leaves its text for this thread. \return the status that stands for
/// it.
zorbase_status StatusOfCaught(const char* Function) noexcept;

/// Leaves "" as the text of this thread.
void ForgetError() noexcept;

/// \return the text of this thread.
const char* CurrentError() noexcept;

/// Runs the work of a call. The one place where exceptions become statuses.
template <class TWork>
zorbase_status Call(const char* Function, TWork&& Work) noexcept {
  try {
    Work();
  } catch (...) {
    return StatusOfCaught(Function);
  }
  ForgetError();
  return ZORBASE_OK;
}

// ---------------------------------------------------------------------------------------------- arguments

[[noreturn]] void RefuseArgument(std::string_view Name, std::string_view Complaint);

/// \return what a pointer points to, which must not be null.
template <class T>
T& Given(T* Argument, std::string_view Name) {
  if (!Argument) RefuseArgument(Name, "is null");
  return *Argument;
}

/// \return a count as the library counts.
int CheckedCount(std::size_t Count, std::string_view Name);

/// \return the items of an array.
template <class T>
std::span<T> Items(T* First, std::size_t Count, std::string_view Name) {
  CheckedCount(Count, Name);
  if (Count > 0) Given(First, Name);
  return {First, Count};
}

inline std::string TextOf(const char* Text, std::string_view Name) { return &Given(Text, Name); }

// ---------------------------------------------------------------------------------------------- results in number

/// Tells how many items there are, and checks that they fit. \return whether they are wanted.
bool HasRoom(const void* Place, std::size_t Capacity, std::size_t Needed, std::size_t* Count, std::size_t Actual,
             std::string_view Name);

template <class T>
void GiveItems(std::span<const T> Values, T* Place, std::size_t Capacity, std::size_t* Count, std::string_view Name) {
  if (!HasRoom(Place, Capacity, Values.size(), Count, Values.size(), Name)) return;
  if (!Values.empty()) std::memcpy(Place, Values.data(), Values.size_bytes());
}

void GiveText(std::string_view Value, char* Place, std::size_t Capacity, std::size_t* Count);

// ---------------------------------------------------------------------------------------------- structs that may grow

/// The size of the struct in the first version that had it: what every caller has at least.
template <class T>
inline constexpr std::size_t kFirstSize = sizeof(T);

/// Checks the size that a struct begins with: at least First, and not so large that it was never set.
void CheckStructSize(std::size_t Size, std::size_t First, std::string_view Name);

/// A struct for a result: checked before the work, written after it, with zeros where the caller knows more fields.
template <class T>
class TGrowing {
 public:
  TGrowing(T* Place, std::string_view Name) : FPlace(&Given(Place, Name)), FSize(Place->size) {
    CheckStructSize(FSize, kFirstSize<T>, Name);
  }
  void Write(T Value) {
    Value.size = FSize;
    std::memset(static_cast<void*>(FPlace), 0, FSize);
    std::memcpy(static_cast<void*>(FPlace), &Value, std::min(FSize, sizeof(T)));
  }

 private:
  T* FPlace;
  std::size_t FSize;
};

/// \return a struct that is an argument, with 0 in fields that the caller does not know. Fields that are set and not
///         known here are refused.
template <class T>
T TakeGrowing(const T* Place, std::string_view Name) {
  const std::size_t size = Given(Place, Name).size;
  CheckStructSize(size, kFirstSize<T>, Name);
  const auto* const bytes = reinterpret_cast<const unsigned char*>(Place);
  for (std::size_t i = sizeof(T); i < size; ++i) {
    if (bytes[i] != 0) RefuseArgument(Name, "has fields set that this version of the library does not know");
  }
  T taken{};
  std::memcpy(&taken, bytes, std::min(size, sizeof(T)));
  return taken;
}

// ---------------------------------------------------------------------------------------------- structs as they are
// inside

/// Which type of the library has the layout of a struct; each pair is declared beside its calls.
template <class T>
struct TTwin;

template <class T>
using TTwinOf = typename TTwin<std::remove_const_t<T>>::Type;

/// \return the value of a struct as the library's type, or the other way round.
template <class T>
TTwinOf<T> Twin(const T& Value) {
  return std::bit_cast<TTwinOf<T>>(Value);
}

/// \return an array of a struct seen as one of the library's type. The array comes from outside, where only its layout
///         is agreed.
template <class T>
auto Twins(std::span<T> Values) {
  using TItem = std::conditional_t<std::is_const_v<T>, const TTwinOf<T>, TTwinOf<T>>;
  static_assert(sizeof(TItem) == sizeof(T));
  static_assert(alignof(TItem) == alignof(T));
  static_assert(std::is_standard_layout_v<TItem> && std::is_trivially_copyable_v<TItem>);
  return std::span<TItem>(reinterpret_cast<TItem*>(Values.data()), Values.size());
}

// ---------------------------------------------------------------------------------------------- objects

/// Makes an object; a failure leaves a null pointer.
template <class THandle, class... TArgs>
void CreateHandle(THandle** Place, std::string_view Name, TArgs&&... Args) {
  Given(Place, Name) = nullptr;
  *Place = new THandle{std::forward<TArgs>(Args)...};
}

}  // namespace ZORBase::capi

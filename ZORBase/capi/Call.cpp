#include <ZORBase/capi/Call.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <algorithm>
#include <array>
#include <climits>
#include <exception>
#include <new>
#include <stdexcept>

namespace ZORBase::capi {
namespace {

// A place of fixed size in every thread: a failure for want of memory has its text too, and nothing is left to free,
// which would keep the library loaded until the thread ends.
constexpr std::size_t kTextBytes = 2048;
constinit thread_local std::array<char, kTextBytes> ErrorText{};

// No struct of this interface will ever be this large: a size above is one that was not set.
constexpr std::size_t kLargestStruct = 4096;

struct TRefusal {
  zorbase_status Status;
  std::string Text;
};

bool IsInsideCharacter(char Byte) { return (static_cast<unsigned char>(Byte) & 0xC0U) == 0x80U; }

// Appends a text to the one of this thread; cuts it, not inside a character, where it is too long.
void AppendError(std::string_view Text) noexcept {
  constexpr std::string_view kEllipsis = "...";
  const std::size_t used = std::strlen(ErrorText.data());
  const std::size_t room = kTextBytes - 1 - used;
  std::size_t taken = Text.size();
  if (taken > room) {
    taken = room - std::min(room, kEllipsis.size());
    while (taken > 0 && IsInsideCharacter(Text[taken])) --taken;
  }
  char* const end = std::copy_n(Text.data(), taken, ErrorText.data() + used);
  *end = '\0';
  if (taken < Text.size()) *std::copy_n(kEllipsis.data(), std::min(room, kEllipsis.size()), end) = '\0';
}

zorbase_status Leave(zorbase_status Status, std::string_view Before, std::string_view Text) noexcept {
  ForgetError();
  AppendError(Before);
  if (!Before.empty()) AppendError(": ");
  AppendError(Text);
  return Status;
}

}  // namespace

void Refuse(zorbase_status Status, const std::string& Text) { throw TRefusal{Status, Text}; }

void RefuseArgument(std::string_view Name, std::string_view Complaint) {
  Refuse(ZORBASE_BAD_ARGUMENT, std::string(Name) + " " + std::string(Complaint));
}

zorbase_status StatusOfCaught(const char* Function) noexcept {
  try {
    throw;
  } catch (const TRefusal& Refusal) {
    return Leave(Refusal.Status, Function, Refusal.Text);
  } catch (const TGeneralError& Error) {
    return Leave(ZORBASE_ERROR, {}, Error.what());
  } catch (const std::bad_alloc&) {
    return Leave(ZORBASE_NO_MEMORY, Function, "not enough memory");
  } catch (const std::length_error&) {
    return Leave(ZORBASE_NO_MEMORY, Function, "more than memory can hold");
  } catch (const std::exception& Error) {
    return Leave(ZORBASE_UNEXPECTED, Function, Error.what());
  } catch (...) {
    return Leave(ZORBASE_UNEXPECTED, Function, "an error of an unknown kind");
  }
}

void ForgetError() noexcept { ErrorText[0] = '\0'; }

const char* CurrentError() noexcept { return ErrorText.data(); }

int CheckedCount(std::size_t Count, std::string_view Name) {
  if (Count > static_cast<std::size_t>(INT_MAX)) {
    RefuseArgument(Name, "has " + std::to_string(Count) + " items, more than 2147483647");
  }
  return static_cast<int>(Count);
}

bool HasRoom(const void* Place, std::size_t Capacity, std::size_t Needed, std::size_t* Count, std::size_t Actual,
             std::string_view Name) {
  if (!Place && Capacity > 0) RefuseArgument(Name, "is null");
  if (Count) *Count = Actual;
  if (!Place) return false;
  if (Capacity < Needed) {
    RefuseArgument(Name, "has " + std::to_string(Capacity) + " places; " + std::to_string(Needed) + " are needed");
  }
  return true;
}

void GiveText(std::string_view Value, char* Place, std::size_t Capacity, std::size_t* Count) {
  if (!HasRoom(Place, Capacity, Value.size() + 1, Count, Value.size(), "text")) return;
  *std::copy(Value.begin(), Value.end(), Place) = '\0';
}

void CheckStructSize(std::size_t Size, std::size_t First, std::string_view Name) {
  if (Size >= First && Size <= kLargestStruct) return;
  RefuseArgument(Name,
                 "has the size " + std::to_string(Size) + "; set it to sizeof, here at least " + std::to_string(First));
}

}  // namespace ZORBase::capi

#pragma once

#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace ZORBase {

/// An ordered, growable list that holds its items by value. Indices run from 0 and are checked. It is a contiguous
/// range, so that it works with range-for, the standard algorithms and std::span.
template <class T>
class TList {
 public:
  using value_type = T;  ///< of an item

  TList() = default;
  /// The list of these items.
  TList(std::initializer_list<T> Values) : FItems(Values) {}
  /// A copy of the items of a range.
  explicit TList(std::span<const T> Values) : FItems(Values.begin(), Values.end()) {}

  int Count() const { return static_cast<int>(FItems.size()); }  ///< the number of items

  /// \throws the general error "List index out of bounds (N)" for an index outside 0..Count-1; so do First and Last of
  /// an empty list, with N = 0 and N = -1.
  T& operator[](int Index) { return FItems[CheckedIndex(Index)]; }
  /// As the other form, to be read only.
  const T& operator[](int Index) const { return FItems[CheckedIndex(Index)]; }
  T& First() { return (*this)[0]; }                       ///< the item 0
  const T& First() const { return (*this)[0]; }           ///< the item 0
  T& Last() { return (*this)[Count() - 1]; }              ///< the item Count-1
  const T& Last() const { return (*this)[Count() - 1]; }  ///< the item Count-1

  void Add(const T& Value) { FItems.push_back(Value); }  ///< appends an item
  /// Appends all Values, which are no items of this list.
  void AddRange(std::span<const T> Values) { FItems.insert(FItems.end(), Values.begin(), Values.end()); }

  /// Inserts Value before the item Index; Index = Count appends.
  /// \throws the general error "List index out of bounds (N)" for an index outside 0..Count.
  void Insert(int Index, const T& Value) {
    const std::size_t place = Index == Count() ? FItems.size() : CheckedIndex(Index);
    FItems.insert(FItems.begin() + static_cast<std::ptrdiff_t>(place), Value);
  }

  /// Removes the item Index. \throws the general error "List index out of bounds (N)".
  void Delete(int Index) { FItems.erase(FItems.begin() + static_cast<std::ptrdiff_t>(CheckedIndex(Index))); }

  void Clear() { FItems.clear(); }  ///< removes all items

  /// Makes room for Count items in all without adding any.
  void Reserve(std::size_t Count) { FItems.reserve(Count); }
  std::size_t Capacity() const { return FItems.capacity(); }  ///< the number of items there is room for in all

  /// Sorts with a comparer that returns a negative, zero or positive int. Equal items keep their order. A comparer that
  /// contradicts itself gives some order, and one that throws leaves the list as it was.
  template <class TCompare>
  void Sort(TCompare&& Compare) {
    // A merge sort from std::merge: std::sort may leave its range when the comparer is not an order.
    const auto less = [&Compare](const T& A, const T& B) { return Compare(A, B) < 0; };
    std::vector<T> from = FItems;
    std::vector<T> to = FItems;
    const auto at = [](std::vector<T>& Items, std::size_t Index) {
      return Items.begin() + static_cast<std::ptrdiff_t>(std::min(Index, Items.size()));
    };
    for (std::size_t width = 1; width < from.size(); width *= 2) {
      for (std::size_t i = 0; i < from.size(); i += 2 * width) {
        std::merge(at(from, i), at(from, i + width), at(from, i + width), at(from, i + 2 * width), at(to, i), less);
      }
      from.swap(to);
    }
    FItems.swap(from);
  }

  // The items as a contiguous range, for algorithms and spans; not checked.
  T* data() { return FItems.data(); }                 ///< the first item, in front of the others
  const T* data() const { return FItems.data(); }     ///< the same, to be read only
  std::size_t size() const { return FItems.size(); }  ///< the number of items
  auto begin() { return FItems.begin(); }             ///< the first item
  auto begin() const { return FItems.begin(); }       ///< the same, to be read only
  auto end() { return FItems.end(); }                 ///< behind the last item
  auto end() const { return FItems.end(); }           ///< the same, to be read only

 private:
  std::size_t CheckedIndex(int Index) const {
    if (Index < 0 || static_cast<std::size_t>(Index) >= FItems.size()) {
      RaiseGeneralError("List index out of bounds (" + std::to_string(Index) + ")");
    }
    return static_cast<std::size_t>(Index);
  }

  std::vector<T> FItems;
};

using TDoubleList = TList<double>;

}  // namespace ZORBase

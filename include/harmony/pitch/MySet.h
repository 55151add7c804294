#pragma once
// CMySet: the ordered set without duplicates that chords, interval sets and key sets are
// built on. It is a sorted flat array that keeps its first N elements in place and moves to
// the heap only beyond them, so a chord's handful of intervals never allocates. The
// interface follows std::set: iterators are const and run in ascending order, and insert
// tells whether the value was new.

#include <algorithm>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <type_traits>
#include <utility>

namespace harmony {

template <class T, class Compare = std::less<T>, std::size_t N = 16>
class CMySet {
  static_assert(std::is_trivially_copyable_v<T> && std::is_default_constructible_v<T>,
                "CMySet keeps plain values: elements are moved by copying their bytes");
  static_assert(N > 0, "CMySet needs room for at least one element in place");

 public:
  using key_type = T;
  using value_type = T;
  using size_type = std::size_t;
  using difference_type = std::ptrdiff_t;
  using key_compare = Compare;
  using value_compare = Compare;
  using reference = const T&;
  using const_reference = const T&;
  using const_iterator = const T*;
  using iterator = const_iterator;
  using const_reverse_iterator = std::reverse_iterator<const_iterator>;
  using reverse_iterator = const_reverse_iterator;

  CMySet() = default;
  CMySet(std::initializer_list<T> values) { insert(values.begin(), values.end()); }
  template <class InputIt>
  CMySet(InputIt first, InputIt last) {
    insert(first, last);
  }

  CMySet(const CMySet& other) { _CopyFrom(other); }
  CMySet(CMySet&& other) noexcept { _StealFrom(other); }
  CMySet& operator=(const CMySet& other) {
    if (this != &other) {
      _size = 0;
      _CopyFrom(other);
    }
    return *this;
  }
  CMySet& operator=(CMySet&& other) noexcept {
    if (this != &other) {
      _Release();
      _StealFrom(other);
    }
    return *this;
  }
  CMySet& operator=(std::initializer_list<T> values) {
    clear();
    insert(values.begin(), values.end());
    return *this;
  }
  ~CMySet() { _Release(); }

  const_iterator begin() const { return _Data(); }
  const_iterator end() const { return _Data() + _size; }
  const_iterator cbegin() const { return begin(); }
  const_iterator cend() const { return end(); }
  const_reverse_iterator rbegin() const { return const_reverse_iterator(end()); }
  const_reverse_iterator rend() const { return const_reverse_iterator(begin()); }

  size_type size() const { return _size; }
  bool empty() const { return _size == 0; }
  // Elements that fit without a heap block; beyond them the set allocates.
  static constexpr size_type inline_capacity() { return N; }
  size_type capacity() const { return _capacity; }
  // The elements live in place (no heap block is held).
  bool is_inline() const { return _heap == nullptr; }

  // Keeps the heap block, if any, for reuse.
  void clear() { _size = 0; }

  std::pair<iterator, bool> insert(const T& value) {
    // Sets are mostly filled in order: a value above the last one goes behind it at once.
    if (_size != 0 && Compare{}(_Data()[_size - 1], value)) {
      if (_size == _capacity) _Grow();
      T* data = _Data();
      data[_size] = value;
      return {data + _size++, true};
    }
    const T* pos = lower_bound(value);
    if (pos != end() && !Compare{}(value, *pos)) return {pos, false};
    const size_type ix = static_cast<size_type>(pos - begin());
    if (_size == _capacity) _Grow();
    T* data = _Data();
    std::copy_backward(data + ix, data + _size, data + _size + 1);
    data[ix] = value;
    ++_size;
    return {data + ix, true};
  }
  // For std::inserter; the hint is not needed by a flat set.
  iterator insert(const_iterator /*hint*/, const T& value) { return insert(value).first; }
  template <class InputIt>
  void insert(InputIt first, InputIt last) {
    for (; first != last; ++first) insert(*first);
  }
  void insert(std::initializer_list<T> values) { insert(values.begin(), values.end()); }

  // Returns the position of the element that followed the erased one.
  iterator erase(const_iterator pos) {
    const size_type ix = static_cast<size_type>(pos - begin());
    T* data = _Data();
    std::copy(data + ix + 1, data + _size, data + ix);
    --_size;
    return data + ix;
  }
  size_type erase(const T& value) {
    const const_iterator pos = find(value);
    if (pos == end()) return 0;
    erase(pos);
    return 1;
  }

  const_iterator lower_bound(const T& value) const {
    return std::lower_bound(begin(), end(), value, Compare{});
  }
  const_iterator upper_bound(const T& value) const {
    return std::upper_bound(begin(), end(), value, Compare{});
  }
  const_iterator find(const T& value) const {
    const const_iterator pos = lower_bound(value);
    return (pos != end() && !Compare{}(value, *pos)) ? pos : end();
  }
  size_type count(const T& value) const { return find(value) != end() ? 1 : 0; }
  bool contains(const T& value) const { return find(value) != end(); }

  friend bool operator==(const CMySet& a, const CMySet& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), _Equivalent);
  }
  // Lexicographic, as for std::set.
  friend std::weak_ordering operator<=>(const CMySet& a, const CMySet& b) {
    return std::lexicographical_compare_three_way(a.begin(), a.end(), b.begin(), b.end(),
                                                  _ThreeWay);
  }

 private:
  static bool _Equivalent(const T& a, const T& b) { return !Compare{}(a, b) && !Compare{}(b, a); }
  static std::weak_ordering _ThreeWay(const T& a, const T& b) {
    if (Compare{}(a, b)) return std::weak_ordering::less;
    if (Compare{}(b, a)) return std::weak_ordering::greater;
    return std::weak_ordering::equivalent;
  }

  T* _Data() { return _heap != nullptr ? _heap : _inline; }
  const T* _Data() const { return _heap != nullptr ? _heap : _inline; }

  void _Grow() {
    const size_type newCapacity = _capacity * 2;
    T* block = new T[newCapacity];
    std::copy(_Data(), _Data() + _size, block);
    delete[] _heap;
    _heap = block;
    _capacity = static_cast<std::uint32_t>(newCapacity);
  }
  void _Release() {
    delete[] _heap;
    _heap = nullptr;
    _capacity = N;
    _size = 0;
  }
  // Expects this set to be empty; reuses its storage when it is large enough.
  void _CopyFrom(const CMySet& other) {
    if (other._size > _capacity) {
      delete[] _heap;
      _heap = new T[other._capacity];
      _capacity = other._capacity;
    }
    std::copy(other.begin(), other.end(), _Data());
    _size = other._size;
  }
  // Expects this set to hold no heap block.
  void _StealFrom(CMySet& other) {
    if (other._heap != nullptr) {
      _heap = other._heap;
      _capacity = other._capacity;
      other._heap = nullptr;
      other._capacity = N;
    } else {
      std::copy(other.begin(), other.end(), _inline);
    }
    _size = other._size;
    other._size = 0;
  }

  T* _heap = nullptr;
  std::uint32_t _size = 0;
  std::uint32_t _capacity = N;
  T _inline [N] {};
};

}  // namespace harmony

#pragma once

#include <cstddef>
#include <stdexcept>
#include <utility>
#include <vector>

namespace veltora::base {

/// The system's growable array: elements by value in one block; an index outside raises
/// `std::invalid_argument`. It grows by its step, or by max(4, min(size/8, 1024)) without one; never by less
/// than half its size, so that appending stays linear.
template <class T>
class CArray {
public:
  CArray() = default;
  explicit CArray(std::size_t step) : m_step(step) {}

  [[nodiscard]] std::size_t size() const { return m_items.size(); }
  [[nodiscard]] bool empty() const { return m_items.empty(); }
  /// Number of elements as the system counts: a signed 32-bit integer.
  [[nodiscard]] int GetSize() const { return static_cast<int>(m_items.size()); }

  T& operator[](std::size_t index) { return m_items[checked(index)]; }
  const T& operator[](std::size_t index) const { return m_items[checked(index)]; }
  T& GetAt(int index) { return m_items[checked(index)]; }
  const T& GetAt(int index) const { return m_items[checked(index)]; }

  void Add(T value) {
    makeRoom();
    m_items.push_back(std::move(value));
  }
  void RemoveAt(int index) { m_items.erase(m_items.begin() + static_cast<std::ptrdiff_t>(checked(index))); }
  void RemoveAll() { m_items.clear(); }
  /// New slots are value-initialised.
  void SetSize(std::size_t size) { m_items.resize(size); }
  void reserve(std::size_t capacity) { m_items.reserve(capacity); }
  void setPas(std::size_t step) { m_step = step; }
  [[nodiscard]] std::size_t pas() const { return m_step; }

  auto begin() { return m_items.begin(); }
  auto end() { return m_items.end(); }
  auto begin() const { return m_items.begin(); }
  auto end() const { return m_items.end(); }
  T* data() { return m_items.data(); }
  const T* data() const { return m_items.data(); }

private:
  template <class Index>
  [[nodiscard]] std::size_t checked(Index index) const {
    if (static_cast<std::size_t>(index) >= m_items.size())
      throw std::invalid_argument("indice hors du tableau");
    return static_cast<std::size_t>(index);
  }

  void makeRoom() {
    const std::size_t n = m_items.size();
    if (n < m_items.capacity()) return;
    std::size_t step = m_step;
    if (step == 0) step = n / 8 < 4 ? 4 : (n / 8 > 1024 ? 1024 : n / 8);
    m_items.reserve(n + (step > n / 2 ? step : n / 2));
  }

  std::vector<T> m_items;
  std::size_t m_step = 0;
};

}  // namespace veltora::base

#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>

namespace veltora {

/// A name as a word of a field book holds it, in Windows-1252: 16 characters at most, what stands behind is
/// cut. It needs no memory of its own.
class nomGSI {
public:
  static constexpr std::size_t kLongueur = 16;
  nomGSI() = default;
  nomGSI(std::string_view texte) {
    std::copy_n(texte.data(), std::min(texte.size(), kLongueur), m_lettres.data());
  }
  nomGSI(const char* texte) : nomGSI(std::string_view(texte)) {}
  nomGSI(const std::string& texte) : nomGSI(std::string_view(texte)) {}
  [[nodiscard]] std::string_view texte() const { return m_lettres.data(); }
  friend bool operator==(const nomGSI& a, const nomGSI& b) {
    return std::memcmp(a.m_lettres.data(), b.m_lettres.data(), kLongueur) == 0;
  }
  friend bool operator<(const nomGSI& a, const nomGSI& b) {
    return std::memcmp(a.m_lettres.data(), b.m_lettres.data(), kLongueur) < 0;
  }

private:
  std::array<char, kLongueur + 1> m_lettres{};
};

}  // namespace veltora

template <>
struct std::hash<veltora::nomGSI> {
  std::size_t operator()(const veltora::nomGSI& nom) const noexcept {
    return std::hash<std::string_view>()(nom.texte());
  }
};

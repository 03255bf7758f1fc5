#pragma once

#include "base/export.h"

#include <string>
#include <string_view>

namespace veltora {

/// A text stream of lines, as the record's text form needs it.
class VELTORA_API fluxTexte {
public:
  virtual ~fluxTexte() = default;
  /// The next line without its line end. @return false, `ligne` unchanged, at the end of the stream
  virtual bool ReadString(std::wstring& ligne) = 0;
  /// Appends the text as it is; line ends are part of it.
  virtual void WriteString(std::wstring_view texte) = 0;
};

/// A stream on a text in memory: what is written goes to its end.
class VELTORA_API fluxTexteMemoire : public fluxTexte {
public:
  explicit fluxTexteMemoire(std::wstring texte = {}) : m_texte(std::move(texte)) {}
  bool ReadString(std::wstring& ligne) override;
  void WriteString(std::wstring_view texte) override { m_texte += texte; }
  [[nodiscard]] const std::wstring& texte() const { return m_texte; }

private:
  std::wstring m_texte;
  std::size_t m_position = 0;
};

}  // namespace veltora

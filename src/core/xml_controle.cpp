#include "core/xml_controle.h"

#include <vector>

namespace veltora {
namespace {

bool estBlanc(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

bool commenceUnNom(char c) {
  const auto octet = static_cast<unsigned char>(c);
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' || octet >= 0x80;
}

bool continueUnNom(char c) { return commenceUnNom(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; }

class Lecteur {
public:
  Lecteur(std::string_view xml, std::size_t profondeurMax) : m_reste(xml), m_profondeurMax(profondeurMax) {}

  bool document() {
    while (!m_reste.empty()) {
      if (m_reste.front() != '<') {
        // Text stands in the element only.
        if (m_ouverts.empty() && !estBlanc(m_reste.front())) return false;
        m_reste.remove_prefix(1);
      } else if (!balisage()) {
        return false;
      }
    }
    return m_racine && m_ouverts.empty();
  }

private:
  bool balisage() {
    if (m_reste.starts_with("<!--")) return passer(4, "-->");
    if (m_reste.starts_with("<![CDATA[")) return !m_ouverts.empty() && passer(9, "]]>");
    if (m_reste.starts_with("<?")) return passerSansChevron("?>");
    if (m_reste.starts_with("<!")) return passerSansChevron(">");
    return m_reste.starts_with("</") ? baliseFermante() : baliseOuvrante();
  }

  bool passer(std::size_t debut, std::string_view fin) {
    const std::size_t trouve = m_reste.find(fin, debut);
    if (trouve == std::string_view::npos) return false;
    m_reste.remove_prefix(trouve + fin.size());
    return true;
  }

  /// An instruction or a declaration; one with brackets in it is refused, since the library would end it
  /// there.
  bool passerSansChevron(std::string_view fin) {
    const std::size_t chevron = m_reste.find_first_of("<>", 1);
    if (chevron == std::string_view::npos || chevron + 1 < fin.size()) return false;
    if (m_reste.substr(chevron + 1 - fin.size(), fin.size()) != fin) return false;
    m_reste.remove_prefix(chevron + 1);
    return true;
  }

  std::string_view nom() {
    std::size_t n = 0;
    if (!m_reste.empty() && commenceUnNom(m_reste.front())) {
      while (n < m_reste.size() && continueUnNom(m_reste[n])) ++n;
    }
    const std::string_view lu = m_reste.substr(0, n);
    m_reste.remove_prefix(n);
    return lu;
  }

  bool passerBlancs() {
    std::size_t n = 0;
    while (n < m_reste.size() && estBlanc(m_reste[n])) ++n;
    m_reste.remove_prefix(n);
    return n > 0;
  }

  bool prendre(std::string_view attendu) {
    if (!m_reste.starts_with(attendu)) return false;
    m_reste.remove_prefix(attendu.size());
    return true;
  }

  bool baliseFermante() {
    m_reste.remove_prefix(2);
    if (m_ouverts.empty() || nom() != m_ouverts.back()) return false;
    m_ouverts.pop_back();
    passerBlancs();
    return prendre(">");
  }

  bool baliseOuvrante() {
    m_reste.remove_prefix(1);
    const std::string_view element = nom();
    if (element.empty() || (m_ouverts.empty() && m_racine)) return false;
    if (m_ouverts.size() == m_profondeurMax) return false;
    m_racine = true;
    for (;;) {
      const bool separe = passerBlancs();
      if (prendre("/>")) return true;
      if (prendre(">")) break;
      if (!separe || !attribut()) return false;
    }
    m_ouverts.push_back(element);
    return true;
  }

  bool attribut() {
    if (nom().empty()) return false;
    passerBlancs();
    if (!prendre("=")) return false;
    passerBlancs();
    if (m_reste.empty() || (m_reste.front() != '"' && m_reste.front() != '\'')) return false;
    const std::size_t fin = m_reste.find(m_reste.front(), 1);
    if (fin == std::string_view::npos || m_reste.substr(0, fin).find('<') != std::string_view::npos)
      return false;
    m_reste.remove_prefix(fin + 1);
    return true;
  }

  std::string_view m_reste;
  std::size_t m_profondeurMax;
  std::vector<std::string_view> m_ouverts;
  bool m_racine = false;
};

}  // namespace

bool estBienForme(std::string_view xml, std::size_t profondeurMax) {
  // The library takes a zero byte for the end.
  if (xml.find('\0') != std::string_view::npos) return false;
  return Lecteur(xml, profondeurMax).document();
}

}  // namespace veltora

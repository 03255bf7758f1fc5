#include "core/xml_controle.h"

#include "base/text.h"

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

  /// Bytes from the start to the end of the last whole thing outside of all elements.
  std::size_t longueurLisible() {
    const std::size_t taille = m_reste.size();
    std::size_t lisible = 0;
    while (!m_reste.empty()) {
      if (m_reste.front() == '<') {
        if (!balisage()) break;
        if (m_ouverts.empty() && m_racine) lisible = taille - m_reste.size();
      } else {
        // Text stands in elements only.
        if (m_ouverts.empty() && !estBlanc(m_reste.front())) break;
        m_reste.remove_prefix(1);
      }
    }
    return lisible;
  }

private:
  bool balisage() {
    if (m_reste.starts_with("<!--")) return passer(4, "-->");
    if (m_reste.starts_with("<![CDATA[")) return !m_ouverts.empty() && passer(9, "]]>");
    if (m_reste.size() > 5 && base::compareNoCaseAnsi(m_reste.substr(0, 5), "<?xml") == 0)
      return declaration();
    // Other instructions end at the first bracket, as the library has it.
    if (m_reste.starts_with("<?") || m_reste.starts_with("<!")) return passer(2, ">");
    return m_reste.starts_with("</") ? baliseFermante() : baliseOuvrante();
  }

  bool passer(std::size_t debut, std::string_view fin) {
    const std::size_t trouve = m_reste.find(fin, debut);
    if (trouve == std::string_view::npos) return false;
    m_reste.remove_prefix(trouve + fin.size());
    return true;
  }

  /// Its known attributes in quotes and nothing else: on anything else the library goes by words, past
  /// brackets.
  bool declaration() {
    m_reste.remove_prefix(5);
    for (;;) {
      passerBlancs();
      if (prendre("?>") || prendre(">")) return true;
      const std::string_view quoi = nom();
      if (quoi != "version" && quoi != "encoding" && quoi != "standalone") return false;
      if (!valeur() || m_nue) return false;
    }
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
    if (element.empty() || m_ouverts.size() == m_profondeurMax) return false;
    m_racine = true;
    for (;;) {
      passerBlancs();
      if (prendre("/>")) return true;
      if (prendre(">")) break;
      if (!attribut()) return false;
    }
    m_ouverts.push_back(element);
    return true;
  }

  bool attribut() { return !nom().empty() && valeur(); }

  /// "=" and what it gives.
  bool valeur() {
    passerBlancs();
    if (!prendre("=")) return false;
    passerBlancs();
    if (m_reste.empty()) return false;
    const char guillemet = m_reste.front();
    m_nue = guillemet != '"' && guillemet != '\'';
    if (m_nue) return valeurNue();
    const std::size_t fin = m_reste.find(guillemet, 1);
    if (fin == std::string_view::npos) return false;
    m_reste.remove_prefix(fin + 1);
    return true;
  }

  /// A value without quotes ends at a blank or at the end of its tag.
  bool valeurNue() {
    const std::size_t fin = m_reste.find_first_of(" \t\n\r/>\"'");
    if (fin == std::string_view::npos || m_reste[fin] == '"' || m_reste[fin] == '\'') return false;
    m_reste.remove_prefix(fin);
    return true;
  }

  std::string_view m_reste;
  std::size_t m_profondeurMax;
  std::vector<std::string_view> m_ouverts;
  bool m_racine = false;
  bool m_nue = false;  ///< the latest value had no quotes
};

}  // namespace

std::string_view partieLisible(std::string_view xml, std::size_t profondeurMax) {
  // The library takes a zero byte for the end.
  xml = xml.substr(0, xml.find('\0'));
  return xml.substr(0, Lecteur(xml, profondeurMax).longueurLisible());
}

}  // namespace veltora

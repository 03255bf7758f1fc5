#include "codes/flux_texte.h"

namespace veltora {

bool fluxTexteMemoire::ReadString(std::wstring& ligne) {
  if (m_position >= m_texte.size()) return false;
  std::size_t fin = m_texte.find(L'\n', m_position);
  if (fin == std::wstring::npos) fin = m_texte.size();
  ligne = m_texte.substr(m_position, fin - m_position);
  if (!ligne.empty() && ligne.back() == L'\r') ligne.pop_back();
  m_position = fin + 1;
  return true;
}

}  // namespace veltora

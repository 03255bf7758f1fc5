#include "codes/commandes_codes.h"

#include "base/format.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "core/code_range.h"

#include <utility>

namespace veltora {
namespace {

/// Builds a chain item by item; released when it is not taken.
class Chaine : private Uncopyable {
public:
  ~Chaine() { acutRelRb(m_tete); }
  void ajouter(resbuf* item) {
    *m_fin = item;
    if (item) m_fin = &item->rbnext;
  }
  resbuf* prendre() { return std::exchange(m_tete, nullptr); }

private:
  resbuf* m_tete = nullptr;
  resbuf** m_fin = &m_tete;
};

bool lireCode(const resbuf& argument, int& code) {
  if (argument.restype != RTSHORT && argument.restype != RTLONG) return false;
  code = argument.restype == RTSHORT ? argument.resval.rint : argument.resval.rlong;
  return true;
}

}  // namespace

resbuf* loadcodept() {
  tableCodification& table = getTableCodification();
  table.trierParCode();
  Chaine chaine;
  for (const codifPoint& ligne : table.codes) {
    chaine.ajouter(acutBuildList(RTLB));
    chaine.ajouter(acutBuildList(RTLONG, ligne.code));
    chaine.ajouter(acutBuildList(RTDOTE));
    chaine.ajouter(acutBuildList(RTSTR, ligne.libelle));
    chaine.ajouter(acutBuildList(RTLE));
  }
  return chaine.prendre();
}

resbuf* addcodept(const resbuf* arguments) {
  int code = 0;
  if (!arguments || !arguments->rbnext || !lireCode(*arguments, code)) return nullptr;
  const resbuf& texte = *arguments->rbnext;
  if (texte.restype != RTSTR) return nullptr;
  code = codeOuDefaut(code);
  std::wstring libelle = base::trim(texte.resval.rstring ? texte.resval.rstring : L"");
  if (libelle.empty()) libelle = base::formater(std::wstring(L"Code %d"), code);
  tableCodification& table = getTableCodification();
  if (table.chercherCode(code) < 0) {
    codifPoint ligne;
    ligne.code = code;
    ligne.libelle = libelle;
    table.codes.Add(std::move(ligne));
  }
  return acutNewRb(RTT);
}

resbuf* resetcodespts() {
  getTableCodification().viderTable();
  return nullptr;
}

void vcodification() {
  getTableCodification().afficherTable();
  getTableCodification().sauverXML();
}

}  // namespace veltora

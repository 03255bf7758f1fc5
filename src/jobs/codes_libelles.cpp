#include "jobs/codes_libelles.h"

#include "base/format.h"
#include "base/text.h"
#include "codes/table_codification.h"

#include <map>

namespace veltora {
namespace {

/// The smallest code that neither the table nor the others have; 0 when all are taken.
int codeLibre(const tableCodification& codes, const std::set<int>& pris, int depuis) {
  for (int code = depuis; code <= kLargestCode; ++code)
    if (codes.chercherCode(code) < 0 && !pris.contains(code)) return code;
  return 0;
}

}  // namespace

std::vector<int> codesDesLibelles(const std::vector<std::wstring>& libelles, const std::set<int>& pris,
                                  base::Remarques& remarques) {
  tableCodification& codes = getTableCodification();
  std::map<std::wstring, int> connus;
  for (const codifPoint& ligne : codes.codes) connus.emplace(base::toLower(ligne.libelle), ligne.code);
  std::vector<int> trouves;
  std::vector<std::wstring> nouveaux;
  int libre = kSmallestCode;
  for (const std::wstring& libelle : libelles) {
    const auto connu = connus.find(base::toLower(libelle));
    if (connu != connus.end()) {
      trouves.push_back(connu->second);
      continue;
    }
    libre = libre > 0 ? codeLibre(codes, pris, libre) : 0;
    if (libre > 0) {
      codes.getOuCreerCode(libre).libelle = libelle;
      nouveaux.push_back(std::to_wstring(libre) + L" « " + libelle + L" »");
    } else {
      remarques.ajouter(L"plus de code libre pour « " + libelle + L" », qui reçoit le code 1");
    }
    trouves.push_back(libre > 0 ? libre : kSmallestCode);
    connus.emplace(base::toLower(libelle), trouves.back());
  }
  if (nouveaux.empty()) return trouves;
  remarques.ajouter(L"codes créés : " + base::enumerer(nouveaux));
  codes.sauverXML();
  return trouves;
}

}  // namespace veltora

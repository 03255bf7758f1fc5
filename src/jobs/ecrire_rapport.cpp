#include "jobs/ecrire_rapport.h"

#include "base/files.h"
#include "base/text.h"
#include "report/html_document.h"

namespace veltora {

bool ecrireRapport(htmlDocument& rapport, const std::filesystem::path& chemin, std::wstring& erreur) {
  if (chemin.empty()) return true;
  const bool word = base::toUpperAnsi(chemin.extension().string()) == ".DOC";
  rapport.setFichier(chemin.string(), word ? htmlDocument::word : htmlDocument::simple);
  std::string raison;
  if (rapport.ecrire(&raison)) return true;
  erreur = base::fromUtf8(raison);
  return false;
}

bool ecrireOctets(const std::string& octets, const std::filesystem::path& chemin, std::wstring& erreur) {
  std::string raison;
  if (chemin.empty() || base::remplacerFichier(chemin, octets, &raison)) return true;
  erreur = base::fromUtf8(raison);
  return false;
}

}  // namespace veltora

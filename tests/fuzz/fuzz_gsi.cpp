// Reads any bytes as a field book: decodes, enters, dumps and checks every line.
#include "fuzz/fuzz.h"

#include "base/text.h"
#include "field/carnet_gsi.h"
#include "field/controle_gsi.h"
#include "field/regles_gsi.h"
#include "field/textes_gsi.h"

using namespace veltora;

namespace {

/// One rule of each kind, so that code blocks make stations.
void setRules(std::string_view bytes) {
  reglesCodesGSI& rules = getReglesCodesGSI();
  rules = {};
  if (bytes.size() % 2 == 0) return;
  for (const std::uint32_t kind : {0U, 1U, 2U, 3U, 4U}) {
    regleCodeGSI rule;
    rule.genre = kind;
    rule.texte = "       a";
    rule.indexMot = 41 + kind;
    rules.regles.push_back(rule);
  }
}

void checkWords(std::string_view line, const ligneGSI& words) {
  const formeGSI form(line);
  require(form.debut + words.size() * form.mot <= line.size());
  for (const motGSI& word : words) {
    require(word.indexMot < 100 && word.infos[4] == '\0' && word.texte[form.donnees] == '\0');
    require((word.genre == motGSI::kNumerique) == estNumeriqueGSI(word.indexMot));
  }
}

}  // namespace

void fuzz(std::string_view bytes) {
  setRules(bytes);
  tableObsRayonnees& table = getTableObsRayonnees();
  table.viderTable();
  const carnetGSI book = lireCarnet(bytes);
  analyseGSI analysis;
  controleGSI check;
  std::string dump;
  for (std::size_t i = 0; i < book.nombreLignes(); ++i) {
    const std::string_view line = book.ligne(i);
    const bool clean = analysis.lire(line, dump, "\n") == 1;
    checkWords(line, analysis.mots());
    check.voir(static_cast<int>(i) + 1, line, analysis.mots(), clean);
    std::wstring info;
    require(texteInfoGSI(base::widen(line), info) == 1);
  }
  base::Remarques remarks;
  check.remarquer(remarks);
  for (const base::Remarque& remark : remarks) require(!remark.texte.empty());
  require(table.lectures.size() >= check.visees() && table.lectures.size() <= 2 * check.visees());
  require(table.pointsCanevas().size() == table.nomsCanevas().size());
  table.propagerCanevas();
}

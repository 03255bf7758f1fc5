#pragma once

#include "arx/ap/acdocman.h"
#include "arx/ed/accmd.h"
#include "arx/ed/acedads.h"
#include "arx/ed/edports.h"
#include "arx/lisp/host/aclisp.h"
#include "arx/rx/rxdlinkr.h"
#include "base/format.h"
#include "points/infos_topo.h"
#include "support/atelier.h"
#include "support/case_rows.h"
#include "ui/script_driver.h"

#include <deque>
#include <functional>
#include <map>
#include <string>

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId);

namespace veltora {

/// A chain as LISP would show it: texts in quotes, <Entity> and <Set> for names; "void" for no value.
inline std::string enTexte(const resbuf* chaine) {
  static const std::map<int, const char*> kMots = {{RTVOID, "void"},      {RTNIL, "nil"},    {RTT, "T"},
                                                   {RTLB, "("},           {RTLE, ")"},       {RTDOTE, "."},
                                                   {RTENAME, "<Entity>"}, {RTPICKS, "<Set>"}};
  std::string texte;
  for (; chaine; chaine = chaine->rbnext) {
    if (!texte.empty() && texte.back() != '(' && chaine->restype != RTLE) texte += " ";
    const auto& v = chaine->resval;
    if (const auto mot = kMots.find(chaine->restype); mot != kMots.end()) {
      texte += mot->second;
      continue;
    }
    switch (chaine->restype) {
      case RTSTR:
        texte += '"' + base::toUtf8(v.rstring) + '"';
        break;
      case RTSHORT:
        texte += std::to_string(v.rint);
        break;
      case RTLONG:
        texte += std::to_string(v.rlong);
        break;
      case RTREAL:
        texte += base::formater("%g", v.rreal);
        break;
      case RTPOINT:
      case RT3DPOINT:
        texte += base::formater("(%g %g %g)", v.rpoint[0], v.rpoint[1], v.rpoint[2]);
        break;
      default:
        texte += "?" + std::to_string(chaine->restype);
    }
  }
  return texte;
}

/// Several chains as one.
inline resbuf* suite(std::initializer_list<resbuf*> chaines) {
  resbuf* tete = nullptr;
  resbuf** lien = &tete;
  for (resbuf* chaine : chaines) {
    *lien = chaine;
    while (*lien) lien = &(*lien)->rbnext;
  }
  return tete;
}

/// The module, loaded as the host loads one, with a document and a project. Prompts and dialogs take the
/// lines in `reponses`.
class ModuleEssai : public ::testing::Test, public base::OutputSink, public base::LineSource {
protected:
  ModuleEssai() {
    installationEssai();
    getTableCodification().resetDefauts();
    acedPorts().sink = this;
    acedPorts().source = this;
    ui::setDriver(&pilote);
    acrxDynamicLinker->registerModule(L"veltora", acrxEntryPoint);
    acDocManager->appContextNewDocument();
    setSrcInfosTopo(nullptr, &projet, 1, 0);
    dessin = acDocManager->curDocument()->database();
    imprime.clear();
  }
  ~ModuleEssai() override {
    ui::setDriver(nullptr);
    setSrcInfosTopo(nullptr, nullptr, 0, 0);
    while (acDocManager->curDocument()) acDocManager->closeDocument(acDocManager->curDocument());
    acrxDynamicLinker->unloadModule(L"veltora");
    acedPorts() = {};
  }
  void print(const std::string& texte) override { imprime += texte; }
  std::optional<std::string> readLine(const base::Request& /*request*/) override {
    if (reponses.empty()) return std::nullopt;
    std::string ligne = reponses.front();
    reponses.pop_front();
    return ligne;
  }

  /// Calls a function of LISP; takes the arguments over.
  /// @return its value, "échec" when there is no such function
  std::string appeler(const wchar_t* nom, resbuf* arguments = nullptr) {
    const AcEdRbHolder donnes(arguments);
    resultat.reset(acedLispFunctions()->call(nom, arguments));
    return resultat ? enTexte(resultat.get()) : "échec";
  }
  /// A call as the case files write it: a name and its arguments in LISP.
  std::string appelerEcrit(const std::string& appel) {
    const std::size_t blanc = std::min(appel.find(' '), appel.size());
    // The text in front keeps two or three numbers from being a point.
    AcEdRbHolder liste(acedPorts().evaluate(base::fromUtf8("(list \"\"" + appel.substr(blanc) + ")")));
    resbuf* const texte = liste->rbnext;
    resbuf* fin = texte;
    while (fin->rbnext->rbnext) fin = fin->rbnext;
    acutRelRb(std::exchange(fin->rbnext, nullptr));
    return appeler(base::fromUtf8(appel.substr(0, blanc)).c_str(), std::exchange(texte->rbnext, nullptr));
  }
  /// Plays a table of tests/host/cases/lisp.txt.
  /// @param etat  what the last column tells; called after each row
  void jouer(const std::string& tableCas, const std::function<std::string()>& etat = {}) {
    aclispInstall();
    for (const CaseRow& cas : caseRows("host/cases/lisp.txt", tableCas)) {
      SCOPED_TRACE(cas.place + ": " + cas[0]);
      imprime.clear();
      reponses.clear();
      if (!cas[1].empty()) {
        const std::vector<std::string> lignes = cas.list(1);
        reponses.assign(lignes.begin(), lignes.end());
      }
      std::string valeur = appelerEcrit(cas[0]);
      std::erase(imprime, '\r');
      if (choisis() >= 0) valeur += " " + std::to_string(choisis());
      if (cas[1].empty() && !imprime.empty()) valeur.insert(0, imprime + " ");
      EXPECT_EQ(valeur, cas[2]);
      EXPECT_TRUE(reponses.empty());
      if (etat && cas.cells.size() > 3) {
        EXPECT_EQ(etat(), cas[3]);
      }
    }
  }
  /// Number of entities in the selection set returned last; -1 for another value.
  [[nodiscard]] int choisis() const {
    if (!resultat || resultat->restype != RTPICKS) return -1;
    return static_cast<int>(acedSSEntities(resultat->resval.rlname).size());
  }
  listePointsDuDessin& table() { return *projet.currTable(); }

  projetsTopo projet;
  ui::ScriptDriver pilote{*this, *this};
  AcDbDatabase* dessin = nullptr;
  std::string imprime;
  std::deque<std::string> reponses;
  AcEdRbHolder resultat;
};

}  // namespace veltora

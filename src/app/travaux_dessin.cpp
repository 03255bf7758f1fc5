// The jobs on what a drawing holds: points from its entities, LISP routines.

#include "app/programme.h"
#include "app/travaux.h"
#include "base/format.h"
#include "base/text.h"
#include "points/import_dessin.h"
#include "points/projets_topo.h"
#include "ui/driver.h"

#include <cstdio>

namespace veltora::app {
namespace {

void ecrire(const std::string& texte) { std::fwrite(texte.data(), 1, texte.size(), stdout); }

parametresImport parametresDe(const Demande& demande) {
  parametresImport parametres;
  if (demande.sources.empty()) parametres.masque = kToutesSources;
  for (const std::string& nom : demande.sources)
    for (const sourceImport& source : sourcesImport)
      if (base::toUtf8(source.nom) == nom) parametres.masque |= source.drapeau;
  const std::vector<std::string>& etiquettes = demande.etiquettes;
  if (etiquettes.size() < 2) return parametres;
  parametres.etiquetteNumero = base::fromUtf8(etiquettes[0]);
  parametres.etiquetteAltitude = base::fromUtf8(etiquettes[1]);
  if (etiquettes.size() > 2) parametres.etiquetteCode = base::fromUtf8(etiquettes[2]);
  return parametres;
}

/// The table of this name, made when the project has none; without a name the current one.
listePointsDuDessin& tableNommee(projetsTopo& projet, const std::wstring& nom) {
  if (nom.empty()) return *projet.currTable();
  for (listePointsDuDessin* table : projet.tablesListe)
    if (table->getNomTable() == nom) return *table;
  projet.creerTablePoints(nom.c_str());
  return *projet.tablesListe.GetAt(projet.tablesListe.GetSize() - 1);
}

void direComptes(const comptesImport& comptes, const listePointsDuDessin& table) {
  ecrire("\n");
  for (std::size_t i = 0; i < kNombreSources; ++i) {
    if (comptes[i] == 0) continue;
    ecrire(base::formater("%6d  %s\n", comptes[i], base::toUtf8(sourcesImport[i].intitule)));
  }
  ecrire(base::formater("Table %s : %d points\n", base::toUtf8(table.getNomTable()), table.nbPoint()));
}

/// A text as LISP writes it.
std::string enLisp(const std::string& texte) {
  std::string resultat = "\"";
  for (const char c : texte) {
    if (c == '"' || c == '\\') resultat += '\\';
    resultat += c;
  }
  return resultat + '"';
}

/// The lines given with the call, then those of the terminal, which answer what a routine asks.
class SourceLisp : public base::LineSource {
public:
  explicit SourceLisp(std::vector<std::string> lignes) : m_lignes("--commande", std::move(lignes)) {}
  std::optional<std::string> readLine(const std::string& invite) override {
    return resteDesLignes() ? m_lignes.readLine(invite) : m_terminal.readLine(invite);
  }
  [[nodiscard]] std::string position() const override {
    return m_lignes.position().empty() ? m_terminal.position() : m_lignes.position();
  }
  [[nodiscard]] bool interactive() const override { return !resteDesLignes() && m_terminal.interactive(); }
  [[nodiscard]] bool resteDesLignes() const { return !m_lignes.finished(); }

private:
  LinesSource m_lignes;
  TerminalSource m_terminal;
};

}  // namespace

int travailImporterDessin(const Demande& demande) {
  LinesSource aucune("", {});
  Programme programme(aucune);
  if (demande.dessin.empty()) {
    direErreur("il faut un dessin, ou une liste de points (--points)");
    return kMauvaisAppel;
  }
  if (!programme.charger() || !programme.ouvrir(demande.dessin) || !tablesPoints) return kEchec;
  listePointsDuDessin& table = tableNommee(*tablesPoints, base::fromUtf8(demande.table));
  const comptesImport comptes = importerToutLeDessin(table, parametresDe(demande));
  if (ui::driver()->arretDemande()) {
    direErreur("interrompu");
    return kEchec;
  }
  direComptes(comptes, table);
  if (demande.sortie.empty()) return kSucces;
  if (!programme.enregistrer(demande.sortie)) return kEchec;
  ecrire("Dessin : " + demande.sortie + "\n");
  return kSucces;
}

int travailLisp(const Demande& demande) {
  SourceLisp source(demande.commandes);
  Programme programme(source);
  if (!programme.charger() || !programme.ouvrir(demande.dessin)) return kEchec;
  ecrire("\n");
  bool bon = programme.executer("(load " + enLisp(demande.fichierLisp) + ")");
  while (bon && source.resteDesLignes()) bon = programme.executer(source.readLine({}).value_or(""));
  ecrire("\n");
  if (!bon) return kEchec;
  if (!demande.sortie.empty() && !programme.enregistrer(demande.sortie)) return kEchec;
  return kSucces;
}

}  // namespace veltora::app

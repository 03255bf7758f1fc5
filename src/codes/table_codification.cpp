#include "codes/table_codification.h"

#include "arx/db/dbmain.h"
#include "arx/ed/acutads.h"
#include "base/format.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/drawing_layers.h"
#include "core/installation.h"
#include "core/xml_champs.h"

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <vector>

namespace veltora {
namespace {

codifPoint ligneDefaut(int code, const std::wstring& libelle, std::wstring_view bloc) {
  codifPoint ligne;
  ligne.code = code;
  ligne.libelle = libelle;
  ligne.chemin = cheminInstallation(bloc);
  return ligne;
}

presentationCodes*& presentation() {
  static presentationCodes* enVigueur = nullptr;
  return enVigueur;
}

int signe(int a, int b) { return a < b ? -1 : (a > b ? 1 : 0); }

int comparer(const codifPoint& a, const codifPoint& b, int colonne) {
  switch (colonne) {
    case 0:
      return signe(a.code, b.code);
    case 1:
      return base::compareNoCase(a.libelle, b.libelle);
    case 2: {
      const int ordre = signe(a.precisionAltitudes, b.precisionAltitudes);
      return ordre != 0 ? ordre : signe(a.code, b.code);
    }
    case 3:
      return base::compareNoCase(a.chemin, b.chemin);
    default:
      return 0;
  }
}

}  // namespace

tableCodification::tableCodification(const std::wstring& fichier) {
  if (!fichier.empty()) {
    nomFichier = fichier;
    if (chargerXML()) return;
  }
  nomFichier = cheminInstallation(L"defcodif");
  // Without an installation directory this would be a file of the root folder, which is none of ours.
  const bool installee = !dossierInstallation().empty();
  if (installee && chargerXML()) return;
  // Deliberate (defcodif-premier-demarrage): a file that gives no rows, even one that is broken, gives way to
  // the default rows; it is kept beside.
  ajouterDefauts();
  if (installee && garderIllisible()) sauverXML();
}

bool tableCodification::garderIllisible() const {
  const std::filesystem::path chemin = cheminPlateforme(nomFichier);
  std::error_code erreur;
  if (!std::filesystem::is_regular_file(chemin, erreur) || std::filesystem::is_empty(chemin, erreur))
    return true;
  std::filesystem::path garde = chemin;
  garde += ".illisible";
  for (int i = 2; std::filesystem::exists(std::filesystem::symlink_status(garde, erreur)); ++i)
    garde = chemin.native() + ".illisible" + std::to_string(i);
  std::filesystem::rename(chemin, garde, erreur);
  if (erreur) {
    acutPrintf(
        L"\nLa table des codes %s est illisible ; elle reste telle quelle, les codes par défaut valent"
        L" pour cette séance.\n",
        base::texteDuChemin(chemin));
    return false;
  }
  acutPrintf(
      L"\nLa table des codes %s est illisible ; elle est gardée sous %s, et les codes par défaut la"
      L" remplacent.\n",
      base::texteDuChemin(chemin), base::texteDuChemin(garde.filename()));
  return true;
}

int tableCodification::chargerXML() {
  try {
    const std::wstring nom = base::trim(nomFichier, kBordsCode);
    TiXmlDocument document;
    if (nom.empty() || !chargerFichierXML(document, cheminPlateforme(nom))) return 0;
    return lireXML(document);
  } catch (...) {
    // The file is named by an argument that no caller gives.
    acutPrintf(L"\nechec lecture de donnees a partir de [%s] datasize=%d", L"(null)", codes.GetSize());
    viderTable();
    return 0;
  }
}

int tableCodification::lireXML(const TiXmlDocument& document) {
  const TiXmlElement* racine = document.FirstChildElement("codifPoints");
  const TiXmlElement* donnees = racine ? racine->FirstChildElement("TBdata") : nullptr;
  if (!donnees) return 0;
  codes.reserve(codes.size() + static_cast<std::size_t>(compterElements(*donnees, "codifPoint")));
  for (const TiXmlElement* e = donnees->FirstChildElement("codifPoint"); e;
       e = e->NextSiblingElement("codifPoint")) {
    codifPoint ligne;
    ligne.lireXML(*e);
    codes.Add(std::move(ligne));
  }
  return codes.empty() ? 0 : 1;
}

int tableCodification::sauverXML(const std::wstring& fichier) const {
  TiXmlDocument document;
  ecrireXML(document);
  // Deliberate (sauverxml-resultat): the result is 1 even when nothing could be written.
  sauverFichierXML(document, cheminPlateforme(fichier.empty() ? nomFichier : fichier));
  return 1;
}

void tableCodification::ecrireXML(TiXmlDocument& document) const {
  auto* racine = new TiXmlElement("codifPoints");
  document.LinkEndChild(racine);
  auto* donnees = new TiXmlElement("TBdata");
  racine->LinkEndChild(donnees);
  for (const codifPoint& ligne : codes) ligne.ecrireXML(*donnees);
}

int tableCodification::chercherCode(int code) const {
  if (m_indexees > codes.GetSize()) oublierLignes(0);
  for (; m_indexees < codes.GetSize(); ++m_indexees)
    m_premiers.emplace(codes.GetAt(m_indexees).code, m_indexees);
  const auto trouve = m_premiers.find(code);
  return trouve == m_premiers.end() ? -1 : trouve->second;
}

void tableCodification::oublierLignes(int premiere) const {
  if (premiere == 0 || m_indexees > codes.GetSize()) m_premiers.clear(), m_indexees = 0;
  while (m_indexees > premiere) {
    const auto trouve = m_premiers.find(codes.GetAt(--m_indexees).code);
    if (trouve != m_premiers.end() && trouve->second == m_indexees) m_premiers.erase(trouve);
  }
}

codifPoint& tableCodification::getOuCreerCode(int code) {
  int index = chercherCode(code);
  if (index < 0) {
    codifPoint ligne;
    ligne.code = code;
    ligne.libelle = base::formater(std::wstring(L"Code %d"), code);
    codes.Add(std::move(ligne));
    index = codes.GetSize() - 1;
  }
  return codes.GetAt(index);
}

std::wstring tableCodification::getLibelleCode(int code) {
  int index = chercherCode(code);
  if (index < 0) {
    // Deliberate (getlibellecode-format): not the label that `getOuCreerCode` gives;
    // whoever comes first decides.
    codes.Add(ligneDefaut(code, base::formater(std::wstring(L"Code N° %d"), code), L"biblio\\varnblk1.dwg"));
    index = codes.GetSize() - 1;
  }
  return codes.GetAt(index).libelle;
}

int tableCodification::supprimerLigne(int index) {
  if (index >= 0) oublierLignes(index);
  codes.RemoveAt(index);
  return codes.GetSize();
}

void tableCodification::viderTable() {
  codes.RemoveAll();
  oublierLignes(0);
}

void tableCodification::resetDefauts() {
  viderTable();
  ajouterDefauts();
}

void tableCodification::ajouterDefauts() {
  // Deliberate (libelle-point-topo): a small t here, a capital one in the label of a new record.
  codes.Add(ligneDefaut(1, L"Point topo", L"biblio\\varnblk1.dwg"));
  codes.Add(ligneDefaut(kStationCode, L"Station", L"biblio\\varnblk3.dwg"));
}

void tableCodification::trierParCode() {
  oublierLignes(0);
  std::stable_sort(codes.begin(), codes.end(),
                   [](const codifPoint& a, const codifPoint& b) { return a.code < b.code; });
}

std::optional<int> tableCodification::codeLibre() const {
  std::vector<bool> pris(kLargestCode + 1);
  for (const codifPoint& ligne : codes) {
    if (isPointCode(ligne.code)) pris[static_cast<std::size_t>(ligne.code)] = true;
  }
  const auto libre = std::find(pris.begin() + kSmallestCode, pris.end(), false);
  if (libre == pris.end()) return std::nullopt;
  return static_cast<int>(libre - pris.begin());
}

std::function<int(long long, long long)> tableCodification::comparateur(int colonne) const {
  // The rows are found by scanning the table once; the first of a code counts.
  auto lignes = std::make_shared<std::unordered_map<long long, const codifPoint*>>();
  for (const codifPoint& ligne : codes) lignes->emplace(ligne.code, &ligne);
  return [lignes, colonne](long long codeA, long long codeB) {
    const auto a = lignes->find(codeA);
    const auto b = lignes->find(codeB);
    return a == lignes->end() || b == lignes->end() ? 0 : comparer(*a->second, *b->second, colonne);
  };
}

void tableCodification::creerLayers(codifPoint& ligne, AcDbLayerTable* calques) const {
  if (!calques) {
    AcDbDatabase* dessin = acdbHostApplicationServices()->workingDatabase();
    AcDbLayerTable* table = nullptr;
    if (!dessin || dessin->getLayerTable(table, AcDb::kForWrite) != Acad::eOk) return;
    creerLayers(ligne, table);
    table->close();
    return;
  }
  for (std::size_t i = 0; i < nbLayers; ++i) {
    std::wstring& nom = ligne.layers[i];
    nom = base::trim(nom, kBordsCode);
    if (nom.empty()) nom = L"0";
    // Deliberate (creerlayers-couleur): a layer that exists keeps its colour, whatever the code says.
    ligne.idLayers[i] = layerOrNew(*calques, nom, ligne.coulLayers[i]);
  }
}

void tableCodification::creerTousLayers(AcDbDatabase* dessin) {
  AcDbLayerTable* calques = nullptr;
  if (!dessin || dessin->getLayerTable(calques, AcDb::kForWrite) != Acad::eOk) return;
  for (codifPoint& ligne : codes) creerLayers(ligne, calques);
  calques->close();
}

int tableCodification::modifierLigne(int index) {
  if (index < 0 || index >= codes.GetSize()) return 0;
  if (presentation()) presentation()->modifier(*this, codes.GetAt(index));
  return 1;
}

void tableCodification::afficherTable() {
  if (presentation()) presentation()->afficher(*this);
}

void setPresentationCodes(presentationCodes* qui) { presentation() = qui; }

tableCodification& getTableCodification() {
  static tableCodification table;
  return table;
}

}  // namespace veltora

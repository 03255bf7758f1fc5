#include "field/textes_gsi.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"

#include <algorithm>
#include <array>

namespace veltora {
namespace {

constexpr std::size_t kIndices = 100;
constexpr int kDecimales = 5;

using Etiquettes = std::array<std::string_view, kIndices>;

/// What stands in front of a value; empty for a word that has no line of its own.
constexpr Etiquettes etiquettes() {
  Etiquettes e{};
  e[21] = "\tah = ";
  e[22] = "\tav =  ";
  e[31] = "\tdi =  ";
  e[32] = "\tdh =  ";
  e[33] = "\tdz =  ";
  e[51] = "\tPPM-MM = ";
  e[52] = "\tECM,ECS = ";
  e[53] = "\tP.SIGNAL = ";
  e[58] = "\tConst Refl = ";
  e[59] = "\tPPM = ";
  for (std::size_t i = 71; i <= 79; ++i) e[i] = "\tCodePt = ";
  e[81] = "\tXpt = ";
  e[82] = "\tYpt = ";
  e[83] = "\tZpt = ";
  e[84] = "\tXstat = ";
  e[85] = "\tYstat = ";
  e[86] = "\tZstat = ";
  e[87] = "\thmire = ";
  e[88] = "\thAppareil = ";
  return e;
}

void ajouterTexteMot(const motGSI& mot, std::string& sortie) {
  static constexpr Etiquettes kEtiquettes = etiquettes();
  const std::string_view etiquette = kEtiquettes.at(mot.indexMot);
  if (mot.indexMot != motGSI::kNom && etiquette.empty()) {
    sortie += base::formater("\tINCONNU = %d, %s", static_cast<int>(mot.indexMot), mot.texte);
    return;
  }
  sortie += etiquette;
  if (mot.genre == motGSI::kNumerique)
    base::ajouterFixe(sortie, mot.valeur, kDecimales);
  else
    sortie += mot.texte;
}

void ajouterTexteMotCode(const motGSI& mot, std::string& sortie) {
  sortie += base::formater(" code: %d val = [%s]", static_cast<int>(mot.indexMot), mot.texte);
}

/// Hands over the text of each word as the first one wants it. @return whether that one has any
template <class Ajouter>
bool parcourir(etatLectureGSI& etat, const ligneGSI& mots, Ajouter ajouter) {
  if (mots.empty()) return true;
  const int premier = mots.GetAt(0).indexMot;
  if (premier == motGSI::kNom) etat.debutBlocCode = etatLectureGSI::kAucun;
  if (premier != motGSI::kNom && premier != motGSI::kBlocCode) return false;
  for (const motGSI& mot : mots) ajouter(mot, premier == motGSI::kBlocCode);
  return true;
}

}  // namespace

std::wstring texteMotGSI(const motGSI& mot) {
  std::string texte;
  ajouterTexteMot(mot, texte);
  return base::widen(texte);
}

std::wstring texteMotCodeGSI(const motGSI& mot) {
  std::string texte;
  ajouterTexteMotCode(mot, texte);
  return base::widen(texte);
}

void ajouterTexteLigneGSI(etatLectureGSI& etat, const ligneGSI& mots, std::string& sortie) {
  parcourir(etat, mots, [&sortie](const motGSI& mot, bool code) {
    if (code)
      ajouterTexteMotCode(mot, sortie);
    else
      ajouterTexteMot(mot, sortie);
  });
}

void texteLigneGSI(etatLectureGSI& etat, const ligneGSI& mots, std::wstring& sortie) {
  std::string texte;
  ajouterTexteLigneGSI(etat, mots, texte);
  sortie = base::widen(texte);
}

void texteLigneGSIListe(etatLectureGSI& etat, const ligneGSI& mots, std::vector<std::wstring>& sorties) {
  sorties.clear();
  const bool connue = parcourir(etat, mots, [&sorties](const motGSI& mot, bool code) {
    sorties.push_back(code ? texteMotCodeGSI(mot) : texteMotGSI(mot));
  });
  if (!connue) sorties.emplace_back();
}

int texteInfoGSI(std::wstring_view ligne, std::wstring& sortie) {
  constexpr std::size_t kMot = 16;
  constexpr std::size_t kDonnees = 8;
  constexpr std::wstring_view kBlancs = L" \t\r\n";
  sortie = L"* INFO :";
  std::wstring reste(ligne);
  while (!reste.empty()) {
    const std::wstring donnees =
        reste.substr(std::min(formeGSI::kDonnees, reste.size()), kDonnees);  // less at the end of the line
    sortie += base::trimLeft(base::trimLeft(donnees, L"0"), kBlancs) + L"\t";
    reste = reste.size() > kMot ? base::trimLeft(std::wstring_view(reste).substr(kMot), kBlancs) : L"";
  }
  return 1;
}

}  // namespace veltora

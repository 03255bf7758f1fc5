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
constexpr int kNom = 11;
constexpr int kBlocCode = 41;

using Etiquettes = std::array<const wchar_t*, kIndices>;

/// What stands in front of a value; null for a word that has no line of its own.
constexpr Etiquettes etiquettes() {
  Etiquettes e{};
  e[21] = L"\tah = ";
  e[22] = L"\tav =  ";
  e[31] = L"\tdi =  ";
  e[32] = L"\tdh =  ";
  e[33] = L"\tdz =  ";
  e[51] = L"\tPPM-MM = ";
  e[52] = L"\tECM,ECS = ";
  e[53] = L"\tP.SIGNAL = ";
  e[58] = L"\tConst Refl = ";
  e[59] = L"\tPPM = ";
  for (std::size_t i = 71; i <= 79; ++i) e[i] = L"\tCodePt = ";
  e[81] = L"\tXpt = ";
  e[82] = L"\tYpt = ";
  e[83] = L"\tZpt = ";
  e[84] = L"\tXstat = ";
  e[85] = L"\tYstat = ";
  e[86] = L"\tZstat = ";
  e[87] = L"\thmire = ";
  e[88] = L"\thAppareil = ";
  return e;
}

/// The data behind a text; nearly always ASCII, which needs no table.
void ajouterDonnees(const motGSI& mot, std::wstring& sortie) {
  for (const char* c = mot.texte; *c != '\0'; ++c) {
    if (static_cast<unsigned char>(*c) >= 0x80) {
      sortie += base::widen(c);
      return;
    }
    sortie += static_cast<wchar_t>(*c);
  }
}

void ajouterTexteMot(const motGSI& mot, std::wstring& sortie) {
  static constexpr Etiquettes kEtiquettes = etiquettes();
  const wchar_t* const etiquette = kEtiquettes.at(mot.indexMot);
  if (mot.indexMot == kNom) {
    ajouterDonnees(mot, sortie);
  } else if (!etiquette) {
    sortie += base::formater(L"\tINCONNU = %d, %s", static_cast<int>(mot.indexMot), base::widen(mot.texte));
  } else if (mot.genre == motGSI::kNumerique) {
    sortie += etiquette;
    base::ajouterFixe(sortie, mot.valeur, kDecimales);
  } else {
    sortie += etiquette;
    ajouterDonnees(mot, sortie);
  }
}

/// Hands over the text of each word as the first one wants it. @return whether that one has any
template <class Ajouter>
bool parcourir(etatLectureGSI& etat, const ligneGSI& mots, Ajouter ajouter) {
  if (mots.empty()) return true;
  const int premier = mots.GetAt(0).indexMot;
  if (premier == kNom) etat.debutBlocCode = etatLectureGSI::kAucun;
  if (premier != kNom && premier != kBlocCode) return false;
  for (const motGSI& mot : mots) ajouter(mot, premier == kBlocCode);
  return true;
}

}  // namespace

std::wstring texteMotGSI(const motGSI& mot) {
  std::wstring texte;
  ajouterTexteMot(mot, texte);
  return texte;
}

std::wstring texteMotCodeGSI(const motGSI& mot) {
  return base::formater(L" code: %d val = [%s]", static_cast<int>(mot.indexMot), base::widen(mot.texte));
}

void ajouterTexteLigneGSI(etatLectureGSI& etat, const ligneGSI& mots, std::wstring& sortie) {
  parcourir(etat, mots, [&sortie](const motGSI& mot, bool code) {
    if (code)
      sortie += texteMotCodeGSI(mot);
    else
      ajouterTexteMot(mot, sortie);
  });
}

void texteLigneGSI(etatLectureGSI& etat, const ligneGSI& mots, std::wstring& sortie) {
  sortie.clear();
  ajouterTexteLigneGSI(etat, mots, sortie);
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

#include "drafting/sheet/formats_papier.h"

#include "base/format.h"
#include "base/text.h"
#include "core/config_systeme.h"

namespace veltora {
namespace {

constexpr int kIso = 10;
constexpr AcGePoint2d kTailleUtilisateur{1000, 1000};

struct formatPapier {
  const wchar_t* nom;
  AcGePoint2d defaut;
};
// Deliberate (planche-formats): A1 and A0 have round sizes, and A0 stands lying before it stands upright.
constexpr formatPapier kFormats[kNombreFormats] = {
    {L"Format A4 Portrait", {210, 297}},  {L"Format A4 Paysage", {297, 210}},
    {L"Format A3 Portrait ", {297, 420}}, {L"Format A3 Paysage", {420, 297}},
    {L"Format A2 Portrait ", {420, 594}}, {L"Format A2 Paysage", {594, 420}},
    {L"Format A1 Portrait ", {594, 840}}, {L"Format A1 Paysage", {840, 594}},
    {L"Format A0 Paysage", {1188, 840}},  {L"Format A0 Portrait", {840, 1188}},
    {L"User 0", kTailleUtilisateur},      {L"User 1", kTailleUtilisateur},
    {L"User 2", kTailleUtilisateur},      {L"User 3", kTailleUtilisateur},
    {L"User 4", kTailleUtilisateur},      {L"User 5", kTailleUtilisateur}};

Static_ConfigVariable<AcGePoint2d>& variable(int rang) {
  static Static_ConfigVariable<AcGePoint2d> iso[kIso] = {
      {"VARN.PaperFormat0", kFormats[0].defaut}, {"VARN.PaperFormat1", kFormats[1].defaut},
      {"VARN.PaperFormat2", kFormats[2].defaut}, {"VARN.PaperFormat3", kFormats[3].defaut},
      {"VARN.PaperFormat4", kFormats[4].defaut}, {"VARN.PaperFormat5", kFormats[5].defaut},
      {"VARN.PaperFormat6", kFormats[6].defaut}, {"VARN.PaperFormat7", kFormats[7].defaut},
      {"VARN.PaperFormat8", kFormats[8].defaut}, {"VARN.PaperFormat9", kFormats[9].defaut}};
  return rang < kIso ? iso[rang] : UserPaperScale[rang - kIso];
}

bool existe(int rang) { return rang >= 0 && rang < kNombreFormats; }

}  // namespace

std::wstring nomFormat(int rang) { return existe(rang) ? kFormats[rang].nom : std::wstring(); }

AcGePoint2d tailleFormat(int rang) { return existe(rang) ? variable(rang).valeur : kTailleUtilisateur; }

std::wstring ligneFormat(int rang) {
  const AcGePoint2d taille = tailleFormat(rang);
  return nomFormat(rang) + base::formater(L" ( %.15g x %.15g )", taille.x, taille.y);
}

std::wstring motFormat(int rang) {
  constexpr std::wstring_view kFormat = L"Format A";
  std::wstring mot = base::trim(nomFormat(rang));
  if (mot.starts_with(kFormat))
    mot = mot.substr(kFormat.size() - 1);
  else
    mot = base::toLower(mot);
  for (std::size_t i = 1; i < mot.size(); ++i) mot[i] = mot[i] == L' ' ? L'-' : base::toLower(mot[i]);
  return mot;
}

void retablirFormats() {
  for (int rang = 0; rang < kNombreFormats; ++rang) {
    AcGePoint2d& taille = variable(rang).valeur;
    if (taille.x < 0.0 || taille.y < 0.0) taille = kFormats[rang].defaut;
  }
}

}  // namespace veltora

#include "codes/codif_point.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "codes/flux_texte.h"

#include <algorithm>
#include <string_view>

// The line-oriented text form of one record.
namespace veltora {
namespace {

constexpr std::wstring_view kBords = L" \t,;.";
constexpr std::wstring_view kDebut = L"Code {";

/// What a line says; in the order in which the keywords are searched.
enum class Mot { Debut, Chemin, Code, Libelle, Taille, Layer, Couleur, Fin, Precision };

struct MotCle {
  std::wstring_view texte;
  Mot mot;
  std::size_t layer = 0;  ///< which one, for layers and colours
};

constexpr std::array<MotCle, 17> kMotsCles{{
    {kDebut, Mot::Debut},
    {L"CHEMIN:", Mot::Chemin},
    {L"CODE:", Mot::Code},
    {L"LIBELLE:", Mot::Libelle},
    {L"BLKTAILLE:", Mot::Taille},
    {L"LAYBLOCK:", Mot::Layer, layerBlock},
    {L"LAYALTITUDES:", Mot::Layer, layerAltitudes},
    {L"LAYNUMERO:", Mot::Layer, layerNumero},
    {L"LAYOBSERVATIONS:", Mot::Layer, layerObs},
    {L"LAYCODE:", Mot::Layer, layerCode},
    {L"COULLAYBLOCK:", Mot::Couleur, layerBlock},
    {L"COULLAYALTI:", Mot::Couleur, layerAltitudes},
    {L"COULLAYNUM:", Mot::Couleur, layerNumero},
    {L"COULLAYOBS:", Mot::Couleur, layerObs},
    {L"COULLAYCODE:", Mot::Couleur, layerCode},
    {L"}", Mot::Fin},
    {L"PRECISIONALTITUDES:", Mot::Precision},
}};

/// The first keyword that the line begins with, ignoring case; null for none.
const MotCle* chercherMot(std::wstring_view ligne) {
  for (const MotCle& cle : kMotsCles) {
    if (base::compareNoCase(ligne.substr(0, cle.texte.size()), cle.texte) == 0) return &cle;
  }
  return nullptr;
}

int couleurOuDefaut(int couleur) { return couleur < 0 || couleur > 256 ? 7 : couleur; }

void prendre(codifPoint& ligne, const MotCle& cle, const std::wstring& reste) {
  switch (cle.mot) {
    case Mot::Chemin:
      ligne.chemin = reste;
      break;
    case Mot::Code:
      ligne.code = std::clamp(base::lireEntier(reste), kSmallestCode, kLargestCode);
      break;
    case Mot::Libelle:
      ligne.libelle = reste;
      break;
    case Mot::Taille: {
      const double taille = base::lireReel(reste);
      ligne.tailleBlock = taille > 0 ? taille : 1.0;
      break;
    }
    case Mot::Layer:
      ligne.layers[cle.layer] = reste;
      break;
    case Mot::Couleur:
      ligne.coulLayers[cle.layer] = couleurOuDefaut(base::lireEntier(reste));
      break;
    case Mot::Precision:
      ligne.precisionAltitudes = std::clamp(base::lireEntier(reste), 0, 8);
      break;
    case Mot::Debut:
    case Mot::Fin:
      break;
  }
}

/// Deliberate (ecriretexte-coupe): key and value of a text line come out as their first characters, so that
/// the record does not read back whole. Nothing reads what this writer makes.
void ecrireChampTexte(fluxTexte& flux, std::wstring_view cle, std::wstring_view valeur) {
  flux.WriteString(L"\n\t" + std::wstring(cle.substr(0, 1)) + L' ' + std::wstring(valeur.substr(0, 1)));
}

void ecrireChampEntier(fluxTexte& flux, const wchar_t* cle, int valeur) {
  flux.WriteString(base::formater(std::wstring(L"\n\t%s %d"), cle, valeur));
}

}  // namespace

int codifPoint::lireTexte(fluxTexte& flux) {
  std::wstring ligne;
  do {
    if (!flux.ReadString(ligne)) return 0;
  } while (base::compareNoCase(base::trim(ligne, kBords), kDebut) != 0);
  while (flux.ReadString(ligne)) {
    ligne = base::trim(ligne, kBords);
    const MotCle* cle = chercherMot(ligne);
    if (!cle) continue;
    if (cle->mot == Mot::Fin) return 1;
    if (cle->mot == Mot::Debut) return 0;
    prendre(*this, *cle, base::trimLeft(ligne.substr(cle->texte.size()), kBords));
  }
  return 0;
}

void codifPoint::ecrireTexte(fluxTexte& flux) const {
  flux.WriteString(L"\nCode {");
  ecrireChampEntier(flux, L"CODE:", code);
  ecrireChampTexte(flux, L"LIBELLE:", libelle);
  ecrireChampTexte(flux, L"CHEMIN:", chemin);
  flux.WriteString(base::formater(std::wstring(L"\n\t%s %f"), L"BLKTAILLE:", tailleBlock));
  ecrireChampEntier(flux, L"PRECISIONALTITUDES:", precisionAltitudes);
  for (const MotCle& cle : kMotsCles) {
    if (cle.mot == Mot::Layer) ecrireChampTexte(flux, cle.texte, layers[cle.layer]);
    if (cle.mot == Mot::Couleur) ecrireChampEntier(flux, cle.texte.data(), coulLayers[cle.layer]);
  }
  flux.WriteString(L"\n}");
}

bool fluxTexteMemoire::ReadString(std::wstring& ligne) {
  if (m_position >= m_texte.size()) return false;
  std::size_t fin = m_texte.find(L'\n', m_position);
  if (fin == std::wstring::npos) fin = m_texte.size();
  ligne = m_texte.substr(m_position, fin - m_position);
  if (!ligne.empty() && ligne.back() == L'\r') ligne.pop_back();
  m_position = fin + 1;
  return true;
}

}  // namespace veltora

#include "core/xml_utf8.h"

#include <cstdint>

// The system's own UTF-8, by 16-bit units.
namespace veltora {
namespace {

char octet(std::uint32_t valeur) { return static_cast<char>(static_cast<unsigned char>(valeur)); }

void ajouterUnite(std::string& octets, std::uint32_t unite) {
  if (unite < 0x80) {
    octets += octet(unite);
  } else if (unite < 0x800) {
    octets += octet(0xC0 | (unite >> 6));
    octets += octet(0x80 | (unite & 0x3F));
  } else {
    octets += octet(0xE0 | (unite >> 12));
    octets += octet(0x80 | ((unite >> 6) & 0x3F));
    octets += octet(0x80 | (unite & 0x3F));
  }
}

/// Length of the sequence that this byte begins, 1 to 6; 0 for a byte that begins none.
std::size_t longueurSequence(unsigned char tete) {
  if (tete < 0x80) return 1;
  if (tete < 0xC0 || tete >= 0xFE) return 0;
  if (tete < 0xE0) return 2;
  if (tete < 0xF0) return 3;
  if (tete < 0xF8) return 4;
  return tete < 0xFC ? 5 : 6;
}

/// Value of a whole sequence.
/// @return false when it is truncated or a byte behind the first does not continue it
bool lireSequence(std::string_view octets, std::size_t longueur, std::uint32_t& valeur) {
  if (octets.size() < longueur) return false;
  const auto tete = static_cast<unsigned char>(octets[0]);
  valeur = longueur == 1 ? tete : tete & (0xFFu >> (longueur + 1));
  for (std::size_t i = 1; i < longueur; ++i) {
    const auto suite = static_cast<unsigned char>(octets[i]);
    if ((suite & 0xC0) != 0x80) return false;
    valeur = (valeur << 6) | (suite & 0x3Fu);
  }
  return true;
}

}  // namespace

std::string utf8DepuisTexte(std::wstring_view texte) {
  std::string octets;
  octets.reserve(texte.size());
  for (const wchar_t c : texte) {
    const auto valeur = static_cast<std::uint32_t>(c);
    if (valeur <= 0xFFFF) {
      ajouterUnite(octets, valeur);
    } else if (valeur <= 0x10FFFF) {
      // Deliberate (utf8-substituts): two sequences of three bytes, one for each 16-bit unit, not one of
      // four.
      ajouterUnite(octets, 0xD800 | ((valeur - 0x10000) >> 10));
      ajouterUnite(octets, 0xDC00 | ((valeur - 0x10000) & 0x3FF));
    } else {
      octets += '?';
    }
  }
  return octets;
}

std::wstring texteDepuisUtf8(std::string_view octets) {
  std::wstring texte;
  texte.reserve(octets.size());
  while (!octets.empty()) {
    const std::size_t longueur = longueurSequence(static_cast<unsigned char>(octets.front()));
    if (longueur == 0) {
      octets.remove_prefix(1);
      continue;
    }
    std::uint32_t valeur = 0;
    // Deliberate (utf8-troncature): a broken sequence ends the text, what came before it stays.
    if (!lireSequence(octets, longueur, valeur)) break;
    const bool paire = valeur >= 0xDC00 && valeur <= 0xDFFF && !texte.empty() && texte.back() >= 0xD800 &&
                       texte.back() <= 0xDBFF;
    if (paire) {
      // The two units of one character stand in one wide character here.
      const auto haut = static_cast<std::uint32_t>(texte.back()) - 0xD800;
      texte.back() = static_cast<wchar_t>(0x10000 + (haut << 10) + (valeur - 0xDC00));
    } else {
      // Deliberate (utf8-plan0): up to six bytes are read, but no value above 65535 is kept.
      texte += valeur > 0xFFFF ? L'?' : static_cast<wchar_t>(valeur);
    }
    octets.remove_prefix(longueur);
  }
  return texte;
}

}  // namespace veltora

#pragma once

#include "base/export.h"
#include "report/html_color.h"
#include "report/html_size.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veltora {

/// The body of one CSS rule, as a running state: a property once set stays set and can only be overwritten,
/// so that one object is changed step by step and `css()` is taken after each step. Texts are Windows-1252.
class VELTORA_API htmlStyle {
public:
  htmlStyle() = default;
  htmlStyle(const htmlStyle&) = default;
  htmlStyle& operator=(const htmlStyle&) = default;
  virtual ~htmlStyle() = default;

  /// @param nom2 the family to fall back on; empty for none
  void setFontFamily(std::string_view nom, std::string_view nom2 = {});
  void setFontSize(const htmlSize& taille) { m_taillePolice = taille; }
  void setItalic(bool actif = true) { m_italique = actif; }
  void setBold(bool actif = true) { m_gras = actif; }
  /// @param bits sum of 1 underline, 2 overline, 4 line-through, 8 blink; 0 is "none"
  void setTextDecoration(int bits) { m_decoration = bits; }
  void setColor(const htmlColor& couleur) { m_couleur = couleur; }
  void setBackgroundColor(const htmlColor& couleur) { m_couleurFond = couleur; }
  void setBackgroundImage(std::string_view image) { m_imageFond = image; }
  /// @param mode 2 fixed, any other scroll; it also steers the word of `setBackgroundRepeat`
  void setBackgroundAttachment(std::uint8_t mode) { m_attachement = mode; }
  /// Makes the repeat rule appear once an attachment is set; the value itself is not printed.
  void setBackgroundRepeat(std::uint8_t mode) { m_repetition = mode; }
  void setBackgroundPositionX(const htmlSize& position) { m_positionX = position; }
  void setBackgroundPositionY(const htmlSize& position) { m_positionY = position; }
  /// @param mode 1 left, 2 right, 4 center, any other justify
  void setTextAlign(std::uint8_t mode) { m_alignement = mode; }
  void setTextIndent(const htmlSize& taille) { m_retrait = taille; }
  void setLineHeight(const htmlSize& taille) { m_hauteurLigne = taille; }
  void setLetterSpacing(const htmlSize& taille) { m_espacement = taille; }

  void setMarginLeft(const htmlSize& taille) { m_marge[gauche] = taille; }
  void setMarginRight(const htmlSize& taille) { m_marge[droite] = taille; }
  void setMarginTop(const htmlSize& taille) { m_marge[haut] = taille; }
  void setMarginBottom(const htmlSize& taille) { m_marge[bas] = taille; }
  void setMargin(const htmlSize& taille) { m_marge.fill(taille); }

  void setPaddingLeft(const htmlSize& taille) { m_remplissage[gauche] = taille; }
  void setPaddingRight(const htmlSize& taille) { m_remplissage[droite] = taille; }
  void setPaddingTop(const htmlSize& taille) { m_remplissage[haut] = taille; }
  void setPaddingBottom(const htmlSize& taille) { m_remplissage[bas] = taille; }
  void setPadding(const htmlSize& taille) { m_remplissage.fill(taille); }

  void setBorderLeftWidth(const htmlSize& taille) { m_largeurBord[gauche] = taille; }
  void setBorderRightWidth(const htmlSize& taille) { m_largeurBord[droite] = taille; }
  void setBorderTopWidth(const htmlSize& taille) { m_largeurBord[haut] = taille; }
  void setBorderBottomWidth(const htmlSize& taille) { m_largeurBord[bas] = taille; }
  void setBorderWidth(const htmlSize& taille) { m_largeurBord.fill(taille); }

  /// Border styles are the numbers of `htmlBorderStyle`.
  void setBorderLeftStyle(std::uint8_t style) { m_styleBord[gauche] = style; }
  void setBorderRightStyle(std::uint8_t style) { m_styleBord[droite] = style; }
  void setBorderTopStyle(std::uint8_t style) { m_styleBord[haut] = style; }
  void setBorderBottomStyle(std::uint8_t style) { m_styleBord[bas] = style; }
  void setBorderStyle(std::uint8_t style) { m_styleBord.fill(style); }

  void setBorderLeftColor(const htmlColor& couleur) { m_couleurBord[gauche] = couleur; }
  void setBorderRightColor(const htmlColor& couleur) { m_couleurBord[droite] = couleur; }
  void setBorderTopColor(const htmlColor& couleur) { m_couleurBord[haut] = couleur; }
  void setBorderBottomColor(const htmlColor& couleur) { m_couleurBord[bas] = couleur; }
  void setBorderColor(const htmlColor& couleur) { m_couleurBord.fill(couleur); }

  /// The rule's body without its braces, the properties in a fixed order. It begins with ";" when no family
  /// is set.
  [[nodiscard]] std::string css() const;

private:
  enum Cote { gauche, droite, haut, bas };
  template <class T>
  using Cotes = std::array<std::optional<T>, 4>;

  [[nodiscard]] std::string cssPolice() const;
  [[nodiscard]] std::string cssFond() const;
  [[nodiscard]] std::string cssTexte() const;

  std::optional<std::string> m_famille;
  std::string m_famille2;
  std::optional<htmlSize> m_taillePolice;
  std::optional<bool> m_italique;
  std::optional<bool> m_gras;
  std::optional<int> m_decoration;
  std::optional<htmlColor> m_couleur;
  std::optional<htmlColor> m_couleurFond;
  std::optional<std::string> m_imageFond;
  std::optional<std::uint8_t> m_attachement;
  std::optional<std::uint8_t> m_repetition;
  std::optional<htmlSize> m_positionX;
  std::optional<htmlSize> m_positionY;
  std::optional<std::uint8_t> m_alignement;
  std::optional<htmlSize> m_retrait;
  std::optional<htmlSize> m_hauteurLigne;
  std::optional<htmlSize> m_espacement;
  Cotes<htmlSize> m_marge;
  Cotes<htmlSize> m_remplissage;
  Cotes<htmlSize> m_largeurBord;
  Cotes<std::uint8_t> m_styleBord;
  Cotes<htmlColor> m_couleurBord;
};

}  // namespace veltora

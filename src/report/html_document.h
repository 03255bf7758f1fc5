#pragma once

#include "base/export.h"
#include "report/html_color.h"

#include <string>
#include <string_view>
#include <vector>

namespace veltora {

/// A report: styles, header lines, body lines, name and form. Texts are Windows-1252 without a charset in the
/// file; the file name is UTF-8. Copyable: the viewing dialog keeps a copy.
class VELTORA_API htmlDocument {
public:
  enum Format { simple = 0, word = 1 };

  htmlDocument();

  /// Gives the document a name of the caller's choice; without one `ecrire` makes a temporary name.
  void setFichier(std::string_view nom, int nouveauFormat);
  /// @param classe gets a "." in front unless it has one
  void ajouterStyle(std::string_view classe, std::string_view corps);
  void ajouterEntete(std::string_view ligne) { m_entetes.emplace_back(ligne); }
  void ajouterCorps(std::string_view ligne) { m_corps.emplace_back(ligne); }

  /// Writes the file, whole or not at all; a format other than `simple` and `word` writes none.
  /// Without a name it goes to a new "_TP….html" in the temporary folder, which becomes
  /// `nomFichier` and is never removed.
  /// @param raison why it failed, in French
  /// @return false when no file was written
  bool ecrire(std::string* raison = nullptr);
  /// Empties the styles, the lines and the file name; colours and form stay.
  void vider();
  /// The bytes that `ecrire` puts into the file; empty for an unknown format.
  [[nodiscard]] std::string contenu() const;

  int format = simple;
  htmlColor bgColor;
  htmlColor textColor;
  htmlColor linkColor;
  htmlColor aLinkColor;
  htmlColor vLinkColor;
  std::string nomFichier;
  bool fichierTemporaire = true;

private:
  std::vector<std::string> m_nomsClasses;
  std::vector<std::string> m_corpsClasses;
  std::vector<std::string> m_entetes;
  std::vector<std::string> m_corps;
};

}  // namespace veltora

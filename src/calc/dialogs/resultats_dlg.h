#pragma once

#include "report/html_document.h"
#include "ui/dialog.h"

#include <string>

namespace veltora {

/// Shows a report that was written to a file, and saves it again under a name of the user's choice.
class VELTORA_API resultPolygo : public ui::Dialog {
public:
  /// Keeps a copy of the document; `nomFichier` is the file to show.
  explicit resultPolygo(const htmlDocument& document);

  ui::WebView page{this};
  ui::Button sauvegarder{this, L"Sauvegarder", [this] { enregistrer(); }};
  ui::Button fermer{this, L"Fermer", ui::Button::Role::Cancel};

  std::wstring nomFichier;

protected:
  void onInit() override { page.setPath(nomFichier); }

private:
  void enregistrer();

  htmlDocument m_document;
};

/// Shows a report that lies in a file of the user.
class VELTORA_API DlgRapport : public ui::Dialog {
public:
  explicit DlgRapport(std::wstring nomFichier);

  ui::WebView page{this};
  ui::Button fermer{this, L"Fermer", ui::Button::Role::Cancel};

protected:
  void onInit() override { page.setPath(m_nomFichier); }

private:
  std::wstring m_nomFichier;
};

/// Writes a document without a name to a temporary file and shows it. Of the temporary reports of a run the
/// latest stays.
VELTORA_API void montrerRapport(htmlDocument& document);

}  // namespace veltora

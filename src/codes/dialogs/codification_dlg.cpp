#include "codes/dialogs/codification_dlg.h"

#include "arx/dxf/dxffile.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "core/installation.h"
#include "ui/driver.h"

namespace veltora {
namespace {

bool finitPar(std::wstring_view chemin, std::wstring_view extension) {
  return chemin.size() >= extension.size() &&
         base::toLower(chemin.substr(chemin.size() - extension.size())) == extension;
}

/// The path of a chosen file as the table keeps it. Block paths end in ".dwg", a name that the host also
/// serves by the same name ending in ".dxf".
std::wstring cheminChoisi(const std::wstring& fichier) {
  std::wstring chemin = base::fromUtf8(std::filesystem::absolute(cheminPlateforme(fichier)).string());
  if (finitPar(chemin, L".dxf")) chemin.replace(chemin.size() - 4, 4, L".dwg");
  return chemin;
}

/// The file that serves a block path, as an answer may name it; empty when there is none.
std::wstring fichierPresent(const std::wstring& chemin) {
  const std::filesystem::path fichier = dxfServingFile(cheminPlateforme(chemin));
  std::error_code ignoree;
  return std::filesystem::is_regular_file(fichier, ignoree) ? base::fromUtf8(fichier.string())
                                                            : std::wstring();
}

}  // namespace

DlgCodification::DlgCodification(tableCodification& table, bool nouveau)
    : Dialog(L"Codification"), m_table(table), m_nouveau(nouveau) {
  taille.setRange(1e-6, 1e6);
  precision.setRange(0, 8);
  precision.setStepped();
  code.setReadOnly(!nouveau);
  code.onLeave = [this] { quitterCode(); };
  symbole.onClick = [this] { choisirSymbole(); };
  apercu.onClick = [this] { choisirSymbole(); };
}

void DlgCodification::remplir(const codifPoint& ligne) {
  code.setText(base::formater(std::wstring(L"%d"), ligne.code));
  libelle.setText(ligne.libelle);
  chemin = ligne.chemin;
  layerBlock.setText(ligne.layers[veltora::layerBlock]);
  layerNumeros.setText(ligne.layers[veltora::layerNumero]);
  layerAltitudes.setText(ligne.layers[veltora::layerAltitudes]);
  layerObs.setText(ligne.layers[veltora::layerObs]);
  layerCode.setText(ligne.layers[veltora::layerCode]);
  taille.setValue(ligne.tailleBlock);
  precision.setValue(ligne.precisionAltitudes);
}

void DlgCodification::reprendre(codifPoint& ligne) const {
  ligne.layers[veltora::layerBlock] = layerBlock.text();
  ligne.layers[veltora::layerNumero] = layerNumeros.text();
  ligne.layers[veltora::layerAltitudes] = layerAltitudes.text();
  ligne.layers[veltora::layerObs] = layerObs.text();
  ligne.layers[veltora::layerCode] = layerCode.text();
  ligne.chemin = chemin;
  ligne.libelle = libelle.text();
  ligne.tailleBlock = taille.value();
  ligne.precisionAltitudes = precision.intValue();
}

int DlgCodification::codeSaisi() const { return base::lireEntier(code.text()); }

bool DlgCodification::codePossible() const { return isPointCode(codeSaisi()); }

void DlgCodification::onInit() {
  montrerBlock();
  (m_nouveau ? code : libelle).setFocus();
}

void DlgCodification::onOk() {
  if (m_nouveau && !codePossible()) {
    // No code could be given: the table is full.
    quitterCode();
    code.setFocus();
    return;
  }
  Dialog::onOk();
}

void DlgCodification::quitterCode() {
  code.setText(base::trim(code.text(), kBordsCode));
  if (code.text() == L"?") {
    if (const auto libre = m_table.codeLibre())
      code.setText(base::formater(std::wstring(L"%d"), *libre));
    else
      ui::messageBox(L"Pas de code à attribuer", L"erreur");
  } else if (!codePossible()) {
    ui::messageBox(L"Code incorrect\nTapez un nombre compris entre 1 et 9999", L"Erreur");
    code.setFocus();
    code.setText(L"?");
  } else if (m_nouveau && m_table.chercherCode(codeSaisi()) >= 0) {
    ui::messageBox(L"Code déjà existant\nTapez un '?' pour qu'un numéro soit attribué automatiquement",
                   L"Erreur");
    code.setFocus();
  }
}

void DlgCodification::choisirSymbole() {
  base::FileRequest demande;
  demande.title = L"Fichier à utiliser";
  demande.defaultName = fichierPresent(chemin);
  demande.extension = L"dwg";
  demande.filter = L"Fichier dessin (*.dwg;*.dxf)|*.dwg;*.dxf";
  const auto reponse = ui::chooseFile(demande);
  if (!reponse) return;
  chemin = cheminChoisi(reponse->path);
  // Deliberate (symbole-immediat): a row that exists takes the new symbol now, even if the dialog is
  // cancelled later.
  const int index = m_table.chercherCode(codeSaisi());
  if (index >= 0) m_table.codes.GetAt(index).chemin = chemin;
  montrerBlock();
}

void DlgCodification::montrerBlock() {
  // An empty path stands for the default block and stays empty.
  if (!chemin.empty()) {
    if (!finitPar(chemin, L".dwg")) chemin += L".dwg";
    chemin = completerChemin(chemin);
  }
  cheminBlock.setText(chemin);
  apercu.setPath(base::fromUtf8(cheminPlateforme(chemin).string()));
}

}  // namespace veltora

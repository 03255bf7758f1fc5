#include "calc/dialogs/def_variable_dlg.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"

namespace veltora {
namespace {

constexpr std::wstring_view kBords = L" .;,";

}  // namespace

CDefVariable::CDefVariable(tableVariables& variables)
    : Dialog(L"Définir une variable"), m_variables(variables) {}

CDefVariable::CDefVariable(tableVariables& variables, int index) : CDefVariable(variables) {
  m_index = index;
  nom.setText(base::widen(variables.nom(index)));
  nom.setReadOnly();
  valeur.setText(base::formater(L"%.4f", variables.valeur(index)));
  commentaire.setText(base::widen(variables.commentaire(index)));
}

void CDefVariable::onOk() {
  const double lue = base::lireReel(valeur.text());
  const std::string texte = base::narrow(commentaire.text());
  if (m_index >= 0) {
    m_variables.setValeur(m_index, lue);
    m_variables.setCommentaire(m_index, texte);
  } else {
    nom.setText(base::trim(nom.text(), kBords));
    const std::string cle = base::narrow(nom.text());
    if (cle.empty() || m_variables.chercher(cle) >= 0) return;
    m_variables.definir(cle, lue, texte);
  }
  Dialog::onOk();
}

}  // namespace veltora

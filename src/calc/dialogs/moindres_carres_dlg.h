#pragma once

#include "calc/network/reseau_moindres_carres.h"
#include "ui/dialog.h"

namespace veltora {

/// A network adjusted by least squares: read from a file, computed in plan and in height, its points placed.
class VELTORA_API CDlgMoindresCarres : public ui::Dialog {
public:
  CDlgMoindresCarres();

  ui::TextField journal{this, L"Journal"};  ///< the log, read only
  ui::TextField lecture{this, L"Réseau"};   ///< listing of what was read, read only
  ui::Button donnees{this, L"Données", [this] { charger(); }};
  ui::Button calculerXY{this, L"Calculer X,Y", [this] { calculerPlan(); }};
  ui::Button iterer{this, L"Itérer"};
  ui::Button calculerZ{this, L"Calculer Z", [this] { calculerAltitudes(); }};
  ui::Button clear{this, L"&Clear", [this] { journal.setText({}); }};
  ui::Button placerCanevas{this, L"Placer Canevas", [this] { placer(true); }};
  ui::Button placerCalcules{this, L"Placer !!!", [this] { placer(false); }};
  ui::Button poids{this, L"Poids", [this] { montrerPoids(); }};
  ui::Button fermer{this, L"Fermer", ui::Button::Role::Cancel};

  [[nodiscard]] reseauMoindresCarres& reseau() { return m_reseau; }

private:
  void charger();
  void calculerPlan();
  void calculerAltitudes();
  void placer(bool canevas);
  void montrerPoids();

  reseauMoindresCarres m_reseau;
};

}  // namespace veltora

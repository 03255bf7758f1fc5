#pragma once

#include "base/remarque.h"
#include "stakeout/params_implantation.h"
#include "stakeout/plan_implantation_auto.h"
#include "ui/dialog.h"

#include <vector>

namespace veltora {

/// Points of the current table, of which some are chosen.
class VELTORA_API DlgChoixPoints : public ui::Dialog {
public:
  DlgChoixPoints();

  ui::List liste{this};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};
};

/// Points set out from many stations: which ones, from which code's points, and what is made of it.
class VELTORA_API CDlgImplantationAuto : public ui::Dialog {
public:
  CDlgImplantationAuto();
  void onOk() override { generer(); }

  ui::Group stations{this, L"Stations"};
  ui::Label nombreStations{&stations};
  ui::Button paramsStations{&stations, L"&Params mise en station", [this] { parametrer(); }};
  ui::CheckBox plusLointain{&stations, L"Plus Lointain"};
  ui::Group points{this, L"Points à implanter"};
  ui::Label nombrePoints{&points};
  ui::RadioGroup origine{
      &points, L"", {L"A partir du &groupe", L"Choix dans la li&ste", L"Choix sur éc&ran"}};
  ui::ComboBox groupe{&points, L"Groupe"};
  ui::Button choisir{&points, L"&Choisir", [this] { choisirPoints(); }};
  ui::RadioGroup critere{
      this, L"Stations retenues", {L"Minimiser &distances", L"Min n&bre mises en station"}};
  ui::NumberField distanceMin{this, L"Distance mi&n d'implantation", 0.0, L"%.2f"};
  ui::NumberField distanceMax{this, L"Distance ma&x d'implantation", 1000.0, L"%.2f"};
  ui::Button distances{this, L"&Distances", [this] { montrerDistances(); }};
  ui::List liste{this};
  ui::CheckBox placer{this, L"&Placer résultats sur le dessin"};
  ui::CheckBox exporter{this, L"Exporter les résultats dans un fichier Texte"};
  ui::CheckBox schematiser{this, L"Shématisation graphique"};  // sic
  ui::Button apercu{this, L"Aperçu ", [this] { montrerApercu(); }};
  ui::Button paramsGraphiques{this, L"Params graphiques", [this] { configurer(); }};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};

protected:
  void onInit() override;

private:
  void parametrer();
  void choisirPoints();
  void choisirGroupe();
  void choisirListe();
  void choisirEcran();
  /// Takes a point of the current table. Its code may be that of the stations.
  void prendre(int index);
  void montrerDistances();
  void montrerApercu();
  void configurer();
  void generer();
  /// Plans anew and shows the stations. @return false when a field holds no number
  bool planifier();
  /// The doubts about the plan. @return whether the user wants the results all the same
  bool accepterDoutes();

  paramsImplantation m_params;
  paramsDessinImplantation m_dessin;
  std::vector<AcGePoint2d> m_points;
  std::vector<AcString> m_noms;
  planImplantationAuto m_plan;
};

/// The command IMPLANTAUTO.
VELTORA_API void implantationAuto();

}  // namespace veltora

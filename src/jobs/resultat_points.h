#pragma once

#include "base/remarque.h"

#include <string>

namespace veltora {

inline constexpr const wchar_t* kSansProjet = L"aucun dessin n'est ouvert";
inline constexpr const wchar_t* kInterrompu = L"interrompu";

/// What a job on point tables gives.
struct resultatPoints {
  int nombre = 0;             ///< points placed or written
  bool retenu = false;        ///< nothing was placed, for there are doubts
  base::Remarques remarques;  ///< what was passed over or changed
  std::wstring erreur;        ///< French, why nothing was done; empty on success

  /// Notes why nothing was done. @return false
  bool echec(const std::wstring& raison) {
    erreur = raison;
    return false;
  }
};

}  // namespace veltora

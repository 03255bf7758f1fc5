#pragma once

#include "base/files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

/// Compares bytes with tests/golden/<name>; with VELTORA_REFRESH_GOLDEN=1 writes them there instead.
inline ::testing::AssertionResult memeQueReference(const std::string& nom, const std::string& obtenu) {
  const std::filesystem::path chemin = std::filesystem::path(VELTORA_SOURCE_DIR) / "tests/golden" / nom;
  if (std::getenv("VELTORA_REFRESH_GOLDEN") != nullptr) {
    std::string raison;
    if (!veltora::base::remplacerFichier(chemin, obtenu, &raison))
      return ::testing::AssertionFailure() << raison;
    return ::testing::AssertionSuccess() << "refreshed";
  }
  const auto attendu = veltora::base::lireFichier(chemin);
  if (!attendu) return ::testing::AssertionFailure() << "no golden " << nom;
  if (*attendu == obtenu) return ::testing::AssertionSuccess();
  std::size_t i = 0;
  while (i < attendu->size() && i < obtenu.size() && (*attendu)[i] == obtenu[i]) ++i;
  const std::size_t debut = i < 40 ? 0 : i - 40;
  return ::testing::AssertionFailure()
         << nom << " differs at byte " << i << "\n expected: ..." << attendu->substr(debut, 120)
         << "\n      got: ..." << obtenu.substr(debut, 120)
         << "\n refresh with VELTORA_REFRESH_GOLDEN=1 (see tests/golden/README.md)";
}

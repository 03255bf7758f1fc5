// A terrain asked for where the sibling module is not loaded, as in this program.

#include "jobs/terrain.h"

#include "arx/ed/edports.h"
#include "base/console.h"
#include "base/text.h"

#include <gtest/gtest.h>

namespace {

using namespace veltora;

TEST(TravailTerrain, sansModuleLeDit) {
  struct : base::OutputSink {
    void print(const std::string& texte) override { imprime += texte; }
    std::string imprime;
  } sortie;
  acedPorts().sink = &sortie;
  ResultatTerrain resultat;
  EXPECT_FALSE(faireTerrain("absent.xyz", {}, resultat));
  EXPECT_EQ(resultat.erreur, kSansModuleTerrain);
  commandeTerrain(L"COURBES");
  acedPorts() = {};
  EXPECT_EQ(sortie.imprime, "\nCOURBES non disponible : " + base::toUtf8(kSansModuleTerrain) + ".");
}

}  // namespace

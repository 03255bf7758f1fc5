// The choice of a code at the command line.
#include "arx/db/dbblockref.h"
#include "arx/db/dbcircle.h"
#include "arx/db/dbmain.h"
#include "arx/ed/edports.h"
#include "base/text.h"
#include "codes/selectionner_code.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
using namespace veltora;

/// Prompts answered by lines in a drawing of one block reference; what was printed is kept.
class SelectionnerCode : public ::testing::Test, public base::LineSource, public base::OutputSink {
protected:
  SelectionnerCode() : m_ports(acedPorts()), m_dessin(acdbHostApplicationServices()->workingDatabase()) {
    acedPorts() = {};
    acedPorts().source = this;
    acedPorts().sink = this;
    acdbHostApplicationServices()->setWorkingDatabase(&dessin);
  }
  ~SelectionnerCode() override {
    acedPorts() = m_ports;
    acdbHostApplicationServices()->setWorkingDatabase(m_dessin);
  }
  std::optional<std::string> readLine(const std::string&) override {
    if (m_suivante == lignes.size()) return std::nullopt;
    return lignes[m_suivante++];
  }
  void print(const std::string& texte) override { sortie += texte; }

  /// The code chosen by these lines, 0 when cancelled.
  int choisir(std::vector<std::string> reponses) {
    lignes = std::move(reponses);
    m_suivante = 0;
    int code = 0;
    const bool choisi = selectionnerCode(code);
    EXPECT_EQ(m_suivante, lignes.size());
    return choisi ? code : 0;
  }
  /// Adds a point block, or an entity that is none, which is then the drawing's last.
  void ajouter(const wchar_t* code) {
    AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId(), AcDb::kForWrite);
    AcDbObjectId id;
    if (!code) {
      auto* cercle = new AcDbCircle({0, 0, 0}, {0, 0, 1}, 1.0);
      ASSERT_EQ(espace->appendAcDbEntity(id, cercle), Acad::eOk);
      cercle->close();
      return;
    }
    auto* bloc = new AcDbBlockReference({0, 0, 0}, dessin.paperSpaceId());
    ASSERT_EQ(espace->appendAcDbEntity(id, bloc), Acad::eOk);
    auto* attribut = new AcDbAttribute({0, 0, 0}, code, L"code");
    ASSERT_EQ(bloc->appendAttribute(attribut), Acad::eOk);
    attribut->close();
    bloc->close();
  }

  AcDbDatabase dessin{true, true};
  std::vector<std::string> lignes;
  std::string sortie;

private:
  AcEdPorts m_ports;
  AcDbDatabase* m_dessin;
  std::size_t m_suivante = 0;
};

TEST_F(SelectionnerCode, IsTypedPickedOrTakenAgain) {
  EXPECT_EQ(choisir({"12"}), 12);
  EXPECT_EQ(choisir({""}), 12) << "the last one";
  EXPECT_EQ(choisir({"t"}), kTousLesCodes);
  EXPECT_EQ(choisir({"*Annuler*"}), 0);
  EXPECT_NE(sortie.find("Code à utiliser / Tous / Sel [12]"), std::string::npos) << sortie;

  ajouter(L"0");
  EXPECT_EQ(choisir({"S", "DERNIER", "T"}), kTousLesCodes) << "a code below 1 is asked again";
  ajouter(nullptr);
  EXPECT_EQ(choisir({"DERNIER", "*Annuler*"}), 0) << "picking is remembered";
  EXPECT_NE(sortie.find("\nCe n'est pas un block Veltora"), std::string::npos) << sortie;
  ajouter(L"34");
  EXPECT_EQ(choisir({"DERNIER"}), 34);
  EXPECT_EQ(choisir({"C", ""}), 34) << "typing again, with the picked code";
}

TEST_F(SelectionnerCode, IsCancelledAtTheEndOfTheInputAndWithoutADrawing) {
  EXPECT_EQ(choisir({}), 0);
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  EXPECT_EQ(choisir({}), 0);
}

}  // namespace

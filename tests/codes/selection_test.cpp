// The choice of a code at the command line.
#include "arx/ed_support.h"
#include "codes/selectionner_code.h"

namespace {
using namespace veltora;

/// Prompts answered by lines in a drawing; what was printed is kept.
class SelectionnerCode : public DrawingTest {
protected:
  /// The code chosen by these lines, 0 when cancelled.
  int choisir(std::initializer_list<const char*> reponses) {
    source.lines.assign(reponses.begin(), reponses.end());
    int code = 0;
    const bool choisi = selectionnerCode(code);
    EXPECT_TRUE(source.lines.empty());
    return choisi ? code : 0;
  }
  /// Adds a point block, which is then the drawing's last entity.
  void ajouter(const wchar_t* code) {
    const AcDbObjectId id = append(*db, new AcDbBlockReference({0, 0, 0}, db->paperSpaceId()));
    auto* attribut = new AcDbAttribute({0, 0, 0}, code, L"code");
    ASSERT_EQ(AcDbObjectPointer<AcDbBlockReference>(id, AcDb::kForWrite)->appendAttribute(attribut),
              Acad::eOk);
    attribut->close();
  }
};

TEST_F(SelectionnerCode, IsTypedPickedOrTakenAgain) {
  EXPECT_EQ(choisir({"12"}), 12);
  EXPECT_EQ(choisir({""}), 12) << "the last one";
  EXPECT_EQ(choisir({"t"}), kTousLesCodes);
  EXPECT_EQ(choisir({"*Annuler*"}), 0);
  EXPECT_TRUE(transcript.has("Code à utiliser / Tous / Sel [12]")) << transcript.text;

  ajouter(L"0");
  EXPECT_EQ(choisir({"S", "DERNIER", "T"}), kTousLesCodes) << "a code below 1 is asked again";
  point(0, 0);
  EXPECT_EQ(choisir({"DERNIER", "*Annuler*"}), 0) << "picking is remembered";
  EXPECT_TRUE(transcript.has("\nCe n'est pas un block Veltora")) << transcript.text;
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

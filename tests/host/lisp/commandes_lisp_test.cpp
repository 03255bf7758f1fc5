// The functions named "c:" are commands: typed without these letters, or with them.

#include "arx/ap/apsession.h"
#include "host/lisp/table_lisp.h"
#include "support/dialog_script.h"
#include "support/module_essai.h"

namespace {

using namespace veltora;

class CommandesLisp : public ModuleEssai {};

TEST_F(CommandesLisp, areTypedByTheirNames) {
  AcApSession session;
  int nombre = 0;
  for (const fonctionLisp& fonction : tableFonctionsLisp) {
    const std::wstring nom = fonction.nom ? fonction.nom : L"";
    if (base::toLower(nom.substr(0, 2)) != L"c:") continue;
    ++nombre;
    for (const std::wstring& tape :
         {nom.substr(2), base::toUpper(nom), L"_." + base::toLower(nom.substr(2))}) {
      DialogScript aucune({});  // dialogs and prompts are cancelled
      EXPECT_TRUE(session.runCommand(tape)) << base::toUtf8(tape);
    }
    EXPECT_FALSE(acedCommandStack()->lookupCmd(nom.c_str())) << base::toUtf8(nom);
  }
  EXPECT_EQ(nombre, 15);
  EXPECT_EQ(imprime.find("inconnue"), std::string::npos) << imprime;
  EXPECT_EQ(dessin->undoLog().depth(), 0) << "nothing is left open";
}

}  // namespace

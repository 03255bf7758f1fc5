#include "codes/legend/description_bloc.h"

#include "arx/db/dbents.h"
#include "arx/db/dbmain.h"
#include "core/extension_record.h"

#include <algorithm>

namespace veltora {
namespace {

constexpr const wchar_t* kCle = L"BLOCKINFO_VELTORA";
constexpr int kMarque = 12744721;  // 0xC27811

/// The description in the record of an object; empty without one, and for a record of another kind.
std::wstring descriptionGardee(const AcDbObject& objet) {
  chaineResbuf chaine(storedRecord(objet, kCle));
  ResbufSerializer flux(&chaine);
  int marque = 0;
  AcString texte;
  flux.rewind();
  if (!flux.readInt(marque) || marque != kMarque || !flux.readAcString(texte)) texte.clear();
  return texte;
}

bool garderDescription(AcDbObject& objet, const std::wstring& description) {
  chaineResbuf chaine;
  ResbufSerializer flux(&chaine);
  return flux.writeInt(kMarque) && flux.writeAcString(description) && storeRecord(objet, kCle, chaine);
}

}  // namespace

std::vector<std::wstring> descriptionsBloc(const AcDbObjectId& bloc) {
  std::vector<std::wstring> textes;
  const auto ajouter = [&textes](const std::wstring& texte) {
    if (!texte.empty() && std::find(textes.begin(), textes.end(), texte) == textes.end())
      textes.push_back(texte);
  };
  const AcDbObjectPointer<AcDbBlockTableRecord> definition(bloc);
  if (definition.openStatus() != Acad::eOk) return textes;
  ajouter(definition->comments());
  ajouter(descriptionGardee(*definition));
  for (const AcDbObjectId& id : definition->entities()) {
    const AcDbObjectPointer<AcDbEntity> entite(id);
    const std::wstring texte = entite.openStatus() == Acad::eOk ? descriptionGardee(*entite) : std::wstring();
    ajouter(texte);
    if (!texte.empty()) break;
  }
  return textes;
}

std::wstring descriptionBloc(const AcDbObjectId& bloc) {
  const std::vector<std::wstring> textes = descriptionsBloc(bloc);
  if (!textes.empty()) return textes.front();
  const AcDbObjectPointer<AcDbBlockTableRecord> definition(bloc);
  return definition.openStatus() == Acad::eOk ? definition->name() : std::wstring();
}

bool decrireBloc(const AcDbObjectId& bloc, const std::wstring& description) {
  const AcDbObjectPointer<AcDbBlockTableRecord> definition(bloc, AcDb::kForWrite);
  if (definition.openStatus() != Acad::eOk || definition->setComments(description.c_str()) != Acad::eOk)
    return false;
  for (const AcDbObjectId& id : definition->entities()) {
    if (!id.isLive()) continue;
    const AcDbObjectPointer<AcDbEntity> premiere(id, AcDb::kForWrite);
    if (premiere.openStatus() == Acad::eOk && !garderDescription(*premiere, description)) return false;
    break;
  }
  return garderDescription(*definition, description);
}

}  // namespace veltora

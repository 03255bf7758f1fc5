#include "core/block_attributes.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbblocktable.h"
#include "base/text.h"

#include <memory>

namespace veltora {

int lireAttribut(const AcDbBlockReference& bloc, const AcString& etiquette, AcString& valeur) {
  const std::unique_ptr<AcDbObjectIterator> attributs(bloc.attributeIterator());
  for (; !attributs->done(); attributs->step()) {
    const AcDbObjectPointer<AcDbAttribute> attribut(attributs->objectId());
    if (attribut.openStatus() != Acad::eOk || base::compareNoCase(attribut->tagConst(), etiquette) != 0)
      continue;
    valeur = attribut->textString();
    return 1;
  }
  return 0;
}

int ecrireAttributs(const AcDbBlockReference& bloc, std::span<const valeurAttribut> valeurs) {
  int nombre = 0;
  const std::unique_ptr<AcDbObjectIterator> attributs(bloc.attributeIterator());
  for (; !attributs->done(); attributs->step()) {
    const AcDbObjectPointer<AcDbAttribute> attribut(attributs->objectId(), AcDb::kForWrite);
    if (attribut.openStatus() != Acad::eOk) continue;
    for (const valeurAttribut& paire : valeurs) {
      if (base::compareNoCase(attribut->tagConst(), paire.etiquette) != 0) continue;
      attribut->setTextString(paire.valeur);
      ++nombre;
    }
    if (!attribut->isDefaultAlignment()) attribut->adjustAlignment();
  }
  return nombre;
}

int ecrireAttribut(const AcDbObjectId& id, const AcString& etiquette, const AcString& valeur) {
  const AcDbObjectPointer<AcDbBlockReference> bloc(id, AcDb::kForWrite);
  if (bloc.openStatus() != Acad::eOk || bloc->isA() != AcDbBlockReference::desc()) return 0;
  const valeurAttribut paire{etiquette, valeur};
  return ecrireAttributs(*bloc, {&paire, 1});
}

void ajouterAttributs(AcDbBlockReference& bloc) {
  const AcDbObjectPointer<AcDbBlockTableRecord> definition(bloc.blockTableRecord());
  if (definition.openStatus() != Acad::eOk) return;
  for (const AcDbObjectId& id : definition->entities()) {
    const AcDbObjectPointer<AcDbAttributeDefinition> modele(id);
    if (modele.openStatus() != Acad::eOk || modele->isConstant()) continue;
    auto attribut = std::make_unique<AcDbAttribute>();
    if (attribut->setAttributeFromBlock(modele.object(), bloc.blockTransform()) == Acad::eOk &&
        bloc.appendAttribute(attribut.get()) == Acad::eOk)
      attribut.release()->close();
  }
}

void montrerAttribut(AcDbAttribute& attribut, bool visible) {
  attribut.setInvisible(!visible);
  attribut.setVisibility(visible ? AcDb::kVisible : AcDb::kInvisible);
}

}  // namespace veltora

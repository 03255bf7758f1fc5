#include "arx/ap/commands_layer.h"

#include "arx/ap/acdocman.h"
#include "arx/ap/commands_shared.h"
#include "arx/ed/edinput.h"
#include "arx/ed/edports.h"
#include "base/text.h"

#include <functional>
#include <vector>

namespace base = veltora::base;
using arx_commands::keywordGiven;
using arx_commands::recordNamed;

namespace {

using Record = AcDbLayerTableRecord;

/// Names of a list parted by commas.
std::vector<std::wstring> namesOf(const std::wstring& list) {
  std::vector<std::wstring> names;
  for (std::size_t from = 0; from <= list.size();) {
    const std::size_t comma = std::min(list.find(L',', from), list.size());
    if (std::wstring name = base::trim(list.substr(from, comma - from)); !name.empty())
      names.push_back(std::move(name));
    from = comma + 1;
  }
  return names;
}

/// Asks for layers and does something to each of them; patterns as `acutWcMatch` knows them, an empty line
/// for the current layer.
void forLayers(AcDbDatabase& database, const std::wstring& what, const std::function<void(Record&)>& work) {
  const AcDbObjectPointer<Record> current(database.clayer());
  const std::wstring name = current ? current->name() : L"0";
  std::wstring list;
  if (acedGetString(1, (L"\n" + what + L" <" + name + L"> : ").c_str(), list) != RTNORM) return;
  if (current) current->close();
  if (base::trim(list).empty()) list = name;
  const AcDbObjectPointer<AcDbLayerTable> layers(database.layerTableId());
  int count = 0;
  for (const AcDbObjectId id : layers ? layers->records() : std::vector<AcDbObjectId>()) {
    const AcDbObjectPointer<Record> layer(id, AcDb::kForWrite);
    if (!layer || acutWcMatch(base::toUpper(layer->name()).c_str(), base::toUpper(list).c_str()) != RTNORM)
      continue;
    work(*layer);
    ++count;
  }
  if (count == 0) acutPrintf(L"\nAucun calque ne correspond à \"%s\".\n", list);
}

/// Makes a layer where there is none. @return null, with a message, for a name that drawings forbid
AcDbObjectId make(AcDbDatabase& database, const std::wstring& name) {
  AcDbObjectId id = recordNamed(database.layerTableId(), name);
  if (!id.isNull()) return id;
  const AcDbObjectPointer<AcDbLayerTable> layers(database.layerTableId(), AcDb::kForWrite);
  auto record = std::make_unique<Record>();
  if (!layers || record->setName(name.c_str()) != Acad::eOk || layers->add(id, record.get()) != Acad::eOk) {
    acedRefuse(L"Nom de calque refusé : \"" + name + L"\".");
    return {};
  }
  record.release()->close();
  return id;
}

void makeCurrent(AcDbDatabase& database, const std::wstring& name, bool making) {
  const AcDbObjectId id = making ? make(database, name) : recordNamed(database.layerTableId(), name);
  if (!id.isNull())
    database.setClayer(id);
  else if (!making)
    acedRefuse(L"Calque inconnu : \"" + name + L"\".");
}

struct Colour {
  const wchar_t* word;
  int index;
};
constexpr Colour kColours[] = {{L"Red", 1},  {L"Yellow", 2},  {L"Green", 3}, {L"Cyan", 4},
                               {L"Blue", 5}, {L"Magenta", 6}, {L"White", 7}};

void colour(AcDbDatabase& database) {
  acedInitGet(RSG_NOZERO | RSG_NONEG,
              L"ROuge Jaune Vert Cyan Bleu Magenta BLanc _Red Yellow Green Cyan Blue Magenta White");
  int index = 7;
  const int status = acedGetInt(L"\nCouleur, nom ou numéro de 1 à 255 : ", &index);
  if (status == RTKWORD) {
    const std::wstring word = keywordGiven();
    for (const Colour& row : kColours) {
      if (word == row.word) index = row.index;
    }
  } else if (status != RTNORM) {
    return;
  }
  if (index > 255) return acedRefuse(L"Une couleur va de 1 à 255.");
  AcCmColor given;
  given.setColorIndex(index);
  forLayers(database, L"Calques de cette couleur", [&](Record& layer) { layer.setColor(given); });
}

void linetype(AcDbDatabase& database) {
  std::wstring name;
  if (acedGetString(1, L"\nType de ligne : ", name) != RTNORM) return;
  const AcDbObjectId id = recordNamed(database.linetypeTableId(), name);
  if (id.isNull()) return acedRefuse(L"Type de ligne inconnu dans ce dessin : \"" + name + L"\".");
  forLayers(database, L"Calques de ce type de ligne", [&](Record& layer) { layer.setLinetypeObjectId(id); });
}

void askNames(const wchar_t* prompt, const std::function<void(const std::wstring&)>& work) {
  std::wstring list;
  if (acedGetString(1, prompt, list) != RTNORM) return;
  for (const std::wstring& name : namesOf(list)) work(name);
}

void freeze(AcDbDatabase& database, Record& layer) {
  if (layer.objectId() == database.clayer())
    acedPrompt(L"\nLe calque courant ne se gèle pas.\n");
  else
    layer.setIsFrozen(true);
}

void run(AcDbDatabase& database, const std::wstring& option) {
  const auto each = [&](const wchar_t* what, const std::function<void(Record&)>& work) {
    forLayers(database, what, work);
  };
  if (option == L"Make" || option == L"Set")
    return askNames(
        option == L"Make" ? L"\nNom du calque à créer et à rendre courant : " : L"\nCalque courant : ",
        [&](const std::wstring& name) { makeCurrent(database, name, option == L"Make"); });
  if (option == L"New")
    return askNames(L"\nNoms des calques : ", [&](const std::wstring& name) { make(database, name); });
  if (option == L"Color") return colour(database);
  if (option == L"Ltype") return linetype(database);
  if (option == L"ON") return each(L"Calques à montrer", [](Record& l) { l.setIsOff(false); });
  if (option == L"OFF") return each(L"Calques à cacher", [](Record& l) { l.setIsOff(true); });
  if (option == L"Freeze") return each(L"Calques à geler", [&](Record& l) { freeze(database, l); });
  if (option == L"Thaw") return each(L"Calques à libérer", [](Record& l) { l.setIsFrozen(false); });
  if (option == L"LOck") return each(L"Calques à verrouiller", [](Record& l) { l.setIsLocked(true); });
  each(L"Calques à déverrouiller", [](Record& l) { l.setIsLocked(false); });
}

}  // namespace

void arx_commands::layer() {
  AcApDocument* const document = curDoc();
  if (!document) return;
  for (;;) {
    acedInitGet(0,
                L"CRéer CHoisir Nouveau cOuleur TLigne ACtif Inactif Geler Libérer Verrouiller Déverrouiller "
                L"_Make Set New Color Ltype ON OFF Freeze Thaw LOck Unlock");
    std::wstring option;
    const int status = acedGetKword(
        L"\nOption "
        L"[CRéer/CHoisir/Nouveau/cOuleur/TLigne/ACtif/Inactif/Geler/Libérer/Verrouiller/Déverrouiller] : ",
        option);
    if (status != RTNORM) return;
    run(*document->database(), option);
  }
}

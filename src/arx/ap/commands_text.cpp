#include "arx/ap/commands_text.h"

#include "arx/ap/acdocman.h"
#include "arx/ap/commands_shared.h"
#include "arx/db/dballents.h"
#include "arx/ed/edinput.h"
#include "arx/ed/edports.h"
#include "arx/ed/edvars.h"
#include "base/format.h"
#include "base/paths.h"
#include "base/text.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace base = veltora::base;
using arx_commands::askPoint;
using arx_commands::keywordGiven;
using arx_commands::recordNamed;

namespace {

struct Justification {
  const wchar_t* keyword;
  AcDb::TextHorzMode horizontal;
  AcDb::TextVertMode vertical;
};
constexpr Justification kJustifications[] = {
    {L"Left", AcDb::kTextLeft, AcDb::kTextBase},    {L"Center", AcDb::kTextCenter, AcDb::kTextBase},
    {L"Right", AcDb::kTextRight, AcDb::kTextBase},  {L"Middle", AcDb::kTextMid, AcDb::kTextBase},
    {L"TL", AcDb::kTextLeft, AcDb::kTextTop},       {L"TC", AcDb::kTextCenter, AcDb::kTextTop},
    {L"TR", AcDb::kTextRight, AcDb::kTextTop},      {L"ML", AcDb::kTextLeft, AcDb::kTextVertMid},
    {L"MC", AcDb::kTextCenter, AcDb::kTextVertMid}, {L"MR", AcDb::kTextRight, AcDb::kTextVertMid},
    {L"BL", AcDb::kTextLeft, AcDb::kTextBottom},    {L"BC", AcDb::kTextCenter, AcDb::kTextBottom},
    {L"BR", AcDb::kTextRight, AcDb::kTextBottom},
};
constexpr const wchar_t* kJustifyWords =
    L"Gauche Centre Droite Milieu HG HC HD MG MC MD BG BC BD "
    L"_Left Center Right Middle TL TC TR ML MC MR BL BC BR";

/// Asks where a text stands and how it is aligned there. @return false when the user leaves
bool askPlace(AcGePoint3d& at, Justification& how) {
  for (;;) {
    const int status = askPoint(L"\nPoint de départ ou [Justifier] : ", at, nullptr,
                                L"Justifier Gauche Centre Droite Milieu HG HC HD MG MC MD BG BC BD "
                                L"_Justify Left Center Right Middle TL TC TR ML MC MR BL BC BR");
    if (status != RTKWORD) return status == RTNORM;
    std::wstring word = keywordGiven();
    if (word == L"Justify") {
      acedInitGet(RSG_NONULL, kJustifyWords);
      if (acedGetKword(L"\nJustification [Gauche/Centre/Droite/Milieu/HG/HC/HD/MG/MC/MD/BG/BC/BD] : ",
                       word) != RTNORM)
        return false;
    }
    for (const Justification& row : kJustifications) {
      if (word == row.keyword) how = row;
    }
  }
}

/// A number with what an empty line means. @return false when the user leaves
bool askWithDefault(int (*ask)(const ads_point, const ACHAR*, ads_real*), int bits,
                    const std::wstring& prompt, const AcGePoint3d& from, double& value) {
  const ads_point base_ = {from.x, from.y, from.z};
  acedInitGet(bits, nullptr);
  const int status = ask(base_, prompt.c_str(), &value);
  return status == RTNORM || status == RTNONE;
}

double fixedHeight(AcDbObjectId style) {
  const AcDbObjectPointer<AcDbTextStyleTableRecord> record(style);
  return record ? record->textSize() : 0.0;
}

/// The block of this name, else the one that a drawing file makes; null, with a message, when there is
/// neither.
AcDbObjectId blockOf(AcDbDatabase& database, const std::wstring& typed) {
  const std::filesystem::path file = base::cheminDuTexte(typed);
  const std::wstring name =
      file.has_parent_path() || file.has_extension() ? base::texteDuChemin(file.stem()) : typed;
  AcDbObjectId block = recordNamed(database.blockTableId(), name);
  if (!block.isNull()) return block;
  AcDbDatabase source(false, true);
  std::wstring message;
  const std::wstring path = file.has_extension() ? typed : typed + L".dwg";
  if (source.readDwgFile(path.c_str(), &message) != Acad::eOk) {
    acedRefuse(L"Bloc \"" + typed + L"\" introuvable : " + message);
    return {};
  }
  if (database.insert(block, name.c_str(), &source) != Acad::eOk) block.setNull();
  return block;
}

/// A variable attribute of a block and the text that it gets.
struct AttributeText {
  AcDbObjectId definition;
  std::wstring text;
};

/// Asks for the texts of a block's attributes. @return false when the user leaves
bool askAttributes(AcDbObjectId blockId, std::vector<AttributeText>& attributes) {
  const AcDbObjectPointer<AcDbBlockTableRecord> block(blockId);
  resbuf asks{};
  const bool asking = acedGetVar(L"ATTREQ", &asks) != RTNORM || asks.resval.rint != 0;
  for (const AcDbObjectId id : block ? block->entities() : std::vector<AcDbObjectId>()) {
    const AcDbObjectPointer<AcDbAttributeDefinition> definition(id);
    if (!definition || definition->isConstant()) continue;
    std::wstring text = definition->textString();
    if (asking && !definition->isPreset()) {
      const std::wstring word = definition->prompt().empty() ? definition->tag() : definition->prompt();
      std::wstring given;
      if (acedGetString(1, (L"\n" + word + L" <" + text + L"> : ").c_str(), given) != RTNORM) return false;
      if (!given.empty()) text = given;
    }
    attributes.push_back({id, text});
  }
  return true;
}

void addAttributes(AcDbBlockReference& reference, const std::vector<AttributeText>& attributes) {
  for (const AttributeText& one : attributes) {
    const AcDbObjectPointer<AcDbAttributeDefinition> definition(one.definition);
    auto attribute = std::make_unique<AcDbAttribute>();
    if (!definition || attribute->setAttributeFromBlock(definition, reference.blockTransform()) != Acad::eOk)
      continue;
    attribute->setTextString(one.text.c_str());
    if (reference.appendAttribute(attribute.get()) == Acad::eOk) attribute.release()->close();
  }
}

}  // namespace

namespace arx_commands {

void text() {
  AcApDocument* const document = curDoc();
  if (!document) return;
  AcDbDatabase& database = *document->database();
  AcGePoint3d at;
  Justification how = kJustifications[0];
  if (!askPlace(at, how)) return;
  double height = fixedHeight(database.textstyle());
  if (height <= 0.0) {
    height = database.headerReal("TEXTSIZE", 2.5);
    const std::wstring prompt = base::formater(std::wstring(L"\nHauteur <%.4f> : "), height);
    if (!askWithDefault(acedGetDist, RSG_NOZERO | RSG_NONEG, prompt, at, height)) return;
    resbuf size{};
    size.restype = RTREAL;
    size.resval.rreal = height;
    acedSetVar(L"TEXTSIZE", &size);
  }
  double rotation = 0.0;
  if (!askWithDefault(acedGetAngle, 0, L"\nAngle de rotation, en degrés <0> : ", at, rotation)) return;
  std::wstring written;
  if (acedGetString(1, L"\nTexte : ", written) != RTNORM || written.empty()) return;
  auto drawn = std::make_unique<AcDbText>(at, written.c_str(), database.textstyle(), height, rotation);
  if (how.horizontal != AcDb::kTextLeft || how.vertical != AcDb::kTextBase) {
    drawn->setHorizontalMode(how.horizontal);
    drawn->setVerticalMode(how.vertical);
    drawn->setAlignmentPoint(at);
  }
  add(std::move(drawn));
}

void insert() {
  AcApDocument* const document = curDoc();
  std::wstring name;
  if (!document || acedGetString(1, L"\nNom du bloc : ", name) != RTNORM || name.empty()) return;
  const AcDbObjectId block = blockOf(*document->database(), name);
  AcGePoint3d at;
  if (block.isNull() || askPoint(L"\nPoint d'insertion : ", at) != RTNORM) return;
  AcGeScale3d scale;
  if (!askWithDefault(acedGetDist, RSG_NOZERO, L"\nFacteur d'échelle en X <1> : ", at, scale.sx)) return;
  scale.sy = scale.sx;
  if (!askWithDefault(acedGetDist, RSG_NOZERO, L"\nFacteur d'échelle en Y <comme en X> : ", at, scale.sy))
    return;
  scale.sz = scale.sx;
  double rotation = 0.0;
  if (!askWithDefault(acedGetAngle, 0, L"\nAngle de rotation, en degrés <0> : ", at, rotation)) return;
  std::vector<AttributeText> attributes;
  if (!askAttributes(block, attributes)) return;
  auto made = std::make_unique<AcDbBlockReference>(at, block);
  made->setScaleFactors(scale);
  made->setRotation(rotation);
  const AcDbObjectPointer<AcDbBlockReference> reference(add(std::move(made)), AcDb::kForWrite);
  if (reference) addAttributes(*reference, attributes);
}

}  // namespace arx_commands

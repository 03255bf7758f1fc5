// ResbufSerializer: group codes, chunks, and what a reader does with items that are not what it asks for.

#include "arx/db/dblines.h"
#include "arx/db/dbmain.h"
#include "core/resbuf_serializer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <vector>

namespace {

using namespace veltora;

std::vector<int> codes(const chaineResbuf& chaine) {
  std::vector<int> liste;
  for (const resbuf* element = chaine.tete; element; element = element->rbnext)
    liste.push_back(element->restype);
  return liste;
}

/// The place of a virtual operation in the table of its class, as this platform's pointers to members hold
/// it.
template <class Operation>
long slot(Operation operation) {
  std::uintptr_t words[2];
  static_assert(sizeof operation == sizeof words);
  std::memcpy(words, &operation, sizeof words);
#if defined(__aarch64__)
  return static_cast<long>(words[0] / sizeof(void*));
#else
  return static_cast<long>((words[0] - 1) / sizeof(void*));
#endif
}

TEST(SerializerChaine, theOrderOfTheOperationsIsPartOfTheInterface) {
  using S = VeltoraSerializer;
  const long slots[] = {
      slot(&S::rewind),        slot(&S::peekMark),     slot(&S::testMark),      slot(&S::writeMark),
      slot(&S::writeAcString), slot(&S::writeBool),    slot(&S::writeObjectId), slot(&S::writeShort),
      slot(&S::writeByte),     slot(&S::writeChar),    slot(&S::writeDouble),   slot(&S::writeBytes),
      slot(&S::writeInt),      slot(&S::writeString),  slot(&S::writeEnum),     slot(&S::readAcString),
      slot(&S::readBool),      slot(&S::readObjectId), slot(&S::readByte),      slot(&S::readChar),
      slot(&S::readDouble),    slot(&S::readBytes),    slot(&S::readInt),       slot(&S::readString),
      slot(&S::readShort),     slot(&S::readEnum)};
  for (long i = 0; i < 26; ++i) EXPECT_EQ(slots[i], i);
}

TEST(SerializerChaine, writesTheToldGroupCodes) {
  struct {
    const char* nom;
    std::function<int(VeltoraSerializer&)> ecrire;
    std::vector<int> codes;
  } const cas[] = {
      {"int", [](auto& s) { return s.writeInt(1); }, {90}},
      {"mark", [](auto& s) { return s.writeMark(1); }, {90}},
      {"bool", [](auto& s) { return s.writeBool(false); }, {90}},
      {"double", [](auto& s) { return s.writeDouble(1); }, {40}},
      {"short", [](auto& s) { return s.writeShort(1); }, {70}},
      {"byte", [](auto& s) { return s.writeByte(1); }, {280}},
      {"char", [](auto& s) { return s.writeChar('a'); }, {280}},
      {"text", [](auto& s) { return s.writeString(L"a"); }, {300}},
      {"empty text", [](auto& s) { return s.writeAcString(L""); }, {300}},
      {"enum", [](auto& s) { return s.writeEnum(1); }, {91}},
      {"null id", [](auto& s) { return s.writeObjectId(AcDbObjectId()); }, {90}},
      {"empty block", [](auto& s) { return s.writeBytes("", 0); }, {92}},
      {"10 bytes", [](auto& s) { return s.writeBytes("0123456789", 10); }, {92, 310}},
      {"300 bytes",
       [](auto& s) { return s.writeBytes(std::string(300, 'x').data(), 300); },
       {92, 310, 310, 310}},
  };
  for (const auto& c : cas) {
    chaineResbuf chaine;
    ResbufSerializer flux(&chaine);
    EXPECT_EQ(c.ecrire(flux), 1) << c.nom;
    EXPECT_EQ(codes(chaine), c.codes) << c.nom;
  }
}

TEST(SerializerChaine, cutsBlocksIntoChunksOf127BytesAndJoinsThem) {
  std::string bloc;
  for (int i = 0; i < 300; ++i) bloc.push_back(static_cast<char>(i));
  chaineResbuf chaine;
  ResbufSerializer flux(&chaine);
  flux.writeBytes(bloc.data(), 300);
  std::vector<int> tailles;
  for (const resbuf* e = chaine.tete->rbnext; e; e = e->rbnext) tailles.push_back(e->resval.rbinary.clen);
  EXPECT_EQ(tailles, (std::vector<int>{127, 127, 46}));
  std::string lu(300, '?');
  flux.rewind();
  EXPECT_EQ(flux.readBytes(lu.data(), 299), 0) << "another length leaves the cursor";
  EXPECT_EQ(flux.readBytes(lu.data(), 300), 1);
  EXPECT_EQ(lu, bloc);
  EXPECT_EQ(chaine.curseur, nullptr);
}

TEST(SerializerChaine, refusesBlocksWhoseChunksDoNotAddUp) {
  const auto morceau = [](short taille) {
    static char octets[200] = {};
    return acutBuildList(310, ads_binary{taille, octets}, RTNONE);
  };
  const std::vector<std::vector<resbuf*>> cas = {
      {},
      {morceau(4)},
      {morceau(4), acutBuildList(90, 1, RTNONE)},
      {morceau(11)},
      {morceau(5), morceau(6)},
      {morceau(5), morceau(0), morceau(5)},
  };
  for (const auto& elements : cas) {
    chaineResbuf chaine;
    ResbufSerializer flux(&chaine);
    chaine.ajouter(acutBuildList(92, 10, RTNONE));
    for (resbuf* element : elements) chaine.ajouter(element);
    char lu[10];
    flux.rewind();
    EXPECT_EQ(flux.readBytes(lu, 10), 0) << elements.size();
    EXPECT_EQ(chaine.curseur, chaine.tete);
  }
}

TEST(SerializerChaine, valuesComeBackAndOtherTypesLeaveTheCursor) {
  chaineResbuf chaine;
  ResbufSerializer flux(&chaine);
  flux.writeInt(-5);
  flux.writeDouble(1e38);
  flux.writeChar('\xE9');
  flux.writeByte(200);
  flux.writeString(L"Levé €");
  EXPECT_EQ(chaine.tete->rbnext->rbnext->resval.rint, -23) << "a char is sign-extended";
  flux.rewind();
  int entier = 0;
  double reel = 0;
  char lettre = 0;
  unsigned char octet = 0;
  CString texte;
  EXPECT_EQ(flux.readDouble(reel) + flux.readEnum(entier) + flux.readByte(octet) + flux.readString(texte), 0);
  EXPECT_EQ(flux.readInt(entier) + flux.readDouble(reel) + flux.readChar(lettre) + flux.readByte(octet) +
                flux.readString(texte),
            5);
  EXPECT_EQ(entier, -5);
  EXPECT_EQ(reel, 1e38);
  EXPECT_EQ(lettre, '\xE9');
  EXPECT_EQ(octet, 200);
  EXPECT_EQ(texte, L"Levé €");
  EXPECT_EQ(flux.readInt(entier), 0) << "end of the chain";
}

// Deliberate: other than in a file, where a match consumes the mark.
TEST(SerializerChaine, testMark_curseur_staysOnAMatch) {
  chaineResbuf chaine;
  ResbufSerializer flux(&chaine);
  EXPECT_EQ(flux.peekMark(), -1);
  flux.writeMark(7);
  flux.rewind();
  EXPECT_EQ(flux.testMark(7), 1);
  EXPECT_EQ(flux.testMark(7), 1);
  EXPECT_EQ(flux.testMark(8), 0);
  EXPECT_EQ(flux.peekMark(), 7);
}

TEST(SerializerChaine, aReferenceToWhatIsGoneReadsAsNull) {
  AcDbDatabase dessin;
  AcDbObjectId vivant;
  AcDbObjectId efface;
  {
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId(), AcDb::kForWrite);
    for (AcDbObjectId* id : {&vivant, &efface}) {
      auto* point = new AcDbPoint({1, 2, 3});
      ASSERT_EQ(espace->appendAcDbEntity(*id, point), Acad::eOk);
      point->close();
    }
  }
  chaineResbuf chaine;
  ResbufSerializer flux(&chaine);
  flux.writeObjectId(vivant);
  flux.writeObjectId(efface);
  flux.writeObjectId(AcDbObjectId());
  flux.writeInt(5);
  EXPECT_EQ(codes(chaine), (std::vector<int>{330, 330, 90, 90}));
  AcDbObjectPointer<AcDbPoint>(efface, AcDb::kForWrite)->erase();
  flux.rewind();
  AcDbObjectId lu;
  EXPECT_EQ(flux.readObjectId(lu), 1);
  EXPECT_EQ(lu, vivant);
  EXPECT_EQ(flux.readObjectId(lu), 1);
  EXPECT_TRUE(lu.isNull());
  lu = vivant;
  EXPECT_EQ(flux.readObjectId(lu), 1);
  EXPECT_TRUE(lu.isNull());
  EXPECT_EQ(flux.readObjectId(lu), 0) << "an integer that is not the sign of the null id";
}

}  // namespace

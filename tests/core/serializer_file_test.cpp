// FileSerializer: its bytes, and what a reader does with items that are not what it asks for.

#include "base/files.h"
#include "core/file_serializer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <stdexcept>

namespace {

using namespace veltora;
using namespace std::string_literals;

class SerializerFichier : public ::testing::Test {
protected:
  SerializerFichier() : chemin(base::creerFichierTemporaire(base::dossierTemporaire(), "SER")) {}
  ~SerializerFichier() override { std::filesystem::remove(chemin); }

  [[nodiscard]] std::string octets() const { return base::lireFichier(chemin).value_or("?"); }
  void remplir(const std::string& contenu) const { ASSERT_TRUE(base::remplacerFichier(chemin, contenu)); }

  std::filesystem::path chemin;
};

struct casOctets {
  const char* nom;
  std::function<int(VeltoraSerializer&)> ecrire;
  std::string octets;
};

TEST_F(SerializerFichier, writesTheToldBytes) {
  const casOctets cas[] = {
      {"int", [](auto& s) { return s.writeInt(-2); }, "i\xFE\xFF\xFF\xFF"s},
      {"bool", [](auto& s) { return s.writeBool(true); }, "i\1\0\0\0"s},
      {"enum", [](auto& s) { return s.writeEnum(5); }, "ei\5\0\0\0"s},
      {"short", [](auto& s) { return s.writeShort(-3); }, "s\xFD\xFF"s},
      {"double", [](auto& s) { return s.writeDouble(1.0); }, "d\0\0\0\0\0\0\xF0\x3F"s},
      {"mark", [](auto& s) { return s.writeMark(0x01020304); }, "\4\3\2\1"s},
      {"byte", [](auto& s) { return s.writeByte(200); }, "\xC8"s},
      {"char", [](auto& s) { return s.writeChar('A'); }, "A"s},
      {"block without a length", [](auto& s) { return s.writeBytes("a\0b", 3); }, "ba\0b"s},
      {"empty block", [](auto& s) { return s.writeBytes("", 0); }, "b"s},
      {"null id", [](auto& s) { return s.writeObjectId(AcDbObjectId()); }, "b\0\0\0\0\0\0\0\0"s},
      {"text in the code page", [](auto& s) { return s.writeString(L"é€"); }, "ci\2\0\0\0b\xE9\x80\0"s},
      {"text up to its zero", [](auto& s) { return s.writeAcString(std::wstring(L"ab\0cd", 5)); },
       "ci\2\0\0\0bab\0"s},
  };
  for (const casOctets& c : cas) {
    {
      FileSerializer flux(chemin.string(), true);
      ASSERT_TRUE(flux.estOuvert());
      EXPECT_EQ(c.ecrire(flux), 1) << c.nom;
    }
    EXPECT_EQ(octets(), c.octets) << c.nom;
  }
}

TEST_F(SerializerFichier, readsBackWhatItWroteInTheSameSession) {
  FileSerializer flux(chemin.string(), true);
  flux.writeString(L"Levé");
  flux.writeDouble(1e38);
  flux.writeShort(-7);
  flux.rewind();
  CString texte;
  double reel = 0;
  EXPECT_EQ(flux.readAcString(texte), 1);
  EXPECT_EQ(texte, L"Levé");
  EXPECT_EQ(flux.readDouble(reel), 1);
  EXPECT_EQ(reel, 1e38);
  flux.writeInt(4);  // over what was not read yet
  flux.rewind();
  int entier = 0;
  flux.readString(texte);
  flux.readDouble(reel);
  EXPECT_EQ(flux.readInt(entier), 1);
  EXPECT_EQ(entier, 4);
}

/// Every read that does not fit leaves value and place, so that the right one still succeeds.
TEST_F(SerializerFichier, aReadOfAnotherTypeLeavesTheStreamWhereItWas) {
  {
    FileSerializer flux(chemin.string(), true);
    flux.writeInt(42);
  }
  FileSerializer flux(chemin.string(), false);
  double reel = 3;
  short court = 3;
  int entier = 3;
  char bloc[4] = {};
  CString texte = L"x";
  AcDbObjectId id;
  EXPECT_EQ(flux.readDouble(reel) + flux.readShort(court) + flux.readEnum(entier) + flux.readBytes(bloc, 4) +
                flux.readString(texte) + flux.readObjectId(id),
            0);
  EXPECT_EQ(reel, 3);
  EXPECT_EQ(texte, L"x");
  EXPECT_EQ(flux.readInt(entier), 1);
  EXPECT_EQ(entier, 42);
  EXPECT_EQ(flux.readInt(entier), 0) << "end of the file";
  EXPECT_EQ(flux.writeInt(1), 0) << "opened for reading only";
}

TEST_F(SerializerFichier, refusesDamagedItems) {
  std::string longest = "ci\377\0\0\0b"s;
  longest.append(256, 'a');
  struct {
    const char* nom;
    std::string contenu;
  } const cas[] = {
      {"short text", "ci\5\0\0\0bab\0"s},
      {"negative length",
       "ci\xFF\xFF\xFF\xFF"
       "bab\0"s},
      {"huge length",
       "ci\xFF\xFF\xFF\x7F"
       "bab\0"s},
      {"text without block", "ci\2\0\0\0iab\0"s},
      {"no length", "cd\2\0\0\0bab\0"s},
      {"zero inside", "ci\3\0\0\0ba\0b\0"s},
      {"closing zero damaged", "ci\2\0\0\0babX"s},
      {"closing zero damaged, longest text", longest},
      {"cut in the length", "ci\2\0"s},
      {"nothing", ""s},
  };
  for (const auto& c : cas) {
    remplir(c.contenu);
    FileSerializer flux(chemin.string(), false);
    CString texte;
    EXPECT_EQ(flux.readString(texte), 0) << c.nom;
  }
  remplir("i\2\0\0\0"s);
  FileSerializer flux(chemin.string(), false);
  bool vrai = false;
  EXPECT_EQ(flux.readBool(vrai), 0) << "2 is no truth value";
  EXPECT_TRUE(vrai);
}

TEST_F(SerializerFichier, textsAreReadUpTo255AndWrittenUpTo1023Characters) {
  for (const std::size_t n : {std::size_t{0}, std::size_t{255}, std::size_t{256}, std::size_t{1023}}) {
    FileSerializer flux(chemin.string(), true);
    EXPECT_EQ(flux.writeString(CString(n, L'x')), 1);
    flux.rewind();
    CString texte;
    EXPECT_EQ(flux.readString(texte), n <= 255 ? 1 : 0) << n;
    EXPECT_EQ(texte.size(), n <= 255 ? n : 0U);
  }
  {
    FileSerializer flux(chemin.string(), true);
    EXPECT_THROW(flux.writeString(CString(1024, L'x')), std::range_error);
  }
  EXPECT_EQ(octets(), "") << "nothing of the text that was refused";
}

TEST_F(SerializerFichier, testMarkConsumesAMarkThatMatches) {
  FileSerializer flux(chemin.string(), true);
  flux.writeMark(7);
  flux.rewind();
  EXPECT_EQ(flux.testMark(8), 0);
  EXPECT_EQ(flux.peekMark(), 7);
  EXPECT_EQ(flux.testMark(7), 1);
  EXPECT_EQ(flux.testMark(7), 0);
  EXPECT_EQ(flux.peekMark(), -1);
}

TEST(SerializerFichierAbsent, everyOperationFails) {
  for (const std::string& chemin : {std::string("/nulle/part"), base::dossierTemporaire().string()}) {
    FileSerializer flux(chemin, false);
    int entier = 0;
    char bloc[2];
    EXPECT_FALSE(flux.estOuvert()) << chemin;
    EXPECT_EQ(flux.rewind() + flux.testMark(0) + flux.writeInt(1) + flux.writeString(L"a") +
                  flux.readInt(entier) + flux.readBytes(bloc, 2) + flux.readBytes(bloc, -1),
              0);
    EXPECT_EQ(flux.peekMark(), -1);
  }
}

}  // namespace

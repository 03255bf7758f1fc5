// What drawing files may look like: accepted, mended with a finding, or refused with file and line.
#include "arx/dxf_text.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

struct Refusal {
  const char* name;
  std::string text;
  const char* message;  // part of it
};
void PrintTo(const Refusal& row, std::ostream* out) { *out << row.name; }

class DxfRefusal : public testing::TestWithParam<Refusal> {};

TEST_P(DxfRefusal, namesFileAndLineAndLeavesTheDatabaseEmpty) {
  DxfLoaded drawing(GetParam().text);
  EXPECT_NE(drawing.status, Acad::eOk);
  EXPECT_NE(drawing.messageText().find("\"essai.dxf\""), std::string::npos) << drawing.messageText();
  EXPECT_NE(drawing.messageText().find(GetParam().message), std::string::npos) << drawing.messageText();
  EXPECT_TRUE(drawing.database.allObjects().empty());
  EXPECT_TRUE(drawing.database.headers().empty());
}

const std::string kHead = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1032\n0\nENDSEC\n";

INSTANTIATE_TEST_SUITE_P(
    All, DxfRefusal,
    testing::Values(
        Refusal{"empty", "", "le fichier est vide"},
        Refusal{"no drawing", "bonjour\nle monde\n", "ligne 1 : le code de groupe \"bonjour\""},
        Refusal{"wrong start", "1\nx\n", "ligne 2 : ce n'est pas un dessin DXF"},
        Refusal{"binary drawing", std::string("AC1032\0\0\0\0\1\2", 12), "dessin binaire"},
        Refusal{"binary text form", std::string("DXF binaire\r\n\x1a\0\0\0SECTION\0", 24), "fichier binaire"},
        Refusal{"no end", kHead, "ligne 10 : fichier tronqué : la fin (EOF) manque"},
        Refusal{"end within a section", kHead + "0\nSECTION\n2\nENTITIES\n0\nLINE\n",
                "la section ENTITIES n'est pas fermée"},
        Refusal{"end of file in a section", kHead + "0\nSECTION\n2\nOBJECTS\n0\nEOF\n",
                "ligne 16 : la section OBJECTS n'est pas fermée"},
        Refusal{"section in a section", kHead + "0\nSECTION\n2\nTABLES\n0\nSECTION\n2\nBLOCKS\n",
                "la section TABLES n'est pas fermée"},
        Refusal{"value missing", kHead + "0\nSECTION\n2",
                "ligne 13 : fichier tronqué : la valeur du groupe 2 manque"},
        Refusal{"bad group code", kHead + "0\nSECTION\n2\nENTITIES\n0\nLINE\nabc\n1\n",
                "ligne 17 : le code de groupe \"abc\" n'est pas un nombre"},
        Refusal{"bad real", dxfWithEntities("LINE|100 AcDbEntity|8 0|100 AcDbLine|10 x1"),
                "ligne 28 : valeur « x1 » du groupe 10"},
        Refusal{"loose table record", kHead + dxfText("SECTION|2 TABLES|LAYER|2 A|ENDSEC|EOF"),
                "hors d'une table"},
        Refusal{"record in another table",
                kHead + dxfText("SECTION|2 TABLES|TABLE|2 STYLE|LAYER|2 A|ENDTAB|ENDSEC|EOF"),
                "dans la table STYLE"},
        Refusal{"entity outside blocks", kHead + dxfText("SECTION|2 BLOCKS|LINE|8 0|ENDSEC|EOF"),
                "hors d'un bloc"},
        Refusal{"strange version", dxfWithEntities("", "AC2.22"), "version de dessin \"AC2.22\" inconnue"}));

struct Reading {
  const char* name;
  std::string text;
  const char* finding;  // part of one; empty for none
  std::string kept;     // part of what is saved
};
void PrintTo(const Reading& row, std::ostream* out) { *out << row.name; }

class DxfReading : public testing::TestWithParam<Reading> {};

TEST_P(DxfReading, isCompletedAndSavesTheSameTextAgain) {
  DxfLoaded drawing(GetParam().text);
  ASSERT_EQ(drawing.status, Acad::eOk) << drawing.messageText();
  const std::string wanted = GetParam().finding;
  const bool found =
      std::any_of(drawing.findings.begin(), drawing.findings.end(),
                  [&](const std::string& text) { return text.find(wanted) != std::string::npos; });
  EXPECT_TRUE(wanted.empty() ? drawing.findings.empty() : found) << testing::PrintToString(drawing.findings);
  for (const char* kind :
       {"VPORT", "LTYPE", "LAYER", "STYLE", "VIEW", "UCS", "APPID", "DIMSTYLE", "BLOCK_RECORD"}) {
    EXPECT_TRUE(drawing.database.tableId(kind).isValid()) << kind;
  }
  EXPECT_TRUE(drawing.database.modelSpaceId().isValid());
  EXPECT_TRUE(drawing.database.namedObjectsDictionaryId().isValid());
  const std::string first = drawing.saved();
  EXPECT_NE(first.find(GetParam().kept), std::string::npos) << first;
  DxfLoaded again(first);
  ASSERT_EQ(again.status, Acad::eOk) << again.messageText();
  EXPECT_TRUE(again.findings.empty()) << testing::PrintToString(again.findings);
  EXPECT_EQ(again.saved(), first);
  for (const AcDbObjectId id : again.database.allObjects()) EXPECT_LT(id.handle(), again.database.handseed());
}

std::string withReturns(std::string text) {
  for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2) text.insert(at, "\r");
  return text;
}

std::string withPage(const std::string& version, const std::string& page, const std::string& text) {
  return dxfText("SECTION|2 HEADER|9 $ACADVER|1 " + version + "|9 $DWGCODEPAGE|3 " + page +
                 "|9 $HANDSEED|5 500|ENDSEC|SECTION|2 ENTITIES|POINT|5 30|100 AcDbEntity|8 " + text +
                 "|100 AcDbPoint|10 1|20 2|30 3|ENDSEC|EOF");
}

const char* const kLine = "LINE|5 30|100 AcDbEntity|8 0|100 AcDbLine|10 1.5|20 2|30 0|11 3|21 4|31 0";

INSTANTIATE_TEST_SUITE_P(
    All, DxfReading,
    testing::Values(
        Reading{"nothing but a head", kHead + "0\nEOF\n", "", "  2\n*Model_Space\n"},
        Reading{"a line", dxfWithEntities(kLine), "", " 10\n1.5\n"},
        Reading{"line ends of two characters", withReturns(dxfWithEntities(kLine)), "", " 10\n1.5\n"},
        Reading{"byte order mark", "\xEF\xBB\xBF" + dxfWithEntities(kLine), "", " 10\n1.5\n"},
        Reading{"comments in front", "999\nfait à la main\n" + dxfWithEntities(kLine), "",
                "999\nfait à la main\n"},
        Reading{"no last line end", kHead + "0\nEOF", "", "AC1032"},
        Reading{"lone return in a text", withPage("AC1032", "ANSI_1252", "a\rb"), "", "  8\na^Mb\n"},
        Reading{"western page", withPage("AC1015", "ANSI_1252", "\xE9t\xE9 \x80"), "", "  8\nété €\n"},
        Reading{"greek page", withPage("AC1018", "ansi_1253", "\xE1"), "", "  8\nα\n"},
        Reading{"unknown page", withPage("AC1015", "KLINGON", "\xE9"), "", "  8\né\n"},
        Reading{"escaped characters", withPage("AC1015", "ANSI_1252", "\\U+00E9"), "", "  8\né\n"},
        Reading{"old version raised", withPage("AC1015", "ANSI_1252", "0"), "", "  1\nAC1021\n"},
        Reading{"newer version stays", withPage("AC1027", "ANSI_1252", "0"), "", "  1\nAC1027\n"},
        Reading{"wrong encoding", withPage("AC1032", "ANSI_1252", "\xE9"), "UTF-8", "  8\né\n"},
        Reading{"no seed", kHead + dxfText("SECTION|2 ENTITIES|LINE|8 A|LINE|5 7|8 A|ENDSEC|EOF"), "",
                "  5\n7\n"},
        Reading{"seed too low",
                dxfText("SECTION|2 HEADER|9 $ACADVER|1 AC1032|9 $HANDSEED|5 2|ENDSEC|SECTION|2 ENTITIES|"
                        "POINT|5 4|8 0|POINT|5 5|8 0|ENDSEC|EOF"),
                "", "POINT\n  5\n4\n"},
        Reading{"handle twice", dxfWithEntities("POINT|5 30|8 0|POINT|5 30|8 0"), "déjà pris", "POINT"},
        Reading{"handle out of range", dxfWithEntities("POINT|5 FFFFFFFFFFFFFFFF|8 0"), "inutilisable",
                "POINT"},
        Reading{"unknown layer", withPage("AC1032", "ANSI_1252", "Réseau"), "", "  2\nRéseau\n"},
        Reading{"vertex alone", dxfWithEntities("VERTEX|5 30|8 0|POINT|5 31|8 0|SEQEND|5 32|8 0"), "VERTEX",
                "POINT"},
        Reading{"no end of the vertices",
                dxfWithEntities("POLYLINE|5 30|100 AcDbEntity|8 0|100 AcDb3dPolyline|66 1|70 8|VERTEX|5 31|"
                                "100 AcDbEntity|8 0|100 AcDbVertex|100 AcDb3dPolylineVertex|10 1|20 2|30 3|"
                                "70 32|POINT|5 33|8 0"),
                "SEQEND", "SEQEND"},
        Reading{"unknown block",
                dxfWithEntities("INSERT|5 30|100 AcDbEntity|8 0|100 AcDbBlockReference|2 Absent|10 0|20 0|"
                                "30 0"),
                "", "  2\nAbsent\n"},
        Reading{"unknown things",
                dxfWithEntities("CHOSE|5 30|100 AcDbEntity|8 0|100 Inconnu|40 1.50|340 ABC|1001 APPLI|1000 "
                                "x"),
                "", "100\nInconnu\n 40\n1.50\n340\nABC\n1001\nAPPLI\n1000\nx\n"},
        Reading{"sections twice",
                kHead + dxfText("SECTION|2 ENTITIES|POINT|8 0|5 20|ENDSEC|SECTION|2 ENTITIES|POINT|8 0|5 "
                                "21|ENDSEC|SECTION|2 X|1 a|ENDSEC|SECTION|2 X|1 b|0 Y|5 FF|999 c|ENDSEC|"
                                "EOF"),
                "", "  2\nX\n  1\na\n  0\nENDSEC\n  0\nSECTION\n  2\nX\n  1\nb\n  0\nY\n  5\nFF\n999\nc\n"},
        Reading{"tables behind entities",
                kHead + dxfText("SECTION|2 ENTITIES|POINT|8 A|5 20|ENDSEC|SECTION|2 TABLES|TABLE|2 LAYER|5 "
                                "2|LAYER|5 10|2 A|70 0|62 3|6 CONTINUOUS|ENDTAB|TABLE|2 LAYER|5 3|LAYER|5 "
                                "11|2 B|70 0|ENDTAB|ENDSEC|EOF"),
                "", "POINT"},
        Reading{"block that shows itself",
                kHead + dxfText("SECTION|2 BLOCKS|BLOCK|5 20|8 0|2 A|10 0|20 0|30 0|INSERT|5 21|8 0|2 A|"
                                "ENDBLK|5 22|BLOCK|5 23|2 A|POINT|5 24|8 0|ENDBLK|5 25|ENDSEC|EOF"),
                "donné deux fois", "INSERT"},
        Reading{"dictionary that owns itself",
                kHead + dxfText("SECTION|2 OBJECTS|DICTIONARY|5 C|330 0|100 AcDbDictionary|3 A|350 D|"
                                "DICTIONARY|5 D|330 D|100 AcDbDictionary|3 B|350 D|ENDSEC|EOF"),
                "", "  3\nB\n350\nD\n"},
        Reading{"no version, no handles", dxfText("SECTION|2 ENTITIES|CIRCLE|8 A|10 1|20 2|40 5|ENDSEC|EOF"),
                "", "100\nAcDbCircle\n 10\n1.0\n 20\n2.0\n 30\n0.0\n 40\n5.0\n"},
        Reading{"no version, UTF-8", dxfText("SECTION|2 ENTITIES|POINT|8 é|10 1|20 2|ENDSEC|EOF"), "",
                "  8\né\n"},
        Reading{"old dimension",
                dxfText("SECTION|2 HEADER|9 $ACADVER|1 AC1009|ENDSEC|SECTION|2 TABLES|TABLE|2 DIMSTYLE|70 "
                        "1|DIMSTYLE|2 D|70 0|5 FLECHE|6 |40 1|ENDTAB|ENDSEC|SECTION|2 BLOCKS|BLOCK|8 0|2 "
                        "$MODEL_SPACE|10 0|20 0|ENDBLK|ENDSEC|SECTION|2 ENTITIES|DIMENSION|13 1|23 2|52 3|"
                        "8 A|2 *D1|10 4|20 5|70 0|1001 X|1000 y|ENDSEC|EOF"),
                "",
                "100\nAcDbDimension\n  2\n*D1\n 10\n4\n 20\n5\n 70\n0\n100\nAcDbAlignedDimension\n 13\n1\n "
                "23\n2\n100\nAcDbRotatedDimension\n 52\n3\n1001\nX\n"},
        Reading{"old polyline",
                dxfText("SECTION|2 HEADER|9 $ACADVER|1 AC1006|ENDSEC|SECTION|2 ENTITIES|POLYLINE|8 0|66 1|"
                        "70 8|VERTEX|8 0|10 1|20 2|30 3|70 32|SEQEND|8 0|SOLID|8 0|10 1|20 2|ENDSEC|EOF"),
                "", "100\nAcDb3dPolylineVertex\n 10\n1.0\n"},
        Reading{"no root",
                kHead + dxfText("SECTION|2 OBJECTS|XRECORD|5 D|330 C|100 AcDbXrecord|280 1|1 x|ENDSEC|EOF"),
                "", "XRECORD"}));

}  // namespace

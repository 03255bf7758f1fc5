#include "arx/dxf/dxfdefault.h"

#include <string_view>

namespace {

// One item a line: its type, then its groups ("code value") between bars.
constexpr std::string_view kHeader =
    R"(SECTION|2 HEADER|9 $ACADVER|1 AC1032|9 $ACADMAINTVER|90 0|9 $DWGCODEPAGE|3 ANSI_1252
|9 $REQUIREDVERSIONS|160 0|9 $INSBASE|10 0.0|20 0.0|30 0.0|9 $EXTMIN|10 1e+20|20 1e+20|30 1e+20
|9 $EXTMAX|10 -1e+20|20 -1e+20|30 -1e+20|9 $LIMMIN|10 0.0|20 0.0|9 $LIMMAX|10 420.0|20 297.0|9 $ORTHOMODE|70 0
|9 $REGENMODE|70 1|9 $FILLMODE|70 1|9 $QTEXTMODE|70 0|9 $MIRRTEXT|70 0|9 $LTSCALE|40 1.0|9 $ATTMODE|70 1
|9 $TEXTSIZE|40 2.5|9 $TRACEWID|40 1.0|9 $TEXTSTYLE|7 Standard|9 $CLAYER|8 0|9 $CELTYPE|6 ByLayer|9 $CECOLOR|62 256
|9 $CELTSCALE|40 1.0|9 $DISPSILH|70 0|9 $DIMSCALE|40 1.0|9 $DIMASZ|40 2.5|9 $DIMEXO|40 0.625|9 $DIMDLI|40 3.75
|9 $DIMEXE|40 1.25|9 $DIMTXT|40 2.5|9 $DIMGAP|40 0.625|9 $DIMTXSTY|7 Standard|9 $DIMSTYLE|2 Standard|9 $LUNITS|70 2
|9 $LUPREC|70 4|9 $SKETCHINC|40 1.0|9 $FILLETRAD|40 0.0|9 $AUNITS|70 0|9 $AUPREC|70 4|9 $ELEVATION|40 0.0
|9 $PELEVATION|40 0.0|9 $THICKNESS|40 0.0|9 $LIMCHECK|70 0|9 $ANGBASE|50 0.0|9 $ANGDIR|70 0|9 $PDMODE|70 0
|9 $PDSIZE|40 0.0|9 $PLINEWID|40 0.0|9 $SPLFRAME|70 0|9 $SPLINETYPE|70 6|9 $SPLINESEGS|70 8|9 $HANDSEED|5 40
|9 $WORLDVIEW|70 1|9 $UCSNAME|2 |9 $UCSORG|10 0.0|20 0.0|30 0.0|9 $UCSXDIR|10 1.0|20 0.0|30 0.0
|9 $UCSYDIR|10 0.0|20 1.0|30 0.0|9 $TILEMODE|70 1|9 $MAXACTVP|70 64|9 $UNITMODE|70 0|9 $VISRETAIN|70 1
|9 $PLINEGEN|70 0|9 $PSLTSCALE|70 1|9 $TREEDEPTH|70 3020|9 $CMLSTYLE|2 Standard|9 $CMLJUST|70 0|9 $CMLSCALE|40 20.0
|9 $PROXYGRAPHICS|70 1|9 $MEASUREMENT|70 1|9 $CELWEIGHT|370 -1|9 $ENDCAPS|280 0|9 $JOINSTYLE|280 0|9 $LWDISPLAY|290 0
|9 $INSUNITS|70 6|9 $HYPERLINKBASE|1 |9 $STYLESHEET|1 |9 $XEDIT|290 1|9 $CEPSNTYPE|380 0|9 $PSTYLEMODE|290 1
|9 $EXTNAMES|290 1|9 $PSVPSCALE|40 0.0
ENDSEC
SECTION|2 CLASSES
CLASS|1 ACDBDICTIONARYWDFLT|2 AcDbDictionaryWithDefault|3 Veltora|90 0|91 1|280 0|281 0
CLASS|1 ACDBPLACEHOLDER|2 AcDbPlaceHolder|3 Veltora|90 0|91 1|280 0|281 0
CLASS|1 LAYOUT|2 AcDbLayout|3 Veltora|90 0|91 2|280 0|281 0
ENDSEC
)";

constexpr std::string_view kTables = R"(SECTION|2 TABLES
TABLE|2 VPORT|5 8|330 0|100 AcDbSymbolTable|70 1
VPORT|5 29|330 8|100 AcDbSymbolTableRecord|100 AcDbViewportTableRecord|2 *Active|70 0|10 0.0|20 0.0|11 1.0|21 1.0
|12 210.0|22 148.5|13 0.0|23 0.0|14 10.0|24 10.0|15 10.0|25 10.0|16 0.0|26 0.0|36 1.0|17 0.0|27 0.0|37 0.0|40 297.0
|41 1.5|42 50.0|43 0.0|44 0.0|50 0.0|51 0.0|71 0|72 1000|73 1|74 3|75 0|76 0|77 0|78 0|281 0|65 1|146 0.0
ENDTAB
TABLE|2 LTYPE|5 5|330 0|100 AcDbSymbolTable|70 3
LTYPE|5 14|330 5|100 AcDbSymbolTableRecord|100 AcDbLinetypeTableRecord|2 ByBlock|70 0|3 |72 65|73 0|40 0.0
LTYPE|5 15|330 5|100 AcDbSymbolTableRecord|100 AcDbLinetypeTableRecord|2 ByLayer|70 0|3 |72 65|73 0|40 0.0
LTYPE|5 16|330 5|100 AcDbSymbolTableRecord|100 AcDbLinetypeTableRecord|2 Continuous|70 0|3 Solid line|72 65|73 0|40 0.0
ENDTAB
TABLE|2 LAYER|5 2|330 0|100 AcDbSymbolTable|70 1
LAYER|5 10|330 2|100 AcDbSymbolTableRecord|100 AcDbLayerTableRecord|2 0|70 0|62 7|6 Continuous|370 -3|390 F
ENDTAB
TABLE|2 STYLE|5 3|330 0|100 AcDbSymbolTable|70 1
STYLE|5 11|330 3|100 AcDbSymbolTableRecord|100 AcDbTextStyleTableRecord|2 Standard|70 0|40 0.0|41 1.0|50 0.0|71 0
|42 2.5|3 txt|4 
ENDTAB
TABLE|2 VIEW|5 6|330 0|100 AcDbSymbolTable|70 0
ENDTAB
TABLE|2 UCS|5 7|330 0|100 AcDbSymbolTable|70 0
ENDTAB
TABLE|2 APPID|5 9|330 0|100 AcDbSymbolTable|70 1
APPID|5 12|330 9|100 AcDbSymbolTableRecord|100 AcDbRegAppTableRecord|2 ACAD|70 0
ENDTAB
TABLE|2 DIMSTYLE|5 A|330 0|100 AcDbSymbolTable|70 1|100 AcDbDimStyleTable|71 1|340 27
DIMSTYLE|105 27|330 A|100 AcDbSymbolTableRecord|100 AcDbDimStyleTableRecord|2 Standard|70 0|41 2.5|42 0.625|43 3.75
|44 1.25|73 0|74 0|77 1|78 8|140 2.5|141 2.5|147 0.625|171 3|172 1|271 2|272 2|274 3|278 44|283 0|284 8|340 11
ENDTAB
TABLE|2 BLOCK_RECORD|5 1|330 0|100 AcDbSymbolTable|70 2
BLOCK_RECORD|5 1F|330 1|100 AcDbSymbolTableRecord|100 AcDbBlockTableRecord|2 *Model_Space|340 22|70 0|280 1|281 0
BLOCK_RECORD|5 1B|330 1|100 AcDbSymbolTableRecord|100 AcDbBlockTableRecord|2 *Paper_Space|340 1E|70 0|280 1|281 0
ENDTAB
ENDSEC
SECTION|2 BLOCKS
ENDSEC
SECTION|2 ENTITIES
ENDSEC
)";

constexpr std::string_view kObjects = R"(SECTION|2 OBJECTS
DICTIONARY|5 C|330 0|100 AcDbDictionary|281 1|3 ACAD_COLOR|350 2A|3 ACAD_GROUP|350 D|3 ACAD_LAYOUT|350 1A
|3 ACAD_MATERIAL|350 2B|3 ACAD_MLINESTYLE|350 17|3 ACAD_PLOTSETTINGS|350 19|3 ACAD_PLOTSTYLENAME|350 E
|3 ACAD_SCALELIST|350 2C|3 ACAD_TABLESTYLE|350 2D|3 ACAD_VISUALSTYLE|350 2E
DICTIONARY|5 2A|330 C|100 AcDbDictionary|281 1
DICTIONARY|5 D|330 C|100 AcDbDictionary|281 1
DICTIONARY|5 1A|330 C|100 AcDbDictionary|281 1|3 Model|350 22|3 Layout1|350 1E
DICTIONARY|5 2B|330 C|100 AcDbDictionary|281 1
DICTIONARY|5 17|330 C|100 AcDbDictionary|281 1|3 Standard|350 18
DICTIONARY|5 19|330 C|100 AcDbDictionary|281 1
ACDBDICTIONARYWDFLT|5 E|330 C|100 AcDbDictionary|281 1|3 Normal|350 F|100 AcDbDictionaryWithDefault|340 F
DICTIONARY|5 2C|330 C|100 AcDbDictionary|281 1
DICTIONARY|5 2D|330 C|100 AcDbDictionary|281 1
DICTIONARY|5 2E|330 C|100 AcDbDictionary|281 1
LAYOUT|5 22|330 1A|100 AcDbPlotSettings|1 |2 none_device|4 A3|6 |40 7.5|41 20.0|42 7.5|43 20.0|44 420.0|45 297.0|46 0.0
|47 0.0|48 0.0|49 0.0|140 0.0|141 0.0|142 1.0|143 1.0|70 1712|72 1|73 0|74 0|7 |75 0|147 1.0|148 0.0|149 0.0
|100 AcDbLayout|1 Model|70 1|71 0|10 0.0|20 0.0|11 420.0|21 297.0|12 0.0|22 0.0|32 0.0|14 1e+20|24 1e+20|34 1e+20
|15 -1e+20|25 -1e+20|35 -1e+20|146 0.0|13 0.0|23 0.0|33 0.0|16 1.0|26 0.0|36 0.0|17 0.0|27 1.0|37 0.0|76 0|330 1F
LAYOUT|5 1E|330 1A|100 AcDbPlotSettings|1 |2 none_device|4 A3|6 |40 7.5|41 20.0|42 7.5|43 20.0|44 420.0|45 297.0|46 0.0
|47 0.0|48 0.0|49 0.0|140 0.0|141 0.0|142 1.0|143 1.0|70 688|72 1|73 0|74 5|7 |75 16|147 1.0|148 0.0|149 0.0
|100 AcDbLayout|1 Layout1|70 1|71 1|10 0.0|20 0.0|11 420.0|21 297.0|12 0.0|22 0.0|32 0.0|14 1e+20|24 1e+20|34 1e+20
|15 -1e+20|25 -1e+20|35 -1e+20|146 0.0|13 0.0|23 0.0|33 0.0|16 1.0|26 0.0|36 0.0|17 0.0|27 1.0|37 0.0|76 0|330 1B
MLINESTYLE|5 18|330 17|100 AcDbMlineStyle|2 Standard|70 0|3 |62 256|51 90.0|52 90.0|71 2|49 0.5|62 256|6 ByLayer
|49 -0.5|62 256|6 ByLayer
ACDBPLACEHOLDER|5 F|330 E
ENDSEC
EOF
)";

void expand(std::string_view compact, std::string& text) {
  while (!compact.empty()) {
    const std::size_t end = compact.find('\n');
    std::string_view line = compact.substr(0, end);
    compact.remove_prefix(end + 1);
    while (!line.empty()) {
      const std::size_t bar = line.find('|');
      const std::string_view field = line.substr(0, bar);
      line.remove_prefix(bar == std::string_view::npos ? line.size() : bar + 1);
      const std::size_t blank = field.find(' ');
      if (field.empty()) continue;
      if (blank == std::string_view::npos) {
        text.append("0\n").append(field).append("\n");
      } else {
        text.append(field.substr(0, blank)).append("\n").append(field.substr(blank + 1)).append("\n");
      }
    }
  }
}

}  // namespace

std::string dxfDefaultText() {
  std::string text;
  expand(kHeader, text);
  expand(kTables, text);
  expand(kObjects, text);
  return text;
}

#pragma once

#include "arx/db/dbmain.h"
#include "arx/dxf/dxfread.h"
#include "arx/dxf/dxfwrite.h"
#include "base/text.h"

#include <string>
#include <string_view>

/// Text of a drawing from a compact form: groups "code value" between bars or line ends; a lone word has code
/// 0.
inline std::string dxfText(std::string_view compact) {
  std::string text;
  while (!compact.empty()) {
    const std::size_t end = compact.find_first_of("|\n");
    const std::string_view field = compact.substr(0, end);
    compact.remove_prefix(end == std::string_view::npos ? compact.size() : end + 1);
    const std::size_t blank = field.find(' ');
    if (field.empty()) continue;
    if (blank == std::string_view::npos) {
      text.append("0\n").append(field).append("\n");
    } else {
      text.append(field.substr(0, blank)).append("\n").append(field.substr(blank + 1)).append("\n");
    }
  }
  return text;
}

/// A drawing with these entities and nothing else.
inline std::string dxfWithEntities(std::string_view entities, const std::string& version = "AC1032") {
  return dxfText("SECTION|2 HEADER|9 $ACADVER|1 " + version +
                 "|9 $HANDSEED|5 1000|ENDSEC|SECTION|2 ENTITIES\n" + std::string(entities) + "\nENDSEC|EOF");
}

/// What an object writes into a file.
inline std::string dxfWritten(const AcDbObject& object) {
  std::string text;
  AcDbDxfWriter out([&](std::string_view piece) { text += piece; });
  object.dxfOut(out);
  out.flush();
  return text;
}

struct DxfLoaded {
  AcDbDatabase database{false, true};
  std::wstring message;
  DxfFindings findings;
  Acad::ErrorStatus status;

  explicit DxfLoaded(const std::string& text) {
    status = dxfReadText(database, text, "essai.dxf", &message, &findings);
  }
  std::string saved() { return dxfWriteText(database); }
  [[nodiscard]] std::string messageText() const { return veltora::base::toUtf8(message); }
};

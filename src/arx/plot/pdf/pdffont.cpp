#include "arx/plot/pdf/pdffont.h"

#include <fmt/format.h>
#include <fontconfig/fontconfig.h>
#include <hb-ot.h>
#include <hb-subset.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr std::string_view kFontName = "VELTOR+DejaVuSans";  // six letters of the subset, then the font
constexpr std::size_t kRowsTogether = 100;                   // that a map of characters takes at once
constexpr hb_tag_t kOutlines = HB_TAG('g', 'l', 'y', 'f');

/// File of the font and its place therein. Empty without one.
std::pair<std::string, unsigned int> fontFile() {
  FcPattern* const wanted = FcNameParse(reinterpret_cast<const FcChar8*>("DejaVu Sans:style=Book"));
  FcConfigSubstitute(nullptr, wanted, FcMatchPattern);
  FcDefaultSubstitute(wanted);
  FcResult result = FcResultMatch;
  FcPattern* const found = FcFontMatch(nullptr, wanted, &result);
  FcChar8* file = nullptr;
  int index = 0;
  std::pair<std::string, unsigned int> place;
  if (found && FcPatternGetString(found, FC_FILE, 0, &file) == FcResultMatch) {
    FcPatternGetInteger(found, FC_INDEX, 0, &index);
    place = {reinterpret_cast<const char*>(file), static_cast<unsigned int>(index & 0xFFFF)};
  }
  if (found) FcPatternDestroy(found);
  FcPatternDestroy(wanted);
  return place;
}

/// The characters of a text in UTF-8; what is none of it is left out.
std::vector<char32_t> charactersOf(std::string_view utf8) {
  std::unique_ptr<hb_buffer_t, decltype(&hb_buffer_destroy)> buffer(hb_buffer_create(), hb_buffer_destroy);
  hb_buffer_add_utf8(buffer.get(), utf8.data(), static_cast<int>(utf8.size()), 0,
                     static_cast<int>(utf8.size()));
  unsigned int length = 0;
  const hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(buffer.get(), &length);
  std::vector<char32_t> characters;
  for (unsigned int i = 0; i < length; ++i) characters.push_back(infos[i].codepoint);
  return characters;
}

std::string utf16Of(char32_t c) {
  if (c < 0x10000) return fmt::format("{:04X}", static_cast<unsigned int>(c));
  const auto rest = static_cast<unsigned int>(c) - 0x10000;
  return fmt::format("{:04X}{:04X}", 0xD800 + (rest >> 10), 0xDC00 + (rest & 0x3FF));
}

}  // namespace

PdfFont::PdfFont() {
  const auto [file, index] = fontFile();
  hb_blob_t* const data = file.empty() ? nullptr : hb_blob_create_from_file_or_fail(file.c_str());
  if (!data) return;
  m_face.reset(hb_face_create(data, index));
  hb_blob_destroy(data);
  hb_blob_t* const outlines = hb_face_reference_table(m_face.get(), kOutlines);
  if (hb_blob_get_length(outlines) > 0) m_font.reset(hb_font_create(m_face.get()));
  hb_blob_destroy(outlines);
}

std::string PdfFont::glyphs(std::string_view utf8) {
  std::string hex;
  for (const char32_t c : charactersOf(utf8)) {
    hb_codepoint_t glyph = 0;
    if (!hb_font_get_nominal_glyph(m_font.get(), c, &glyph)) glyph = 0;
    m_used.try_emplace(glyph, c);
    hex += fmt::format("{:04X}", glyph);
  }
  return hex;
}

/// The outlines of the used glyphs alone, which keep their numbers.
std::string PdfFont::subset() const {
  hb_subset_input_t* const input = hb_subset_input_create_or_fail();
  if (!input) return {};
  hb_subset_input_set_flags(input, HB_SUBSET_FLAGS_RETAIN_GIDS | HB_SUBSET_FLAGS_NO_HINTING);
  for (const auto& [glyph, character] : m_used) hb_set_add(hb_subset_input_glyph_set(input), glyph);
  hb_face_t* const face = hb_subset_or_fail(m_face.get(), input);
  hb_subset_input_destroy(input);
  if (!face) return {};
  hb_blob_t* const blob = hb_face_reference_blob(face);
  unsigned int length = 0;
  const char* const bytes = hb_blob_get_data(blob, &length);
  std::string file(bytes, length);
  hb_blob_destroy(blob);
  hb_face_destroy(face);
  return file;
}

std::string PdfFont::toUnicode() const {
  std::string rows;
  std::string map =
      "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n/CMapType 2 def\n/CMapName /Textes "
      "def\n"
      "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
      "1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
  std::size_t count = 0;
  const auto flush = [&] {
    if (count > 0) map += fmt::format("{} beginbfchar\n{}endbfchar\n", count, rows);
    rows.clear();
    count = 0;
  };
  for (const auto& [glyph, character] : m_used) {
    if (glyph == 0) continue;
    rows += fmt::format("<{:04X}> <{}>\n", glyph, utf16Of(character));
    if (++count == kRowsTogether) flush();
  }
  flush();
  return map + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

/// Of each used glyph, in thousandths of the letters' size: [ glyph [ width ] ... ].
QPDFObjectHandle PdfFont::widths() const {
  QPDFObjectHandle list = QPDFObjectHandle::newArray();
  const double unit = hb_face_get_upem(m_face.get());
  hb_font_set_scale(m_font.get(), static_cast<int>(unit), static_cast<int>(unit));
  for (const auto& [glyph, character] : m_used) {
    list.appendItem(QPDFObjectHandle::newInteger(glyph));
    QPDFObjectHandle width = QPDFObjectHandle::newArray();
    width.appendItem(
        QPDFObjectHandle::newReal(hb_font_get_glyph_h_advance(m_font.get(), glyph) * 1000.0 / unit, 3));
    list.appendItem(width);
  }
  return list;
}

QPDFObjectHandle PdfFont::embed(QPDF& document) const {
  const std::string name = "/" + std::string(kFontName);
  const auto parse = [](const std::string& text) { return QPDFObjectHandle::parse(text); };
  const auto stream = [&](const std::string& bytes) { return document.newStream(bytes); };
  QPDFObjectHandle file = stream(subset());
  // The box, the heights and the slant of DejaVu Sans, in thousandths: readers only guess substitutes by
  // them.
  QPDFObjectHandle descriptor = document.makeIndirectObject(parse(
      "<< /Type /FontDescriptor /FontName " + name +
      " /Flags 4 /FontBBox [-1021 -463 1793 1232] /ItalicAngle 0 /Ascent 928 /Descent -236 /CapHeight 729"
      " /StemV 80 >>"));
  descriptor.replaceKey("/FontFile2", file);
  QPDFObjectHandle letters = document.makeIndirectObject(
      parse("<< /Type /Font /Subtype /CIDFontType2 /BaseFont " + name +
            " /CIDToGIDMap /Identity /DW 600 /CIDSystemInfo << /Registry (Adobe) /Ordering (Identity)"
            " /Supplement 0 >> >>"));
  letters.replaceKey("/FontDescriptor", descriptor);
  letters.replaceKey("/W", widths());
  QPDFObjectHandle font = document.makeIndirectObject(
      parse("<< /Type /Font /Subtype /Type0 /Encoding /Identity-H /BaseFont " + name + " >>"));
  QPDFObjectHandle descendants = QPDFObjectHandle::newArray();
  descendants.appendItem(letters);
  font.replaceKey("/DescendantFonts", descendants);
  font.replaceKey("/ToUnicode", stream(toUnicode()));
  return font;
}

#pragma once

#include <hb.h>

#include <map>
#include <memory>
#include <qpdf/QPDF.hh>
#include <string>
#include <string_view>

/// The font of a document: finds the glyphs of texts, and puts those that were used into the file.
class PdfFont {
public:
  /// The font of all pens, or what the system has in its place.
  PdfFont();
  /// Whether there is one that a document can hold: with outlines of the TrueType kind.
  [[nodiscard]] bool isUsable() const { return m_font != nullptr; }
  /// The glyphs of a text as the hexadecimal string that a text operator takes, without its brackets. A
  /// character that the font lacks is shown as an empty box.
  [[nodiscard]] std::string glyphs(std::string_view utf8);
  /// The font object with the glyphs that were asked for so far.
  [[nodiscard]] QPDFObjectHandle embed(QPDF& document) const;

private:
  template <class T, void (*Destroy)(T*)>
  struct Release {
    void operator()(T* object) const { Destroy(object); }
  };
  [[nodiscard]] std::string subset() const;
  [[nodiscard]] std::string toUnicode() const;
  [[nodiscard]] QPDFObjectHandle widths() const;
  std::unique_ptr<hb_face_t, Release<hb_face_t, hb_face_destroy>> m_face;
  std::unique_ptr<hb_font_t, Release<hb_font_t, hb_font_destroy>> m_font;
  std::map<hb_codepoint_t, char32_t> m_used;  // glyphs, and a character of each
};

#pragma once

#include "ui/control.h"

#include <limits>

/// Texts and fields.
namespace veltora::ui {

/// A text that is only read: a caption, a value, or both ("Exemple:" and the name made so far).
class VELTORA_API Label : public Control {
public:
  explicit Label(Container* parent, std::wstring caption = {}, std::wstring text = {});
  [[nodiscard]] const std::wstring& text() const { return m_text; }
  void setText(const std::wstring& text);
  [[nodiscard]] std::wstring kindName() const override { return L"Texte"; }
  [[nodiscard]] Kind kind() override { return this; }
  [[nodiscard]] bool focusable() const override { return false; }

private:
  std::wstring m_text;
};

/// A field that holds a text as it was typed.
class VELTORA_API TextField : public Control {
public:
  explicit TextField(Container* parent, std::wstring caption = {}, std::wstring text = {});
  [[nodiscard]] const std::wstring& text() const { return m_text; }
  void setText(const std::wstring& text);
  [[nodiscard]] bool readOnly() const { return m_readOnly; }
  void setReadOnly(bool readOnly = true);
  /// A text area of several lines.
  [[nodiscard]] bool multiline() const { return m_multiline; }
  void setMultiline(bool multiline = true);
  [[nodiscard]] std::wstring kindName() const override { return L"Champ"; }
  [[nodiscard]] Kind kind() override { return this; }

  /// The user replaces the text. False also when the field is read-only.
  bool userType(const std::wstring& text);

private:
  std::wstring m_text;
  bool m_readOnly = false;
  bool m_multiline = false;
};

/// A field for a number. It holds its text as typed; the number is read from it each time.
class VELTORA_API NumberField : public TextField {
public:
  enum class Type { Real, Integer };
  static constexpr double kUnbounded = std::numeric_limits<double>::infinity();

  /// @param format printf format of `setValue`, for a double when real ("%.4f"), for an int when integer
  /// ("%d")
  explicit NumberField(Container* parent, std::wstring caption = {}, double value = 0.0,
                       std::wstring format = L"%.15g", Type type = Type::Real);
  /// A field for integers, format "%d".
  static constexpr Type kInteger = Type::Integer;

  [[nodiscard]] Type type() const { return m_type; }
  /// The longest number at the start of the text, as `base::lireReel` reads it; 0.0 for none.
  [[nodiscard]] double value() const;
  /// The same as an integer, cut towards zero and kept within the range of `int`.
  [[nodiscard]] int intValue() const;
  void setValue(double value);
  void setFormat(const std::wstring& format) { m_format = format; }
  /// Bounds that `valid` asks for, both included.
  void setRange(double minimum, double maximum);
  [[nodiscard]] double minimum() const { return m_minimum; }
  [[nodiscard]] double maximum() const { return m_maximum; }
  /// Arrows beside it count up and down by one.
  [[nodiscard]] bool stepped() const { return m_stepped; }
  void setStepped(bool stepped = true);
  /// The user counts on by so many: the next whole numbers, within the range. As `userType` else.
  bool userStep(int steps);

  /// True when the whole text is one number of the field's type within its range.
  [[nodiscard]] bool valid() const;
  /// What is wrong ("Entrez un nombre compris entre 1 et 10."), empty when the field is valid.
  [[nodiscard]] std::wstring fault() const;
  /// As `valid`; a fault is shown in a message box, by the field's name for what is no number, and the field
  /// takes the focus.
  bool validate();
  [[nodiscard]] std::wstring kindName() const override { return L"Nombre"; }
  [[nodiscard]] Kind kind() override { return this; }

private:
  Type m_type;
  std::wstring m_format;
  double m_minimum = -kUnbounded;
  double m_maximum = kUnbounded;
  bool m_stepped = false;
};

}  // namespace veltora::ui

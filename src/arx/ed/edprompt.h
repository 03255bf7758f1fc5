#pragma once

#include "arx/ed/edinput.h"
#include "arx/ed/edkeywords.h"
#include "arx/ge/gepoint.h"

#include <functional>
#include <optional>
#include <string>

/// One prompt at work: takes the bits and keywords of the latest `acedInitGet` and asks until a line fits.
class AcEdPrompt {
public:
  /// What a reader says to a line: taken, with the result of the prompt, or why not; without a reason the
  /// question is put again in silence.
  struct Verdict {
    bool taken = true;
    std::wstring refusal = {};
    int code = RTNORM;
  };
  static Verdict refused(std::wstring why) { return {false, std::move(why)}; }
  using TextReader = std::function<Verdict(const std::wstring& line)>;
  /// Offered the value of an expression first; nothing when it is to be read as text.
  using ValueReader = std::function<std::optional<Verdict>(const resbuf* value)>;

  explicit AcEdPrompt(const ACHAR* prompt);
  [[nodiscard]] int bits() const { return m_bits; }
  [[nodiscard]] const AcEdKeywords& keywords() const { return m_keywords; }
  void setValueReader(ValueReader reader) { m_value = std::move(reader); }
  void setRadians() { m_radians = true; }
  /// An empty line ends the questions whatever the bits say.
  void allowEmpty() { m_bits &= ~RSG_NONULL; }
  /// Asks another question next, with the same bits and keywords.
  void setText(std::wstring text) { m_text = std::move(text); }
  int ask(const TextReader& reader);
  /// Refuses 0 and negative values as the bits say; empty when the value is fine.
  [[nodiscard]] std::wstring objection(double value) const;

private:
  std::optional<int> consider(const std::wstring& line, const TextReader& reader);
  std::optional<int> considerText(const std::wstring& line, const TextReader& reader);
  std::optional<int> considerExpression(const std::wstring& line, const TextReader& reader);
  std::optional<int> empty() const;

  std::wstring m_text;
  int m_bits;
  AcEdKeywords m_keywords;
  ValueReader m_value;
  bool m_radians = false;
};

/// Reads a point as described at `acedGetPoint`. Nothing when the text is none.
std::optional<AcGePoint3d> acedReadPoint(const std::wstring& text, const AcGePoint3d& reference);
/// Reads a whole text as a finite number.
std::optional<double> acedReadNumber(const std::wstring& text);
/// Reads an angle: degrees, or grades with "g", radians with "r" behind the number. In radians, unreduced.
std::optional<double> acedReadAngle(const std::wstring& text);
/// What `@` refers to without a base point.
AcGePoint3d acedLastPoint();
/// Forgets bits and keywords that no prompt took.
void acedForgetInitGet();

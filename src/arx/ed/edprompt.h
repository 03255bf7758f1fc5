#pragma once

#include "arx/ed/edinput.h"
#include "arx/ed/edkeywords.h"
#include "arx/ge/gepoint.h"
#include "base/console.h"

#include <array>
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

  using Kind = veltora::base::Request::Kind;

  /// @param from where a rubber band begins; null for none
  AcEdPrompt(Kind kind, const ACHAR* prompt, const ads_point from = nullptr);
  [[nodiscard]] int bits() const { return m_bits; }
  [[nodiscard]] const AcEdKeywords& keywords() const { return m_keywords; }
  void setValueReader(ValueReader reader) { m_value = std::move(reader); }
  void setRadians() { m_radians = true; }
  /// An empty line ends the questions whatever the bits say.
  void allowEmpty() { m_bits &= ~RSG_NONULL; }
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
  veltora::base::Request m_request;
  ValueReader m_value;
  bool m_radians = false;
};

/// What stays between prompts: bits and keywords for the next one, the text of the latest keyword, and what
/// `@` refers to without a base point.
struct AcEdPromptState {
  int bits = 0;
  std::wstring keywords;
  std::optional<std::wstring> input;
  /// What the next prompt lets be dragged (`Request::drag`).
  std::function<void(const std::array<double, 3>&)> drag;
  AcGePoint3d lastPoint;
};
AcEdPromptState& acedPromptState();

/// Reads a point as described at `acedGetPoint`. Nothing when the text is none.
std::optional<AcGePoint3d> acedReadPoint(const std::wstring& text, const AcGePoint3d& reference);
/// Reads a whole text as a finite number.
std::optional<double> acedReadNumber(const std::wstring& text);
/// Reads an angle: degrees, or grades with "g", radians with "r" behind the number. In radians, unreduced.
std::optional<double> acedReadAngle(const std::wstring& text);
/// What `@` refers to without a base point.
ARX_API AcGePoint3d acedLastPoint();
/// Forgets bits and keywords that no prompt took.
void acedForgetInitGet();

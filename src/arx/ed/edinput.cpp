#include "arx/ed/edinput.h"

#include "arx/db/dbmain.h"
#include "arx/ed/edpick.h"
#include "arx/ed/edports.h"
#include "arx/ed/edprompt.h"
#include "arx/ed/edsnap.h"
#include "arx/ge/geangle.h"
#include "base/suivi.h"
#include "base/text.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace base = veltora::base;

using Kind = AcEdPrompt::Kind;

namespace {

void storePoint(const AcGePoint3d& point, ads_point result) {
  result[0] = point.x, result[1] = point.y, result[2] = point.z;
  acedSetLastPoint(result);
}

AcGePoint3d referenceOf(const ads_point base_) {
  return base_ ? AcGePoint3d(base_[0], base_[1], base_[2]) : acedLastPoint();
}

/// Copies as much as the room allows; false without room for anything.
bool storeText(const std::wstring& text, ACHAR* result, std::size_t size) {
  if (!result || size == 0) return false;
  const std::size_t count = text.copy(result, size - 1);
  result[count] = L'\0';
  return true;
}

AcEdPrompt::Verdict verdictOn(const AcEdPrompt& prompt, double value) {
  const std::wstring objection = prompt.objection(value);
  return objection.empty() ? AcEdPrompt::Verdict{} : AcEdPrompt::refused(objection);
}

/// Reads the points of one prompt, with words in front of them that tell what they are pulled to.
class PointReader {
public:
  /// A point, or why the line is none: without a reason, the point itself is read next.
  struct Read {
    std::optional<AcGePoint3d> point;
    std::wstring refusal;
  };
  /// @param reference  what "@" refers to
  Read read(const std::wstring& line, const AcGePoint3d& reference, const wchar_t* expected) {
    if (std::optional<std::vector<AcEdSnap>> snaps = acedReadSnaps(line)) {
      m_snaps = std::move(*snaps);
      return {};
    }
    if (keepsOff(line)) {
      m_snaps.clear();
      return {};
    }
    const std::optional<AcGePoint3d> place = acedReadPoint(line, reference);
    if (!place) return {std::nullopt, expected};
    if (m_snaps.empty()) return {place, {}};
    const std::vector<AcEdSnap> snaps = std::exchange(m_snaps, {});
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    std::optional<AcGePoint3d> found;
    if (database) found = acedSnap(*database, snaps, *place, acedPickAperture(), reference);
    if (!found) return {std::nullopt, L"Pas de point d'accrochage à cet endroit."};
    return {found, {}};
  }

private:
  /// Routines put "_non" in front of a point to keep object snaps off.
  static bool keepsOff(const std::wstring& line) {
    const std::wstring word = base::toUpper(base::trimLeft(base::trim(line), L"_"));
    return word == L"NON" || word == L"NONE" || word == L"AUC";
  }
  std::vector<AcEdSnap> m_snaps;
};

int askPoint(Kind kind, const ads_point from, const ACHAR* prompt, ads_point result) {
  if (!result) return RTERROR;
  AcEdPrompt asking(kind, prompt, from);
  PointReader points;
  return asking.ask([&](const std::wstring& line) {
    const PointReader::Read read =
        points.read(line, referenceOf(from), L"Un point est attendu : x,y ou x,y,z.");
    if (!read.point) return AcEdPrompt::refused(read.refusal);
    storePoint(*read.point, result);
    return AcEdPrompt::Verdict{};
  });
}

/// A number, or what `measure` makes of two points: the base and the answer, or two answers one after the
/// other.
class TwoPointPrompt {
public:
  using NumberReader = std::optional<double> (*)(const std::wstring& text);
  using Measure = double (*)(const AcGePoint3d& from, const AcGePoint3d& to, int bits);

  TwoPointPrompt(AcEdPrompt& prompt, const ads_point from, NumberReader number, Measure measure,
                 bool signedValue)
      : m_prompt(prompt), m_number(number), m_measure(measure), m_signed(signedValue) {
    if (from) m_from = AcGePoint3d(from[0], from[1], from[2]);
  }

  int ask(const wchar_t* expected, double& result) {
    return m_prompt.ask([&](const std::wstring& line) { return read(line, expected, result); });
  }

private:
  AcEdPrompt::Verdict read(const std::wstring& line, const wchar_t* expected, double& result) {
    if (const std::optional<double> number = m_number(line)) return take(*number, result);
    const PointReader::Read read = m_points.read(line, m_from ? *m_from : acedLastPoint(), expected);
    if (!read.point) return AcEdPrompt::refused(read.refusal);
    ads_point last;
    storePoint(*read.point, last);
    if (m_from) return take(m_measure(*m_from, *read.point, m_prompt.bits()), result);
    return second(*read.point, result);
  }

  AcEdPrompt::Verdict second(const AcGePoint3d& first, double& result) {
    ads_point from = {first.x, first.y, first.z};
    ads_point to;
    acedInitGet(RSG_NONULL, nullptr);
    const int status = askPoint(Kind::kPoint, from, L"\nDeuxième point : ", to);
    if (status != RTNORM) return {true, {}, status};
    return take(m_measure(first, AcGePoint3d(to[0], to[1], to[2]), m_prompt.bits()), result);
  }

  AcEdPrompt::Verdict take(double value, double& result) const {
    AcEdPrompt::Verdict verdict = verdictOn(m_prompt, value);
    if (!m_signed && verdict.taken && !std::isfinite(value))
      verdict = AcEdPrompt::refused(L"Valeur démesurée.");
    if (verdict.taken) result = value;
    return verdict;
  }

  AcEdPrompt& m_prompt;
  NumberReader m_number;
  Measure m_measure;
  bool m_signed;
  std::optional<AcGePoint3d> m_from;
  PointReader m_points;
};

double distanceBetween(const AcGePoint3d& from, const AcGePoint3d& to, int bits) {
  return std::hypot(to.x - from.x, to.y - from.y, (bits & RSG_2D) ? 0.0 : to.z - from.z);
}

double directionBetween(const AcGePoint3d& from, const AcGePoint3d& to, int) {
  return AcGeVector2d{to.x - from.x, to.y - from.y}.angle();
}

}  // namespace

int acedInitGet(int bits, const ACHAR* keywords) {
  acedPromptState().bits = bits;
  acedPromptState().keywords = keywords ? keywords : L"";
  return RTNORM;
}

void acedSetLastPoint(const ads_point point) {
  acedPromptState().lastPoint.set(point[0], point[1], point[2]);
}

int acedGetPoint(const ads_point base_, const ACHAR* prompt, ads_point result) {
  return askPoint(Kind::kPoint, base_, prompt, result);
}

int acedGetCorner(const ads_point base_, const ACHAR* prompt, ads_point result) {
  return base_ ? askPoint(Kind::kCorner, base_, prompt, result) : RTERROR;
}

int acedGetInt(const ACHAR* prompt, int* result) {
  if (!result) return RTERROR;
  AcEdPrompt asking(Kind::kInteger, prompt);
  return asking.ask([&](const std::wstring& line) {
    const std::optional<double> value = acedReadNumber(line);
    const bool whole = value && line.find_first_of(L".eE") == std::wstring::npos;
    if (!whole) return AcEdPrompt::refused(L"Un nombre entier est attendu.");
    using Limits = std::numeric_limits<int>;
    if (*value < Limits::min() || *value > Limits::max())
      return AcEdPrompt::refused(L"Nombre entier trop grand.");
    AcEdPrompt::Verdict verdict = verdictOn(asking, *value);
    if (verdict.taken) *result = static_cast<int>(*value);
    return verdict;
  });
}

int acedGetReal(const ACHAR* prompt, ads_real* result) {
  if (!result) return RTERROR;
  AcEdPrompt asking(Kind::kReal, prompt);
  return asking.ask([&](const std::wstring& line) {
    const std::optional<double> value = acedReadNumber(line);
    if (!value) return AcEdPrompt::refused(L"Un nombre est attendu.");
    AcEdPrompt::Verdict verdict = verdictOn(asking, *value);
    if (verdict.taken) *result = *value;
    return verdict;
  });
}

int acedGetDist(const ads_point base_, const ACHAR* prompt, ads_real* result) {
  if (!result) return RTERROR;
  AcEdPrompt asking(Kind::kDistance, prompt, base_);
  TwoPointPrompt points(asking, base_, acedReadNumber, distanceBetween, false);
  return points.ask(L"Une distance est attendue : un nombre ou un point.", *result);
}

int acedGetAngle(const ads_point base_, const ACHAR* prompt, ads_real* result) {
  if (!result) return RTERROR;
  AcEdPrompt asking(Kind::kAngle, prompt, base_);
  asking.setRadians();
  TwoPointPrompt points(asking, base_, acedReadAngle, directionBetween, true);
  double angle = 0.0;
  const int status = points.ask(L"Un angle est attendu : degrés, grades avec « g », ou un point.", angle);
  if (status != RTNORM) return status;
  angle = std::fmod(angle, kTurn);
  *result = angle < 0 ? angle + kTurn : angle;
  return status;
}

int acedGetOrient(const ads_point base_, const ACHAR* prompt, ads_real* result) {
  return acedGetAngle(base_, prompt, result);
}

int acedGetKword(const ACHAR* prompt, std::wstring& result) {
  AcEdPrompt asking(Kind::kKeyword, prompt);
  if (asking.keywords().empty() && !(asking.bits() & RSG_OTHER)) return RTERROR;
  const int status = asking.ask([&](const std::wstring&) {
    return AcEdPrompt::refused(L"Réponse attendue : " + asking.keywords().text() + L".");
  });
  if (status != RTKWORD) return status;
  acedGetInput(result);
  return RTNORM;
}

int acedGetKword(const ACHAR* prompt, ACHAR* result, std::size_t size) {
  std::wstring text;
  if (!result || size == 0) return RTERROR;
  const int status = acedGetKword(prompt, text);
  if (status == RTNORM) storeText(text, result, size);
  return status;
}

int acedGetString(int cronly, const ACHAR* prompt, std::wstring& result) {
  acedForgetInitGet();
  AcEdPrompt asking(Kind::kText, prompt);
  const int status = asking.ask([&](const std::wstring& line) {
    result = cronly ? line : line.substr(0, line.find_first_of(L" \t"));
    return AcEdPrompt::Verdict{};
  });
  if (status != RTNONE) return status;
  result.clear();
  return RTNORM;
}

int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result, std::size_t size) {
  std::wstring text;
  if (!result || size == 0) return RTERROR;
  const int status = acedGetString(cronly, prompt, text);
  if (status == RTNORM) storeText(text, result, size);
  return status;
}

// Remembered apart from the results, as the host does: the text of a keyword is asked for afterwards.
int acedGetInput(std::wstring& result) {
  if (!acedPromptState().input) return RTERROR;
  result = *acedPromptState().input;
  return RTNORM;
}

int acedGetInput(ACHAR* result, std::size_t size) {
  std::wstring text;
  const int status = acedGetInput(text);
  return status == RTNORM && !storeText(text, result, size) ? RTERROR : status;
}

int acedUsrBrk() {
  base::PortSuivi* const port = base::portSuivi();
  if (!port || !port->arretDemande()) return 0;
  port->oublierArret();  // it ends one job, not the next as well
  return 1;
}

int acedGrRead(int, int* type, resbuf* result) {
  if (!type || !result) return RTERROR;
  base::Request request;
  request.kind = Kind::kKey;
  const std::optional<std::wstring> line = acedReadLine(L"", std::move(request));
  if (!line || base::compareNoCase(*line, L"*Annuler*") == 0) return RTCAN;
  result->rbnext = nullptr;
  if (const std::optional<AcGePoint3d> point = acedReadPoint(*line, acedLastPoint())) {
    *type = 3;
    result->restype = RT3DPOINT;
    storePoint(*point, result->resval.rpoint);
    return RTNORM;
  }
  constexpr short kEnter = 13;
  const bool key = line->size() == 1 && (*line)[0] < 0x7fff;
  *type = 2;
  result->restype = RTSHORT;
  result->resval.rint = key ? static_cast<short>((*line)[0]) : kEnter;
  return RTNORM;
}

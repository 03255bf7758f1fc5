#pragma once

#include "arx/db/dbents.h"
#include "arx/ge/gepoint.h"

#include <optional>
#include <string>

/// An entity that follows the cursor until the user places it. A class of a command derives from it, takes
/// what the user points at in `sampler` and shapes the entity after it in `update`. In a window each move of
/// the cursor is a sample, for which both are called while the `sampler` that asks still waits. At a terminal
/// and in scripts a line is the sample and the answer at once; nothing is drawn before.
class ARX_API AcEdJig {
public:
  /// How a sample, and a drag, ended.
  enum DragStatus {
    kNoChange = -6,  ///< the cursor stands where it stood: nothing is to be drawn anew
    kCancel = -4,
    kOther = -3,  ///< an answer that no prompt gives
    kNull = -1,   ///< an empty line
    kNormal = 0,
    kKW1 = 1,  ///< the first keyword; the n-th is n
  };

  AcEdJig() = default;
  virtual ~AcEdJig() = default;
  AcEdJig(const AcEdJig&) = delete;
  AcEdJig& operator=(const AcEdJig&) = delete;

  /// Samples, with updates in between, until the user answers.
  /// @return `kNormal` for a value, a keyword's number, `kNull` or `kCancel`
  DragStatus drag();
  /// Adds the entity to the current space, closed. @return the null id, the entity deleted, when that fails
  AcDbObjectId append();

  [[nodiscard]] const AcString& dispPrompt() const { return m_prompt; }
  void setDispPrompt(const AcString& prompt) { m_prompt = prompt; }
  /// Words separated by blanks, as `acedInitGet` takes them.
  [[nodiscard]] const AcString& keywordList() const { return m_keywords; }
  void setKeywordList(const AcString& keywords) { m_keywords = keywords; }

protected:
  /// Takes one sample by one of the functions below.
  virtual DragStatus sampler() = 0;
  /// Shapes the entity after the sample. @return false when nothing of it changed
  virtual bool update() = 0;
  /// The entity that is dragged, which `append` takes over.
  [[nodiscard]] virtual AcDbEntity* entity() const = 0;

  /// A point in world coordinates, unchanged unless `kNormal`.
  DragStatus acquirePoint(AcGePoint3d& value);
  /// @param base  where the rubber line begins
  DragStatus acquirePoint(AcGePoint3d& value, const AcGePoint3d& base);

private:
  DragStatus acquire(const ads_real* base, AcGePoint3d& value);
  DragStatus ask(const ads_real* base, AcGePoint3d& value);
  void follow(const AcGePoint3d& cursor);
  std::optional<AcGePoint3d> m_followed;  ///< where the cursor moved to
  AcString m_prompt;
  AcString m_keywords;
};

/// What is dragged now, for a window to draw; null for nothing.
ARX_API const AcDbEntity* acedDragged();

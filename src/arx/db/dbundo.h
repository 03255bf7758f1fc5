#pragma once

#include "arx/db/dbobject.h"

#include <deque>
#include <functional>
#include <memory>
#include <variant>
#include <vector>

/// The history of one drawing. What a command changes is gathered in one step; U takes the last step back,
/// REDO brings it again. Groups join several commands or parts of one into a single step.
class ARX_API AcDbUndoLog {
public:
  AcDbUndoLog() = default;
  AcDbUndoLog(const AcDbUndoLog&) = delete;
  AcDbUndoLog& operator=(const AcDbUndoLog&) = delete;

  /// Off while a file is read: nothing is noted.
  void setRecording(bool on) { m_recording = on; }
  [[nodiscard]] bool recording() const { return m_recording; }

  /// Opens a step named after a command; nested opens (commands within groups) join the outer one.
  void begin(const AcString& name);
  /// Closes it; a step in which nothing changed vanishes. A new step drops what could be redone.
  void end();
  /// Takes back what was noted since the innermost `begin` and closes that level, in place of `end`: for a
  /// command that failed. What an outer group did before stays.
  void rollBack();
  [[nodiscard]] int depth() const { return m_depth; }
  /// What the open step changes belongs to the step before it, when there is one: U takes both back at once.
  /// For saving, which writes into the drawing what was worked out earlier.
  void joinFormer() { m_joinFormer = true; }

  /// Refused, with an empty result, in a step that changed something already.
  /// @return the name of the step taken back, empty when there is none
  AcString undo();
  AcString redo();
  [[nodiscard]] bool canUndo() const;
  [[nodiscard]] bool canRedo() const;
  /// Of the step that `undo` or `redo` would take; empty when there is none, or when it has no name.
  [[nodiscard]] AcString undoName() const;
  [[nodiscard]] AcString redoName() const;
  void clear();

  // Notes of the database. Changes outside of any command join in one nameless step, which the next `begin`,
  // `undo` or `redo` closes: nothing is missed, and one U takes back what happened between two commands.
  void noteCreated(AcDbStub* stub);
  void noteErased(AcDbStub* stub, bool erased);
  /// How often objects came back from erasure: what was found among erased ones holds while it stays.
  [[nodiscard]] Adesk::UInt64 revivals() const { return m_revivals; }
  /// Keeps a snapshot unless the step holds one already, or the object was created in it.
  void noteChange(AcDbObject& object);
  /// A change outside objects (a header variable): what puts the other value in place, called for undo and
  /// for redo.
  void noteVariable(std::function<void()> swapValue);

private:
  // What happened to an object, or to a variable.
  struct Created {  // objects made one after the other, with handles in a row
    Adesk::UInt32 count = 1;
  };
  struct Erased {};
  struct Unerased {};
  using State = std::unique_ptr<AcDbObject>;
  using SwapValue = std::unique_ptr<std::function<void()>>;
  using Event = std::variant<Created, Erased, Unerased, State, SwapValue>;
  struct Note {
    AcDbStub* stub = nullptr;
    Event event;
  };
  struct Step {
    AcString name;
    std::deque<Note> notes;
  };
  void repeat(Step& step);
  void add(AcDbStub* stub, Event event);
  void open(const AcString& name);
  void shut();
  static void exchange(Note& note);
  static void setErased(const Note& note, bool undone);
  [[nodiscard]] Created* runBefore(const AcDbStub& stub);
  void takeBack(Step& step, std::size_t from);

  bool m_recording = true;
  Adesk::UInt64 m_revivals = 0;
  int m_depth = 0;
  Adesk::UInt32 m_stepId =
      1;  // of the level; a nested level takes its own snapshots, so that it can fail alone
  std::vector<std::size_t> m_marks;  // where the open levels begin in the step
  bool m_open = false;
  bool m_joinFormer = false;
  Step m_current;
  std::deque<Step> m_done;
  std::deque<Step> m_undone;
};

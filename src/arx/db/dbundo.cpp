#include "arx/db/dbundo.h"

#include "arx/db/dbmain.h"

#include <algorithm>
#include <iterator>

void AcDbUndoLog::open(const AcString& name) {
  m_open = true;
  m_current.name = name;
  m_current.notes.clear();
  ++m_stepId;
}

void AcDbUndoLog::shut() {
  if (m_open && !m_current.notes.empty()) {
    m_undone.clear();
    if (m_joinFormer && !m_done.empty())
      std::ranges::move(m_current.notes, std::back_inserter(m_done.back().notes));
    else
      m_done.push_back(std::move(m_current));
  }
  m_joinFormer = false;
  m_current = Step{};
  m_open = false;
  ++m_stepId;
}

void AcDbUndoLog::begin(const AcString& name) {
  if (m_depth == 0) {
    shut();  // what happened between the commands
    open(name);
  } else {
    ++m_stepId;
  }
  ++m_depth;
  m_marks.push_back(m_current.notes.size());
}

void AcDbUndoLog::end() {
  if (m_depth == 0) return;
  --m_depth;
  m_marks.pop_back();
  if (m_depth == 0) shut();
}

void AcDbUndoLog::rollBack() {
  if (m_depth == 0) return;
  takeBack(m_current, m_marks.back());
  m_current.notes.resize(m_marks.back());
  ++m_stepId;  // what the level had noted as snapshotted is so no longer
  end();
}

bool AcDbUndoLog::canUndo() const { return !m_done.empty() || (m_depth == 0 && !m_current.notes.empty()); }

bool AcDbUndoLog::canRedo() const { return !m_undone.empty() && m_current.notes.empty(); }

AcString AcDbUndoLog::undoName() const {
  if (m_depth == 0 && !m_current.notes.empty()) return m_current.name;
  return m_done.empty() ? AcString() : m_done.back().name;
}

AcString AcDbUndoLog::redoName() const { return canRedo() ? m_undone.back().name : AcString(); }

AcString AcDbUndoLog::undo() {
  if (m_depth == 0) shut();
  if (m_done.empty() || !m_current.notes.empty()) return {};
  Step step = std::move(m_done.back());
  m_done.pop_back();
  takeBack(step, 0);
  m_undone.push_back(std::move(step));
  return m_undone.back().name;
}

AcString AcDbUndoLog::redo() {
  if (m_depth == 0) shut();
  if (m_undone.empty() || !m_current.notes.empty()) return {};
  Step step = std::move(m_undone.back());
  m_undone.pop_back();
  repeat(step);
  m_done.push_back(std::move(step));
  return m_done.back().name;
}

void AcDbUndoLog::clear() {
  m_done.clear();
  m_undone.clear();
  m_current.notes.clear();
  m_marks.assign(m_marks.size(), 0);
  ++m_stepId;
}

void AcDbUndoLog::exchange(Note& note) {
  if (note.kind == Note::kChanged && note.stub->object) note.stub->object->exchangeState(*note.state);
  if (note.kind == Note::kVariable) note.swapValue();
  if (!note.stub) return;
  note.stub->database->setModified(true);
  note.stub->database->noteTouched(*note.stub);
}

void AcDbUndoLog::takeBack(Step& step, std::size_t from) {
  ++m_revivals;
  for (std::size_t i = step.notes.size(); i > from; --i) {
    Note& note = step.notes[i - 1];
    exchange(note);
    if (note.kind == Note::kCreated || note.kind == Note::kUnerased) note.stub->erased = true;
    if (note.kind == Note::kErased) note.stub->erased = false;
  }
}

void AcDbUndoLog::repeat(Step& step) {
  ++m_revivals;
  for (Note& note : step.notes) {
    exchange(note);
    if (note.kind == Note::kCreated || note.kind == Note::kUnerased) note.stub->erased = false;
    if (note.kind == Note::kErased) note.stub->erased = true;
  }
}

AcDbUndoLog::Note* AcDbUndoLog::add(Note::Kind kind, AcDbStub* stub) {
  if (!m_recording) return nullptr;
  if (!m_open) open({});
  if (stub) stub->database->setModified(true);
  m_current.notes.push_back({kind, stub, nullptr, nullptr});
  return &m_current.notes.back();
}

void AcDbUndoLog::noteCreated(AcDbStub* stub) {
  if (add(Note::kCreated, stub)) stub->undoStep = m_stepId;
}

void AcDbUndoLog::noteErased(AcDbStub* stub, bool erased) {
  if (!erased) ++m_revivals;
  add(erased ? Note::kErased : Note::kUnerased, stub);
}

void AcDbUndoLog::noteChange(AcDbObject& object) {
  AcDbStub* const stub = object.objectId().stub();
  if (!m_recording || !stub) return;
  if (!m_open) open({});
  stub->database->setModified(true);
  if (stub->undoStep == m_stepId) return;
  std::unique_ptr<AcDbObject> state = object.snapshot();
  add(Note::kChanged, stub)->state = std::move(state);
  stub->undoStep = m_stepId;
}

void AcDbUndoLog::noteVariable(std::function<void()> swapValue) {
  if (Note* note = add(Note::kVariable, nullptr)) note->swapValue = std::move(swapValue);
}

#include "arx/db/dbundo.h"

#include "arx/db/dbmain.h"

#include <algorithm>
#include <cstdint>
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
  while (m_current.notes.size() > m_marks.back()) m_current.notes.pop_back();
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
  const State* const state = std::get_if<State>(&note.event);
  if (state && note.stub->object) note.stub->object->exchangeState(**state);
  if (const SwapValue* const swapValue = std::get_if<SwapValue>(&note.event)) (**swapValue)();
  if (!note.stub) return;
  note.stub->database->setModified(true);
  note.stub->database->noteTouched(*note.stub);
}

void AcDbUndoLog::setErased(const Note& note, bool undone) {
  if (std::holds_alternative<Erased>(note.event)) note.stub->erased = !undone;
  if (std::holds_alternative<Unerased>(note.event)) note.stub->erased = undone;
  const Created* const run = std::get_if<Created>(&note.event);
  if (!run) return;
  AcDbDatabase& database = *note.stub->database;
  for (Adesk::UInt64 i = 0; i < run->count; ++i) {
    AcDbStub& stub = *database.idOf(note.stub->handle + i).stub();
    stub.erased = undone;
    database.noteTouched(stub);
  }
}

void AcDbUndoLog::takeBack(Step& step, std::size_t from) {
  ++m_revivals;
  for (std::size_t i = step.notes.size(); i > from; --i) {
    exchange(step.notes[i - 1]);
    setErased(step.notes[i - 1], true);
  }
}

void AcDbUndoLog::repeat(Step& step) {
  ++m_revivals;
  for (Note& note : step.notes) {
    exchange(note);
    setErased(note, false);
  }
}

void AcDbUndoLog::add(AcDbStub* stub, Event event) {
  if (!m_recording) return;
  if (!m_open) open({});
  if (stub) stub->database->setModified(true);
  m_current.notes.push_back({stub, std::move(event)});
}

AcDbUndoLog::Created* AcDbUndoLog::runBefore(const AcDbStub& stub) {
  const std::size_t first = m_marks.empty() ? 0 : m_marks.back();  // of the level, which can fail alone
  if (!m_open || m_current.notes.size() <= first) return nullptr;
  Note& last = m_current.notes.back();
  Created* const run = std::get_if<Created>(&last.event);
  const bool next = run && last.stub->database == stub.database &&
                    last.stub->handle + run->count == stub.handle && run->count != UINT32_MAX;
  return next ? run : nullptr;
}

void AcDbUndoLog::noteCreated(AcDbStub* stub) {
  if (!m_recording) return;
  if (Created* const run = runBefore(*stub)) {
    ++run->count;
    stub->database->setModified(true);
  } else {
    add(stub, Created{});
  }
  stub->undoStep = m_stepId;
}

void AcDbUndoLog::noteErased(AcDbStub* stub, bool erased) {
  if (!erased) ++m_revivals;
  add(stub, erased ? Event(Erased{}) : Event(Unerased{}));
}

void AcDbUndoLog::noteChange(AcDbObject& object) {
  AcDbStub* const stub = object.objectId().stub();
  if (!m_recording || !stub) return;
  if (!m_open) open({});
  stub->database->setModified(true);
  if (stub->undoStep == m_stepId) return;
  add(stub, object.snapshot());
  stub->undoStep = m_stepId;
}

void AcDbUndoLog::noteVariable(std::function<void()> swapValue) {
  add(nullptr, std::make_unique<std::function<void()>>(std::move(swapValue)));
}

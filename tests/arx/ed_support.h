#pragma once

#include "arx/db/dballents.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "arx/ed/edports.h"
#include "base/text.h"

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <vector>

/// Lines given in advance, as a script or as a patient person at a terminal.
class ScriptedSource : public veltora::base::LineSource {
public:
  std::deque<std::string> lines;
  bool person = false;
  veltora::base::Request asked;  ///< latest

  std::optional<std::string> readLine(const veltora::base::Request& request) override {
    asked = request;
    if (lines.empty()) return std::nullopt;
    std::string line = lines.front();
    lines.pop_front();
    return line;
  }
  [[nodiscard]] bool interactive() const override { return person; }
};

class Transcript : public veltora::base::OutputSink {
public:
  std::string text;
  void print(const std::string& printed) override { text += printed; }
  [[nodiscard]] bool has(const std::string& part) const { return text.find(part) != std::string::npos; }
};

/// An editor on scripted lines; everything is put back at the end.
class EditorTest : public testing::Test {
protected:
  ScriptedSource source;
  Transcript transcript;

  EditorTest() {
    acedPorts() = {};
    acedPorts().source = &source;
    acedPorts().sink = &transcript;
    acedInitGet(0, nullptr);
    const ads_point origin = {0, 0, 0};
    acedSetLastPoint(origin);
  }
  ~EditorTest() override { acedPorts() = {}; }

  void answer(std::initializer_list<const char*> lines, bool person = false) {
    source.lines.assign(lines.begin(), lines.end());
    source.person = person;
    transcript.text.clear();
  }
};

inline AcDbObjectId append(AcDbDatabase& database, AcDbEntity* entity, const wchar_t* layer = nullptr) {
  AcDbObjectId id;
  AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
  space->appendAcDbEntity(id, entity);
  if (layer) entity->setLayer(database.recordOf("LAYER", layer));
  entity->close();
  return id;
}

/// The editor with an empty drawing to work on.
class DrawingTest : public EditorTest {
protected:
  std::unique_ptr<AcDbDatabase> db = std::make_unique<AcDbDatabase>();

  DrawingTest() { acdbHostApplicationServices()->setWorkingDatabase(db.get()); }
  ~DrawingTest() override {
    acedForgetDatabase(db.get());
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  }

  AcDbObjectId line(double x1, double y1, double x2, double y2, const wchar_t* layer = nullptr) {
    return append(*db, new AcDbLine({x1, y1, 0}, {x2, y2, 0}), layer);
  }
  AcDbObjectId point(double x, double y, double z = 0, const wchar_t* layer = nullptr) {
    return append(*db, new AcDbPoint({x, y, z}), layer);
  }
  AcDbObjectId text(double x, double y, const wchar_t* content) {
    return append(*db, new AcDbText({x, y, 0}, content, {}, 2.0));
  }
};

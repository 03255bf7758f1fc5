// Functions that walk over what a drawing and its tables hold: each must grow no faster than n log n.

#include "arx/ap/acdocman.h"
#include "arx/db/dblines.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "arx/ed/edports.h"
#include "arx/lisp/host/aclisp.h"
#include "arx/rx/rxdlinkr.h"
#include "base/files.h"
#include "base/format.h"
#include "core/installation.h"
#include "mesure.h"
#include "points/infos_topo.h"

#include <cstdlib>
#include <deque>
#include <filesystem>
#include <string>
#include <vector>

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId);

namespace {

using namespace veltora;

constexpr double kX = 650000.0;
constexpr double kY = 6860000.0;

/// Prompts take their answers here.
class Answers : public base::LineSource {
public:
  std::deque<std::string> lines;
  std::optional<std::string> readLine(const base::Request& /*request*/) override {
    if (lines.empty()) return std::nullopt;
    std::string line = lines.front();
    lines.pop_front();
    return line;
  }
};

void expect(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}

/// A drawing with the module, a table of points, and a step of undo that all work joins.
class Bench {
public:
  Bench() {
    acDocManager->appContextNewDocument();
    m_drawing = acDocManager->curDocument()->database();
    setSrcInfosTopo(nullptr, &m_project, 1, 0);
    acedPorts().source = &m_answers;
    m_drawing->undoLog().begin(L"BENCH");
  }
  ~Bench() {
    m_drawing->undoLog().end();
    setSrcInfosTopo(nullptr, nullptr, 0, 0);
    acedPorts().source = nullptr;
    acDocManager->closeDocument(acDocManager->curDocument());
  }
  Bench(const Bench&) = delete;
  Bench& operator=(const Bench&) = delete;

  AcDbDatabase& drawing() { return *m_drawing; }
  listePointsDuDessin& table() { return *m_project.currTable(); }
  /// The value of an expression, which must not be nil.
  static void evaluate(const std::wstring& expression) {
    const AcEdRbHolder value(acedPorts().evaluate(expression));
    expect(value && value->restype != RTNIL, "an expression");
  }
  void call(const wchar_t* name, std::deque<std::string> answers) {
    m_answers.lines = std::move(answers);
    const AcEdRbHolder value(acedLispFunctions()->call(name, nullptr));
    expect(value && m_answers.lines.empty(), "a function");
  }
  /// Points of the table, with their blocks, at places along a path.
  void place(int n, double beside) {
    for (int i = 0; i < n; ++i) {
      pointDuDessin point;
      point.setParams(std::to_wstring(i + 1).c_str(), {kX + i, kY + beside + i % 7, 10.0}, 1);
      point.creer(true, nullptr);
      expect(point.id.isLive(), "a point");
      table().Ajouter(point);
    }
  }
  void path(int n) {
    auto* polyline = new AcDbPolyline;
    for (int i = 0; i < n; ++i) polyline->addVertexAt(static_cast<unsigned int>(i), {kX + i, kY + i % 7});
    append(polyline);
  }
  void append(AcDbEntity* entity) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(m_drawing->modelSpaceId(), AcDb::kForWrite);
    expect(space->appendAcDbEntity(entity) == Acad::eOk, "an entity");
    entity->close();
  }

private:
  projetsTopo m_project;
  AcDbDatabase* m_drawing = nullptr;
  Answers m_answers;
};

void lastAfterErasing(Mesure& measure, int n) {
  Bench bench;
  for (int i = 0; i < n; ++i) bench.append(new AcDbPoint({kX + i, kY, 0}));
  measure("entlast, entdel", n,
          [] { Bench::evaluate(L"(progn (while (setq e (entlast)) (entdel e)) (not e))"); });
}

void nextVertex(Mesure& measure, int n) {
  Bench bench;
  Bench::evaluate(L"(entmake '((0 . \"POLYLINE\") (70 . 8)))");
  Bench::evaluate(L"(repeat " + std::to_wstring(n) +
                  L" (entmake '((0 . \"VERTEX\") (10 1.0 2.0 3.0) (70 . 32))))");
  Bench::evaluate(L"(entmake '((0 . \"SEQEND\")))");
  measure("entnext over vertices", n, [n] {
    Bench::evaluate(L"(progn (setq e (entlast) n 0) (while (setq e (entnext e)) (setq n (1+ n))) (> n " +
                    std::to_wstring(n - 1) + L"))");
  });
}

void nextLayer(Mesure& measure, int n) {
  Bench bench;
  AcDbObjectPointer<AcDbLayerTable> layers(bench.drawing().layerTableId(), AcDb::kForWrite);
  for (int i = 0; i < n; ++i) {
    auto* layer = new AcDbLayerTableRecord;
    layer->setName((L"C" + std::to_wstring(i)).c_str());
    expect(layers->add(layer) == Acad::eOk, "a layer");
    layer->close();
  }
  layers.close();
  measure("tblnext over layers", n, [n] {
    Bench::evaluate(
        L"(progn (tblnext \"LAYER\" T) (setq n 1) (while (tblnext \"LAYER\") (setq n (1+ n))) (> n " +
        std::to_wstring(n) + L"))");
  });
}

void removeFromSet(Mesure& measure, int n) {
  Bench bench;
  for (int i = 0; i < n; ++i) bench.append(new AcDbPoint({kX + i, kY, 0}));
  Bench::evaluate(L"(setq s (ssget \"X\"))");
  measure("ssname, ssdel", n,
          [] { Bench::evaluate(L"(progn (while (setq e (ssname s 0)) (ssdel e s)) (= (sslength s) 0))"); });
}

void numberEach(Mesure& measure, int n) {
  Bench bench;
  measure("maxnum at each new point", n, [n] {
    Bench::evaluate(L"(progn (repeat " + std::to_wstring(n) +
                    L" (tpcdaddpt (itoa (maxnum)) 1 '(1.0 2.0) 3.0 \"\")) T)");
  });
  expect(bench.table().nbPoint() == n, "numbers");
}

void offsetPoints(Mesure& measure, int n) {
  Bench bench;
  bench.place(n, 0.0);
  bench.path(n);
  measure("C:pointsParDecalage", n, [&] {
    bench.call(L"C:pointsParDecalage",
               {"DERNIER", base::formater("%.4f,%.4f", kX + 0.5, kY - 2.0), "0.01", "0.5"});
  });
  expect(bench.table().nbPoint() == 2 * n, "points of a parallel");
}

void carryPoints(Mesure& measure, int n) {
  Bench bench;
  bench.place(n, 0.1);
  bench.path(n);
  measure("c:VNDEPORTPNTS, n points x n vertices", n, [&] {
    bench.call(L"c:VNDEPORTPNTS", {"DERNIER", "0.5", "TOUT", ""});
  });
  expect(bench.table().getData(n / 2)->y != kY + 0.1 + n / 2 % 7, "points on a path");
}

}  // namespace

int main() {
  const std::filesystem::path folder = base::creerFichierTemporaire(base::dossierTemporaire(), "BCH");
  std::filesystem::remove(folder);
  std::filesystem::create_directories(folder);
  std::filesystem::copy(VELTORA_SOURCE_DIR "/data", folder, std::filesystem::copy_options::recursive);
  setDossierInstallation(folder);
  aclispInstall();
  acrxDynamicLinker->registerModule(L"veltora", acrxEntryPoint);
  Mesure measure;
  const struct {
    void (*job)(Mesure&, int);
    int largest;
  } jobs[] = {{lastAfterErasing, 80000}, {nextVertex, 40000},   {nextLayer, 16000},  {removeFromSet, 80000},
              {numberEach, 32000},       {offsetPoints, 16000}, {carryPoints, 16000}};
  for (const auto& [job, largest] : jobs)
    for (const int n : {largest / 4, largest / 2, largest}) job(measure, n);
  acrxDynamicLinker->unloadModule(L"veltora");
  acedPorts() = {};
  std::filesystem::remove_all(folder);
}

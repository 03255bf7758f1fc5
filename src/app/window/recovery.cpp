#include "app/window/recovery.h"

#include "arx/ap/acdocman.h"
#include "arx/ed/edports.h"
#include "arx/rx/rxdlinkr.h"
#include "base/paths.h"
#include "base/text.h"
#include "ui/driver.h"

#include <algorithm>

namespace veltora::app {
namespace {

constexpr int kSoon = 3000;  // ms

RecoveredDrawing describe(const AcApDocument& document) {
  return {document.fileName(), document.docTitle(), document.fileState()};
}

/// Who the copy is of, when it was written, what became of the file since.
std::wstring questionOf(const RecoveryCopy& copy) {
  const RecoveredDrawing& drawing = copy.drawing();
  std::wstring text = L"Une session s'est arrêtée avant d'enregistrer « " +
                      (drawing.title.empty() ? L"Dessin" : drawing.title) + L" »";
  if (!drawing.fileName.empty()) text += L"\n(" + drawing.fileName + L")";
  text += L".\nSa copie de secours est du " + base::fromUtf8(copy.written()) + L".";
  const auto now = base::etatFichier(base::cheminDuTexte(drawing.fileName));
  if (!drawing.fileName.empty() && !now.present)
    text += L"\nLe fichier lui-même n'est plus là.";
  else if (!drawing.fileName.empty() && !(now == drawing.state))
    text += L"\nLe fichier lui-même a été enregistré depuis par une autre session.";
  return text + L"\n\nOuvrir la copie ? « Non » l'efface, « Annuler » la garde pour plus tard.";
}

}  // namespace

/// A drawing that is saved or closed needs no copy.
class Recovery::HostEvents : public AcApDocManagerReactor {
public:
  explicit HostEvents(Recovery& recovery) : m_recovery(recovery) { acDocManager->addReactor(this); }
  ~HostEvents() override { acDocManager->removeReactor(this); }
  HostEvents(const HostEvents&) = delete;
  HostEvents& operator=(const HostEvents&) = delete;
  void documentTitleUpdated(AcApDocument* document) override { m_recovery.forget(document); }
  void documentToBeDestroyed(AcApDocument* document) override { m_recovery.forget(document); }

private:
  Recovery& m_recovery;
};

Recovery::Recovery(std::filesystem::path folder, Surroundings surroundings)
    : m_folder(std::move(folder)),
      m_around(std::move(surroundings)),
      m_events(std::make_unique<HostEvents>(*this)) {
  m_soon.setSingleShot(true);
  for (QTimer* const timer : {&m_clock, &m_soon})
    QObject::connect(timer, &QTimer::timeout, timer, [this] { copyNow(); });
}

Recovery::~Recovery() = default;

void Recovery::setInterval(std::chrono::milliseconds interval) {
  if (interval.count() > 0)
    m_clock.start(interval);
  else
    m_clock.stop();
}

void Recovery::forget(AcApDocument* document) {
  const auto found = m_copies.find(document);
  if (found == m_copies.end()) return;
  found->second->remove();
  m_copies.erase(found);
}

RecoveryCopy* Recovery::placeOf(AcApDocument& document) {
  auto place = m_copies.find(&document);
  if (place == m_copies.end()) {
    std::string reason;
    std::unique_ptr<RecoveryCopy> made = RecoveryCopy::make(m_folder, reason);
    if (!made) return fail(reason), nullptr;
    place = m_copies.emplace(&document, std::move(made)).first;
  }
  if (!place->second->describe(describe(document)))  // the former note is better than none
    fail("la note de \"" + place->second->copy().string() + "\" ne s'écrit pas");
  return place->second.get();
}

std::vector<Recovery::Job> Recovery::jobs() {
  std::vector<Job> found;
  const std::unique_ptr<AcApDocumentIterator> documents(acDocManager->newAcApDocumentIterator());
  for (; !documents->done(); documents->step()) {
    AcApDocument* const document = documents->document();
    if (!acDocManager->isModified(document)) continue;
    if (const RecoveryCopy* const place = placeOf(*document)) found.push_back({document, place->copy()});
  }
  return found;
}

/// In a process of its own: as a save would, but for its traces.
std::string Recovery::write(const std::vector<Job>& jobs) {
  acedPorts() = {};
  ui::setDriver(nullptr);
  std::string failure;
  for (const Job& job : jobs) {
    std::wstring message;
    acDocManager->activateDocument(job.document);
    acrxDynamicLinker->broadcast(AcRx::kSaveMsg);
    if (job.document->database()->saveAs(base::texteDuChemin(job.copy).c_str(), &message) != Acad::eOk)
      failure = base::toUtf8(message);
  }
  return failure;
}

void Recovery::copyNow() {
  if (!m_touched || m_process.isWorking()) return;
  if (!m_around.atRest()) return m_soon.start(kSoon);
  const std::vector<Job> due = jobs();
  m_touched = !m_around.idle();
  if (due.empty()) return;
  m_writing.clear();
  for (const Job& job : due) m_writing.push_back(job.copy);
  const auto work = [this, &due] {
    m_around.leaveHost();
    m_events.reset();
    return write(due);
  };
  if (!m_process.start(work, [this](const std::string& failure) { ended(failure); }))
    fail("le système ne peut pas ouvrir un autre processus");
}

void Recovery::ended(const std::string& failure) {
  // What was saved or closed meanwhile needs none.
  for (const std::filesystem::path& written : std::exchange(m_writing, {})) {
    const auto isWanted = [&](const auto& each) { return each.second->copy() == written; };
    std::error_code ignored;
    if (std::ranges::none_of(m_copies, isWanted)) std::filesystem::remove(written, ignored);
  }
  if (!failure.empty()) return fail(failure);
  m_failed = false;
}

/// Told once, until a copy is made again; the former copy stays.
void Recovery::fail(const std::string& reason) {
  m_touched = true;
  if (std::exchange(m_failed, true)) return;
  m_around.print("\nPas de copie de secours : " + reason + ".\nEnregistrez votre travail.\n");
}

void Recovery::clear() {
  m_clock.stop();
  m_soon.stop();
  m_process.abandon();
  for (const auto& [document, copy] : m_copies) copy->remove();
  m_copies.clear();
  std::error_code ignored;
  for (const std::filesystem::path& written : std::exchange(m_writing, {}))
    std::filesystem::remove(written, ignored);
}

void Recovery::offer() {
  for (std::unique_ptr<RecoveryCopy>& copy : RecoveryCopy::abandoned(m_folder)) offer(std::move(copy));
}

void Recovery::offer(std::unique_ptr<RecoveryCopy> copy) {
  const int answer = ui::messageBox(questionOf(*copy), L"Copie de secours", ui::Buttons::YesNoCancel);
  if (answer == ui::kNo) return copy->remove();
  if (answer != ui::kYes) return;
  const RecoveredDrawing drawing = copy->drawing();
  std::wstring message;
  const std::wstring path = base::texteDuChemin(copy->copy());
  if (acDocManager->appContextRecoverDocument(path.c_str(), drawing.fileName.c_str(), drawing.state,
                                              &message) != Acad::eOk) {
    ui::messageBox(L"La copie de secours ne s'ouvre pas : " + message + L"\nElle reste où elle est : " + path,
                   L"Copie de secours");
    return;
  }
  m_copies[curDoc()] = std::move(copy);
  m_touched = true;
}

}  // namespace veltora::app

#include "app/window/dialogs/file_choice.h"

#include "app/window/dialogs/text.h"

#include <QDir>
#include <QFileInfo>

namespace veltora::app {
namespace {

/// "Texte (*.a *.b)" without the pattern that the text may tell itself. A drawing is served by its .dxf.
QString nameFilter(const ui::FileFilter& filter) {
  QString text = shown(filter.text);
  const qsizetype bracket = text.lastIndexOf(QLatin1String("(*"));
  if (bracket > 0) text = text.left(bracket).trimmed();
  QString pattern = shown(filter.pattern).replace(QLatin1Char(';'), QLatin1Char(' '));
  const QString lower = pattern.toLower();
  if (lower.contains(QLatin1String("*.dwg")) && !lower.contains(QLatin1String("*.dxf")))
    pattern += QStringLiteral(" *.dxf");
  if (pattern == QLatin1String("*.*")) pattern = QStringLiteral("*");
  return text + QStringLiteral(" (") + pattern + QLatin1Char(')');
}

}  // namespace

FileChoice::FileChoice(const base::FileRequest& request, QWidget* parent)
    : m_request(request), m_dialog(parent) {
  const QString verb = request.save ? QStringLiteral("Enregistrer") : QStringLiteral("Ouvrir");
  m_dialog.setWindowTitle(!request.title.empty() ? shown(request.title)
                          : request.save         ? QStringLiteral("Enregistrer sous")
                                                 : verb);
  m_dialog.setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  m_dialog.setFileMode(QFileDialog::AnyFile);             // a name may be one that is completed
  m_dialog.setOption(QFileDialog::DontConfirmOverwrite);  // asked with the completed name
  m_dialog.setLabelText(QFileDialog::Accept, verb);
  m_dialog.setLabelText(QFileDialog::Reject, QStringLiteral("Annuler"));
  m_dialog.setLabelText(QFileDialog::FileName, QStringLiteral("Nom :"));
  m_dialog.setLabelText(QFileDialog::FileType, QStringLiteral("Type :"));
  m_dialog.setLabelText(QFileDialog::LookIn, QStringLiteral("Dossier :"));
  for (const ui::FileFilter& filter : ui::filtersOf(request.filter)) m_filters << nameFilter(filter);
  if (!m_filters.isEmpty()) m_dialog.setNameFilters(m_filters);
  if (!request.folder.empty() && QFileInfo(shown(request.folder)).isDir())
    m_dialog.setDirectory(shown(request.folder));
  if (!request.defaultName.empty()) m_dialog.selectFile(shown(request.defaultName));
}

std::optional<base::FileAnswer> FileChoice::answer() {
  const QStringList chosen = m_dialog.selectedFiles();
  base::FileAnswer answer;
  answer.filterIndex = std::max(1, static_cast<int>(m_filters.indexOf(m_dialog.selectedNameFilter())) + 1);
  answer.path = chosen.isEmpty() ? std::wstring() : wide(QDir::toNativeSeparators(chosen.front()));
  const std::wstring full = ui::completedPath(m_request, answer.path, answer.filterIndex);
  if (answer.path.empty() || QFileInfo(shown(full)).isDir()) {
    m_fault = L"« " + full + L" » n'est pas un nom de fichier.";
    return std::nullopt;
  }
  if (m_request.save) {
    answer.path = full;
    return answer;
  }
  answer.path = ui::foundFile(m_request, answer.path, answer.filterIndex);
  if (!answer.path.empty()) return answer;
  m_fault = L"Fichier introuvable : « " + full + L" ».";
  return std::nullopt;
}

}  // namespace veltora::app

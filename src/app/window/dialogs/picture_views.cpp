#include "app/window/dialogs/picture_views.h"

#include "app/window/dialogs/block_picture.h"
#include "app/window/dialogs/dialog_window.h"
#include "app/window/dialogs/text.h"
#include "base/files.h"
#include "base/paths.h"
#include "base/text.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPixmap>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

namespace veltora::app {
namespace {

constexpr QSize kPicture{200, 130};
constexpr QSize kReport{680, 420};

class Browser : public QTextBrowser {
public:
  using QTextBrowser::QTextBrowser;
  [[nodiscard]] QSize sizeHint() const override { return kReport; }
};

}  // namespace

QString readableReport(const std::string& html) {
  QString text = shown(base::widen(html));
  static const QRegularExpression style(
      QStringLiteral("<style[^>]*>.*?</style>"),
      QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
  qsizetype from = 0;
  for (QRegularExpressionMatch match = style.match(text); match.hasMatch(); match = style.match(text, from)) {
    QString sheet = match.captured();
    sheet.remove(QStringLiteral("<!--")).remove(QStringLiteral("-->"));
    text.replace(match.capturedStart(), match.capturedLength(), sheet);
    from = match.capturedStart() + sheet.size();
  }
  return text;
}

ReportView::ReportView(DialogWindow& window, ui::WebView& report)
    : ControlView(window, report),
      m_report(report),
      m_browser(new Browser(&window)),
      m_print(new QPushButton("Imprimer…", &window)),
      m_open(new QPushButton("Ouvrir dans le navigateur", &window)) {
  m_browser->setOpenLinks(false);
  auto* const whole = new QWidget(&window);
  auto* const rows = new QVBoxLayout(whole);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(m_browser, 1);
  auto* const line = new QHBoxLayout;
  line->addStretch(1);
  for (QPushButton* const button : {m_print, m_open}) {
    button->setAutoDefault(false);
    line->addWidget(button);
  }
  rows->addLayout(line);
  place(whole, true);
  QObject::connect(m_print, &QPushButton::clicked, m_browser, [this] { choosePrinter(); });
  QObject::connect(m_open, &QPushButton::clicked, m_browser, [this] { openInBrowser(); });
}

QWidget* ReportView::keyboard() const { return m_browser; }

void ReportView::print(QPagedPaintDevice& paper) const { m_browser->print(&paper); }

void ReportView::choosePrinter() {
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog choice(&printer, m_browser);
  choice.setWindowTitle("Imprimer le rapport");
  if (choice.exec() == QDialog::Accepted) print(printer);
}

void ReportView::openInBrowser() {
  const QString path = shown(m_report.path());
  if (QDesktopServices::openUrl(QUrl::fromLocalFile(path))) return;
  QMessageBox::warning(m_browser, "Rapport",
                       "Aucun navigateur ne s'est ouvert. Le rapport est ici :\n" + path);
}

void ReportView::refreshContent() {
  const auto html = base::lireFichier(base::cheminDuTexte(m_report.path()));
  m_browser->setHtml(html ? readableReport(*html) : QString());
  for (QPushButton* const button : {m_print, m_open}) button->setEnabled(html.has_value());
}

PreviewView::PreviewView(DialogWindow& window, ui::Preview& preview)
    : ControlView(window, preview), m_preview(preview), m_button(new QToolButton(&window)) {
  m_button->setFocusPolicy(Qt::NoFocus);
  m_button->setFixedSize(kPicture + QSize(8, 8));
  m_button->setIconSize(kPicture);
  place(m_button, false);
  QObject::connect(m_button, &QToolButton::clicked, &window,
                   [this] { this->window().act(m_preview, [this] { return m_preview.userPress(); }); });
}

void PreviewView::refreshContent() {
  if (!m_button->icon().isNull() && m_path == m_preview.path()) return;
  m_path = m_preview.path();
  QString reason;
  const QPixmap picture = pictureOf(m_path, kPicture, reason);
  m_button->setIcon(picture);
  m_button->setText(picture.isNull() ? reason : QString());
  m_button->setToolButtonStyle(picture.isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonIconOnly);
  m_button->setToolTip(shown(m_path));
}

}  // namespace veltora::app

#include "ui/progress.h"

#include "base/format.h"
#include "ui/driver.h"

namespace veltora::ui {

CMyProgressDlg::CMyProgressDlg() : Dialog(L"Mise en place des points") {}

CMyProgressDlg::~CMyProgressDlg() {
  try {
    closeModeless();
  } catch (...) {  // NOLINT(bugprone-empty-catch): the job itself may be leaving by an exception
  }
}

void CMyProgressDlg::setRange(long long minimum, long long maximum) {
  bar.setRange(minimum, maximum);
  if (!m_opened && driver()) {
    m_opened = true;
    openModeless();
  }
  showPercent();
}

void CMyProgressDlg::stepIt() {
  bar.stepIt();
  showPercent();
}

void CMyProgressDlg::setPos(long long position) {
  bar.setPosition(position);
  showPercent();
}

void CMyProgressDlg::showPercent() {
  const int percent = bar.percent();
  if (percent == m_percent) return;
  m_percent = percent;
  pourcentage.setText(base::formater(std::wstring(L"%d%c"), percent, L'%'));
  if (isOpen() && driver()) driver()->update(*this);
}

}  // namespace veltora::ui

#pragma once

#include "base/suivi.h"
#include "ui/dialog.h"

namespace veltora::ui {

/// The modeless dialog of long jobs, which run it as a `base::Suivi`. It is shown by the first `setRange`,
/// and closed by its destructor or its button, which leaves the job going. A step costs next to nothing: the
/// driver hears of it only when the percentage changes. Without a driver nothing is shown.
class VELTORA_API CMyProgressDlg : public Dialog {
public:
  CMyProgressDlg();
  ~CMyProgressDlg() override;
  void setRange(long long minimum, long long maximum);
  void setStep(long long step) { bar.setStep(step); }
  void stepIt();
  void setPos(long long position);
  void onCancel() override { closeModeless(); }

  Label patientez{this, L"Patientez SVP."};
  ProgressBar bar{this};
  Label pourcentage{this};
  Button fermer{this, L"Fermer", Button::Role::Cancel};

private:
  void showPercent();
  bool m_opened = false;  ///< once closed by its button it stays closed
  int m_percent = -1;
};

/// A job shown by the dialog.
class DialogueSuivi : public base::AfficheurSuivi {
public:
  void etendre(long long minimum, long long maximum) override { m_dialogue.setRange(minimum, maximum); }
  void avancer() override { m_dialogue.stepIt(); }
  void aller(long long position) override { m_dialogue.setPos(position); }

private:
  CMyProgressDlg m_dialogue;
};

}  // namespace veltora::ui

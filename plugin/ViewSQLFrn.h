// The statement preview: read-only editor with copy, save and send-to-editor.
#pragma once

#include "plugin/KelForms.h"

namespace Ui {
class TViewSqlFrm;
}

namespace kel {

class TKelEditor;

class TViewSqlFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TViewSqlFrm(QWidget* owner);
  ~TViewSqlFrm() override;

  void InitLoad() override;
  void ReadParams(TXLink* link) override;
  // Replaces the whole text and tells the host what is shown now.
  void SetSqlText(const QString& text);
  QString SqlText() const;
  TKelEditor* SQLEditor() const;

 public slots:
  void ScriptClipBtnClick();
  void ScriptSaveBtnClick();
  void ScriptSendEditorBtnClick();

 protected:
  void KelDllDBDlgFrmKeyDown(QKeyEvent* event) override;
  bool KelDllDBDlgFrmClose() override { return true; }

 private:
  Ui::TViewSqlFrm* ui;
};

}  // namespace kel

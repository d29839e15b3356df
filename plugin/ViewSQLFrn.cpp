#include "plugin/ViewSQLFrn.h"

#include <QFileInfo>
#include <QKeyEvent>

#include "plugin/KelEditor.h"
#include "ui_ViewSQLFrn.h"

namespace kel {

TViewSqlFrm::TViewSqlFrm(QWidget* owner) : TKelDllDBDlgFrm(owner), ui(new Ui::TViewSqlFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("ViewSqlFrm"));
  setWindowFlags(Qt::Window | Qt::WindowStaysOnTopHint);
  setModal(false);
  SetIniSave(true);
  // Create handler: PL/SQL editing set-up, read only.
  ui->SQLEditor->PlSqlEditor();
  ui->SQLEditor->setReadOnly(true);
  connect(ui->ScriptClipBtn, &QAbstractButton::clicked, this, &TViewSqlFrm::ScriptClipBtnClick);
  connect(ui->ScriptSaveBtn, &QAbstractButton::clicked, this, &TViewSqlFrm::ScriptSaveBtnClick);
  connect(ui->ScriptSendEditorBtn, &QAbstractButton::clicked, this,
          &TViewSqlFrm::ScriptSendEditorBtnClick);
}

TViewSqlFrm::~TViewSqlFrm() {
  KelFrmIniSave();
  delete ui;
}

TKelEditor* TViewSqlFrm::SQLEditor() const {
  return ui->SQLEditor;
}

void TViewSqlFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  // The highlighting follows the connection: Oracle SQL for every connection here.
}

void TViewSqlFrm::ReadParams(TXLink* link) {
  if (link->Verb() == QLatin1String("DataOpen")) SetSqlText(link->ParamByString("SqlTxt"));
}

void TViewSqlFrm::SetSqlText(const QString& text) {
  ui->SQLEditor->SetText(text);
  if (Application()) Application()->PreviewTextSet(text);
}

QString TViewSqlFrm::SqlText() const {
  return ui->SQLEditor->Text();
}

void TViewSqlFrm::ScriptClipBtnClick() {
  Guarded([this] {
    if (!Application()) return;
    Application()->SetClipboardText(ui->SQLEditor->Text());
    Application()->esStatus(Application()->esGetMSG(QStringLiteral("ClipboardCopy")));
  });
}

void TViewSqlFrm::ScriptSaveBtnClick() {
  Guarded([this] {
    QString fileName;
    if (!Application() || !Application()->SaveFileDialog(this, fileName)) return;
    if (QFileInfo::exists(fileName) &&
        Application()->esMsgDBox(QStringLiteral("OverWrite"), TMsgDlgType::Confirmation,
                                 TMsgDlgButtons::YesNoCancel, false) != mrYes)
      return;
    Application()->SaveTextFile(fileName, ui->SQLEditor->Text());
  });
}

void TViewSqlFrm::ScriptSendEditorBtnClick() {
  Guarded([this] {
    if (Application())
      Application()->esSendToEditor(DBInfo(), ui->SQLEditor->Text(), QStringLiteral("SQLEditor"),
                                    QString());
  });
}

void TViewSqlFrm::KelDllDBDlgFrmKeyDown(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) close();
}

}  // namespace kel

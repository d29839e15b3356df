#include "security/SecurityForm.h"

#include <QLineEdit>
#include <QTabWidget>

#include "plugin/KelForms.h"

namespace kel {

void ShowActiveTab(QTabWidget* pages, int active, const QWidget* sqlPage) {
  if (active > 0 && active < pages->count() && pages->widget(active) != sqlPage)
    pages->setCurrentIndex(active);
}

void ThrowNotFound(const char* key, const QString& name) {
  throw EKelError(FormatMsg(Application()->esGetMSG(QString::fromLatin1(key)), {name}));
}

bool CheckNameField(TKelBaseFrm* form, QLabel* label, QLineEdit* edit, const QString& name) {
  if (name.isEmpty()) return form->CheckFail(label, edit);
  return form->CheckName(label, edit, name);
}

bool CheckPasswords(TKelBaseFrm* form, bool required, bool database, QLabel* passwordLbl,
                    QLineEdit* password, QLabel* verifyLbl, QLineEdit* verify) {
  if (required) {
    if (password->text().isEmpty()) return form->CheckFail(passwordLbl, password);
    if (verify->text().isEmpty()) return form->CheckFail(verifyLbl, verify);
  }
  if (database && password->text() != verify->text()) {
    if (Application())
      Application()->esMsgDBox(QStringLiteral("Acm.PasswordsDoNotMatch"), {}, TMsgDlgType::Warning,
                               false);
    FocusControl(verify);
    return false;
  }
  return true;
}

}  // namespace kel

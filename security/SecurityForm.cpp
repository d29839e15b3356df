#include "security/SecurityForm.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "plugin/KelForms.h"
#include "security/GrantEditor.h"

namespace kel {

void AddGrantPages(QTabWidget* pages, TGrantEditor* grants, const QString& objectCaption) {
  pages->addTab(grants->RolesPage(), QStringLiteral("Roles"));
  pages->addTab(grants->SystemPage(), QStringLiteral("System Privileges"));
  pages->addTab(grants->ObjectPage(), objectCaption);
  pages->addTab(grants->ResourcePage(), QStringLiteral("Resource Groups"));
}

QWidget* AddSqlPage(QTabWidget* pages, QPlainTextEdit** text) {
  auto* page = new QWidget();
  page->setObjectName(QStringLiteral("SqlTabSheet"));
  auto* layout = new QVBoxLayout(page);
  *text = new QPlainTextEdit(page);
  (*text)->setObjectName(QStringLiteral("SqlText"));
  (*text)->setReadOnly(true);
  layout->addWidget(*text);
  pages->addTab(page, QStringLiteral("SQL"));
  return page;
}

QHBoxLayout* NewButtonRow(QWidget* form, QPushButton** view, QPushButton** ok,
                          QPushButton** cancel) {
  auto* buttons = new QHBoxLayout();
  buttons->addStretch(1);
  *view = new QPushButton(QStringLiteral("View SQL"), form);
  (*view)->setObjectName(QStringLiteral("ViewSqlBtn"));
  *ok = new QPushButton(QStringLiteral("OK"), form);
  (*ok)->setObjectName(QStringLiteral("OkBtn"));
  *cancel = new QPushButton(QStringLiteral("Cancel"), form);
  (*cancel)->setObjectName(QStringLiteral("CancelBtn"));
  for (QPushButton* b : {*view, *ok, *cancel}) buttons->addWidget(b);
  return buttons;
}

QLineEdit* NewPasswordEdit(const char* name, QWidget* parent) {
  auto* edit = new QLineEdit(parent);
  edit->setObjectName(QString::fromLatin1(name));
  edit->setEchoMode(QLineEdit::Password);
  return edit;
}

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

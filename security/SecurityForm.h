// What the user, role and profile dialogs share: the statement page, the button row, the name
// and password checks and the error for an object dropped since the list was read.
#pragma once

#include <QString>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QWidget;

namespace kel {

class TGrantEditor;
class TKelBaseFrm;

// Adds the four grant pages of `grants` to `pages`; `objectCaption` names the object page.
void AddGrantPages(QTabWidget* pages, TGrantEditor* grants, const QString& objectCaption);
// Adds the read-only statement page ("SqlTabSheet", "SQL") holding `*text` ("SqlText").
QWidget* AddSqlPage(QTabWidget* pages, QPlainTextEdit** text);
// The right-aligned View SQL, OK and Cancel buttons of `form`.
QHBoxLayout* NewButtonRow(QWidget* form, QPushButton** view, QPushButton** ok,
                          QPushButton** cancel);
// A password edit: its text is never shown.
QLineEdit* NewPasswordEdit(const char* name, QWidget* parent);

// The page the host asked for, unless it is out of range, the first page or the statement page.
void ShowActiveTab(QTabWidget* pages, int active, const QWidget* sqlPage);
// Throws the host's `key` message naming `name`: the object was dropped since it was listed.
[[noreturn]] void ThrowNotFound(const char* key, const QString& name);

// The name is filled and is an identifier Oracle takes; otherwise the form reports it.
bool CheckNameField(TKelBaseFrm* form, QLabel* label, QLineEdit* edit, const QString& name);
// With database authentication the two password edits must agree; when a new password is
// `required`, both must be filled as well.
bool CheckPasswords(TKelBaseFrm* form, bool required, bool database, QLabel* passwordLbl,
                    QLineEdit* password, QLabel* verifyLbl, QLineEdit* verify);

}  // namespace kel

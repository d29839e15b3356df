// What the user, role and profile dialogs share: the first page shown, the name and password
// checks and the error for an object dropped since the list was read.
#pragma once

#include <QString>

class QLabel;
class QLineEdit;
class QTabWidget;
class QWidget;

namespace kel {

class TKelBaseFrm;

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

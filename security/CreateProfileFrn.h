// The profile dialog: creates a resource profile or alters one. Sixteen limits, each picked or
// typed in a combo box, become one CREATE PROFILE or ALTER PROFILE statement.
#pragma once

#include <QList>

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

class QComboBox;

namespace Ui {
class TCreateProfileFrm;
}

namespace kel {

// A limit of the statement: its keyword and the text of its combo.
struct TProfileLimit {
  QString Keyword;
  QString Value;
};

// The statement: header, then one line per limit whose trimmed value is not empty.
QStringList ProfileStatement(const QString& head, const QList<TProfileLimit>& limits);

class TCreateProfileFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateProfileFrm(QWidget* owner);
  ~TCreateProfileFrm() override;

  void InitLoad() override;
  // "Alter": the flag and the profile's name.
  void ReadParams(TXLink* link) override;

 protected:
  void KelDllDBDlgFrmShow() override;
  void showEvent(QShowEvent* event) override;
  bool Validate() override;
  void BuildSql() override;

 private:
  void LoadProfile();
  QString ProfileName() const;

  Ui::TCreateProfileFrm* ui;
  // The limit combos in statement order, with their keywords.
  QList<QPair<QComboBox*, QString>> FLimits;

  TKelQuery AlterQry;
  bool FIsAlter = false;
  QString FProfileName;
};

}  // namespace kel

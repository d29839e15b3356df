// The user dialog: creates a database user or alters one (authentication, tablespaces, quotas,
// profile, account status) and grants or revokes its roles and privileges through the grant
// editor. In alter mode only what differs from the loaded user is written.
#pragma once

#include <QMap>

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

namespace Ui {
class TCreateUserFrm;
}

namespace kel {

class TGrantEditor;

// One row of the quota list, and a loaded quota.
struct TQuotaRow {
  QString Tablespace;
  bool Unlimited = false;
  QString Quota;
  QString Units = QStringLiteral("KB");
};

// The quota clauses, each followed by CR LF. `loaded` holds the quotas as loaded (alter mode;
// empty in create mode), by tablespace.
QString QuotaClauses(const QList<TQuotaRow>& rows, const QMap<QString, TQuotaRow>& loaded);

class TCreateUserFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateUserFrm(QWidget* owner);
  ~TCreateUserFrm() override;

  void InitLoad() override;
  // "Alter": the flag, the user's name and the page shown first.
  void ReadParams(TXLink* link) override;

  TGrantEditor* GrantEditor() const { return FGrants; }

 public slots:
  void AuthRdoClick();
  void MainPageChange(int index);

 protected:
  void KelDllDBDlgFrmShow() override;
  void showEvent(QShowEvent* event) override;
  bool Validate() override;
  void BuildSql() override;
  void AfterExecute() override;

 private:
  void AddQuotaColumns();
  void LoadUser();
  void FillQuotaPage();
  void FillTemporaryTablespaces();
  void FillProfiles();
  QList<TQuotaRow> QuotaRows() const;

  // One function per part of the script.
  void AddCreateUser();
  void AddAlterUser();
  QString IdentifiedClause() const;
  QString AlterIdentifiedClause() const;
  void AddAlterQuota(const QString& quota);

  QString UserName() const;
  bool PasswordRequired() const;

  Ui::TCreateUserFrm* ui;
  TGrantEditor* FGrants;

  TKelQuery TempQry;
  bool FIsAlter = false;
  bool FQuotaLoaded = false;
  int FActiveTab = 0;
  QString FUserName;
  // The user as loaded in alter mode.
  QString FAuth, FExternalName, FProfile, FDefaultTablespace, FTemporaryTablespace, FStatus;
  QMap<QString, TQuotaRow> FLoadedQuotas;
};

}  // namespace kel

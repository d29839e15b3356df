// The synonym dialog: creates any number of private or public synonyms in one go, for objects
// found in the local database or for remote objects reached through a database link. Every row
// of the synonym list gives one CREATE SYNONYM statement. Synonyms are created, never altered.
#pragma once

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

namespace Ui {
class TCreateSynonymFrm;
}

namespace kel {

class TCreateSynonymFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  // The cells of a synonym row.
  enum TSynCell { scName, scObject, scType, scPublic, scSchema, scDBLink };

  explicit TCreateSynonymFrm(QWidget* owner);
  ~TCreateSynonymFrm() override;

  void InitLoad() override;
  // "ChangeOwner": the schema to search.
  void ReadParams(TXLink* link) override;

 public slots:
  void TypeRadioClick();
  void ViewSqlBtnClick();
  void SearchBtnClick();
  void RightBtnClick();
  void LeftBtnClick();
  void PrivateAllBtnClick() { SetAllPublic(false); }
  void PublicAllBtnClick() { SetAllPublic(true); }
  // The state updater: enables Add and Drop from what is selected and typed.
  void UpdateState();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool Validate() override;
  void BuildSql() override;

 private:
  void SetupLists();
  void LoadDBLinks();
  void AddLocal();
  void AddRemote();
  void SetAllPublic(bool on);
  // "True" when new rows are public by default (the user may create public synonyms).
  QString DefaultPublic() const;
  // The link name of the DB Link combo without its "(PUBLIC)" mark.
  QString RemoteLinkName() const;

  // One function per statement piece.
  QString SynonymHead(int row) const;
  QString SynonymTarget(int row) const;
  QString SynonymEnd(int row) const;

  Ui::TCreateSynonymFrm* ui;
  TKelQuery ObjectQry;
  TKelQuery DataQry;
};

}  // namespace kel

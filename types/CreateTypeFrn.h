// The object type dialog: creates or replaces an object type with its attributes and method
// specifications (edited in the attribute and method dialogs) and, when the body page holds
// text, its type body.
#pragma once

#include "plugin/KelForms.h"
#include "types/TypeText.h"

namespace Ui {
class TCreateTypeFrm;
}

namespace kel {

class TCreateTypeFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateTypeFrm(QWidget* owner);
  ~TCreateTypeFrm() override;

  void InitLoad() override;
  // "Alter": the flag, the owner and the name of the type; "ChangeOwner": the schema to
  // preselect.
  void ReadParams(TXLink* link) override;

  const QList<TTypeAttribute>& Attributes() const { return FAttributes; }
  const QList<TTypeMethod>& Methods() const { return FMethods; }

 public slots:
  void PropAddBtnClick();
  void PropEditBtnClick();
  void PropDelBtnClick();
  void MethodAddBtnClick();
  void MethodEditBtnClick();
  void MethodDelBtnClick();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool Validate() override;
  void BuildSql() override;

 private:
  void SetupLists();
  void LoadType();
  void LoadAttributes();
  void LoadMethods();
  QList<TTypeParam> LoadParams(const QString& methodNo);
  void LoadBody();
  // Every object type that a row names still exists (the type itself excepted).
  bool CheckReferencedTypes();

  void EditAttribute(int row);
  void EditMethod(int row);
  void ShowAttributes();
  void ShowMethods();

  // One function per part of the statement.
  void AddTypeSpec();
  void AddTypeBody();
  QString ClosingLine() const;

  Ui::TCreateTypeFrm* ui;
  bool FIsAlter = false;
  QString FSchema;
  QString FTypeName;
  // Properties of a loaded type that the attribute and method lists do not show.
  bool FNotFinal = false;
  bool FNotInstantiable = false;
  QList<TTypeAttribute> FAttributes;
  QList<TTypeMethod> FMethods;
};

}  // namespace kel

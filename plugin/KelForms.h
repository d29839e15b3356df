// The dialog base: the module-wide application slot, the change tracker and the two base forms
// (modal database dialog, child window) with the behaviour every dialog shares.
#pragma once

#include <QDialog>
#include <QPointer>
#include <QWidget>
#include <exception>
#include <functional>

#include "plugin/KelHost.h"
#include "plugin/KelText.h"

class QKeyEvent;

class QComboBox;
class QLabel;

namespace kel {

// Key-press handler of a control, run before the control sees the key: returning true discards
// the key (the original platform's "Key := #0"). On a line edit, text that arrives without key
// presses (pasted, dropped) passes the same handler character by character, so a filter holds
// however the text is entered.
void OnKeyPress(QWidget* control, std::function<bool(QKeyEvent*)> handler);
// True for a key that a digits-only edit discards: any printable character other than 0 to 9
// (Backspace and the other control keys pass).
bool IsNonDigitKey(const QKeyEvent* event);
// Exit handler of a control: runs when the focus leaves the control for another control of its
// window (also when a page change hides it), not when the window closes or loses activation.
void OnExit(QWidget* control, std::function<void()> handler);
// Runs `fn`, reporting any error through the host instead of letting it reach the event loop
// (what every handler that reads the catalog runs in; TKelBaseFrm::Guarded is the same).
void RunGuarded(const std::function<void()>& fn);
// Shows every page (tab or header-less page) that holds `control`, then focuses it.
void FocusControl(QWidget* control);

// A Boolean parameter of the host's link ("IsAlter", ...); text that is no Boolean counts as
// false, so a malformed flag opens the dialog in create mode.
bool LinkFlag(TXLink* link, const QString& name);

// The module-wide application slot: the host the module serves. `Open` puts the host's object
// here; every dialog reaches the host services through it.
THost* Application();
void SetApplication(THost* host);

// Watches every input control of a form; any edit sets `Changed`.
class TChangeEventClass : public QObject {
  Q_OBJECT
 public:
  explicit TChangeEventClass(QWidget* form);
  // Hooks the change signals of every input control below the form.
  void ChangeComponent();
  bool Changed() const { return FChanged; }
  void SetChanged(bool changed) { FChanged = changed; }

 public slots:
  void Change() { FChanged = true; }

 private:
  QWidget* FForm;
  bool FChanged = false;
};

// What every form of the module has: the connection, settings, statement buffer, validation
// and the change tracker.
class TKelBaseFrm {
 public:
  explicit TKelBaseFrm(QWidget* self);
  virtual ~TKelBaseFrm();
  TKelBaseFrm(const TKelBaseFrm&) = delete;
  TKelBaseFrm& operator=(const TKelBaseFrm&) = delete;

  // Attaches the form to the host: takes the current connection and runs `InitLoad`.
  virtual int SetParentControl(QWidget* parentControl);
  // Called once the connection is known; overrides call the inherited one first.
  virtual void InitLoad() {}
  // The parameter reader: what the form takes from the host's link.
  virtual void ReadParams(TXLink* link) { (void)link; }

  TEsDBInfo* DBInfo() const { return FDBInfo; }
  QString DLLName() const { return QStringLiteral("NewObjDlg.dll"); }
  // The form's name without the leading T plus ".sfm".
  QString KelIniFile() const;
  bool IniSave() const { return FIniSave; }
  void SetIniSave(bool on) { FIniSave = on; }
  void KelFrmIniLoad();
  void KelFrmIniSave();

  TSqlMemo& SqlMemo() { return FSqlMemo; }
  TChangeEventClass* Tracker() const { return FTracker; }

  // Shows `key` (default "Acm.Check The") with the cleaned caption, shows the page that holds
  // `control` and focuses it. Always returns false, so validators can `return CheckFail(...)`.
  bool CheckFail(const QString& caption, QWidget* control,
                 const QString& key = QStringLiteral("Acm.Check The"));
  bool CheckFail(QLabel* label, QWidget* control,
                 const QString& key = QStringLiteral("Acm.Check The"));

  // The one check of a name field: true when `name` is an identifier Oracle takes (see
  // IsValidName); otherwise "Acm.Valid The" with the caption, the control focused, false.
  bool CheckName(const QString& caption, QWidget* control, const QString& name,
                 TNameKind kind = TNameKind::Object);
  bool CheckName(QLabel* label, QWidget* control, const QString& name,
                 TNameKind kind = TNameKind::Object);

  // Clears the combo, fills it with the connection's users and selects the connected user.
  void FillSchemaCombo(QComboBox* combo);
  // Selects the item whose text is `text` in any letter case (no selection when absent).
  static void SelectComboText(QComboBox* combo, const QString& text);
  // Shows a drop-down list's items in upper case, as a list styled upper case holds them.
  static void UpperCaseItems(QComboBox* combo);
  // Replaces the text of the preview window this form owns, if there is one.
  void RefreshOwnedPreview();

  // Runs `fn`, reporting any error through the host instead of letting it reach the event loop.
  void Guarded(const std::function<void()>& fn);

 protected:
  // Called first in a form's destructor: the controls die after the form's own part, so their
  // last signals (a tree list losing its current row) must not reach the handlers of a
  // half-destroyed form.
  void DisconnectControls();
  // The dialog's validation and statement build (into SqlMemo()), shared by both bases.
  virtual bool Validate() { return true; }
  virtual void BuildSql() {}
  // The common "View SQL" pattern: validate, build, preview.
  void RunViewSql();
  // The common "OK" pattern up to the execution: validate, build, execute; true when executed.
  bool RunOk();
  // The first show of either base: buttons lose their default role, edits refuse control
  // characters, settings are read, `handler` runs guarded and the change tracker starts; false
  // (tracker not started) when the handler failed.
  bool RunFirstShow(const std::function<void()>& handler);

  void StartChangeTracker();
  void FreeTracker();
  // Asks "CancelWork" when the form was edited; true when it may close.
  bool CloseQuery();
  // Executes the statement buffer through the host; true on success (change flag cleared).
  bool ExecuteSqlMemo();

  QWidget* FSelf;
  TEsDBInfo* FDBInfo = nullptr;
  QWidget* FParentControl = nullptr;

 private:
  TSqlMemo FSqlMemo;
  QPointer<TChangeEventClass> FTracker;
  bool FIniSave = false;
};

// Modal database dialog. Modal results: 1 = OK, 2 = Cancel.
class TKelDllDBDlgFrm : public QDialog, public TKelBaseFrm {
  Q_OBJECT
 public:
  explicit TKelDllDBDlgFrm(QWidget* owner);
  ~TKelDllDBDlgFrm() override;

  int ShowModal() { return exec(); }
  // Closes the form through the close handler with `modalResult`; the close may be refused.
  void SetModalResult(int modalResult);

 public slots:
  // The common "View SQL" and "OK" patterns.
  void ViewSqlBtnClick();
  void OkBtnClick();
  void CancelBtnClick() { SetModalResult(mrCancel); }
  void reject() override { SetModalResult(mrCancel); }

 protected:
  // Show handler: runs once, the first time the form is shown.
  virtual void KelDllDBDlgFrmShow() {}
  virtual void KelDllDBDlgFrmKeyDown(QKeyEvent* event);
  // Close handler: false refuses the close.
  virtual bool KelDllDBDlgFrmClose();
  // After a successful execution, before the dialog closes (host list refreshes).
  virtual void AfterExecute() {}

  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  // Key preview: the form sees Escape before the focused control does (an editor would
  // otherwise keep it).
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool FShown = false;
};

// Non-modal child window of the host's main window; frees itself when closed.
class TKelDllChildFrm : public QWidget, public TKelBaseFrm {
  Q_OBJECT
 public:
  explicit TKelDllChildFrm(QWidget* owner);
  ~TKelDllChildFrm() override;

  // Tells the host the child window is closing.
  virtual void setCloseState(int state) { FCloseState = state; }
  int CloseState() const { return FCloseState; }

 public slots:
  void ViewSqlBtnClick();
  void OkBtnClick();
  void CancelBtnClick() { close(); }

 protected:
  virtual void KelDllChildFrmShow() {}
  virtual bool KelDllChildFrmClose();

  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  // Escape cancels as the Cancel button does (asking first when the form was edited); the form
  // sees it before the focused control does.
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool FShown = false;
  int FCloseState = 0;
};

}  // namespace kel

// The connection dialog: the demo database, a SQLite file shaped like it, or Oracle through an
// installed Qt driver (QOCI with a TNS alias, QODBC with a data source). The recent connections
// are remembered without their passwords; a connection that fails keeps the dialog open with
// the server's message, so the user corrects what is wrong and tries again.
#pragma once

#include <QDialog>
#include <functional>
#include <memory>

#include "host/core/Connection.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace wb {

// What a connection URL shows to people: the URL without its password.
QString ConnectionLabel(const QString& url);

class TConnectDialog : public QDialog {
  Q_OBJECT
 public:
  enum TKind { ckDemo, ckSqlite, ckOci, ckOdbc };
  using TOpener =
      std::function<std::unique_ptr<host::TConnection>(const QString& url, QString* error)>;

  // `settingsDir` holds Connections.ini, the list of recent connections.
  explicit TConnectDialog(const QString& settingsDir, QWidget* parent = nullptr);
  ~TConnectDialog() override;

  // Fills the fields from a URL (its password included) and shows why it failed.
  void SetUrl(const QString& url);
  void ShowError(const QString& message);
  // Opens connections for the tests instead of host::OpenConnection.
  void SetOpener(TOpener opener) { FOpener = std::move(opener); }

  // The URL the fields name, with and without the password.
  QString Url() const;
  QString Label() const { return ConnectionLabel(Url()); }
  // The connection opened by Connect (null before).
  std::unique_ptr<host::TConnection> TakeConnection() { return std::move(FConnection); }
  // The remembered connections, most recent first.
  QStringList Recent() const;

 public slots:
  // Checks the fields and connects; on success the dialog closes, on failure it stays.
  void ConnectBtnClick();

 private:
  void KindChanged();
  void BrowseBtnClick();
  void RecentChosen();
  void Remember(const QString& label);
  QString IniFile() const;

  QString FSettingsDir;
  TOpener FOpener;
  std::unique_ptr<host::TConnection> FConnection;
  QComboBox* FKindCmb;
  QLabel* FFileLbl;
  QLineEdit* FFileEdt;
  QPushButton* FBrowseBtn;
  QLabel* FUserLbl;
  QLineEdit* FUserEdt;
  QLabel* FPasswordLbl;
  QLineEdit* FPasswordEdt;
  QLabel* FServiceLbl;
  QComboBox* FServiceCmb;
  QListWidget* FRecentList;
  QLabel* FErrorLbl;
  QPushButton* FConnectBtn;
};

}  // namespace wb

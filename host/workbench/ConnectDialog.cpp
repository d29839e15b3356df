#include "host/workbench/ConnectDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QUrl>
#include <QVBoxLayout>

#include "host/core/SqlConnection.h"

namespace wb {

namespace {

const int kRecentCount = 10;
const char* const kRecentKey = "Recent/Connections";

QString Encoded(const QString& text) {
  return QString::fromUtf8(QUrl::toPercentEncoding(text));
}

}  // namespace

QString ConnectionLabel(const QString& url) {
  if (url.isEmpty() || url == QLatin1String("demo")) return QStringLiteral("demo");
  QString label = url;
  const qsizetype scheme = label.indexOf(QStringLiteral("://"));
  const qsizetype at = label.lastIndexOf(u'@');
  if (scheme >= 0 && at > scheme) {
    const qsizetype colon = label.indexOf(u':', scheme + 3);
    if (colon >= 0 && colon < at) label.remove(colon, at - colon);
  }
  return label;
}

TConnectDialog::TConnectDialog(const QString& settingsDir, QWidget* parent)
    : QDialog(parent), FSettingsDir(settingsDir), FOpener(&host::OpenConnection) {
  setObjectName(QStringLiteral("ConnectDlg"));
  setWindowTitle(QStringLiteral("Connect"));

  FKindCmb = new QComboBox(this);
  FKindCmb->setObjectName(QStringLiteral("KindCmb"));
  FKindCmb->addItems({QStringLiteral("Demo database"), QStringLiteral("SQLite file"),
                      QStringLiteral("Oracle (OCI driver)"),
                      QStringLiteral("Oracle (ODBC driver)")});
  FFileLbl = new QLabel(QStringLiteral("&File:"), this);
  FFileEdt = new QLineEdit(this);
  FFileEdt->setObjectName(QStringLiteral("FileEdt"));
  FBrowseBtn = new QPushButton(QStringLiteral("&Browse..."), this);
  FBrowseBtn->setObjectName(QStringLiteral("BrowseBtn"));
  FFileLbl->setBuddy(FFileEdt);
  auto* fileRow = new QHBoxLayout;
  fileRow->addWidget(FFileEdt, 1);
  fileRow->addWidget(FBrowseBtn);
  FUserLbl = new QLabel(QStringLiteral("&User:"), this);
  FUserEdt = new QLineEdit(this);
  FUserEdt->setObjectName(QStringLiteral("UserEdt"));
  FUserLbl->setBuddy(FUserEdt);
  FPasswordLbl = new QLabel(QStringLiteral("&Password:"), this);
  FPasswordEdt = new QLineEdit(this);
  FPasswordEdt->setObjectName(QStringLiteral("PasswordEdt"));
  FPasswordEdt->setEchoMode(QLineEdit::Password);
  FPasswordLbl->setBuddy(FPasswordEdt);
  FServiceLbl = new QLabel(QStringLiteral("&Service:"), this);
  FServiceCmb = new QComboBox(this);
  FServiceCmb->setObjectName(QStringLiteral("ServiceCmb"));
  FServiceCmb->setEditable(true);
  FServiceLbl->setBuddy(FServiceCmb);

  auto* form = new QFormLayout;
  form->addRow(QStringLiteral("&Database:"), FKindCmb);
  form->addRow(FFileLbl, fileRow);
  form->addRow(FUserLbl, FUserEdt);
  form->addRow(FPasswordLbl, FPasswordEdt);
  form->addRow(FServiceLbl, FServiceCmb);

  FRecentList = new QListWidget(this);
  FRecentList->setObjectName(QStringLiteral("RecentList"));
  FRecentList->addItems(Recent());
  auto* recentLbl = new QLabel(QStringLiteral("&Recent connections:"), this);
  recentLbl->setBuddy(FRecentList);

  FErrorLbl = new QLabel(this);
  FErrorLbl->setObjectName(QStringLiteral("ErrorLbl"));
  FErrorLbl->setWordWrap(true);
  FErrorLbl->setTextInteractionFlags(Qt::TextSelectableByMouse);
  FErrorLbl->setStyleSheet(QStringLiteral("color: #b00000;"));
  FErrorLbl->hide();

  auto* buttons = new QDialogButtonBox(this);
  FConnectBtn = buttons->addButton(QStringLiteral("Connect"), QDialogButtonBox::AcceptRole);
  FConnectBtn->setObjectName(QStringLiteral("ConnectBtn"));
  FConnectBtn->setDefault(true);
  QPushButton* cancel = buttons->addButton(QDialogButtonBox::Cancel);
  cancel->setObjectName(QStringLiteral("CancelBtn"));
  connect(FConnectBtn, &QPushButton::clicked, this, &TConnectDialog::ConnectBtnClick);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(recentLbl);
  layout->addWidget(FRecentList, 1);
  layout->addWidget(FErrorLbl);
  layout->addWidget(buttons);

  connect(FKindCmb, &QComboBox::currentIndexChanged, this, &TConnectDialog::KindChanged);
  connect(FBrowseBtn, &QPushButton::clicked, this, &TConnectDialog::BrowseBtnClick);
  connect(FRecentList, &QListWidget::currentRowChanged, this, &TConnectDialog::RecentChosen);
  connect(FRecentList, &QListWidget::itemActivated, this, &TConnectDialog::ConnectBtnClick);
  KindChanged();
  resize(sizeHint().expandedTo(QSize(460, 360)));
}

TConnectDialog::~TConnectDialog() = default;

QString TConnectDialog::IniFile() const {
  return FSettingsDir + QStringLiteral("/Connections.ini");
}

QStringList TConnectDialog::Recent() const {
  QSettings ini(IniFile(), QSettings::IniFormat);
  return ini.value(QLatin1String(kRecentKey)).toStringList();
}

// Only the password-free form of a URL is ever written.
void TConnectDialog::Remember(const QString& label) {
  QStringList recent = Recent();
  recent.removeAll(label);
  recent.prepend(label);
  while (recent.size() > kRecentCount) recent.removeLast();
  QSettings ini(IniFile(), QSettings::IniFormat);
  ini.setValue(QLatin1String(kRecentKey), recent);
}

void TConnectDialog::KindChanged() {
  const int kind = FKindCmb->currentIndex();
  const bool file = kind == ckDemo || kind == ckSqlite;
  for (QWidget* w : {static_cast<QWidget*>(FFileLbl), static_cast<QWidget*>(FFileEdt),
                     static_cast<QWidget*>(FBrowseBtn)})
    w->setVisible(file);
  for (QWidget* w : {static_cast<QWidget*>(FUserLbl), static_cast<QWidget*>(FUserEdt),
                     static_cast<QWidget*>(FPasswordLbl), static_cast<QWidget*>(FPasswordEdt),
                     static_cast<QWidget*>(FServiceLbl), static_cast<QWidget*>(FServiceCmb)})
    w->setVisible(!file);
  FFileEdt->setPlaceholderText(kind == ckDemo ? QStringLiteral("(the default demo database)")
                                              : QString());
  FServiceLbl->setText(kind == ckOdbc ? QStringLiteral("Data &source:")
                                      : QStringLiteral("&Service:"));
  if (kind == ckOci && FServiceCmb->count() == 0) FServiceCmb->addItems(host::TnsServiceNames());
}

void TConnectDialog::BrowseBtnClick() {
  const QString fileName = QFileDialog::getOpenFileName(
      this, QStringLiteral("SQLite database"), FFileEdt->text(),
      QStringLiteral("SQLite databases (*.db *.sqlite *.sqlite3);;All files (*)"));
  if (!fileName.isEmpty()) FFileEdt->setText(fileName);
}

void TConnectDialog::RecentChosen() {
  if (QListWidgetItem* item = FRecentList->currentItem()) SetUrl(item->text());
}

void TConnectDialog::SetUrl(const QString& url) {
  const QString u = url.trimmed();
  auto rest = [&](qsizetype prefix) {
    QString r = u.mid(prefix);
    if (r.startsWith(QStringLiteral("//"))) r.remove(0, 2);
    return r;
  };
  FFileEdt->clear();
  FUserEdt->clear();
  FPasswordEdt->clear();
  if (u.isEmpty() || u.compare(QStringLiteral("demo"), Qt::CaseInsensitive) == 0) {
    FKindCmb->setCurrentIndex(ckDemo);
  } else if (u.startsWith(QStringLiteral("demo:"), Qt::CaseInsensitive)) {
    FKindCmb->setCurrentIndex(ckDemo);
    FFileEdt->setText(rest(5));
  } else if (u.startsWith(QStringLiteral("sqlite:"), Qt::CaseInsensitive)) {
    FKindCmb->setCurrentIndex(ckSqlite);
    FFileEdt->setText(rest(7));
  } else {
    const bool oci = u.startsWith(QStringLiteral("oci://"), Qt::CaseInsensitive);
    FKindCmb->setCurrentIndex(oci ? ckOci : ckOdbc);
    const QString r = u.mid(u.indexOf(QStringLiteral("://")) + 3);
    const qsizetype at = r.lastIndexOf(u'@');
    const QString credentials = at < 0 ? QString() : r.left(at);
    const qsizetype colon = credentials.indexOf(u':');
    FUserEdt->setText(
        QUrl::fromPercentEncoding((colon < 0 ? credentials : credentials.left(colon)).toUtf8()));
    if (colon >= 0)
      FPasswordEdt->setText(QUrl::fromPercentEncoding(credentials.mid(colon + 1).toUtf8()));
    FServiceCmb->setCurrentText(at < 0 ? r : r.mid(at + 1));
  }
  KindChanged();
}

QString TConnectDialog::Url() const {
  const QString file = FFileEdt->text().trimmed();
  switch (FKindCmb->currentIndex()) {
    case ckDemo:
      return file.isEmpty() ? QStringLiteral("demo") : QStringLiteral("demo:") + file;
    case ckSqlite:
      return QStringLiteral("sqlite:") + file;
    default:
      break;
  }
  const QString scheme =
      FKindCmb->currentIndex() == ckOci ? QStringLiteral("oci://") : QStringLiteral("odbc://");
  QString credentials = Encoded(FUserEdt->text().trimmed());
  if (!FPasswordEdt->text().isEmpty()) credentials += u':' + Encoded(FPasswordEdt->text());
  return scheme + credentials + u'@' + FServiceCmb->currentText().trimmed();
}

void TConnectDialog::ShowError(const QString& message) {
  FErrorLbl->setText(message);
  FErrorLbl->setVisible(!message.isEmpty());
}

void TConnectDialog::ConnectBtnClick() {
  const int kind = FKindCmb->currentIndex();
  if (kind == ckSqlite && FFileEdt->text().trimmed().isEmpty()) {
    ShowError(QStringLiteral("Choose the SQLite file to open."));
    FFileEdt->setFocus();
    return;
  }
  if ((kind == ckOci || kind == ckOdbc) && FServiceCmb->currentText().trimmed().isEmpty()) {
    ShowError(kind == ckOci ? QStringLiteral("Enter the TNS service to connect to.")
                            : QStringLiteral("Enter the ODBC data source to connect to."));
    FServiceCmb->setFocus();
    return;
  }
  QString error;
  setCursor(Qt::WaitCursor);
  std::unique_ptr<host::TConnection> connection = FOpener(Url(), &error);
  unsetCursor();
  if (!connection) {
    // Everything typed stays; the user corrects it and presses Connect again.
    ShowError(QStringLiteral("%1\n\nCorrect the details and press Connect to try again.")
                  .arg(error.isEmpty() ? QStringLiteral("The connection failed.") : error));
    FConnectBtn->setFocus();
    return;
  }
  FConnection = std::move(connection);
  Remember(Label());
  ShowError(QString());
  accept();
}

}  // namespace wb

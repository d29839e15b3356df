// The workbench started offscreen: its menus and browser open the module's dialogs with the
// right verbs and parameters, and its host services behave as the dialogs expect.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

#include "host/core/SqlConnection.h"
#include "host/workbench/ObjectBrowser.h"
#include "host/workbench/ScriptLogView.h"
#include "host/workbench/WorkbenchWindow.h"
#include "plugin/Dispatch.h"
#include "plugin/KelEditor.h"
#include "tests/support/TestHost.h"

namespace {

// A connection whose catalog rows and script results the test sets as it goes.
class TTestConnection : public host::TFixtureConnection {
 public:
  TTestConnection() : host::TFixtureConnection(QJsonObject(), QJsonObject()) {}

  QHash<QString, QList<QVariantMap>> Rows;
  QString FailingKey;
  int ScriptResult = 0;
  QString FailedStatement, ServerMessage;
  QStringList Scripts;

  kel::TQueryResult OpenQuery(const QString& key, const QString&,
                              const kel::TBindList& binds) override {
    if (key == FailingKey)
      throw kel::EKelError(QStringLiteral("ORA-00942: table or view does not exist"));
    QString owner;
    for (const auto& [name, value] : binds)
      if (name == QLatin1String("P_OWNER")) owner = value.toString();
    kel::TQueryResult result;
    for (const QVariantMap& row : Rows.value(key)) {
      if (row.contains(QStringLiteral("@OWNER")) && row[QStringLiteral("@OWNER")] != owner)
        continue;
      if (result.Columns.isEmpty())
        for (auto it = row.begin(); it != row.end(); ++it)
          if (!it.key().startsWith(u'@')) result.Columns << it.key();
      QStringList values;
      for (const QString& c : result.Columns) values << row.value(c).toString();
      result.Rows << values;
    }
    return result;
  }
  int ExecuteScript(const QString& script, QString* statement, QString* error) override {
    Scripts << script;
    if (ScriptResult != 0) {
      *statement = FailedStatement;
      *error = ServerMessage;
    }
    return ScriptResult;
  }
};

// What the last probe dialog was given, and how it was run.
struct TProbeRecord {
  QString Verb;
  QMap<QString, QString> Params;
  QWidget* Owner = nullptr;
  int Opened = 0;
};
TProbeRecord gProbe;
bool gProbeClosesItself = true;

// Stands in for a modal object dialog: records its link and closes (or waits for the test).
class TProbeFrm : public kel::TKelDllDBDlgFrm {
 public:
  explicit TProbeFrm(QWidget* owner) : kel::TKelDllDBDlgFrm(owner) {
    setObjectName(QStringLiteral("ProbeFrm"));
  }
  void ReadParams(kel::TXLink* link) override {
    gProbe.Verb = link->Verb();
    gProbe.Params = link->Params();
  }

 protected:
  void KelDllDBDlgFrmShow() override {
    gProbe.Owner = parentWidget();
    ++gProbe.Opened;
    if (gProbeClosesItself) QTimer::singleShot(0, this, [this] { SetModalResult(kel::mrOk); });
  }
};

// Runs `fn` on the modal dialog once one is up; a dialog still open afterwards is closed, so a
// test never hangs in a modal loop.
void WhenModal(std::function<void(QDialog*)> fn, int attempts = 200) {
  QTimer::singleShot(10, [fn, attempts] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog) {
      if (attempts > 0) WhenModal(fn, attempts - 1);
      return;
    }
    fn(dialog);
    if (dialog->isVisible()) dialog->done(kel::mrAbort);
  });
}

QVariantMap Row(std::initializer_list<std::pair<const char*, const char*>> values) {
  QVariantMap row;
  for (const auto& [k, v] : values) row.insert(QString::fromUtf8(k), QString::fromUtf8(v));
  return row;
}

class WorkbenchTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    for (const char* word : {"SEQUENCE", "ALTERCONSTRAINT", "JOB", "REDOLOGGROUP", "USER", "INDEX",
                             "DATAFILE", "TRIGGER"})
      kel::RegisterOpenRoutine(word, &kel::OpenModal<TProbeFrm>);
  }

  void SetUp() override {
    gProbe = TProbeRecord();
    gProbeClosesItself = true;
    auto connection = std::make_unique<TTestConnection>();
    FConnection = connection.get();
    FConnection->Rows["Workbench.Schemas"] = {Row({{"NAME", "APP"}}), Row({{"NAME", "HR"}})};
    FConnection->Rows["Workbench.Sequences"] = {
        Row({{"@OWNER", "HR"}, {"NAME", "EMP_SEQ"}}),
        Row({{"@OWNER", "HR"}, {"NAME", "JOB_SEQ"}}),
    };
    FConnection->Rows["Workbench.Tables"] = {Row({{"@OWNER", "HR"}, {"NAME", "EMP"}})};
    FConnection->Rows["Workbench.Constraints"] = {
        Row({{"@OWNER", "HR"}, {"NAME", "EMP_PK"}, {"TABLE_NAME", "EMP"}})};
    FConnection->Rows["Workbench.Jobs"] = {
        Row({{"NAME", "42"}, {"SCHEMA_USER", "APP"}, {"LABEL", "42 APP: purge;"}})};
    FConnection->Rows["Workbench.RedoLogGroups"] = {
        Row({{"NAME", "2"}, {"BYTES", "52428800"}, {"MEMBER", "/u01/redo02.log"}})};
    FConnection->Rows["Workbench.Users"] = {Row({{"NAME", "SCOTT"}})};
    FConnection->Rows["Workbench.Tablespaces"] = {
        Row({{"NAME", "USERS"}, {"TABLESPACE_NAME", "USERS"}})};
    FWindow = std::make_unique<wb::TWorkbenchWindow>(std::move(connection),
                                                     wb::TWorkbenchOptions{"test", FDir.path()});
    FWindow->Host().Module().Use(&test::TestOpen, QStringLiteral("NewObjDlg.dll"));
    FWindow->Host().SetMessageAnswerer([this](const wb::TMessageRequest& r) {
      FMessages << r.Text;
      return kel::mrOk;
    });
    FWindow->show();
  }

  void TearDown() override {
    FWindow.reset();
    kel::SetApplication(nullptr);
  }

  wb::TObjectBrowser* Browser() { return FWindow->Browser(); }

  QTemporaryDir FDir;
  TTestConnection* FConnection = nullptr;
  std::unique_ptr<wb::TWorkbenchWindow> FWindow;
  QStringList FMessages;
};

// Opens a dialog through the "New" menu and closes it with Escape, as a user does.
TEST_F(WorkbenchTest, NewMenuOpensTheDialogForTheBrowsedSchemaAndEscapeClosesIt) {
  ASSERT_TRUE(Browser()->SelectObject("HR", "Sequences", "JOB_SEQ"));
  gProbeClosesItself = false;
  QString seen;
  WhenModal([&](QDialog* dialog) {
    seen = dialog->objectName();
    QKeyEvent esc(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(dialog, &esc);
  });
  QAction* action = FWindow->NewAction("SEQUENCE");
  ASSERT_NE(action, nullptr);
  action->trigger();

  EXPECT_EQ(seen, "ProbeFrm");
  EXPECT_EQ(gProbe.Owner, FWindow.get());
  EXPECT_EQ(gProbe.Verb, "ChangeOwner");
  EXPECT_EQ(gProbe.Params, (QMap<QString, QString>{{"ObjFrmOwner", "HR"}}));
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);

  // Outside any schema a new object gets no owner preselection.
  ASSERT_NE(Browser()->Folder(QString(), "Users"), nullptr);
  Browser()->setCurrentItem(Browser()->Folder(QString(), "Users"));
  gProbeClosesItself = true;
  FWindow->NewAction("SEQUENCE")->trigger();
  EXPECT_EQ(gProbe.Opened, 2);
  EXPECT_EQ(gProbe.Verb, "");
  EXPECT_TRUE(gProbe.Params.isEmpty());
}

// "Alter..." hands each kind of object to its dialog under that dialog's own verb and names.
TEST_F(WorkbenchTest, AlterPassesEachDialogsVerbAndParameterNames) {
  struct Case {
    const char* Schema;
    const char* Kind;
    const char* Name;
    const char* Verb;
    QMap<QString, QString> Params;
  };
  const Case cases[] = {
      {"HR",
       "Sequences",
       "EMP_SEQ",
       "Alter",
       {{"IsAlter", "True"}, {"P_Schema", "HR"}, {"P_SequenceName", "EMP_SEQ"}}},
      {"HR",
       "Constraints",
       "EMP_PK",
       "Alter",
       {{"P_Schema", "HR"}, {"P_TableName", "EMP"}, {"P_ConstraintName", "EMP_PK"}}},
      {"", "Jobs", "42", "ObjectAlter", {{"P_Schema", "APP"}, {"P_JobName", "42"}}},
      {"",
       "RedoLogGroups",
       "2",
       "Alter",
       {{"IsAddGroup", "False"},
        {"P_GroupNum", "2"},
        {"P_FileName", "/u01/redo02.log"},
        {"P_FileSize", "52428800"}}},
      {"",
       "Users",
       "SCOTT",
       "Alter",
       {{"IsAlter", "True"}, {"P_UserName", "SCOTT"}, {"ActiveTab", "0"}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Kind);
    gProbe = TProbeRecord();
    ASSERT_TRUE(Browser()->SelectObject(c.Schema, c.Kind, c.Name));
    ASSERT_TRUE(FWindow->AlterAction()->isEnabled());
    FWindow->AlterAction()->trigger();
    EXPECT_EQ(gProbe.Opened, 1);
    EXPECT_EQ(gProbe.Verb, c.Verb);
    EXPECT_EQ(gProbe.Params, c.Params);
  }

  // The further requests on a table, and a new redo log group from the menu.
  ASSERT_TRUE(Browser()->SelectObject("HR", "Tables", "EMP"));
  for (const wb::TObjectAction& action : wb::ObjectActions())
    if (QLatin1String(action.Caption) == QLatin1String("New Index on Table..."))
      FWindow->RunObjectAction(action);
  EXPECT_EQ(gProbe.Verb, "TableCreate");
  EXPECT_EQ(gProbe.Params, (QMap<QString, QString>{{"P_Schema", "HR"}, {"P_TblName", "EMP"}}));
  FWindow->NewAction("REDOLOGGROUP")->trigger();
  EXPECT_EQ(gProbe.Verb, "Alter");
  EXPECT_EQ(gProbe.Params, (QMap<QString, QString>{{"IsAddGroup", "True"}}));
  ASSERT_TRUE(Browser()->SelectObject("", "Tablespaces", "USERS"));
  FWindow->NewAction("DATAFILE")->trigger();
  EXPECT_EQ(gProbe.Verb, "Create");
  EXPECT_EQ(gProbe.Params,
            (QMap<QString, QString>{{"TableSpaceName", "USERS"}, {"DataFileName", ""}}));
}

TEST_F(WorkbenchTest, WordsWithoutADialogAndFoldersWithoutObjectsDoNothing) {
  FWindow->NewAction("PROFILE")->trigger();  // not registered in this program
  EXPECT_EQ(gProbe.Opened, 0);
  // A folder is not an object: nothing to alter.
  Browser()->setCurrentItem(Browser()->Folder("HR", "Sequences"));
  EXPECT_FALSE(FWindow->AlterAction()->isEnabled());
  FWindow->AlterObject();
  EXPECT_EQ(gProbe.Opened, 0);
}

TEST_F(WorkbenchTest, RefreshFollowsTheCatalogAndKeepsWhatIsOpen) {
  QTreeWidgetItem* folder = Browser()->Folder("HR", "Sequences");
  ASSERT_EQ(folder->childCount(), 2);
  ASSERT_TRUE(Browser()->SelectObject("HR", "Sequences", "JOB_SEQ"));
  QTreeWidgetItem* kept = Browser()->currentItem();

  FConnection->Rows["Workbench.Sequences"] = {
      Row({{"@OWNER", "HR"}, {"NAME", "A_SEQ"}}),
      Row({{"@OWNER", "HR"}, {"NAME", "JOB_SEQ"}}),
      Row({{"@OWNER", "HR"}, {"NAME", "Z_SEQ"}}),
  };
  Browser()->Refresh();
  ASSERT_EQ(folder->childCount(), 3);
  EXPECT_EQ(folder->child(0)->text(0), "A_SEQ");
  EXPECT_EQ(folder->child(1), kept);
  EXPECT_EQ(folder->child(2)->text(0), "Z_SEQ");
  EXPECT_EQ(Browser()->currentItem(), kept);

  // A folder that cannot be read says so in place and on the status line; nothing is lost
  // elsewhere.
  FConnection->FailingKey = "Workbench.Sequences";
  Browser()->Refresh();
  ASSERT_EQ(folder->childCount(), 1);
  EXPECT_EQ(folder->child(0)->text(0), "(could not be read)");
  EXPECT_EQ(Browser()->Folder("HR", "Tables")->childCount(), 1);
  EXPECT_TRUE(FWindow->Host().CurrentDBInfo() != nullptr);
}

TEST_F(WorkbenchTest, FailedScriptNamesTheStatementAndTheServerMessage) {
  FConnection->ScriptResult = 1;
  FConnection->FailedStatement = "DROP SEQUENCE HR.NOPE";
  FConnection->ServerMessage = "ORA-02289: sequence does not exist";
  EXPECT_EQ(FWindow->Host().esScriptExecute(nullptr, FWindow->Host().CurrentDBInfo(),
                                            "DROP SEQUENCE HR.NOPE;\r\n"),
            1);
  ASSERT_EQ(FMessages.size(), 1);
  EXPECT_TRUE(FMessages[0].contains("DROP SEQUENCE HR.NOPE"));
  EXPECT_TRUE(FMessages[0].contains("ORA-02289: sequence does not exist"));

  FConnection->ScriptResult = 0;
  EXPECT_EQ(FWindow->Host().esScriptExecute(nullptr, nullptr, "SELECT 1 FROM DUAL;\r\n"), 0);
  EXPECT_EQ(FMessages.size(), 1);
}

// Real message boxes: the button pressed comes back as the module's modal result.
TEST_F(WorkbenchTest, MessageBoxButtonsMapToModalResults) {
  FWindow->Host().SetMessageAnswerer({});
  auto press = [](QMessageBox::StandardButton button) {
    WhenModal([button](QDialog* dialog) {
      auto* box = qobject_cast<QMessageBox*>(dialog);
      if (box && box->button(button)) box->button(button)->click();
    });
  };
  press(QMessageBox::No);
  EXPECT_EQ(FWindow->Host().esMsgDBox("CancelWork", kel::TMsgDlgType::Confirmation,
                                      kel::TMsgDlgButtons::YesNoCancel, false),
            kel::mrNo);
  press(QMessageBox::Yes);
  EXPECT_EQ(FWindow->Host().esMsgDBox("OverWrite", kel::TMsgDlgType::Confirmation,
                                      kel::TMsgDlgButtons::YesNoCancel, false),
            kel::mrYes);
  press(QMessageBox::Cancel);
  EXPECT_EQ(FWindow->Host().esMsgDBox("OverWrite", kel::TMsgDlgType::Confirmation,
                                      kel::TMsgDlgButtons::YesNoCancel, false),
            kel::mrCancel);
  press(QMessageBox::Ok);
  EXPECT_EQ(FWindow->Host().esMsgDBox("Acm.Check The", {"Sequence Name"}, kel::TMsgDlgType::Warning,
                                      false),
            kel::mrOk);

  // The repository's text, with its arguments in place.
  FWindow->Host().SetMessageAnswerer([this](const wb::TMessageRequest& r) {
    FMessages << r.Text;
    return kel::mrOk;
  });
  FWindow->Host().esMsgDBox("Acm.Check The", {"Sequence Name"}, kel::TMsgDlgType::Warning, false);
  EXPECT_EQ(
      FMessages.last(),
      host::FormatMessage(host::TCatalog::Builtin().Message("Acm.Check The"), {"Sequence Name"}));

  // A question with arguments can be answered No.
  press(QMessageBox::No);
  FWindow->Host().SetMessageAnswerer({});
  EXPECT_EQ(FWindow->Host().esMsgDBox("Workbench.DiscardEditor", {"SQL 1"},
                                      kel::TMsgDlgType::Confirmation, false),
            kel::mrNo);
}

TEST_F(WorkbenchTest, ChildWindowLeavesTheMdiAreaWhenItClosesButMayRefuse) {
  auto* form = new QWidget;
  form->setAttribute(Qt::WA_DeleteOnClose);
  FWindow->Host().ShowMDIChild(form);
  ASSERT_EQ(FWindow->MdiArea()->subWindowList().size(), 1);
  EXPECT_EQ(FWindow->MdiArea()->subWindowList()[0]->widget(), form);
  form->close();  // the form closes itself, as after a successful OK
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QApplication::processEvents();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(FWindow->MdiArea()->subWindowList().isEmpty());

  // A child that refuses to close (unsaved work) keeps the workbench open.
  class TStubborn : public QWidget {
    void closeEvent(QCloseEvent* e) override { e->ignore(); }
  };
  auto* stubborn = new TStubborn;
  FWindow->Host().ShowMDIChild(stubborn);
  EXPECT_FALSE(FWindow->close());
  EXPECT_EQ(FWindow->MdiArea()->subWindowList().size(), 1);
}

// Text in an SQL editor exists nowhere else until it is saved: closing its tab or the
// workbench asks first, and No keeps everything.
TEST_F(WorkbenchTest, UnsavedEditorTextIsNotLostWithoutAsking) {
  int answer = kel::mrNo;
  QList<wb::TMessageRequest> asked;
  FWindow->Host().SetMessageAnswerer([&](const wb::TMessageRequest& r) {
    asked << r;
    return answer;
  });
  QTabWidget* tabs = FWindow->EditorTabs();
  FWindow->OpenEditor(QString());  // nothing to lose: closes without a question
  EXPECT_TRUE(FWindow->CloseEditorTab(0));
  EXPECT_TRUE(asked.isEmpty());

  FWindow->OpenEditor("CREATE SEQUENCE APP.S1;\r\n");  // sent by a dialog, never saved
  EXPECT_FALSE(FWindow->CloseEditorTab(0));
  ASSERT_EQ(asked.size(), 1);
  EXPECT_EQ(asked[0].Type, kel::TMsgDlgType::Confirmation);
  EXPECT_EQ(asked[0].Buttons, kel::TMsgDlgButtons::YesNo);
  EXPECT_TRUE(asked[0].Text.contains(tabs->tabText(0))) << asked[0].Text.toStdString();
  emit tabs->tabCloseRequested(0);  // the tab's close button
  EXPECT_EQ(tabs->count(), 1);
  EXPECT_FALSE(FWindow->close());
  EXPECT_EQ(tabs->count(), 1);
  auto* editor = qobject_cast<kel::TKelEditor*>(tabs->widget(0));
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(editor->Text(), "CREATE SEQUENCE APP.S1;\r\n");

  // Saved text closes without a question; a later edit asks again.
  FWindow->Host().SetSaveFileAnswerer([this](QString& file) {
    file = FDir.filePath("s1.sql");
    return true;
  });
  FWindow->SaveEditor();
  asked.clear();
  EXPECT_TRUE(FWindow->close());
  EXPECT_TRUE(asked.isEmpty());
  FWindow->show();
  editor->append("DROP SEQUENCE APP.S1;");
  answer = kel::mrYes;
  EXPECT_TRUE(FWindow->CloseEditorTab(0));
  EXPECT_EQ(asked.size(), 1);
  EXPECT_EQ(tabs->count(), 0);
}

TEST_F(WorkbenchTest, OpenDllMapsTheModuleNameToTheLoadedModule) {
  kel::TXLink link;
  link.SetVerb("Alter");
  EXPECT_EQ(FWindow->Host().OpenDLL("NewObjDlg.dll", nullptr, &link, "SEQUENCE"), kel::mrOk);
  EXPECT_EQ(gProbe.Verb, "Alter");
  EXPECT_EQ(FWindow->Host().OpenDLL("/nowhere/Other.dll", nullptr, &link, "SEQUENCE"), 0);
  ASSERT_EQ(FMessages.size(), 1);
  EXPECT_TRUE(FMessages[0].contains("/nowhere/Other.dll"));
}

TEST_F(WorkbenchTest, RemembersItsLayout) {
  FWindow->findChild<QDockWidget*>("ScriptLogDock")->hide();
  FWindow->findChild<QDockWidget*>("ObjectsDock")->show();
  ASSERT_TRUE(FWindow->close());
  FWindow.reset();
  wb::TWorkbenchWindow again(std::make_unique<TTestConnection>(),
                             wb::TWorkbenchOptions{"test", FDir.path()});
  again.show();
  EXPECT_FALSE(again.findChild<QDockWidget*>("ScriptLogDock")->isVisible());
  EXPECT_TRUE(again.findChild<QDockWidget*>("ObjectsDock")->isVisible());
  EXPECT_TRUE(QFileInfo::exists(FDir.filePath("Workbench.ini")));
}

// The demo database: scripts land in the journal and the workbench says the catalog is kept.
TEST(WorkbenchDemo, ScriptsAreJournaledAndShownInTheScriptLog) {
  QTemporaryDir dir;
  QString error;
  auto connection = host::OpenConnection("demo:" + dir.filePath("demo.db"), &error);
  ASSERT_TRUE(connection) << error.toStdString();
  wb::TWorkbenchWindow window(std::move(connection), {"demo", dir.path()});
  window.show();
  ASSERT_TRUE(window.Journaled());
  const int before = window.ScriptLog()->Count();
  EXPECT_EQ(window.Host().esScriptExecute(&window, window.Host().CurrentDBInfo(),
                                          "CREATE SEQUENCE APP.S1;\r\nDROP SEQUENCE APP.S2;\r\n"),
            0);
  ASSERT_EQ(window.ScriptLog()->Count(), before + 2);
  EXPECT_EQ(window.ScriptLog()->Statement(before + 1).trimmed().remove(u';'),
            "DROP SEQUENCE APP.S2");

  // Every folder of the browser reads the demo's dictionary.
  const QString user = window.Host().CurrentDBInfo()->UserName();
  for (const wb::TObjectKind& kind : wb::ObjectKinds()) {
    SCOPED_TRACE(kind.Key);
    QTreeWidgetItem* folder = window.Browser()->Folder(kind.PerSchema ? user : QString(), kind.Key);
    ASSERT_NE(folder, nullptr);
    if (folder->childCount() > 0) {
      EXPECT_NE(folder->child(0)->text(0), "(could not be read)")
          << folder->child(0)->toolTip(0).toStdString();
    }
  }
}

// The built module, loaded by file name: the preview reached through the host sends its text
// to a new editor tab.
TEST(WorkbenchModule, PreviewSendsItsTextToAnEditorTab) {
  const QString module = wb::DefaultModulePath();
  if (!QFileInfo::exists(module)) GTEST_SKIP() << "module not built: " << module.toStdString();
  QTemporaryDir dir;
  wb::TWorkbenchWindow window(std::make_unique<TTestConnection>(), {"test", dir.path()});
  QString error;
  ASSERT_TRUE(window.Host().Module().Load(module, &error)) << error.toStdString();
  window.show();

  window.Host().OpenViewSQLFrm(&window, "CREATE SEQUENCE APP.S1;\r\n");
  window.Host().OpenViewSQLFrm(&window, "CREATE SEQUENCE APP.S2;\r\n");
  const QList<QDialog*> previews = window.findChildren<QDialog*>("ViewSqlFrm");
  ASSERT_EQ(previews.size(), 1);
  auto* send = previews[0]->findChild<QAbstractButton*>("ScriptSendEditorBtn");
  ASSERT_NE(send, nullptr);
  send->click();
  ASSERT_EQ(window.EditorTabs()->count(), 1);
  auto* editor = qobject_cast<kel::TKelEditor*>(window.EditorTabs()->widget(0));
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(editor->Text(), "CREATE SEQUENCE APP.S2;\r\n");
  previews[0]->close();
}

}  // namespace

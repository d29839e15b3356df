// The statement preview: one window per owner, copy, save with the overwrite question, editor.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QPointer>
#include <QTemporaryDir>

#include "plugin/KelEditor.h"
#include "plugin/ViewSQLFrn.h"
#include "tests/support/TestHost.h"

using namespace kel;

namespace {
QList<TViewSqlFrm*> Previews(QWidget* owner) {
  return owner->findChildren<TViewSqlFrm*>(QString(), Qt::FindDirectChildrenOnly);
}

QByteArray ReadFile(const QString& path) {
  QFile f(path);
  return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}
}  // namespace

TEST(ViewSql, OneWindowPerOwnerIsReusedAndItsTextReplaced) {
  test::TTestHost host;
  QWidget ownerA, ownerB;
  host.Host().OpenViewSQLFrm(&ownerA, "SELECT 1\r\n");
  host.Host().OpenViewSQLFrm(&ownerA, "SELECT 2\r\n");
  host.Host().OpenViewSQLFrm(&ownerB, "SELECT 3\r\n");
  ASSERT_EQ(Previews(&ownerA).size(), 1);
  ASSERT_EQ(Previews(&ownerB).size(), 1);
  TViewSqlFrm* a = Previews(&ownerA).first();
  EXPECT_EQ(a->objectName(), "ViewSqlFrm");
  EXPECT_EQ(a->windowTitle(), "View SQL");
  EXPECT_EQ(a->SqlText(), "SELECT 2\r\n");
  EXPECT_TRUE(a->isVisible());
  EXPECT_EQ(host.EventsOf("preview").size(), 3);
  EXPECT_EQ(a->KelIniFile(), "ViewSqlFrm.sfm");
}

TEST(ViewSql, TheEditorCannotBeTypedInto) {
  test::TTestHost host;
  QWidget owner;
  host.Host().OpenViewSQLFrm(&owner, "SELECT 1");
  TKelEditor* editor = Previews(&owner).first()->SQLEditor();
  editor->setFocus();
  QKeyEvent press(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, "x");
  QApplication::sendEvent(editor->viewport(), &press);
  QKeyEvent del(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
  QApplication::sendEvent(editor->viewport(), &del);
  EXPECT_EQ(editor->Text(), "SELECT 1");
  EXPECT_TRUE(editor->isReadOnly());
}

TEST(ViewSql, ClipboardAndSendToEditorReachTheHost) {
  test::TTestHost host;
  QWidget owner;
  host.Host().OpenViewSQLFrm(&owner, "SELECT 1\r\n");
  TViewSqlFrm* preview = Previews(&owner).first();
  preview->ScriptClipBtnClick();
  preview->ScriptSendEditorBtnClick();
  ASSERT_EQ(host.EventsOf("clipboard").size(), 1);
  EXPECT_EQ(host.EventsOf("clipboard")[0]["text"].toString(), "SELECT 1\r\n");
  ASSERT_EQ(host.EventsOf("status").size(), 1);
  EXPECT_EQ(host.EventsOf("status")[0]["text"].toString(), host.Host().esGetMSG("ClipboardCopy"));
  EXPECT_EQ(host.EventsOf("editor")[0]["text"].toString(), "SELECT 1\r\n");
}

TEST(ViewSql, EveryOutputKeepsTheWholeTextPastANul) {
  test::TTestHost host;
  QWidget owner;
  const QString text = QStringLiteral("SELECT 'a") + QChar(0) + QStringLiteral("b' FROM DUAL;\r\n");
  host.Host().OpenViewSQLFrm(&owner, text);
  TViewSqlFrm* preview = Previews(&owner).first();
  EXPECT_EQ(preview->SQLEditor()->Text(), text);
  EXPECT_TRUE(preview->SQLEditor()->isReadOnly());
  preview->ScriptClipBtnClick();
  preview->ScriptSendEditorBtnClick();
  EXPECT_EQ(host.EventsOf("preview")[0]["text"].toString(), text);
  EXPECT_EQ(host.EventsOf("clipboard")[0]["text"].toString(), text);
  EXPECT_EQ(host.EventsOf("editor")[0]["text"].toString(), text);
  QTemporaryDir dir;
  const QString file = dir.filePath(QStringLiteral("nul.sql"));
  preview->SQLEditor()->SaveFile(file);
  EXPECT_EQ(ReadFile(file), text.toUtf8());
}

TEST(ViewSql, SavingOverAnExistingFileWritesOnlyOnYes) {
  QTemporaryDir dir;
  const QString existing = dir.filePath("old.sql"), fresh = dir.filePath("new.sql");
  {
    QFile f(existing);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("keep me");
  }
  for (int answer : {mrNo, mrCancel}) {
    QJsonObject script = test::Json("{'answers': {}}");
    script["answers"] = QJsonObject{{"OverWrite", answer}};
    script["saveAs"] = QJsonArray{existing};
    test::TTestHost host(script);
    QWidget owner;
    host.Host().OpenViewSQLFrm(&owner, "SELECT 1\r\n");
    Previews(&owner).first()->ScriptSaveBtnClick();
    EXPECT_EQ(ReadFile(existing), "keep me");
    EXPECT_TRUE(host.EventsOf("save").isEmpty());
    EXPECT_EQ(host.EventsOf("confirm").size(), 1);
  }
  QJsonObject script;
  script["saveAs"] = QJsonArray{existing, fresh};
  test::TTestHost host(script);
  QWidget owner;
  host.Host().OpenViewSQLFrm(&owner, "SELECT 1\r\n");
  TViewSqlFrm* preview = Previews(&owner).first();
  preview->ScriptSaveBtnClick();  // Yes is the default answer
  preview->ScriptSaveBtnClick();  // a new file: no question
  preview->ScriptSaveBtnClick();  // no path left: the dialog was cancelled
  EXPECT_EQ(ReadFile(existing), "SELECT 1\r\n");
  EXPECT_EQ(ReadFile(fresh), "SELECT 1\r\n");
  EXPECT_EQ(host.EventsOf("save").size(), 2);
  EXPECT_EQ(host.EventsOf("confirm").size(), 1);
}

TEST(ViewSql, EscapeClosesThePreview) {
  test::TTestHost host;
  QWidget owner;
  host.Host().OpenViewSQLFrm(&owner, "x");
  TViewSqlFrm* preview = Previews(&owner).first();
  QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QApplication::sendEvent(preview, &press);
  EXPECT_FALSE(preview->isVisible());
}

TEST(ViewSql, PreviewsOfLinksWithoutAWidgetOwnerAreSharedAndFreed) {
  test::TTestHost host;
  auto open = [&](QObject* owner, const char* text) {
    TXLink link(owner);
    link.SetVerb("DataOpen");
    link.AddParams("SqlTxt", text);
    int result = -1;
    test::TestOpen(&host.Host(), &result, nullptr, &link, "VIEWSQLFRN");
    return result;
  };
  auto windows = [] {
    QList<TViewSqlFrm*> out;
    for (QWidget* w : QApplication::topLevelWidgets())
      if (auto* p = qobject_cast<TViewSqlFrm*>(w)) out << p;
    return out;
  };
  // No owner: one shared window, freed when the user closes it.
  EXPECT_EQ(open(nullptr, "SELECT 1"), 1);
  open(nullptr, "SELECT 2");
  ASSERT_EQ(windows().size(), 1);
  QPointer<TViewSqlFrm> shared = windows().first();
  EXPECT_EQ(shared->SqlText(), "SELECT 2");
  shared->close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(shared.isNull());
  // An owner that is a plain object: one window per owner, freed with it.
  auto* owner = new QObject;
  open(owner, "SELECT 3");
  open(owner, "SELECT 4");
  ASSERT_EQ(windows().size(), 1);
  QPointer<TViewSqlFrm> owned = windows().first();
  EXPECT_EQ(owned->SqlText(), "SELECT 4");
  delete owner;
  EXPECT_TRUE(owned.isNull());
}

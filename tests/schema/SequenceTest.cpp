// The sequence dialog driven through the module's dispatch on a fixture host, the spin edit it
// uses for values of any size, and its catalog query on SQLite and on the demo database.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>

#include "host/core/Catalog.h"
#include "host/core/RecordingHost.h"
#include "host/core/SqlConnection.h"
#include "plugin/Dispatch.h"
#include "plugin/KelSpinEdit.h"
#include "schema/CreateSequenceFrn.h"
#include "tests/support/TestHost.h"

using namespace kel;

namespace {

const char* const kFixture = R"({
  'connection': {'user': 'APP', 'users': ['APP', 'HR']},
  'catalog': {'SchSequenceNrn.Info': [{'Last Value': '21', 'Min Value': '1', 'Max Value': 'NONE',
      'Increment by': '1', 'Cycle': 'NO', 'Cache?': '20', 'Order': 'NO'}]},
  'execute': [1, 0]
})";

template <class T>
T* Child(QWidget* form, const char* name) {
  T* w = form->findChild<T*>(QString::fromLatin1(name));
  if (!w) ADD_FAILURE() << "no control " << name;
  return w;
}

// Types `text` one character at a time through the control's key filters.
void Type(QWidget* control, const QString& text) {
  for (const QChar c : text) {
    QKeyEvent press(QEvent::KeyPress, c.toUpper().unicode(), Qt::NoModifier, QString(c));
    QApplication::sendEvent(control, &press);
  }
}

void Click(QWidget* form, const char* button) {
  Child<QPushButton>(form, button)->click();
}

class Sequence : public ::testing::Test {
 protected:
  void SetUp() override { RegisterOpenRoutine("SEQUENCE", &OpenModal<TCreateSequenceFrm>); }
  static TXLink* AlterLink(TXLink& link) {
    link.SetVerb("Alter");
    link.AddParams("IsAlter", "True");
    link.AddParams("P_Schema", "APP");
    link.AddParams("P_SequenceName", "S1");
    return &link;
  }
};

}  // namespace

TEST(SpinEdit, AddsExactlyAcrossSignsAndBeyondMachineIntegers) {
  EXPECT_EQ(AddToInteger("9999999999999999999999999999", 1), "10000000000000000000000000000");
  EXPECT_EQ(AddToInteger("-10000000000000000000000000000", 1), "-9999999999999999999999999999");
  EXPECT_EQ(AddToInteger("0", -1), "-1");
  EXPECT_EQ(AddToInteger("-1", 1), "0");
  EXPECT_EQ(AddToInteger("-3", 5), "2");
  EXPECT_EQ(AddToInteger("007", -8), "-1");
  EXPECT_EQ(AddToInteger("", 1), "1");
  EXPECT_EQ(AddToInteger("12a", 1), "12a");
}

TEST(SpinEdit, AcceptsOnlySignedIntegersAndStepsBigValues) {
  TKelSpinEdit spin;
  spin.SetText("");
  Type(&spin, "-1x2.5");
  EXPECT_EQ(spin.Text(), "-125");
  spin.SetText("99999999999999999999999999");
  QKeyEvent up(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier);
  QApplication::sendEvent(&spin, &up);
  EXPECT_EQ(spin.Text(), "100000000000000000000000000");
  QString unfinished = "-";
  spin.fixup(unfinished);
  EXPECT_EQ(unfinished, "");  // an unfinished entry never becomes a value
}

TEST_F(Sequence, CreateWithDefaultsOpensInAnyCaseAndExecutes) {
  test::TTestHost host(test::Json(kFixture));
  const int result = host.Open("sequence", nullptr, [](QWidget* form) {
    EXPECT_EQ(form->windowTitle(), "Create Sequence");
    Child<QLineEdit>(form, "SequenceNameEd")->setText(" S1 ");
    Click(form, "ViewSqlBtn");
    Click(form, "OkBtn");  // the first execution fails: the dialog stays open
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(Child<QLineEdit>(form, "SequenceNameEd")->text(), " S1 ");
    Click(form, "OkBtn");
  });
  EXPECT_EQ(result, mrOk);
  const QString text =
      "CREATE SEQUENCE APP.S1\r\nINCREMENT BY 1 \r\nSTART WITH 0 \r\nMINVALUE 0 \r\n"
      "NOCYCLE \r\nNOORDER\r\n";
  ASSERT_EQ(host.EventsOf("preview").size(), 3);  // View SQL, then each OK's rebuild
  EXPECT_EQ(host.EventsOf("preview").first().value("text").toString(), text);
  ASSERT_EQ(host.EventsOf("execute").size(), 2);
  EXPECT_EQ(host.EventsOf("execute").last().value("text").toString(), text);
  EXPECT_TRUE(host.EventsOf("confirm").isEmpty());  // closing after success does not ask
}

TEST_F(Sequence, ValidationStopsAtTheFirstEmptyFieldAndExecutesNothing) {
  test::TTestHost host(test::Json("{'connection': {'user': 'SYS', 'users': ['APP']}}"));
  host.Open("SEQUENCE", nullptr, [](QWidget* form) {
    Child<QLineEdit>(form, "SequenceNameEd")->setText("  ");
    Click(form, "OkBtn");
    EXPECT_EQ(form->focusWidget(), Child<QWidget>(form, "SequenceNameEd"));
    Child<QLineEdit>(form, "SequenceNameEd")->setText("S1");
    Click(form, "ViewSqlBtn");  // the connected user is not in the list: no schema selected
    EXPECT_EQ(form->focusWidget(), Child<QWidget>(form, "SchemaCmb"));
  });
  const auto messages = host.EventsOf("message");
  ASSERT_EQ(messages.size(), 2);
  EXPECT_EQ(messages[0].value("key").toString(), "Acm.Check The");
  EXPECT_EQ(messages[0].value("args").toArray().at(0).toString(), "Name");
  EXPECT_EQ(messages[1].value("args").toArray().at(0).toString(), "Schema");
  EXPECT_TRUE(host.EventsOf("execute").isEmpty());
  EXPECT_TRUE(host.EventsOf("preview").isEmpty());
}

TEST_F(Sequence, AlterLoadsTheSequenceAndWritesOnlyWhatChanged) {
  test::TTestHost host(test::Json(kFixture));
  TXLink link;
  host.Open("SEQUENCE", AlterLink(link), [](QWidget* form) {
    EXPECT_EQ(form->windowTitle(), "Alter Sequence - S1");
    EXPECT_FALSE(Child<QWidget>(form, "SequenceNameEd")->isEnabled());
    EXPECT_FALSE(Child<QWidget>(form, "SchemaCmb")->isEnabled());
    EXPECT_FALSE(Child<QWidget>(form, "StartWithSpinEdit")->isEnabled());
    EXPECT_EQ(Child<TKelSpinEdit>(form, "StartWithSpinEdit")->Text(), "21");
    EXPECT_EQ(Child<QLineEdit>(form, "MaxValueEd")->text(), "");
    Click(form, "ViewSqlBtn");
    // A new cache size with the no-cache box untouched writes no cache line.
    Child<QLineEdit>(form, "CacheEd")->setText("50");
    Child<QLineEdit>(form, "MaxValueEd")->setText("1000");
    Child<TKelSpinEdit>(form, "IncrementBySpinEdit")->SetText(" 5 ");
    Child<QCheckBox>(form, "CycleChk")->setChecked(true);
    Click(form, "ViewSqlBtn");
  });
  ASSERT_EQ(host.EventsOf("query").size(), 1);
  EXPECT_EQ(host.EventsOf("query")[0].value("binds").toObject(),
            test::Json("{'P_OWN': 'APP', 'P_SEQUENCE': 'S1'}"));
  const auto previews = host.EventsOf("preview");
  ASSERT_GE(previews.size(), 2);
  EXPECT_EQ(previews.first().value("text").toString(), "ALTER SEQUENCE APP.S1\r\n");
  EXPECT_EQ(previews.last().value("text").toString(),
            "ALTER SEQUENCE APP.S1\r\nINCREMENT BY 5 \r\nMAXVALUE 1000 \r\nCYCLE \r\n");
}

TEST_F(Sequence, DigitFieldsDropNonDigitsHoweverEnteredButKeepLoadedValues) {
  test::TTestHost host(test::Json(R"({
    'connection': {'user': 'APP', 'users': ['APP']},
    'catalog': {'SchSequenceNrn.Info': [{'Last Value': '-10', 'Min Value': '-50',
        'Max Value': '-1', 'Increment by': '-1', 'Cycle': 'NO', 'Cache?': '20', 'Order': 'NO'}]}
  })"));
  TXLink link;
  host.Open("SEQUENCE", AlterLink(link), [](QWidget* form) {
    auto* maximum = Child<QLineEdit>(form, "MaxValueEd");
    auto* cache = Child<QLineEdit>(form, "CacheEd");
    // A descending sequence's negative maximum is shown and stays editable.
    EXPECT_EQ(maximum->text(), "-1");
    Type(maximum, "0");
    EXPECT_EQ(maximum->text(), "-10");
    // Inserted and pasted text passes the same filter as typed text.
    cache->clear();
    cache->insert(" 5-0.");
    EXPECT_EQ(cache->text(), "50");
    EXPECT_EQ(cache->cursorPosition(), 2);
    QApplication::clipboard()->setText("-7");
    maximum->selectAll();
    maximum->paste();
    EXPECT_EQ(maximum->text(), "7");
    Click(form, "ViewSqlBtn");
  });
  ASSERT_EQ(host.EventsOf("preview").size(), 1);
  EXPECT_EQ(host.EventsOf("preview")[0].value("text").toString(),
            "ALTER SEQUENCE APP.S1\r\nMAXVALUE 7 \r\n");
}

TEST_F(Sequence, SchemaListIsUpperCaseAndTheOwnerIsFoundInAnyLetterCase) {
  test::TTestHost host(test::Json("{'connection': {'user': 'app', 'users': ['app', 'Hr']}}"));
  TXLink link;
  link.SetVerb("ChangeOwner");
  link.AddParams("ObjFrmOwner", "hR");
  host.Open("SEQUENCE", &link, [](QWidget* form) {
    auto* schema = Child<QComboBox>(form, "SchemaCmb");
    ASSERT_EQ(schema->count(), 2);
    EXPECT_EQ(schema->itemText(0), "APP");
    EXPECT_EQ(schema->currentText(), "HR");
    Child<QLineEdit>(form, "SequenceNameEd")->setText("S1");
    Click(form, "ViewSqlBtn");
  });
  ASSERT_EQ(host.EventsOf("preview").size(), 1);
  EXPECT_TRUE(
      host.EventsOf("preview")[0].value("text").toString().startsWith("CREATE SEQUENCE HR.S1\r\n"));
}

// The catalog query on a SQLite copy of the dictionary view it reads.

TEST(SequenceCatalog, InfoReturnsTheSevenColumnsAsTheDialogReadsThem) {
  {
    QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "seq-catalog");
    db.setDatabaseName(":memory:");
    ASSERT_TRUE(db.open());
    QSqlQuery q(db);
    ASSERT_TRUE(q.exec(
        "CREATE TABLE ALL_SEQUENCES (SEQUENCE_OWNER VARCHAR2(128), SEQUENCE_NAME VARCHAR2(128),"
        " MIN_VALUE NUMBER, MAX_VALUE NUMBER, INCREMENT_BY NUMBER, CYCLE_FLAG VARCHAR2(1),"
        " ORDER_FLAG VARCHAR2(1), CACHE_SIZE NUMBER, LAST_NUMBER NUMBER)"));
    ASSERT_TRUE(
        q.exec("INSERT INTO ALL_SEQUENCES VALUES"
               " ('APP','S1',1,999999999999999999999999999,1,'N','N',20,21),"
               " ('APP','S2',-50,500,-5,'Y','Y',0,-10),"
               " ('HR','S1',1,9999999999999999999999999999,1,'N','N',20,1)"));
    const QString sql = host::TCatalog::Builtin().GetSQL("SchSequenceNrn.Info");
    auto row = [&](const char* owner, const char* name) {
      QSqlQuery info(db);
      EXPECT_TRUE(info.prepare(sql));
      info.bindValue(":P_OWN", owner);
      info.bindValue(":P_SEQUENCE", name);
      EXPECT_TRUE(info.exec());
      QStringList values;
      if (info.next())
        for (const char* c :
             {"Last Value", "Min Value", "Max Value", "Increment by", "Cycle", "Cache?", "Order"})
          values << info.value(c).toString();
      EXPECT_FALSE(info.next());
      return values;
    };
    EXPECT_EQ(row("APP", "S1"), QStringList({"21", "1", "NONE", "1", "NO", "20", "NO"}));
    EXPECT_EQ(row("APP", "S2"), QStringList({"-10", "-50", "500", "-5", "YES", "0", "YES"}));
    EXPECT_EQ(row("HR", "S1")[2], "NONE");
    EXPECT_TRUE(row("APP", "S3").isEmpty());
  }
  QSqlDatabase::removeDatabase("seq-catalog");
}

// The alter mode on the demo database: the dialog shows what the dictionary holds.

TEST(SequenceCatalog, AlterLoadsDemoSequences) {
  host::TRecordingHost recorder(test::DemoConnection(), {});
  SetApplication(&recorder);
  auto load = [](const char* schema, const char* name) {
    auto* form = new TCreateSequenceFrm(nullptr);
    form->SetParentControl(nullptr);
    TXLink link;
    link.SetVerb("Alter");
    link.AddParams("IsAlter", "True");
    link.AddParams("P_Schema", schema);
    link.AddParams("P_SequenceName", name);
    form->ReadParams(&link);
    form->show();
    QStringList state;
    for (const char* c : {"StartWithSpinEdit", "MinValueSpinEdit", "IncrementBySpinEdit"})
      state << Child<TKelSpinEdit>(form, c)->Text();
    for (const char* c : {"MaxValueEd", "CacheEd"}) state << Child<QLineEdit>(form, c)->text();
    for (const char* c : {"CycleChk", "NoCacheChk", "OrderChk"})
      state << (Child<QCheckBox>(form, c)->isChecked() ? "X" : "-");
    delete form;
    return state;
  };
  EXPECT_EQ(load("HR", "EMPLOYEES_SEQ"), QStringList({"207", "1", "1", "", "", "-", "X", "-"}));
  EXPECT_EQ(load("SALES", "ORDERS_SEQ"),
            QStringList({"58211", "1", "1", "999999999999", "1000", "-", "-", "X"}));
  EXPECT_EQ(load("SALES", "INVOICE_NO_SEQ"),
            QStringList({"158812", "100000", "1", "999999", "", "X", "X", "-"}));
  EXPECT_EQ(recorder.Events().size(), 3);  // one catalog query per dialog
  SetApplication(nullptr);
}

// A name is one identifier: a second statement hidden in it never reaches the server.
TEST_F(Sequence, ANameHoldingAStatementIsRefused) {
  test::TTestHost host(test::Json(kFixture));
  host.Open("SEQUENCE", nullptr, [](QWidget* form) {
    Child<QLineEdit>(form, "SequenceNameEd")->setText("S1 NOCACHE;\nDROP TABLE HR.EMPLOYEES;");
    Click(form, "OkBtn");
    Click(form, "ViewSqlBtn");
    EXPECT_EQ(form->focusWidget(), Child<QWidget>(form, "SequenceNameEd"));
    form->close();
  });
  const auto messages = host.EventsOf("message");
  ASSERT_EQ(messages.size(), 2);
  EXPECT_EQ(messages[0].value("key").toString(), "Acm.Valid The");
  EXPECT_EQ(messages[0].value("args").toArray().at(0).toString(), "Name");
  EXPECT_TRUE(host.EventsOf("execute").isEmpty());
  EXPECT_TRUE(host.EventsOf("preview").isEmpty());
}

TEST_F(Sequence, AVanishedSequenceGivesAMessageAndNoDialog) {
  for (const char* row : {"", "{'Last Value': '', 'Min Value': '', 'Increment by': ''}"}) {
    test::TTestHost host(test::Json((QString("{'connection': {'user': 'APP', 'users': ['APP']},"
                                             " 'catalog': {'SchSequenceNrn.Info': [") +
                                     row + "]}}")
                                        .toUtf8()
                                        .constData()));
    TXLink link;
    bool shown = false;
    const int result = host.Open("SEQUENCE", AlterLink(link), [&](QWidget*) { shown = true; });
    EXPECT_EQ(result, mrCancel) << row;
    EXPECT_EQ(host.EventsOf("messageText").size(), 1) << row;
    EXPECT_TRUE(host.EventsOf("execute").isEmpty());
    EXPECT_TRUE(host.EventsOf("preview").isEmpty());
  }
}

// Alter of a SYS sequence by a user who does not list SYS; flags read in any case; unticked
// flags write their negative forms; an emptied spin edit passed through changes nothing.
TEST_F(Sequence, AlterOfAnUnlistedOwnerWithLooseFlags) {
  test::TTestHost host(test::Json(R"({
    'connection': {'user': 'APP', 'users': ['APP']},
    'catalog': {'SchSequenceNrn.Info': [{'Last Value': '1', 'Min Value': '1',
        'Max Value': 'NONE', 'Increment by': '1', 'Cycle': ' yes ', 'Cache?': '0',
        'Order': 'Yes'}]}
  })"));
  TXLink sys;
  sys.SetVerb("Alter");
  sys.AddParams("IsAlter", "True");
  sys.AddParams("P_Schema", "SYS");
  sys.AddParams("P_SequenceName", "S1");
  host.Open("SEQUENCE", &sys, [](QWidget* form) {
    EXPECT_EQ(Child<QComboBox>(form, "SchemaCmb")->currentText(), "SYS");
    EXPECT_TRUE(Child<QCheckBox>(form, "CycleChk")->isChecked());
    EXPECT_TRUE(Child<QCheckBox>(form, "OrderChk")->isChecked());
    EXPECT_TRUE(Child<QCheckBox>(form, "NoCacheChk")->isChecked());
    Click(form, "ViewSqlBtn");
    Child<QCheckBox>(form, "CycleChk")->setChecked(false);
    Child<QCheckBox>(form, "OrderChk")->setChecked(false);
    Click(form, "ViewSqlBtn");
  });
  const auto previews = host.EventsOf("preview");
  ASSERT_GE(previews.size(), 2);
  EXPECT_EQ(previews.first().value("text").toString(), "ALTER SEQUENCE SYS.S1\r\n");
  EXPECT_EQ(previews.last().value("text").toString(),
            "ALTER SEQUENCE SYS.S1\r\nNOCYCLE \r\nNOORDER\r\n");
}

TEST(SpinEdit, AnEmptyEntryStaysEmptyAndRangesBound) {
  TKelSpinEdit spin;
  spin.SetText("");
  QString text;
  int pos = 0;
  EXPECT_EQ(spin.validate(text, pos), QValidator::Acceptable);
  spin.fixup(text);
  EXPECT_EQ(text, "");
  text = "-";
  spin.fixup(text);
  EXPECT_EQ(text, "");
  spin.SetRange(-84, 127);
  for (const char* ok : {"-84", "0", "127", ""}) {
    text = ok;
    EXPECT_EQ(spin.validate(text, pos), QValidator::Acceptable) << ok;
  }
  for (const char* bad : {"128", "-85", "99999999999999999999999"}) {
    text = bad;
    EXPECT_EQ(spin.validate(text, pos), QValidator::Invalid) << bad;
  }
  spin.SetText("127");
  spin.stepBy(1);
  EXPECT_EQ(spin.Text(), "127");
}

// The job dialog and its object picker driven through the module's dispatch on a fixture host:
// the submit and change blocks byte for byte, the interval presets, the call composed by the
// picker, validation, and the catalog queries on the demo database.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QTimeEdit>
#include <QTimer>
#include <ctime>

#include "jobs/CreateJobFrn.h"
#include "jobs/CreateJobObjectFrn.h"
#include "plugin/Dispatch.h"
#include "plugin/KelEditor.h"
#include "plugin/KelQuery.h"
#include "tests/support/TestHost.h"

using namespace kel;

[[maybe_unused]] static void PrintTo(const QString& s, std::ostream* os) {
  *os << '"'
      << QString(s).replace("\r", "\\r").replace("\n", "\\n").replace("\t", "\\t").toStdString()
      << '"';
}

namespace {

template <class T>
T* Child(QWidget* form, const char* name) {
  T* w = form->findChild<T*>(QString::fromLatin1(name));
  if (!w) ADD_FAILURE() << "no control " << name;
  return w;
}

void Click(QWidget* form, const char* button) {
  Child<QAbstractButton>(form, button)->click();
}

// Chooses a combo item as the user does (the choice handlers run on `activated`).
void Choose(QWidget* form, const char* combo, const QString& item) {
  auto* c = Child<QComboBox>(form, combo);
  const int index = c->findText(item);
  ASSERT_GE(index, 0) << item.toStdString();
  c->setCurrentIndex(index);
  emit c->activated(index);
}

// Runs `drive` in the next modal window that opens (a picker opened by a click).
void InNextModal(const std::function<void(QWidget*)>& drive) {
  QTimer::singleShot(0, [drive] {
    QWidget* modal = QApplication::activeModalWidget();
    ASSERT_NE(modal, nullptr);
    drive(modal);
    if (auto* dlg = qobject_cast<QDialog*>(modal); dlg && dlg->isVisible()) dlg->done(mrCancel);
  });
}

void SetNextRun(QWidget* form) {
  Child<QDateEdit>(form, "NextDateEd")->setDate(QDate(2024, 3, 5));
  Child<QTimeEdit>(form, "NextTimeEd")->setTime(QTime(7, 8, 9));
}

const QString kSubmitHead = QStringLiteral(
    "DECLARE                                              \r\n"
    "  X NUMBER;                                          \r\n"
    "BEGIN \t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\r\n"
    "  SYS.DBMS_JOB.SUBMIT \t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\r\n"
    "\t (\t                                                \r\n"
    "\t    Job       => X                                  \r\n");
const QString kSubmitTail = QStringLiteral(
    "\t ); \t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t \t\r\n"
    "END; \t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\r\n");
const QString kNextDate =
    QStringLiteral("\t   ,Next_Date => to_date('05/03/2024 07:08:09','dd/mm/yyyy hh24:mi:ss')\r\n");

class Job : public ::testing::Test {
 protected:
  void SetUp() override { RegisterOpenRoutine("JOB", &OpenModal<TCreateJobFrm>); }
};

// A non-English locale and a time zone far from UTC for one test.
class ForeignMachine {
 public:
  ForeignMachine() : FTz(qgetenv("TZ")) {
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    qputenv("TZ", "Pacific/Chatham");
    tzset();
  }
  ~ForeignMachine() {
    QLocale::setDefault(QLocale::c());
    if (FTz.isEmpty())
      qunsetenv("TZ");
    else
      qputenv("TZ", FTz);
    tzset();
  }

 private:
  QByteArray FTz;
};

}  // namespace

TEST_F(Job, SubmitBlockIsExactWhateverTheLocaleAndTimeZone) {
  ForeignMachine foreign;
  test::TTestHost host(test::Json("{'connection': {'user': 'APP', 'users': ['APP']}}"));
  const int result = host.Open("JOB", nullptr, [](QWidget* form) {
    EXPECT_EQ(form->windowTitle(), "Create Job");
    EXPECT_FALSE(Child<QLineEdit>(form, "JobNumberEd")->isEnabled());
    SetNextRun(form);
    EXPECT_EQ(Child<QDateEdit>(form, "NextDateEd")->text(), "05/03/2024");
    EXPECT_EQ(Child<QTimeEdit>(form, "NextTimeEd")->text(), "07:08:09");
    Choose(form, "IntervalCmb", "Every Sunday at midnight");
    auto* interval = Child<QLineEdit>(form, "IntervalEd");
    EXPECT_EQ(interval->text(), "NEXT_DAY(TRUNC(SYSDATE), 'SUNDAY')");
    EXPECT_EQ(form->focusWidget(), interval);
    EXPECT_EQ(interval->cursorPosition(), interval->text().size());
    Child<TKelEditor>(form, "SQLEditor")->SetText("  APP.LOG_IT('x');\r\n");
    Click(form, "NoparseRdo");
    Click(form, "OkBtn");
  });
  EXPECT_EQ(result, mrOk);
  ASSERT_EQ(host.EventsOf("execute").size(), 1);
  // The call's quotes are the user's; the preset's quotes are doubled so the block compiles.
  EXPECT_EQ(host.EventsOf("execute")[0].value("text").toString(),
            kSubmitHead + "\t   ,What      => 'APP.LOG_IT('x');'\t\t\t\r\n" + kNextDate +
                "\t   ,Interval  => 'NEXT_DAY(TRUNC(SYSDATE), ''SUNDAY'')'    \r\n"
                "\t   ,No_Parse  => TRUE\r\n" +
                kSubmitTail);
}

TEST_F(Job, EmptyIntervalRunsOnceAndAFailedSubmitKeepsTheDialog) {
  test::TTestHost host(
      test::Json("{'connection': {'user': 'APP', 'users': ['APP']}, 'execute': [1]}"));
  const int result = host.Open("JOB", nullptr, [](QWidget* form) {
    SetNextRun(form);
    Click(form, "OkBtn");  // nothing to execute yet
    EXPECT_EQ(form->focusWidget(), Child<QWidget>(form, "SQLEditor"));
    Choose(form, "IntervalCmb", "Every 30 minutes");
    EXPECT_EQ(Child<QLineEdit>(form, "IntervalEd")->text(), "SYSDATE+30/1440");
    Child<QLineEdit>(form, "IntervalEd")->setText("   ");
    Child<TKelEditor>(form, "SQLEditor")->SetText("APP.REFRESH_STATS;");
    Click(form, "OkBtn");
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(Child<TKelEditor>(form, "SQLEditor")->Text(), "APP.REFRESH_STATS;");
  });
  EXPECT_EQ(result, mrCancel);
  ASSERT_EQ(host.EventsOf("message").size(), 1);
  EXPECT_EQ(host.EventsOf("message")[0].value("args").toArray().at(0).toString(),
            "What to execute");
  ASSERT_EQ(host.EventsOf("execute").size(), 1);
  EXPECT_EQ(host.EventsOf("execute")[0].value("text").toString(),
            kSubmitHead + "\t   ,What      => 'APP.REFRESH_STATS;'\t\t\t\r\n" + kNextDate +
                "\t   ,No_Parse  => FALSE\r\n" + kSubmitTail);
}

TEST_F(Job, ChangeModeLoadsTheJobAndWritesTheChangeBlock) {
  test::TTestHost host(test::Json(R"({
    'connection': {'user': 'APP', 'users': ['APP']},
    'catalog': {'SchJobNrn.Info': [{'Job Number': '2', 'Next Date': '2024-03-05 09:00:00',
        'Interval': 'SYSDATE + 1/24', 'What': 'APP.EMP_PKG.PURGE_AUDIT(30);'}]}
  })"));
  auto* form = new TCreateJobFrm(nullptr);
  form->SetParentControl(nullptr);
  TXLink link;
  link.SetVerb("ObjectAlter");
  link.AddParams("P_Schema", "APP");
  link.AddParams("P_JobName", "2");
  form->ReadParams(&link);
  form->SetChangeMode(true);
  form->show();
  EXPECT_EQ(form->windowTitle(), "Alter Job");
  EXPECT_EQ(Child<QLineEdit>(form, "JobNumberEd")->text(), "2");
  EXPECT_EQ(Child<QTimeEdit>(form, "NextTimeEd")->time(), QTime(9, 0, 0));
  Click(form, "ViewSqlBtn");
  ASSERT_EQ(host.EventsOf("preview").size(), 1);
  EXPECT_EQ(host.EventsOf("preview")[0].value("text").toString(),
            "BEGIN\t\t\t\t\t\t\t\t\t\t\t\t\t\r\n"
            "\tSYS.DBMS_JOB.CHANGE\t\t\t\t\t\t\r\n"
            "\t(\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\r\n"
            "\t\t Job       => 2\r\n"
            "   ,What      => 'APP.EMP_PKG.PURGE_AUDIT(30);'\t\t\t\r\n"
            "\t\t,Next_Date => to_date('05/03/2024 09:00:00','dd/mm/yyyy hh24:mi:ss')\r\n"
            "\t   ,Interval  => 'SYSDATE + 1/24'  \r\n"
            "\t);\t\t\t\t\t\t\t\t\t\t\t\t\t\t\r\n"
            "END; \t\t\t\t\t\t\t\t\t\t\t\t\t\r\n");
  EXPECT_EQ(host.EventsOf("query")[0].value("binds").toObject(), test::Json("{'P_JOB': '2'}"));
  delete form;
}

TEST_F(Job, ThePickerComposesTheCallWithArgumentPlaceholders) {
  test::TTestHost host(test::Json(R"({
    'connection': {'user': 'APP', 'users': ['APP', 'HR']},
    'catalog': {
      'CreateJobObjectFrn.001': [
        {'binds': {'P_OBJTYPE': 'PACKAGE BODY'}, 'rows': [{'Object_Name': 'BROKEN_PKG', 'Status': 'INVALID'},
                                                          {'Object_Name': 'PKG', 'Status': 'VALID '}]},
        {'binds': {'P_OWN': 'APP', 'P_OBJTYPE': 'PROCEDURE'}, 'rows': [{'Object_Name': 'RUN', 'Status': 'VALID'}]}],
      'CreateJobObjectFrn.002': [{'Object_Name': 'START_BATCH'}],
      'CreateJobFrn.001': [
        {'binds': {'P_OBJNAME': 'START_BATCH', 'P_PKGNAME': 'PKG'}, 'rows': [
          {'Argument_Name': 'P1', 'Data_Type': 'NUMBER'},
          {'Argument_Name': 'P2', 'Data_Type': 'VARCHAR2'},
          {'Argument_Name': 'P3', 'Data_Type': 'DATE'}]}]}
  })"));
  host.Open("JOB", nullptr, [](QWidget* form) {
    auto* editor = Child<TKelEditor>(form, "SQLEditor");
    editor->SetText("kept");
    // Cancel changes nothing.
    InNextModal([](QWidget* picker) { Click(picker, "CancelBtn"); });
    Click(form, "ObjectBtn");
    EXPECT_EQ(editor->Text(), "kept");
    // A stand-alone procedure without arguments.
    InNextModal([](QWidget* picker) {
      EXPECT_EQ(picker->windowTitle(), "What to execute");
      EXPECT_EQ(Child<QComboBox>(picker, "TypeCmb")->currentText(), "Procedure");
      EXPECT_FALSE(Child<QComboBox>(picker, "SubObjectCmb")->isEnabled());
      Click(picker, "OkBtn");  // no object chosen
      Choose(picker, "ObjectNameCmb", "RUN");
      Click(picker, "OkBtn");
    });
    Click(form, "ObjectBtn");
    EXPECT_EQ(editor->Text(), "APP.RUN;");
    // A procedure of a package with three arguments; the invalid package is not offered.
    InNextModal([](QWidget* picker) {
      Choose(picker, "TypeCmb", "Package");
      auto* objects = Child<QComboBox>(picker, "ObjectNameCmb");
      ASSERT_EQ(objects->count(), 1);
      EXPECT_EQ(objects->itemText(0), "PKG");
      EXPECT_TRUE(Child<QComboBox>(picker, "SubObjectCmb")->isEnabled());
      Choose(picker, "ObjectNameCmb", "PKG");
      Click(picker, "OkBtn");  // no procedure chosen
      Choose(picker, "SubObjectCmb", "START_BATCH");
      Click(picker, "OkBtn");
    });
    Click(form, "ObjectBtn");
    EXPECT_EQ(editor->Text(),
              "APP.PKG.START_BATCH\r\n(P1 /*NUMBER*/\r\n   ,P2 /*VARCHAR2*/\r\n   ,P3 /*DATE*/);");
    // Changing the schema reloads the objects and empties both choices.
    InNextModal([](QWidget* picker) {
      Choose(picker, "TypeCmb", "Package");
      Choose(picker, "ObjectNameCmb", "PKG");
      Choose(picker, "SchemaCmb", "HR");
      EXPECT_EQ(Child<QComboBox>(picker, "ObjectNameCmb")->currentIndex(), -1);
      EXPECT_EQ(Child<QComboBox>(picker, "SubObjectCmb")->count(), 0);
      Click(picker, "CancelBtn");
    });
    Click(form, "ObjectBtn");
  });
  QStringList checks;
  for (const QJsonObject& m : host.EventsOf("message"))
    checks << m.value("args").toArray().at(0).toString();
  EXPECT_EQ(checks, QStringList({"Object Name", "Sub Object"}));
  QStringList argumentBinds;
  for (const QJsonObject& q : host.EventsOf("query"))
    if (q.value("key") == "CreateJobFrn.001")
      argumentBinds << QString::fromUtf8(
          QJsonDocument(q.value("binds").toObject()).toJson(QJsonDocument::Compact));
  EXPECT_EQ(argumentBinds,
            QStringList({R"({"P_OBJNAME":"RUN","P_OWN":"APP","P_PKGNAME":""})",
                         R"({"P_OBJNAME":"START_BATCH","P_OWN":"APP","P_PKGNAME":"PKG"})"}));
}

TEST(JobCatalog, QueriesRunOnTheDemoDatabase) {
  auto open = [](TKelQuery& q, const char* key, const QList<QPair<QString, QString>>& binds) {
    q.LoadSQL(key);
    for (const auto& [name, value] : binds) q.ParamByName(name) = value;
    q.Open();
  };
  TKelQuery q(test::DemoConnection());
  open(q, "CreateJobFrn.001", {{"P_OWN", "APP"}, {"P_OBJNAME", "HIRE"}, {"P_PKGNAME", "EMP_PKG"}});
  QStringList arguments;
  for (; !q.Eof(); q.Next())
    arguments << q.FieldByName("Argument_Name") + u' ' + q.FieldByName("Data_Type");
  EXPECT_EQ(arguments, QStringList({"P_ENAME VARCHAR2", "P_JOB VARCHAR2", "P_DEPTNO NUMBER"}));
  // A stand-alone procedure without arguments has none; a function's result is no argument.
  open(q, "CreateJobFrn.001",
       {{"P_OWN", "APP"}, {"P_OBJNAME", "REFRESH_STATS"}, {"P_PKGNAME", ""}});
  EXPECT_TRUE(q.Eof());
  open(q, "CreateJobObjectFrn.001", {{"P_OWN", "APP"}, {"P_OBJTYPE", "PACKAGE BODY"}});
  QStringList packages;
  for (; !q.Eof(); q.Next())
    packages << q.FieldByName("Object_Name") + u':' + q.FieldByName("Status");
  EXPECT_TRUE(packages.contains("EMP_PKG:VALID"));
  EXPECT_TRUE(packages.contains("BATCH_PKG:INVALID"));
  open(q, "CreateJobObjectFrn.002", {{"P_OWN", "APP"}, {"P_PKGNAME", "EMP_PKG"}});
  QStringList procedures;
  for (; !q.Eof(); q.Next()) procedures << q.FieldByName("Object_Name");
  EXPECT_EQ(procedures, QStringList({"HIRE", "PURGE_AUDIT", "RAISE_SALARY"}));  // no HEADCOUNT
  open(q, "SchJobNrn.Info", {{"P_JOB", "2"}});
  ASSERT_FALSE(q.Eof());
  EXPECT_EQ(q.FieldByName("Job Number"), "2");
  EXPECT_EQ(q.FieldByName("Next Date"), "2024-03-05 09:00:00");
  EXPECT_EQ(q.FieldByName("Interval"), "SYSDATE + 1/24");
  EXPECT_EQ(q.FieldByName("What"), "APP.EMP_PKG.PURGE_AUDIT(30);");
}

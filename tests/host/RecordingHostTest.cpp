// The runner's host: each scripted answer is used as the scenario format describes, and every
// effect comes out as an event.
#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QTemporaryDir>

#include "host/core/FixtureConnection.h"
#include "host/core/RecordingHost.h"

namespace {

QJsonObject Json(const char* text) {
  return QJsonDocument::fromJson(text).object();
}

QStringList EventNames(const QJsonArray& events) {
  QStringList names;
  for (const QJsonValue& e : events) names << e.toObject().value("event").toString();
  return names;
}

using kel::TMsgDlgButtons;
using kel::TMsgDlgType;

}  // namespace

TEST(RecordingHost, AnswersConfirmationsByKeyOrTextAndYesOtherwise) {
  host::TFixtureConnection db({}, {});
  host::TRecordingHost h(&db, Json(R"({"answers": {"CancelWork": 7, "Really drop?": 2,
                                                    "Acm.Check The": 2, "Ask.Drop": 7}})"));
  EXPECT_EQ(
      h.esMsgDBox("CancelWork", TMsgDlgType::Confirmation, TMsgDlgButtons::YesNoCancel, false),
      kel::mrNo);
  EXPECT_EQ(h.esMsgDBox("OverWrite", TMsgDlgType::Confirmation, TMsgDlgButtons::YesNoCancel, false),
            kel::mrYes);
  EXPECT_EQ(h.esMsgBox("Really drop?", TMsgDlgType::Confirmation, false), kel::mrCancel);
  EXPECT_EQ(h.esMsgBox("Other text", TMsgDlgType::Error, false), kel::mrYes);
  // A warning is only shown; a question with arguments is answered like any question.
  EXPECT_EQ(h.esMsgDBox("Acm.Valid The", {"Name"}, TMsgDlgType::Warning, false), kel::mrOk);
  EXPECT_EQ(h.esMsgDBox("Ask.Drop", {"T1"}, TMsgDlgType::Confirmation, false), kel::mrNo);
  EXPECT_EQ(h.esMsgDBox("Ask.Keep", {"T1"}, TMsgDlgType::Confirmation, false), kel::mrYes);

  const QJsonArray e = h.Events();
  EXPECT_EQ(EventNames(e), QStringList({"confirm", "confirm", "messageText", "messageText",
                                        "message", "confirm", "confirm"}));
  EXPECT_EQ(e[0].toObject(), Json(R"({"event": "confirm", "key": "CancelWork", "answer": 7})"));
  EXPECT_EQ(e[2].toObject(),
            Json(R"({"event": "messageText", "text": "Really drop?", "answer": 2})"));
  EXPECT_EQ(e[4].toObject(),
            Json(R"({"event": "message", "key": "Acm.Valid The", "args": ["Name"]})"));
  EXPECT_EQ(e[5].toObject(), Json(R"({"event": "confirm", "key": "Ask.Drop", "args": ["T1"],
                                      "answer": 7})"));
}

TEST(RecordingHost, InputsSaveDialogsAndExecutionsAreUsedInOrder) {
  QTemporaryDir dir;
  const QString first = dir.filePath("a.sql");
  host::TFixtureConnection db({}, {});
  QJsonObject script = Json(R"({"inputs": {"Add Alias": ["A1", "A2"]}, "execute": [3]})");
  script.insert("saveAs", QJsonArray({first}));
  host::TRecordingHost h(&db, script);

  QString value = "default";
  EXPECT_TRUE(h.InputQuery("Add Alias", "Alias:", value));
  EXPECT_EQ(value, "A1");
  EXPECT_TRUE(h.InputQuery("Add Alias", "Alias:", value));
  EXPECT_EQ(value, "A2");
  value = "kept";
  EXPECT_FALSE(h.InputQuery("Add Alias", "Alias:", value));  // none left: cancelled
  EXPECT_EQ(value, "kept");
  EXPECT_FALSE(h.InputQuery("Other", "x", value));

  QString file;
  EXPECT_TRUE(h.SaveFileDialog(nullptr, file));
  EXPECT_EQ(file, first);
  EXPECT_FALSE(h.SaveFileDialog(nullptr, file));

  EXPECT_EQ(h.esScriptExecute(nullptr, h.CurrentDBInfo(), "DROP TABLE X;\r\n"), 3);
  EXPECT_EQ(h.esScriptExecute(nullptr, h.CurrentDBInfo(), "DROP TABLE Y;\r\n"), 0);

  const QJsonArray e = h.Events();
  ASSERT_EQ(e.size(), 6);
  EXPECT_EQ(e[0].toObject(), Json(R"({"event": "input", "title": "Add Alias", "answer": "A1"})"));
  EXPECT_TRUE(e[2].toObject().value("answer").isNull());
  EXPECT_EQ(e[4].toObject(),
            Json(R"({"event": "execute", "text": "DROP TABLE X;\r\n", "result": 3})"));
  EXPECT_EQ(e[5].toObject().value("result").toInt(-1), 0);
}

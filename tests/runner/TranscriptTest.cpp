#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include "host/runner/Transcript.h"

namespace {

using runner::CanonicalJson;
using runner::ParseObject;

TEST(Transcript, EscapesTextsSoThatLineBreaksAndTabsStayVisible) {
  const QJsonObject doc{
      {"events", QJsonArray{QJsonObject{
                     {"event", "preview"},
                     {"text", QStringLiteral("A\r\nB\rC\tD \"q\" \\ \x01 \u00e9 \U0001F600")}}}}};
  const QByteArray text = CanonicalJson(doc);
  EXPECT_TRUE(text.contains(R"("A\r\nB\rC\tD \"q\" \\ \u0001 )")) << text.constData();
  EXPECT_TRUE(text.contains("\xc3\xa9 \xf0\x9f\x98\x80")) << "non-ASCII text is written as UTF-8";
  QString error;
  EXPECT_EQ(ParseObject(text, &error), doc) << error.toStdString();
}

TEST(Transcript, LayoutIsStableWhateverTheInsertionOrder) {
  const QJsonObject event{{"text", "x"}, {"answer", 6}, {"key", "OverWrite"}, {"event", "confirm"}};
  const QJsonObject doc{{"events", QJsonArray{event}}, {"open", QJsonArray{"F"}}, {"result", 1}};
  EXPECT_EQ(CanonicalJson(doc),
            "{\n"
            "  \"result\": 1,\n"
            "  \"open\": [\n"
            "    \"F\"\n"
            "  ],\n"
            "  \"events\": [\n"
            "    {\"event\": \"confirm\", \"key\": \"OverWrite\", \"text\": \"x\", \"answer\": 6}\n"
            "  ]\n"
            "}\n");
}

TEST(Transcript, WritesNullsEmptyListsAndNumbersPlainly) {
  const QJsonObject doc{{"result", QJsonValue()},
                        {"open", QJsonArray()},
                        {"events", QJsonArray()},
                        {"ratio", 0.5},
                        {"count", -3}};
  const QByteArray text = CanonicalJson(doc);
  EXPECT_TRUE(text.contains("\"result\": null,\n  \"open\": [],\n  \"events\": [],"))
      << text.constData();
  EXPECT_TRUE(text.contains("\"count\": -3")) << text.constData();
  EXPECT_EQ(ParseObject(text, nullptr), doc);
}

TEST(Transcript, ParseReportsWhereTheTextIsBroken) {
  QString error;
  EXPECT_TRUE(ParseObject("{\"steps\": [}", &error).isEmpty());
  EXPECT_TRUE(error.contains("offset")) << error.toStdString();
  error.clear();
  ParseObject("[1, 2]", &error);
  EXPECT_FALSE(error.isEmpty());
}

}  // namespace

TEST(Transcript, LoneSurrogatesAndPairsAreWrittenExactly) {
  const QString text = QString("a") + QChar(0xD800) + QString::fromUtf8("\xF0\x9F\x98\x80");
  const QByteArray json = runner::CanonicalJson(QJsonObject{{"text", text}});
  EXPECT_TRUE(json.contains("\\ud800")) << json.toStdString();
  EXPECT_TRUE(json.contains("\xF0\x9F\x98\x80"));
  QString error;
  EXPECT_EQ(runner::ParseObject(json, &error).value("text").toString(), text);
}

TEST(Transcript, TimeoutsAreCheckedBeforeTheyAreConverted) {
  QString why;
  EXPECT_EQ(runner::TimeoutMs("1.5", &why), 1500);
  for (const char* bad : {"2147483", "1e300", "0", "-3", "nan", "inf", "ten"}) {
    why.clear();
    EXPECT_EQ(runner::TimeoutMs(bad, &why), -1) << bad;
    EXPECT_TRUE(why.startsWith("--timeout takes")) << why.toStdString();
  }
}

TEST(Transcript, ScenarioFilesAreReadUpTo16MiBOnly) {
  QTemporaryDir dir;
  QFile big(dir.filePath("big.json"));
  ASSERT_TRUE(big.open(QIODevice::WriteOnly));
  ASSERT_TRUE(big.resize(runner::kMaxScenarioBytes + 1));
  big.close();
  QByteArray text;
  QString why;
  EXPECT_FALSE(runner::ReadCapped(big.fileName(), &text, &why));
  EXPECT_TRUE(why.contains("larger than 16 MiB")) << why.toStdString();
  EXPECT_FALSE(runner::ReadCapped("/dev/zero", &text, &why));
  ASSERT_TRUE(big.resize(3));
  EXPECT_TRUE(runner::ReadCapped(big.fileName(), &text, &why));
  EXPECT_EQ(text.size(), 3);
}

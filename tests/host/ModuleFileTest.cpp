#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include "host/core/ModuleFile.h"

namespace {

QByteArray OwnImage() {
  QFile self(QCoreApplication::applicationFilePath());
  return self.open(QIODevice::ReadOnly) ? self.readAll() : QByteArray();
}

QString Write(const QTemporaryDir& dir, const char* name, const QByteArray& data) {
  const QString path = dir.filePath(QString::fromLatin1(name));
  QFile f(path);
  if (f.open(QIODevice::WriteOnly)) f.write(data);
  return path;
}

}  // namespace

TEST(ModuleFile, CompleteObjectsPassAndCutOrForeignFilesAreRefusedWithAReason) {
  const QByteArray image = OwnImage();
  ASSERT_GT(image.size(), 4096);
  QTemporaryDir dir;
  QString error;
  EXPECT_TRUE(host::CheckModuleFile(Write(dir, "whole.so", image), &error)) << error.toStdString();

  // Cut in the middle of the loadable segments, inside the headers, and right after the magic.
  for (qsizetype size : {image.size() / 2, qsizetype(100), qsizetype(10)}) {
    error.clear();
    EXPECT_FALSE(host::CheckModuleFile(Write(dir, "cut.so", image.left(size)), &error)) << size;
    EXPECT_TRUE(error.contains(QLatin1String("cut.so"))) << error.toStdString();
  }
  EXPECT_FALSE(host::CheckModuleFile(Write(dir, "text.so", "not a library"), &error));
  EXPECT_FALSE(host::CheckModuleFile(Write(dir, "empty.so", ""), &error));
  EXPECT_FALSE(host::CheckModuleFile(dir.filePath("missing.so"), &error));
}

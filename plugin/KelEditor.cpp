#include "plugin/KelEditor.h"

#include <Qsci/qscilexersql.h>

#include <QFile>

#include "plugin/KelHost.h"

namespace kel {

TKelEditor::TKelEditor(QWidget* parent) : QsciScintilla(parent) {
  setUtf8(true);
  setTabWidth(4);
  setEolMode(QsciScintilla::EolWindows);
}

void TKelEditor::SaveFile(const QString& fileName) const {
  QFile f(fileName);
  if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
    throw EKelError(QStringLiteral("Cannot write %1: %2").arg(fileName, f.errorString()));
  f.write(Text().toUtf8());
}

void TKelEditor::PlSqlEditor() {
  auto* lexer = new QsciLexerSQL(this);
  lexer->setFoldComments(true);
  setLexer(lexer);
  setTabWidth(4);
  setMarginType(0, QsciScintilla::NumberMargin);
  setMarginWidth(0, 42);
  setMarginLineNumbers(0, true);
  setBraceMatching(QsciScintilla::SloppyBraceMatch);
  setAutoIndent(true);
}

QString TKelEditor::Text() const {
  const long length = SendScintilla(SCI_GETLENGTH);
  QByteArray bytes(length + 1, '\0');
  SendScintilla(SCI_GETTEXT, static_cast<unsigned long>(length + 1), bytes.data());
  bytes.resize(length);
  return QString::fromUtf8(bytes);
}

void TKelEditor::SetText(const QString& text) {
  const bool readOnly = isReadOnly();
  setReadOnly(false);
  const QByteArray bytes = text.toUtf8();
  SendScintilla(SCI_CLEARALL);
  SendScintilla(SCI_APPENDTEXT, static_cast<unsigned long>(bytes.size()), bytes.constData());
  SendScintilla(SCI_EMPTYUNDOBUFFER);
  setReadOnly(readOnly);
}

}  // namespace kel

// The SQL editor component: QScintilla with the SQL lexer, line numbers and file saving.
#pragma once

#include <Qsci/qsciscintilla.h>

namespace kel {

class TKelEditor : public QsciScintilla {
  Q_OBJECT
 public:
  explicit TKelEditor(QWidget* parent = nullptr);

  // The whole text, also past a NUL character (QScintilla's text() and setText() stop there).
  QString Text() const;
  void SetText(const QString& text);
  // Writes the text as it stands (UTF-8, line breaks untouched); EKelError when it cannot.
  void SaveFile(const QString& fileName) const;
  void SelectAllClick() { selectAll(true); }
  // PL/SQL editing set-up: SQL highlighting, tab width 4, line numbers in a 42-pixel gutter.
  void PlSqlEditor();
};

}  // namespace kel

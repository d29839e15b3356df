# QScintilla for Qt 6 ships no CMake package: locate header and library by hand and wrap them
# in an imported target.
find_path(QSCINTILLA_INCLUDE_DIR Qsci/qsciscintilla.h PATH_SUFFIXES qt6 x86_64-linux-gnu/qt6
          REQUIRED)
find_library(QSCINTILLA_LIBRARY NAMES qscintilla2_qt6 REQUIRED)
add_library(QScintilla::QScintilla UNKNOWN IMPORTED)
set_target_properties(QScintilla::QScintilla PROPERTIES
  IMPORTED_LOCATION "${QSCINTILLA_LIBRARY}"
  INTERFACE_INCLUDE_DIRECTORIES "${QSCINTILLA_INCLUDE_DIR}"
  INTERFACE_COMPILE_DEFINITIONS QSCINTILLA_DLL
  INTERFACE_LINK_LIBRARIES "Qt6::Widgets;Qt6::PrintSupport")

// Dispatch of the object-type words to the dialogs' open routines.
#pragma once

#include <QString>
#include <span>

#include "plugin/KelForms.h"

namespace kel {

enum class TFormShape { Modal, Child, Preview };

// An open routine: creates the dialog, attaches it, reads the link and shows it.
using TOpenRoutine = void (*)(int* Result, QWidget* ParentControl, TXLink* Link);

struct TDispatchRow {
  const char* Word;         // the object-type word, upper case
  const char* DialogClass;  // the form class it opens
  TFormShape Shape;
  TOpenRoutine Routine;  // null while the dialog is not available: the word is then ignored
};

// The 22 rows, in comparison order.
std::span<const TDispatchRow> DispatchTable();

// Puts a dialog's open routine into the row of `word`; the module registers every dialog it
// has at start-up (RegisterDialogs), tests register the ones they exercise.
void RegisterOpenRoutine(const char* word, TOpenRoutine routine);
// Registers every dialog of the module.
void RegisterDialogs();

// Calls the open routine of the first row whose word equals `word` upper-cased. Returns false
// (and does nothing) for an unknown word.
bool Dispatch(const QString& word, int* Result, QWidget* ParentControl, TXLink* Link);

namespace detail {
inline void Store(int* Result, int value) {
  if (Result) *Result = value;
}
}  // namespace detail

// Modal shape: create, attach, read the link, run modally; errors are dropped and the dialog is
// always freed.
template <class TForm>
void OpenModal(int* Result, QWidget* ParentControl, TXLink* Link) {
  TForm* form = nullptr;
  try {
    form = new TForm(Application() ? Application()->MainForm() : nullptr);
    detail::Store(Result, form->SetParentControl(ParentControl));
    if (Link) form->ReadParams(Link);
    detail::Store(Result, form->ShowModal());
  } catch (...) {
  }
  delete form;
}

// Child-window shape: create, attach, read the link and hand the form to the host as an MDI
// child; it frees itself when closed.
template <class TForm>
void OpenChild(int* Result, QWidget* ParentControl, TXLink* Link) {
  TForm* form = nullptr;
  try {
    form = new TForm(nullptr);
    detail::Store(Result, form->SetParentControl(ParentControl));
    if (Link) form->ReadParams(Link);
    if (Application()) Application()->ShowMDIChild(form);
    form = nullptr;
  } catch (...) {
  }
  delete form;
}

// Preview shape: one preview window per owner, reused and its text replaced.
void OpenViewSqlFrm(int* Result, QWidget* ParentControl, TXLink* Link);

}  // namespace kel

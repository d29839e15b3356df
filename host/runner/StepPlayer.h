// Plays the steps of a scenario on the module's windows, as a user's actions would.
#pragma once

#include <QJsonObject>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QWidget>
#include <functional>

namespace runner {

// Follows the windows in the order they are first shown and tells which one a step acts on.
class TWindowTracker : public QObject {
 public:
  TWindowTracker();
  ~TWindowTracker() override;

  // Windows placed by the host as MDI children, oldest first.
  void SetChildWindows(std::function<QList<QWidget*>()> children) {
    FChildWindows = std::move(children);
  }
  // A window of the host's own (a link owner) that steps never act on.
  void Ignore(QWidget* w) { FIgnored.insert(w); }

  // Visible windows, oldest first.
  QList<QWidget*> OpenWindows() const;
  // The innermost modal dialog, else the newest MDI child, else the newest other window;
  // null when no window is open.
  QWidget* ActiveWindow() const;
  // The open window whose objectName is `name`, or null.
  QWidget* FindWindow(const QString& name) const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool Counts(const QWidget* w) const;

  QList<QPointer<QWidget>> FShown;
  QSet<const QWidget*> FIgnored;
  std::function<QList<QWidget*>()> FChildWindows;
};

class TStepPlayer {
 public:
  explicit TStepPlayer(TWindowTracker& windows) : FWindows(windows) {}

  // Receives the events steps produce (`widget`, `file`).
  std::function<void(const QJsonObject&)> OnEvent;
  // Plays an `open` step (a further call of the module's entry); false with the reason when it
  // cannot.
  std::function<bool(const QJsonObject& step, QString* why)> OnOpen;

  // Plays one step; false with the reason when it cannot be played.
  bool Play(const QJsonObject& step, QString* why);

  // The step kinds, in the order a step object is inspected.
  static const QStringList& Verbs();
  // The verb of `step`, empty when it has none.
  static QString VerbOf(const QJsonObject& step);

 private:
  TWindowTracker& FWindows;
};

}  // namespace runner

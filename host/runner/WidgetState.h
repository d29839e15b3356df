// What a `dump` step reports about a control or a form.
#pragma once

#include <QJsonObject>
#include <QList>

class QRadioButton;
class QWidget;

namespace runner {

// The radio buttons of a radio group (a group box or panel), in layout order: the order in
// which its layout (and the layouts of the panels inside it) place them; creation order when
// the group has no layout.
QList<QRadioButton*> RadioItems(QWidget* group);

// The `widget` event of `w`: its name, `enabled`, `visible` and whatever applies to its kind.
QJsonObject WidgetState(QWidget* w);

}  // namespace runner

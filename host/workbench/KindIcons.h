// The browser's and the New menu's icon for each kind of object. The glyphs are drawn with
// QPainter at whatever size and pixel ratio the icon is asked for, so they stay sharp on a
// scaled screen and need neither image files nor an SVG module.
#pragma once

#include <QIcon>
#include <QString>

namespace wb {

// The icon of a kind by its key ("Tables", "Users", ...); a null icon for an unknown key.
// Icons are made once and shared.
QIcon KindIcon(const QString& kindKey);
// The icon of a schema node.
QIcon SchemaIcon();

}  // namespace wb

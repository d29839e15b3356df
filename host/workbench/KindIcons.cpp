#include "host/workbench/KindIcons.h"

#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace wb {

namespace {

// Each glyph is drawn on a 16 x 16 grid; the engine scales it to the size asked for.
using TGlyph = void (*)(QPainter&);

class TGlyphEngine : public QIconEngine {
 public:
  explicit TGlyphEngine(TGlyph glyph) : FGlyph(glyph) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.topLeft());
    painter->scale(rect.width() / 16.0, rect.height() / 16.0);
    if (mode == QIcon::Disabled) painter->setOpacity(0.45);
    FGlyph(*painter);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new TGlyphEngine(FGlyph); }
  QString key() const override { return QStringLiteral("NewObjDlgGlyph"); }

 private:
  TGlyph FGlyph;
};

QPen Pen(const QColor& color, qreal width = 1.2) {
  QPen pen(color, width);
  pen.setJoinStyle(Qt::RoundJoin);
  pen.setCapStyle(Qt::RoundCap);
  return pen;
}

const QColor kWhite(255, 255, 255);

// A grid with a coloured header band: the table and, in another colour, the view.
void Grid(QPainter& p, const QColor& color) {
  p.setPen(Pen(color));
  p.setBrush(kWhite);
  p.drawRoundedRect(QRectF(1.5, 2.5, 13, 11), 1, 1);
  p.setPen(Qt::NoPen);
  p.setBrush(color);
  p.drawRect(QRectF(1.5, 2.5, 13, 3));
  p.setPen(Pen(color, 0.9));
  p.drawLine(QPointF(1.5, 9.2), QPointF(14.5, 9.2));
  p.drawLine(QPointF(6, 5.5), QPointF(6, 13.5));
  p.drawLine(QPointF(10, 5.5), QPointF(10, 13.5));
}

void Person(QPainter& p, const QColor& color, QPointF at, qreal size) {
  p.setPen(Pen(color.darker(130), 0.9));
  p.setBrush(color);
  p.drawEllipse(QPointF(at.x(), at.y() - size * 0.45), size * 0.28, size * 0.28);
  QPainterPath body;
  body.moveTo(at.x() - size * 0.5, at.y() + size * 0.5);
  body.cubicTo(at.x() - size * 0.5, at.y() - size * 0.1, at.x() + size * 0.5, at.y() - size * 0.1,
               at.x() + size * 0.5, at.y() + size * 0.5);
  body.closeSubpath();
  p.drawPath(body);
}

// A circular arrow turning clockwise (redo) or counter-clockwise (undo).
void TurningArrow(QPainter& p, const QColor& color, bool clockwise) {
  p.setPen(Pen(color, 1.8));
  p.setBrush(Qt::NoBrush);
  const QRectF circle(3, 3, 10, 10);
  p.drawArc(circle, clockwise ? 100 * 16 : 80 * 16, clockwise ? 280 * 16 : -280 * 16);
  p.setPen(Qt::NoPen);
  p.setBrush(color);
  QPolygonF head;
  if (clockwise)
    head << QPointF(6.5, 0.8) << QPointF(10.6, 3.1) << QPointF(6.5, 5.6);
  else
    head << QPointF(9.5, 0.8) << QPointF(5.4, 3.1) << QPointF(9.5, 5.6);
  p.drawPolygon(head);
}

void Tables(QPainter& p) {
  Grid(p, QColor(40, 96, 176));
}

void Views(QPainter& p) {
  Grid(p, QColor(46, 140, 80));
  p.setPen(Pen(QColor(30, 30, 30), 1.1));
  p.setBrush(QColor(255, 255, 255, 220));
  p.drawEllipse(QPointF(10.5, 10.5), 3, 3);
  p.drawLine(QPointF(12.7, 12.7), QPointF(15, 15));
}

void Indexes(QPainter& p) {
  const QColor color(120, 70, 160);
  p.setPen(Qt::NoPen);
  p.setBrush(color);
  for (int i = 0; i < 4; ++i) p.drawRoundedRect(QRectF(1.5, 2 + i * 3.3, 4 + i * 2.2, 2), 0.6, 0.6);
  p.setPen(Pen(color, 1.3));
  p.drawLine(QPointF(13.5, 2), QPointF(13.5, 13.5));
  p.drawLine(QPointF(11.3, 11.3), QPointF(13.5, 13.8));
  p.drawLine(QPointF(15.7, 11.3), QPointF(13.5, 13.8));
}

void Constraints(QPainter& p) {
  const QColor color(176, 130, 20);
  p.setPen(Pen(color.darker(130), 1.6));
  p.setBrush(Qt::NoBrush);
  p.drawArc(QRectF(4.5, 1.5, 7, 8), 0, 180 * 16);
  p.drawLine(QPointF(4.5, 5.5), QPointF(4.5, 7.5));
  p.drawLine(QPointF(11.5, 5.5), QPointF(11.5, 7.5));
  p.setPen(Pen(color.darker(140), 1));
  p.setBrush(color);
  p.drawRoundedRect(QRectF(2.5, 7, 11, 7.5), 1.2, 1.2);
  p.setPen(Pen(kWhite, 1.4));
  p.drawLine(QPointF(8, 9.6), QPointF(8, 11.8));
}

void Triggers(QPainter& p) {
  p.setPen(Pen(QColor(180, 90, 0), 0.9));
  p.setBrush(QColor(250, 170, 20));
  QPolygonF bolt;
  bolt << QPointF(9.5, 0.8) << QPointF(3, 9) << QPointF(7.5, 9) << QPointF(5.5, 15.2)
       << QPointF(13, 6.5) << QPointF(8.5, 6.5) << QPointF(11, 0.8);
  p.drawPolygon(bolt);
}

void Sequences(QPainter& p) {
  const QColor color(0, 128, 128);
  p.setPen(Pen(color.darker(130), 0.8));
  p.setBrush(color);
  p.drawRect(QRectF(1.5, 10, 3.5, 4.5));
  p.drawRect(QRectF(6.2, 6.5, 3.5, 8));
  p.drawRect(QRectF(11, 2, 3.5, 12.5));
}

void Synonyms(QPainter& p) {
  p.setPen(Pen(QColor(110, 110, 110), 1.1));
  p.setBrush(kWhite);
  p.drawRoundedRect(QRectF(6, 1.5, 8.5, 8), 1, 1);
  const QColor color(60, 130, 200);
  p.setPen(Pen(color.darker(130), 1.1));
  p.setBrush(color.lighter(150));
  p.drawRoundedRect(QRectF(1.5, 6.5, 8.5, 8), 1, 1);
  p.setPen(Pen(color.darker(150), 1.3));
  p.drawLine(QPointF(3.8, 12), QPointF(7.8, 8.8));
  p.drawLine(QPointF(5.2, 8.8), QPointF(7.8, 8.8));
  p.drawLine(QPointF(7.8, 8.8), QPointF(7.8, 11.4));
}

void DBLinks(QPainter& p) {
  const QColor color(20, 120, 150);
  p.setPen(Pen(color, 1.1));
  p.setBrush(QColor(200, 235, 245));
  p.drawEllipse(QPointF(8, 8), 6.5, 6.5);
  p.setBrush(Qt::NoBrush);
  p.drawEllipse(QPointF(8, 8), 2.8, 6.5);
  p.drawLine(QPointF(1.5, 8), QPointF(14.5, 8));
  p.drawLine(QPointF(2.6, 4.6), QPointF(13.4, 4.6));
  p.drawLine(QPointF(2.6, 11.4), QPointF(13.4, 11.4));
}

void ObjectTypes(QPainter& p) {
  const QColor color(200, 110, 40);
  p.setPen(Pen(color.darker(150), 0.9));
  QPolygonF top, left, right;
  top << QPointF(8, 1.5) << QPointF(14, 4.5) << QPointF(8, 7.5) << QPointF(2, 4.5);
  left << QPointF(2, 4.5) << QPointF(8, 7.5) << QPointF(8, 14.8) << QPointF(2, 11.8);
  right << QPointF(14, 4.5) << QPointF(8, 7.5) << QPointF(8, 14.8) << QPointF(14, 11.8);
  p.setBrush(color.lighter(140));
  p.drawPolygon(top);
  p.setBrush(color);
  p.drawPolygon(left);
  p.setBrush(color.darker(120));
  p.drawPolygon(right);
}

void CollectionTypes(QPainter& p) {
  const QColor color(150, 60, 130);
  p.setPen(Pen(color, 1.3));
  p.setBrush(Qt::NoBrush);
  p.drawPolyline(QPolygonF() << QPointF(3.5, 2.5) << QPointF(1.5, 2.5) << QPointF(1.5, 13.5)
                             << QPointF(3.5, 13.5));
  p.drawPolyline(QPolygonF() << QPointF(12.5, 2.5) << QPointF(14.5, 2.5) << QPointF(14.5, 13.5)
                             << QPointF(12.5, 13.5));
  p.setPen(Qt::NoPen);
  p.setBrush(color);
  for (int i = 0; i < 3; ++i) p.drawRect(QRectF(4.5, 3.3 + i * 3.4, 7, 2.4));
}

void Users(QPainter& p) {
  Person(p, QColor(60, 110, 190), QPointF(8, 8), 12);
}

void Roles(QPainter& p) {
  Person(p, QColor(150, 170, 150), QPointF(10.8, 7.5), 9);
  Person(p, QColor(50, 140, 70), QPointF(6, 9.2), 10.5);
}

void Profiles(QPainter& p) {
  const QColor color(140, 100, 60);
  p.setPen(Pen(color, 1.1));
  p.setBrush(QColor(250, 240, 220));
  p.drawRoundedRect(QRectF(0.8, 3, 14.4, 10.5), 1.3, 1.3);
  Person(p, color, QPointF(4.8, 8.8), 5.5);
  p.setPen(Pen(color, 1.1));
  p.drawLine(QPointF(9, 6.5), QPointF(13.2, 6.5));
  p.drawLine(QPointF(9, 9), QPointF(13.2, 9));
  p.drawLine(QPointF(9, 11.5), QPointF(12, 11.5));
}

void Tablespaces(QPainter& p) {
  const QColor color(90, 110, 140);
  p.setPen(Pen(color.darker(130), 1));
  p.setBrush(color.lighter(150));
  QPainterPath body;
  body.moveTo(2, 3.5);
  body.lineTo(2, 12.5);
  body.arcTo(QRectF(2, 10.5, 12, 4), 180, 180);
  body.lineTo(14, 3.5);
  p.drawPath(body);
  p.setBrush(color.lighter(170));
  p.drawEllipse(QRectF(2, 1.5, 12, 4));
  p.setBrush(Qt::NoBrush);
  p.drawArc(QRectF(2, 6, 12, 4), 180 * 16, 180 * 16);
}

void DataFiles(QPainter& p) {
  const QColor color(100, 100, 100);
  p.setPen(Pen(color, 1));
  p.setBrush(kWhite);
  QPolygonF page;
  page << QPointF(3, 1) << QPointF(10, 1) << QPointF(13.5, 4.5) << QPointF(13.5, 15)
       << QPointF(3, 15);
  p.drawPolygon(page);
  p.drawPolyline(QPolygonF() << QPointF(10, 1) << QPointF(10, 4.5) << QPointF(13.5, 4.5));
  p.setPen(Pen(QColor(90, 110, 140), 1));
  for (qreal y : {7.0, 9.5, 12.0}) p.drawLine(QPointF(5, y), QPointF(11.5, y));
}

void RedoLogGroups(QPainter& p) {
  TurningArrow(p, QColor(190, 40, 40), true);
}

void RollbackSegments(QPainter& p) {
  TurningArrow(p, QColor(200, 120, 0), false);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(200, 120, 0));
  p.drawEllipse(QPointF(8, 8), 1.5, 1.5);
}

void Jobs(QPainter& p) {
  const QColor color(40, 110, 60);
  p.setPen(Pen(color, 1.3));
  p.setBrush(QColor(235, 248, 235));
  p.drawEllipse(QPointF(8, 8), 6.6, 6.6);
  p.setPen(Pen(color.darker(130), 1.4));
  p.drawLine(QPointF(8, 8), QPointF(8, 3.8));
  p.drawLine(QPointF(8, 8), QPointF(11, 9.8));
}

void Schema(QPainter& p) {
  const QColor color(220, 170, 50);
  p.setPen(Pen(color.darker(140), 0.9));
  p.setBrush(color);
  QPolygonF folder;
  folder << QPointF(1, 3) << QPointF(6, 3) << QPointF(7.5, 4.8) << QPointF(15, 4.8)
         << QPointF(15, 13.5) << QPointF(1, 13.5);
  p.drawPolygon(folder);
  Person(p, QColor(60, 110, 190), QPointF(8, 9.8), 6.5);
}

struct TKindGlyph {
  const char* Key;
  TGlyph Glyph;
};

const TKindGlyph kGlyphs[] = {
    {"Tables", Tables},
    {"Views", Views},
    {"Indexes", Indexes},
    {"Constraints", Constraints},
    {"Triggers", Triggers},
    {"Sequences", Sequences},
    {"Synonyms", Synonyms},
    {"DBLinks", DBLinks},
    {"ObjectTypes", ObjectTypes},
    {"CollectionTypes", CollectionTypes},
    {"Users", Users},
    {"Roles", Roles},
    {"Profiles", Profiles},
    {"Tablespaces", Tablespaces},
    {"DataFiles", DataFiles},
    {"RedoLogGroups", RedoLogGroups},
    {"RollbackSegments", RollbackSegments},
    {"Jobs", Jobs},
};

}  // namespace

QIcon KindIcon(const QString& kindKey) {
  static QHash<QString, QIcon> cache;
  auto it = cache.constFind(kindKey);
  if (it != cache.constEnd()) return *it;
  for (const TKindGlyph& g : kGlyphs)
    if (kindKey == QLatin1String(g.Key))
      return *cache.insert(kindKey, QIcon(new TGlyphEngine(g.Glyph)));
  return QIcon();
}

QIcon SchemaIcon() {
  static const QIcon icon(new TGlyphEngine(Schema));
  return icon;
}

}  // namespace wb

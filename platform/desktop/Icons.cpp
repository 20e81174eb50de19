// SPDX-License-Identifier: MIT
#include "platform/desktop/Icons.h"

#include "platform/desktop/ThemeColours.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QIconEngine>
#include <QLibraryInfo>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <QVersionNumber>

#include <algorithm>

// Q_INIT_RESOURCE must be used outside any namespace.
static void NeedIconResources() {
  Q_INIT_RESOURCE(desktop);
}

namespace desktop {
namespace {

using namespace Qt::StringLiterals;

constexpr int kAccentFrom = 24;  // minimum size in logical pixels for the accent colour

QString FileOf(const QString& name) {
  NeedIconResources();
  return u":/spotrooster/icons/"_s + name + u".svg"_s;
}

// The SVG with its lines in `colour` and the elements marked as accent in `accent`.
QByteArray Tinted(const QString& name, const QColor& colour, const QColor& accent) {
  QFile file(FileOf(name));
  if (!file.open(QIODevice::ReadOnly)) return {};
  QByteArray drawing = file.readAll();
  for (const QByteArray attribute : {"stroke", "fill"}) {
    const QByteArray own = attribute + QByteArrayLiteral("=\"currentColor\"");
    const QByteArray marked = QByteArrayLiteral("class=\"accent\" ") + own;
    drawing.replace(marked, QByteArray(attribute + "=\"" + accent.name().toLatin1() + "\""));
    drawing.replace(own, QByteArray(attribute + "=\"" + colour.name().toLatin1() + "\""));
  }
  return drawing;
}

QPixmap Rendered(const QByteArray& drawing, const QSize& size) {
  QPixmap pixmap(size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  QSvgRenderer(drawing).render(&painter, QRectF(QPointF(), QSizeF(size)));
  return pixmap;
}

QColor TintColour(IconTint tint, QIcon::Mode mode) {
  const QPalette palette = QApplication::palette();
  const ThemeColours& colours = ThemeColoursFor(palette);
  if (mode == QIcon::Disabled) return palette.color(QPalette::Disabled, QPalette::ButtonText);
  if (mode == QIcon::Selected || tint == IconTint::OnHighlight) return palette.color(QPalette::HighlightedText);
  switch (tint) {
    case IconTint::Accent:
      return colours.accent;
    case IconTint::Danger:
      return colours.danger;
    case IconTint::Warning:
      return colours.ends;
    case IconTint::Quiet:
      return colours.hint;
    case IconTint::OnHighlight:
    case IconTint::Text:
      break;
  }
  return palette.color(QPalette::ButtonText);
}

// Reads its colours each time it paints, so that icons follow a palette change.
class TintedEngine : public QIconEngine {
 public:
  TintedEngine(QString name, IconTint tint) : name_(std::move(name)), tint_(tint) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const qreal scale = painter->device()->devicePixelRatio();
    painter->drawPixmap(rect, Pixmap(rect.size() * scale, mode, scale));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override { return Pixmap(size, mode, 1.0); }

  // From Qt 6.8 on the size is in logical pixels, before that in device pixels.
  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal scale) override {
    static const bool isLogical = QLibraryInfo::version() >= QVersionNumber(6, 8);
    return Pixmap(isLogical ? size * scale : size, mode, scale);
  }

  QIconEngine* clone() const override { return new TintedEngine(*this); }
  QString key() const override { return u"spotrooster"_s; }
  QString iconName() override { return name_; }
  bool isNull() override { return false; }

 private:
  // `size` in device pixels.
  QPixmap Pixmap(const QSize& size, QIcon::Mode mode, qreal scale) const {
    const QColor colour = TintColour(tint_, mode);
    const bool mayAccent = tint_ == IconTint::Text && mode == QIcon::Normal;
    const bool large = std::min(size.width(), size.height()) >= kAccentFrom * scale;
    const QColor accent = mayAccent && large ? ThemeColoursFor(QApplication::palette()).accent : colour;
    const QString key =
        u"spotrooster:%1:%2:%3:%4:%5"_s.arg(name_, colour.name(), accent.name()).arg(size.width()).arg(size.height());
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) return pixmap;
    pixmap = Rendered(Tinted(name_, colour, accent), size);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
  }

  QString name_;
  IconTint tint_;
};

}  // namespace

QIcon Icon(const QString& name, IconTint tint) {
  return QFile::exists(FileOf(name)) ? QIcon(new TintedEngine(name, tint)) : QIcon();
}

QIcon AppIcon() {
  const QByteArray drawing = Tinted(u"spotrooster"_s, QColor(), QColor());
  QIcon icon;
  for (const int side : {16, 24, 32, 48, 64, 128, 256})
    icon.addPixmap(Rendered(drawing, QSize(side, side)));
  return icon;
}

QStringList IconNames() {
  NeedIconResources();
  QStringList names = QDir(u":/spotrooster/icons"_s).entryList({u"*.svg"_s}, QDir::Files, QDir::Name);
  for (QString& name : names)
    name.chop(4);
  names.removeAll(u"spotrooster"_s);
  return names;
}

void PaintIcon(QPainter& painter, const QRect& rect, const QString& name, const QColor& colour) {
  const int side = std::min(rect.width(), rect.height());
  QRectF square(0, 0, side, side);
  square.moveCenter(QRectF(rect).center());
  QSvgRenderer(Tinted(name, colour, colour)).render(&painter, square);
}

}  // namespace desktop

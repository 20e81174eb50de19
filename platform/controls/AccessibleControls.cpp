// SPDX-License-Identifier: MIT
#include "platform/controls/AccessibleControls.h"

#include "platform/controls/AccessibleText.h"
#include "platform/controls/ClipStrip.h"
#include "platform/controls/LedClockGround.h"
#include "platform/controls/LedSpin.h"
#include "platform/controls/LevelBallistics.h"
#include "platform/controls/LevelMeter.h"
#include "platform/controls/LevelScale.h"
#include "platform/controls/StateMark.h"
#include "platform/controls/WaveformPainter.h"
#include "platform/controls/WaveformStrip.h"

#include <QAccessibleWidget>

#include <cmath>

namespace controls {
namespace {

using namespace Qt::StringLiterals;

// A control that shows its state as text; Shown is the class of the control.
template <class Shown>
class TextFace : public QAccessibleWidget, public AccessibleText {
 public:
  TextFace(QWidget* widget, QAccessible::Role role) : QAccessibleWidget(widget, role) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QString text(QAccessible::Text what) const override {
    return what == QAccessible::Value ? ShownText() : QAccessibleWidget::text(what);
  }

  using AccessibleText::text;

 protected:
  Shown& Control() const { return *static_cast<Shown*>(widget()); }
};

// Also a number within limits, that assistive programs may change.
template <class Shown>
class ValueFace : public TextFace<Shown>, public QAccessibleValueInterface {
 public:
  using TextFace<Shown>::TextFace;

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return TextFace<Shown>::interface_cast(type);
  }
};

class LedPanelFace : public TextFace<LedPanel> {
 public:
  explicit LedPanelFace(QWidget* widget) : TextFace(widget, QAccessible::StaticText) {}
  // One that takes the focus asks for a number when pressed.
  QAccessible::Role role() const override {
    return (Control().focusPolicy() & Qt::TabFocus) != 0 ? QAccessible::Button : QAccessible::StaticText;
  }
  QStringList actionNames() const override {
    return role() == QAccessible::Button ? QStringList{pressAction(), setFocusAction()} : QStringList();
  }
  void doAction(const QString& action) override {
    if (action == pressAction()) Q_EMIT Control().clicked();
    TextFace::doAction(action);
  }
  QString ShownText() const override { return QString::number(Control().Value()); }
};

class LedClockFace : public TextFace<LedClockGround> {
 public:
  explicit LedClockFace(QWidget* widget) : TextFace(widget, QAccessible::StaticText) {}
  QString ShownText() const override { return Control().Shown(); }
};

class LedSpinFace : public ValueFace<LedSpin> {
 public:
  explicit LedSpinFace(QWidget* widget) : ValueFace(widget, QAccessible::SpinBox) {}
  QString ShownText() const override { return QString::number(Control().Value()); }
  QVariant currentValue() const override { return Control().Value(); }
  void setCurrentValue(const QVariant& value) override { Control().SetValue(value.toInt()); }
  QVariant minimumValue() const override { return Control().Minimum(); }
  QVariant maximumValue() const override { return Control().Maximum(); }
  QVariant minimumStepSize() const override { return Control().SingleStep(); }
};

class LevelMeterFace : public ValueFace<LevelMeter> {
 public:
  explicit LevelMeterFace(QWidget* widget) : ValueFace(widget, QAccessible::ProgressBar) {}
  QString ShownText() const override {
    const double level = Control().Level();
    return level <= LevelBallistics::kFloor ? u"stil"_s : u"%1 dB"_s.arg(std::lround(level));
  }
  QVariant currentValue() const override { return Control().Level(); }
  void setCurrentValue(const QVariant&) override {}  // shows, is not set
  QVariant minimumValue() const override { return LevelBallistics::kFloor; }
  QVariant maximumValue() const override { return 0.0; }
  QVariant minimumStepSize() const override { return 0.0; }
};

class LevelScaleFace : public TextFace<LevelScale> {
 public:
  explicit LevelScaleFace(QWidget* widget) : TextFace(widget, QAccessible::StaticText) {}
  QString ShownText() const override { return Control().accessibleDescription(); }
};

class StateMarkFace : public TextFace<StateMark> {
 public:
  explicit StateMarkFace(QWidget* widget) : TextFace(widget, QAccessible::StaticText) {}
  QString ShownText() const override { return Control().accessibleName(); }
};

// Its value is what the arrow keys change: the mix point, in milliseconds before the end.
class WaveformFace : public ValueFace<WaveformStrip> {
 public:
  explicit WaveformFace(QWidget* widget) : ValueFace(widget, QAccessible::Slider) {}
  QString ShownText() const override {
    const WaveformStrip& strip = Control();
    if (strip.LengthMs() == 0) return strip.accessibleDescription();
    return u"mixpunt %1 vóór het einde, positie %2 van %3"_s.arg(
        TimeText(strip.MixMs(), true), TimeText(strip.PositionMs(), true), TimeText(strip.LengthMs(), true));
  }
  QVariant currentValue() const override { return double(Control().MixMs()); }
  void setCurrentValue(const QVariant& value) override { Control().MoveMix(value.toLongLong()); }
  QVariant minimumValue() const override { return 0.0; }
  QVariant maximumValue() const override { return double(Control().LengthMs()); }
  QVariant minimumStepSize() const override { return WaveformStrip::kMixStepMs; }
};

// Its value is the position, in milliseconds.
class ClipStripFace : public ValueFace<ClipStrip> {
 public:
  explicit ClipStripFace(QWidget* widget) : ValueFace(widget, QAccessible::Slider) {}
  QString ShownText() const override {
    const ClipStrip& strip = Control();
    if (strip.LengthMs() == 0) return strip.EmptyText();
    return u"positie %1 van %2"_s.arg(TimeText(strip.PositionMs(), true), TimeText(strip.LengthMs(), true));
  }
  QVariant currentValue() const override { return double(Control().PositionMs()); }
  void setCurrentValue(const QVariant& value) override { Q_EMIT Control().seekRequested(value.toLongLong()); }
  QVariant minimumValue() const override { return 0.0; }
  QVariant maximumValue() const override { return double(Control().LengthMs()); }
  QVariant minimumStepSize() const override { return ClipStrip::kStepMs; }
};

template <class Shown, class Face>
QAccessibleInterface* FaceIf(QObject* object) {
  auto* control = qobject_cast<Shown*>(object);
  return control == nullptr ? nullptr : new Face(control);
}

// Qt calls this with each class of the object, from the last one to QObject.
QAccessibleInterface* MakeFace(const QString& className, QObject* object) {
  if (className == "controls::LedSpin"_L1) return FaceIf<LedSpin, LedSpinFace>(object);
  if (className == "controls::LedPanel"_L1) return FaceIf<LedPanel, LedPanelFace>(object);
  if (className == "controls::LedClockGround"_L1) return FaceIf<LedClockGround, LedClockFace>(object);
  if (className == "controls::LevelMeter"_L1) return FaceIf<LevelMeter, LevelMeterFace>(object);
  if (className == "controls::LevelScale"_L1) return FaceIf<LevelScale, LevelScaleFace>(object);
  if (className == "controls::StateMark"_L1) return FaceIf<StateMark, StateMarkFace>(object);
  if (className == "controls::WaveformStrip"_L1) return FaceIf<WaveformStrip, WaveformFace>(object);
  if (className == "controls::ClipStrip"_L1) return FaceIf<ClipStrip, ClipStripFace>(object);
  return nullptr;
}

}  // namespace

void RegisterAccessibleControls() {
  static const bool isRegistered = [] {
    QAccessible::installFactory(MakeFace);
    return true;
  }();
  static_cast<void>(isRegistered);
}

}  // namespace controls

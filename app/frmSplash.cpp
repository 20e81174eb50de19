// SPDX-License-Identifier: MIT
#include "app/frmSplash.h"

#include "app/Version.h"
#include "app/ui_frmSplash.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/Palettes.h"
#include "platform/desktop/ScaledFont.h"
#include "platform/desktop/ThemeColours.h"
#include "platform/desktop/Windows.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <numbers>

namespace {

constexpr QSize kSize(520, 312);
constexpr int kBandHeight = 48;  // at the bottom, with version and step
constexpr int kLogoSide = 50;
constexpr double kRadius = 6;
constexpr QRgb kPage = 0xff0e1215;
constexpr QRgb kAhead = 0xff24434b;

// The waveform: thin bars; played, outtro and remaining parts in different colours.
constexpr int kWaveMiddle = 196;
constexpr double kBarStep = 4.33;
constexpr double kBarWidth = 2.2;
constexpr double kOuttroFrom = 0.70;  // of the width
constexpr double kOuttroTo = 0.825;

// Half the height of a bar: two slow waves with a finer ripple, always the same.
double BarReach(int bar) {
  const double swell = 0.5 + 0.5 * std::sin(bar * 2 * std::numbers::pi / 40 - 0.6);
  const double ripple = 0.5 + 0.5 * std::sin(bar * 2.1) * std::cos(bar * 0.7);
  return 14 + 20 * swell + 9 * ripple;
}

QColor BarColour(double share) {
  if (share < kOuttroFrom) return desktop::instrument::kPeak;
  return share < kOuttroTo ? QColor(desktop::instrument::kLit) : QColor(kAhead);
}

void PaintWaves(QPainter& painter) {
  painter.setPen(Qt::NoPen);
  const int bars = static_cast<int>(kSize.width() / kBarStep) + 1;
  for (int bar = 0; bar < bars; ++bar) {
    const double x = bar * kBarStep;
    const double reach = BarReach(bar);
    painter.setBrush(BarColour(x / kSize.width()));
    painter.drawRoundedRect(QRectF(x, kWaveMiddle - reach, kBarWidth, 2 * reach), kBarWidth / 2, kBarWidth / 2);
  }
}

}  // namespace

frmSplash::frmSplash()
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint), ui_(std::make_unique<Ui::frmSplash>()) {
  ui_->setupUi(this);
  setAttribute(Qt::WA_TranslucentBackground);
  setFocusPolicy(Qt::StrongFocus);
  setFixedSize(kSize);
  InitTexts();
}

frmSplash::~frmSplash() = default;

void frmSplash::InitTexts() {
  setPalette(desktop::DarkPalette());
  ui_->imgIcon->setPixmap(desktop::AppIcon().pixmap(QSize(kLogoSide, kLogoSide), devicePixelRatioF()));
  ui_->lblNaam->setFont(desktop::ScaledFont(font(), 2.3, QFont::DemiBold));
  ui_->lblNaam->setForegroundRole(QPalette::BrightText);
  ui_->lblOndertitel->setForegroundRole(QPalette::PlaceholderText);
  ui_->lblVersie->setText(VersionText());
  ui_->lblStap->setForegroundRole(QPalette::PlaceholderText);
  for (QLabel* label : {ui_->lblVersie, ui_->lblStap})
    label->setMinimumHeight(kBandHeight);
}

void frmSplash::ShowStep(const QString& text) {
  ui_->lblStap->setText(text);
  desktop::RepaintWindows();
}

void frmSplash::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath outline;
  outline.addRoundedRect(rect(), kRadius, kRadius);
  painter.setClipPath(outline);
  painter.fillRect(rect(), QColor(kPage));
  painter.fillRect(QRect(0, height() - kBandHeight, width(), kBandHeight), QColor(desktop::instrument::kGround));
  PaintWaves(painter);
}

void frmSplash::keyPressEvent(QKeyEvent* event) {
  event->accept();
  close();
}

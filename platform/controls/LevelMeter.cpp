// SPDX-License-Identifier: MIT
#include "platform/controls/LevelMeter.h"

#include "platform/controls/AccessibleControls.h"
#include "platform/desktop/ThemeColours.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace controls {
namespace {

constexpr int kTickMs = 34;      // fewer than 30 repaints per second
constexpr double kBlockDb = 2;   // per block
constexpr int kYellowFrom = 21;  // -18 dB
constexpr int kRedFrom = 27;     // -6 dB
constexpr double kUnlit = 0.15;  // brightness of a dark block

QColor ColourOf(int block) {
  if (block >= kRedFrom) return QColor(desktop::instrument::kRed);
  if (block >= kYellowFrom) return QColor(desktop::instrument::kLit);
  return QColor(desktop::instrument::kGreen);
}

QColor Unlit(const QColor& colour) {
  const QColor ground(desktop::instrument::kGround);
  const auto mix = [](int dark, int light) { return static_cast<int>(dark + (light - dark) * kUnlit); };
  return {mix(ground.red(), colour.red()), mix(ground.green(), colour.green()), mix(ground.blue(), colour.blue())};
}

}  // namespace

LevelMeter::LevelMeter(QWidget* parent) : QWidget(parent) {
  RegisterAccessibleControls();
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  timer_.setInterval(kTickMs);
  connect(&timer_, &QTimer::timeout, this, [this] { Advance(static_cast<double>(clock_.restart()) / 1000); });
}

void LevelMeter::SetLevel(double decibels) {
  loudest_ = std::max(loudest_, decibels);
  if (timer_.isActive() || loudest_ <= LevelBallistics::kFloor) return;
  clock_.start();
  timer_.start();
}

void LevelMeter::Reset() {
  timer_.stop();
  loudest_ = LevelBallistics::kFloor;
  ballistics_.Reset();
  update();
}

void LevelMeter::Advance(double seconds) {
  const int litBefore = LitBlocks();
  const int peakBefore = PeakBlock();
  ballistics_.Advance(seconds, loudest_);
  loudest_ = LevelBallistics::kFloor;
  UpdateBlocks(litBefore, LitBlocks());
  if (PeakBlock() != peakBefore) {
    if (peakBefore >= 0) update(BlockRect(peakBefore));
    if (PeakBlock() >= 0) update(BlockRect(PeakBlock()));
  }
  if (ballistics_.AtRest()) timer_.stop();
}

int LevelMeter::LitBlocks() const {
  const double blocks = (ballistics_.Level() - LevelBallistics::kFloor) / kBlockDb;
  return std::clamp(static_cast<int>(std::ceil(blocks - 1e-6)), 0, kBlocks);
}

int LevelMeter::PeakBlock() const {
  const double blocks = (ballistics_.Peak() - LevelBallistics::kFloor) / kBlockDb;
  return std::clamp(static_cast<int>(std::ceil(blocks - 1e-6)), 0, kBlocks) - 1;
}

QRect LevelMeter::BlockRect(int block) const {
  const int from = block * width() / kBlocks;
  const int to = (block + 1) * width() / kBlocks;
  return {from, 0, std::max(1, to - from - 1), height()};
}

void LevelMeter::UpdateBlocks(int from, int to) {
  if (from == to) return;
  const int first = std::min(from, to);
  const int last = std::max(from, to) - 1;
  update(BlockRect(first).united(BlockRect(last)));
}

QSize LevelMeter::sizeHint() const {
  return {kBlocks * 5, 19};
}

QSize LevelMeter::minimumSizeHint() const {
  return {kBlocks * 3, 8};
}

void LevelMeter::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const int lit = LitBlocks();
  const int peak = PeakBlock();
  for (int block = 0; block < kBlocks; ++block) {
    const QRect rect = BlockRect(block);
    if (!event->rect().intersects(rect)) continue;
    const QColor colour = ColourOf(block);
    painter.fillRect(rect, block < lit || block == peak ? colour : Unlit(colour));
  }
}

}  // namespace controls

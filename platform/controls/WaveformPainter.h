// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QString>

class QFont;
class QPainter;

namespace controls {

class WaveformPeaks;

// The data for painting a waveform strip. Times in milliseconds, positions in logical pixels.
struct WaveformView {
  const WaveformPeaks* peaks = nullptr;
  QRect wave;           // area of the peaks; the ruler is below it
  qint64 firstMs = 0;   // at the left end
  qint64 lastMs = 0;    // at the right end
  qint64 lengthMs = 0;  // of the file
  qint64 positionMs = 0;
  qint64 mixMs = 0;
  double hoverX = -1;  // of the mouse; -1: outside

  double XOf(qint64 ms) const;
  qint64 MsAt(double x) const;
  qint64 MixStart() const { return lengthMs - mixMs; }
  bool Shows(qint64 ms) const { return ms >= firstMs && ms <= lastMs; }
};

inline constexpr int kRulerHeight = 18;

void PaintWave(QPainter& painter, const WaveformView& view, const QRect& dirty);
void PaintRuler(QPainter& painter, const WaveformView& view);
void PaintMixLine(QPainter& painter, const WaveformView& view, const QRect& flag);
void PaintPlayHead(QPainter& painter, const WaveformView& view);
void PaintHover(QPainter& painter, const WaveformView& view);

// "1:02:03" or "0:07"; with milliseconds "0:07,250".
QString TimeText(qint64 ms, bool withMs);

}  // namespace controls

// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/WaveformPeaks.h"

#include <QWidget>

#include <vector>

namespace controls {

// Several sounds on one time line, each with name and waveform, alternately in two rows, so that overlapping sounds are
// above each other. Requests a seek on a click, Left and Right (1 s), Page Up and Page Down (10 s), Home and End; Space
// requests play or stop. All times are in milliseconds. Does not play sound itself.
class ClipStrip : public QWidget {
  Q_OBJECT

 public:
  struct Clip {
    QString name;
    qint64 startMs = 0;
    qint64 lengthMs = 0;
    qint64 mixMs = 0;  // length of its end that overlaps the next one
  };

  explicit ClipStrip(QWidget* parent = nullptr);

  static constexpr int kStepMs = 1000;  // of the arrow keys

  // Replaces the clips, without waveforms, and sets the position to 0.
  void SetClips(std::vector<Clip> clips);
  // The waveform of a clip is added in parts, from its beginning. `expected` peaks cover its length.
  void BeginPeaks(std::size_t clip, int expected);
  void AppendPeaks(std::size_t clip, const std::vector<Peak>& peaks);
  std::size_t ClipCount() const { return clips_.size(); }
  int PeakCount(std::size_t clip) const { return peaks_[clip].Count(); }

  qint64 LengthMs() const;
  qint64 PositionMs() const { return positionMs_; }
  void SetPositionMs(qint64 position);

  // Shown while there are no clips.
  QString EmptyText() const { return emptyText_; }
  void SetEmptyText(const QString& text);

  QRect ClipRect(std::size_t clip) const;
  double XOf(qint64 ms) const;
  qint64 MsAt(double x) const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void seekRequested(qint64 positionMs);
  void playStopRequested();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QRect WaveRect() const;
  QFont NameFont() const;
  int NameHeight() const;
  void PaintClip(QPainter& painter, std::size_t clip, const QRect& dirty) const;
  void PaintOverlaps(QPainter& painter) const;
  void RequestSeek(qint64 position);
  void UpdateAccessible();

  std::vector<Clip> clips_;
  std::vector<WaveformPeaks> peaks_;  // one per clip
  qint64 positionMs_ = 0;
  double hoverX_ = -1;
  QString emptyText_;
};

}  // namespace controls

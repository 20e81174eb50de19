// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/WaveformPeaks.h"

#include <QWidget>

#include <vector>

namespace controls {

// Several sounds on one time line: each with its name and its picture, in two rows by turns, so that what sounds
// together lies one above the other. A click asks to go there, Left and Right a second, Page Up and Page Down ten, Home
// and End to the ends; Space plays or stops. All times are in milliseconds; it plays nothing itself.
class ClipStrip : public QWidget {
  Q_OBJECT

 public:
  struct Clip {
    QString name;
    qint64 startMs = 0;
    qint64 lengthMs = 0;
    qint64 mixMs = 0;  // the end of it, over which the next one lies
  };

  explicit ClipStrip(QWidget* parent = nullptr);

  // Other clips, without pictures yet; the position is 0 then.
  void SetClips(std::vector<Clip> clips);
  // Pictures come in pieces, from the beginning of a clip on. `expected` of them cover its length.
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
  void AskFor(qint64 position);
  void UpdateAccessible();

  std::vector<Clip> clips_;
  std::vector<WaveformPeaks> peaks_;  // of each clip
  qint64 positionMs_ = 0;
  double hoverX_ = -1;
  QString emptyText_;
};

}  // namespace controls

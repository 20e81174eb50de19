// SPDX-License-Identifier: MIT
// The blocks as Debian's Liquidsoap plays them: every sound must be recorded where the rule puts it.
#include "data/Statements.h"
#include "data/stations/DemoCatalogue.h"
#include "export/playout/FileNameExample.h"
#include "platform/audio/Decoder.h"
#include "platform/audio/StereoStream.h"
#include "tests/tools/StationProgram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>
#include <sndfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <random>
#include <set>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

const QString kLiquidsoap = u"/usr/bin/liquidsoap"_s;
constexpr int kRate = 44100;  // of Liquidsoap's output
constexpr int kNobody = 65534;

using Sound = std::vector<float>;  // one channel at kRate

// Noise correlates with itself at one place only, so its position can be measured to the sample.
void WriteNoise(const QString& path, double seconds, int rate, unsigned seed) {
  ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
  SF_INFO info{};
  info.samplerate = rate;
  info.channels = 1;
  info.format = path.endsWith(u".mp3"_s) ? SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III : SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  SNDFILE* file = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
  ASSERT_NE(file, nullptr) << sf_strerror(nullptr);
  std::mt19937 random(seed);
  Sound noise(static_cast<std::size_t>(seconds * rate));
  float before = 0;
  for (float& sample : noise) {  // less of the highest frequencies, which MP3 drops
    const float white = static_cast<float>(random() % 20001) / 10000.0F - 1.0F;
    before = 0.5F * before + 0.5F * white;
    sample = 0.5F * before;
  }
  sf_writef_float(file, noise.data(), static_cast<sf_count_t>(noise.size()));
  sf_close(file);
}

Sound Decoded(const QString& path) {
  const auto decoder = audio::OpenDecoder(path.toStdString());
  audio::StereoStream stream(*decoder, kRate);
  std::vector<std::int16_t> stereo(
      static_cast<std::size_t>(decoder->TotalFrames() * kRate / decoder->SampleRate() + 9999) * 2);
  const std::size_t frames = stream.Read(stereo.data(), stereo.size() / 2);
  Sound sound(frames);
  for (std::size_t at = 0; at < frames; ++at)
    sound[at] = static_cast<float>(stereo[2 * at]) / 32768.0F;
  return sound;
}

// A stream's header has no length: the sound continues to the end of the file.
Sound Recorded(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QByteArray bytes = file.readAll().mid(44);
  Sound sound(static_cast<std::size_t>(bytes.size() / 4));
  for (std::size_t at = 0; at < sound.size(); ++at) {
    std::int16_t left = 0;
    std::memcpy(&left, bytes.constData() + 4 * at, sizeof left);
    sound[at] = static_cast<float>(left) / 32768.0F;
  }
  return sound;
}

// Where in `heard`, near `expected`, the part of `sound` after `from` matches best: the frame at which the complete
// sound would begin. Nothing without a clear match.
std::optional<std::int64_t> Find(const Sound& sound, std::int64_t from, const Sound& heard, std::int64_t expected) {
  constexpr std::int64_t kWindow = 1500;
  constexpr std::int64_t kAround = kRate / 5;
  const auto begin = sound.begin() + from;
  float best = 0;
  std::int64_t place = 0;
  const float power = std::inner_product(begin, begin + kWindow, begin, 0.0F);
  for (std::int64_t at = expected - kAround; at <= expected + kAround; ++at) {
    if (at + from < 0 || at + from + kWindow > std::ssize(heard)) continue;
    const float sum = std::inner_product(begin, begin + kWindow, heard.begin() + at + from, 0.0F);
    if (sum > best) {
      best = sum;
      place = at;
    }
  }
  if (best < power * 0.6F) return std::nullopt;
  return place;
}

// One sound of a playlist.
struct Line {
  QString path;
  int spot = 0;  // 0: none
  double mixSeconds = 0;
};

QList<Line> LinesOf(const QString& playlist) {
  static const QRegularExpression kForm(u"^annotate:(.*liq_fade_out=\"0\\.\"):(.*)$"_s);
  const auto valueOf = [](const QString& annotations, const QString& name) {
    return annotations.section(name + u"=\""_s, 1).section(u'"', 0, 0);
  };
  QFile file(playlist);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << playlist.toStdString();
  QList<Line> lines;
  for (const QString& text : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
    const auto match = kForm.match(text);
    if (!match.hasMatch()) continue;
    lines += {match.captured(2), valueOf(match.captured(1), u"spot_id"_s).toInt(),
              valueOf(match.captured(1), u"liq_cross_duration"_s).toDouble()};
  }
  return lines;
}

// The demonstration's catalogue with noise instead of its sounds.
class DemoOfNoise {
 public:
  DemoOfNoise() {
    unsigned seed = 1;
    const QDate today = QDate::currentDate();
    moment_ = QDateTime(today, QTime(12, 0));
    for (demo::Spot spot : demo::Spots(today)) {
      spot.row.path = u"D:\\audio\\"_s + spot.file;
      if (!spot.missing) Noise(spot.file, 4 + spot.row.id % 7 * 0.31, seed++);
      Add(statements::InsertItemSpot(spot.row, u"tblItemSpots"_s));
    }
    for (demo::Jingle jingle : demo::Jingles()) {
      jingle.row.path = u"D:\\audio\\"_s + jingle.file;
      Noise(jingle.file, 2.5 + jingle.row.id * 0.17, seed++);
      Add(statements::InsertItemPingle(jingle.row, u"tblItemPingles"_s));
    }
    for (const demo::Item& item : demo::Items()) {
      Add(statements::InsertItem(item.row, u"tblItems"_s));
      qint32 order = 0;
      for (const qint32 spot : item.spots)
        Add(statements::InsertLink({item.row.id, ++order, spot}, u"tblItemsItemSpots"_s));
      if (item.row.itemSpotsOptID == 2) Noise(FileOf(item.row), 4.2, seed++);
    }
  }

  const StationProgram& Program() const { return program_; }
  QString Moment() const { return moment_.toString(u"yyyy-MM-dd HH:mm"_s); }
  QString Out() const { return program_.At(u"uit"_s); }

 private:
  void Add(const QString& statement) const { program_.Rows().OnServer(statement); }
  void Noise(QString file, double seconds, unsigned seed) const {
    WriteNoise(program_.At(u"audio/"_s + file.replace(u'\\', u'/')), seconds, seed % 3 == 0 ? 22050 : kRate, seed);
  }
  QString FileOf(const ItemRow& row) const {
    const FileNamePattern pattern{u"Blokken"_s,
                                  row.opt2VastNaamGedeelte,
                                  row.opt2VariabelNaamGedeelte,
                                  row.opt2FormatGedeelte,
                                  row.opt2Eerstedagvanweek,
                                  row.opt2FileExtensie,
                                  false};
    return FileNameExample(pattern, moment_);
  }

  StationProgram program_;
  QDateTime moment_;
};

// Lets Liquidsoap, which refuses to run as root, read the station and write to its folder.
void OpenToAll(const QString& folder) {
  QProcess::execute(u"chmod"_s, {u"-R"_s, u"a+rwX"_s, folder});
}

QByteArray RunLiquidsoap(const QProcessEnvironment& environment, const QString& script) {
  QProcess program;
  program.setProcessEnvironment(environment);
  program.setProcessChannelMode(QProcess::MergedChannels);
  if (::geteuid() == 0) {
    program.setChildProcessModifier([] {
      if (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0) ::_exit(126);
    });
  }
  program.start(kLiquidsoap, {script});
  EXPECT_TRUE(program.waitForFinished(-1));
  return program.readAll();
}

// Every sound of the playlists is in the recording, complete, in order and where the rule puts it.
void ExpectHeard(const QList<Line>& lines, const Sound& heard, const QByteArray& said) {
  std::int64_t end = 0;
  double mixBefore = 0;
  double worst = 0;
  std::int64_t last = 0;
  for (const Line& line : lines) {
    const Sound sound = Decoded(line.path);
    const std::int64_t expected = end - std::llround(mixBefore * kRate);
    const auto start = Find(sound, 2000, heard, expected);
    ASSERT_TRUE(start) << line.path.toStdString() << " is not heard near " << double(expected) / kRate << " s\n"
                       << said.toStdString();
    worst = std::max(worst, std::abs(double(*start - expected)) / kRate * 1000);
    EXPECT_LE(std::abs(double(*start - expected)) / kRate, 0.050) << line.path.toStdString();
    const auto wholeToTheEnd = Find(sound, std::ssize(sound) - 4000, heard, *start);
    ASSERT_TRUE(wholeToTheEnd) << "the end of " << line.path.toStdString();
    EXPECT_GE(*start, last) << "order";
    last = *start;
    end = *wholeToTheEnd + std::ssize(sound);
    mixBefore = line.mixSeconds;
  }
  EXPECT_LE(std::abs(double(end - std::ssize(heard))) / kRate, 0.1) << "nothing else is heard";
  testing::Test::RecordProperty("worst_ms", std::to_string(worst));
  std::cout << lines.size() << " starts, worst " << worst << " ms\n";
}

// Spots that are not active on this day.
std::set<int> ExpiredSpots() {
  std::set<int> expired;
  for (const demo::Spot& spot : demo::Spots(QDate::currentDate())) {
    const QDate lastDay = QDate(1899, 12, 30).addDays(spot.row.eindDatum.value_or(0));
    const QDate firstDay = QDate(1899, 12, 30).addDays(spot.row.startDatum.value_or(0));
    if (spot.row.aktief == 0 || lastDay < QDate::currentDate() || firstDay > QDate::currentDate())
      expired.insert(spot.row.id);
  }
  return expired;
}

// The log counts each played spot once, also when it is read twice.
void ExpectCountedOnce(const StationProgram& program, const QString& log, const QStringList& played) {
  const QString database = program.At(u"server/OvalistoServer.mdb"_s);
  program.Rows().OnServer(u"UPDATE tblItemSpots SET AantalGedraaid = 0, LaatstGedraaid = NULL"_s);
  EXPECT_EQ(RunTool({u"played"_s, database, log}).exitCode, kFailed) << "off at first";
  EXPECT_EQ(RunTool({u"played"_s, database, u"--aan"_s}).exitCode, kDone);
  const std::string all = std::to_string(played.size());
  for (const std::string& expected : {all + " nieuw, 0 al geteld\n", "0 nieuw, " + all + " al geteld\n"}) {
    EXPECT_EQ(RunTool({u"played"_s, database, log}).out, expected);
    dao::Recordset rows = program.Rows().ServerRows(u"SELECT ID, AantalGedraaid, LaatstGedraaid FROM tblItemSpots"_s);
    for (; !rows.Eof(); rows.MoveNext()) {
      const auto count = played.count(rows.Field(0).toString());
      EXPECT_EQ(rows.Field(1).toInt(), count) << rows.Field(0).toString().toStdString();
      EXPECT_EQ(rows.Field(2).toDateTime().date(), count > 0 ? QDate::currentDate() : QDate());
    }
  }
}

}  // namespace

TEST(Liquidsoap, PlaysEveryDemoBlockAsTheRuleSaysAndItsLogIsCountedOnce) {
  if (!QFileInfo::exists(kLiquidsoap)) GTEST_SKIP() << "liquidsoap is not installed";
  const DemoOfNoise demo;
  const StationProgram& program = demo.Program();
  const ToolRun run =
      program.Run(u"playout"_s, {u"--form"_s, u"liquidsoap"_s, u"--to"_s, demo.Out(), u"--at"_s, demo.Moment()});
  ASSERT_EQ(run.exitCode, kDone) << run.err;

  QList<Line> lines;
  QStringList blocks;
  for (int id = 1; id <= demo::Items().size(); ++id) {
    blocks += QString::number(id);
    const QList<Line> block = LinesOf(demo.Out() + u"/blok-%1.m3u"_s.arg(id));
    EXPECT_FALSE(block.isEmpty()) << "block " << id << "\n" << run.out;
    lines += block;
  }
  const QString recording = program.At(u"proef.wav"_s);
  const QString log = program.At(u"gespeeld.csv"_s);
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"SPOTROOSTER_PLAYOUT"_s, demo.Out());
  environment.insert(u"SPOTROOSTER_PROEF"_s, recording);
  environment.insert(u"SPOTROOSTER_BLOKKEN"_s, blocks.join(u','));
  environment.insert(u"SPOTROOSTER_LOG"_s, log);
  const QString script = program.At(u"spotrooster.liq"_s);
  ASSERT_TRUE(QFile::copy(QStringLiteral(SPOTROOSTER_SOURCE) + u"/packaging/playout/spotrooster.liq"_s, script));
  OpenToAll(program.Folder());
  const QByteArray said = RunLiquidsoap(environment, script);
  const Sound heard = Recorded(recording);
  ASSERT_FALSE(heard.empty()) << said.toStdString();
  ExpectHeard(lines, heard, said);

  const std::set<int> expired = ExpiredSpots();
  QStringList played;
  for (const Line& line : std::as_const(lines)) {
    EXPECT_FALSE(expired.contains(line.spot)) << line.path.toStdString();
    if (line.spot != 0) played += QString::number(line.spot);
  }
  QFile logFile(log);
  ASSERT_TRUE(logFile.open(QIODevice::ReadOnly));
  QStringList logged;
  for (const QString& entry : QString::fromUtf8(logFile.readAll()).split(u'\n', Qt::SkipEmptyParts))
    logged += entry.section(u',', 1, 1);
  EXPECT_EQ(logged, played) << "each spot once, when it starts";
  ExpectCountedOnce(program, log, played);
}

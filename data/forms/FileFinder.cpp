#include "data/forms/FileFinder.h"

#include <QElapsedTimer>

#include <utility>

namespace {

// A batch is told at the latest after this time, so that marks appear while a long list is still being looked through
// and no batch is long.
constexpr qint64 kTellEveryMs = 25;

}  // namespace

FileFinder::FileFinder(QObject* receiver, Tell tell) : tell_(std::move(tell)), errands_(receiver) {}

void FileFinder::CallOff() {
  errands_.CallOff();
}

void FileFinder::Look(std::vector<Wanted> wanted) {
  errands_.Send([this, wanted = std::move(wanted)](const Errands::Errand& errand) {
    std::vector<Found> found;
    const auto tell = [&](bool last) {
      errand.Tell([this, batch = std::exchange(found, {}), last] { tell_(batch, last); });
    };
    QElapsedTimer since;
    since.start();
    for (const Wanted& file : wanted) {
      if (!errand.IsWanted()) return;
      found.push_back({file.id, runtime::Probe(file.path)});
      if (!since.hasExpired(kTellEveryMs)) continue;
      tell(false);
      since.restart();
    }
    tell(true);
  });
}

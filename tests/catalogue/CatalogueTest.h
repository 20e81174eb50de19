// SPDX-License-Identifier: MIT
#pragma once

#include "data/Globals.h"
#include "data/forms/Form.h"
#include "platform/desktop/MessageBox.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/Station.h"
#include "tests/support/Ui.h"

#include <QApplication>
#include <QPushButton>
#include <QStringList>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>

namespace controls {
class ListBox;
}

using testing_support::Child;
using testing_support::Click;
using testing_support::ModalDriver;
using testing_support::Station;

// The lists of the catalogue.
enum class Kind { Spots, Items, Pingles };

// Texts in failure messages of GoogleTest.
inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}

// A station with the catalogue's screens registered, fake detail editors, and a script that answers boxes.
class CatalogueTest : public ::testing::Test {
 protected:
  explicit CatalogueTest(Station::Mode mode = Station::Mode::Online);
  ~CatalogueTest() override;

  struct Spot {
    int id = 0;
    QString naam;
    QString path;
    int aktief = 1;
  };

  // The name of a table in the current mode: "Items" is tblItems or tblCopie_Items.
  static QString Table(const QString& things);
  void AddItem(int id, const QString& naam, int aktief = 1);
  void AddSpot(const Spot& spot);
  void AddPingle(int id, const QString& naam);
  void Link(int itemID, int order, int spotID);
  // Makes a small file in the station's audio folder; returns its path text.
  QString AudioFile(const QString& name);
  static bool FileIsThere(const QString& pathText);

  // Loads and shows the form as a caller does, but without waiting until it closes.
  template <class Dialog>
  void Open(Dialog& dialog) {
    dialog.Form_Load();
    dialog.show();
    QApplication::setActiveWindow(&dialog);  // shortcuts work in the active window only
  }
  static QStringList Lines(const Form& form);
  static controls::ListBox& List(const Form& form);
  static void Select(const Form& form, const QString& line);
  static bool Enabled(const Form& form, const QString& button);

  // The database of the current mode gets another name, as if it were lost; and its own name again.
  void LoseDatabase() const;
  void FindDatabase() const;

  // The IDs of a table's rows, in order.
  QList<int> IDs(const QString& things) const;
  static QList<int> Numbers(dao::Recordset rows, const QString& field);

  // What the boxes showed, as "title: text".
  QStringList Boxes() const;
  // The text of the only box shown; it must have this title and the critical style.
  QString OnlyError(const QString& title) const;

  Station station_;
  desktop::MessageBoxScript boxes_;
  QStringList visits_;                    // what each editor was opened with: "ItemSpotsDetail 3"
  const QWidget* editorOwner_ = nullptr;  // of the last one
  std::function<void()> inTheEditor_;     // run by the fake editor before it closes
};

// The same in both modes.
class CatalogueTestInBothModes : public CatalogueTest, public ::testing::WithParamInterface<Station::Mode> {
 protected:
  CatalogueTestInBothModes() : CatalogueTest(GetParam()) {}
};

inline std::string ModeName(const ::testing::TestParamInfo<Station::Mode>& info) {
  return info.param == Station::Mode::Online ? "Online" : "Offline";
}

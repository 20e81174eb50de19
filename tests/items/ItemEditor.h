// SPDX-License-Identifier: MIT
#pragma once

#include "items/frmItemsDetail.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/LedPanel.h"
#include "platform/controls/ListBox.h"
#include "platform/desktop/MessageBox.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/Station.h"
#include "tests/support/Ui.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

// An item editor on a real station with three item-spots and three jingles.
class ItemEditor : public testing::Test {
 protected:
  explicit ItemEditor(testing_support::Station::Mode mode = testing_support::Station::Mode::Online);

  // Opens the editor on a record's ID, or on a new item.
  void Open(const QString& selected);
  void OpenNew();

  QLineEdit& Edit(const QString& name) const { return testing_support::Child<QLineEdit>(*editor_, name); }
  QCheckBox& Check(const QString& name) const { return testing_support::Child<QCheckBox>(*editor_, name); }
  QRadioButton& Option(const QString& name) const { return testing_support::Child<QRadioButton>(*editor_, name); }
  QPushButton& Button(const QString& name) const { return testing_support::Child<QPushButton>(*editor_, name); }
  controls::ComboBox& Combo(const QString& name) const {
    return testing_support::Child<controls::ComboBox>(*editor_, name);
  }
  controls::LedPanel& Mix() const;
  controls::ListBox& List() const;

  void Click(const QString& button) const;
  bool IsOpen() const { return editor_->isVisible(); }

  // Fills a new item of option 1 with valid values.
  void FillListItem() const;
  // The same for option 2.
  void FillPatternItem() const;
  // Inserts an item of option 1 with these spots into the current catalogue.
  void InsertListItem(int id, const QString& naam, const QList<int>& spots) const;
  // The spots of item 1 on the server, in order.
  QList<int> SavedSpots() const;

  testing_support::Station station_;
  std::unique_ptr<frmItemsDetail> editor_;
};

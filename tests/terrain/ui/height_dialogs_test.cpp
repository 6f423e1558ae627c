#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>

#include "terrain/ui/random_terrain_dialog.h"
#include "terrain/ui/sample_bits_dialog.h"

namespace mw {
namespace {

// Acts on the dialog that opens next; it must be closed afterwards.
void WhenOpen(std::function<void(QDialog&)> act) {
  QTimer::singleShot(0, qApp, [act] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_TRUE(dialog);
    act(*dialog);
    if (dialog->isVisible()) {
      ADD_FAILURE() << "the dialog is still open";
      dialog->reject();
    }
  });
}

void Press(QDialog& dialog, const char* button) {
  QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
}

// The slider that the label with this text belongs to.
QSlider& Slider(QDialog& dialog, const QString& text) {
  for (const QLabel* label : dialog.findChildren<QLabel*>()) {
    if (label->text() == text) return *qobject_cast<QSlider*>(label->buddy());
  }
  throw std::logic_error(text.toStdString());
}

TEST(RandomTerrainDialogTest, StartsAtTheDefaultsEachTime) {
  for (int time = 0; time < 2; ++time) {
    WhenOpen([](QDialog& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Random Terrain Generation");
      QSlider &smoothness = Slider(dialog, "&Smoothness"), &height = Slider(dialog, "&Height");
      EXPECT_EQ(smoothness.value(), 6);
      EXPECT_EQ(smoothness.minimum(), 1);
      EXPECT_EQ(smoothness.maximum(), 7);
      EXPECT_EQ(smoothness.property("controlId"), 1031);
      EXPECT_EQ(height.value(), 10);
      EXPECT_EQ(height.minimum(), 1);
      EXPECT_EQ(height.maximum(), 25);
      EXPECT_EQ(height.property("controlId"), 1032);
      height.setValue(20);
      Press(dialog, "cancelButton");
    });
    EXPECT_FALSE(RandomTerrainDialog(nullptr));
  }
}

TEST(RandomTerrainDialogTest, TheSlidersDecideAndShowTheirValue) {
  WhenOpen([](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLabel*>("heightValue")->text(), "10");
    QTest::keyClick(&Slider(dialog, "&Smoothness"), Qt::Key_Left);
    QTest::keyClick(&Slider(dialog, "&Height"), Qt::Key_End);
    EXPECT_EQ(dialog.findChild<QLabel*>("smoothnessValue")->text(), "5");
    EXPECT_EQ(dialog.findChild<QLabel*>("heightValue")->text(), "25");
    Press(dialog, "okButton");
  });
  const auto parameters = RandomTerrainDialog(nullptr);
  ASSERT_TRUE(parameters);
  EXPECT_EQ(parameters->base, 127);
  EXPECT_EQ(parameters->amplitude, 25);
  EXPECT_EQ(parameters->smoothPasses, 5);
}

TEST(SampleBitsDialogTest, EachButtonIsADepthAndEightBitsIsChosenFirst) {
  const auto choose = [](const QString& text) {
    WhenOpen([text](QDialog& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Select Import Bits");
      for (QRadioButton* radio : dialog.findChildren<QRadioButton*>()) {
        EXPECT_EQ(radio->isChecked(), radio->text() == "&8 Bits");
        EXPECT_EQ((radio->focusPolicy() & Qt::TabFocus) != 0, radio->isChecked());
        if (radio->text() == text) radio->setFocus(), QTest::keyClick(radio, Qt::Key_Space);
      }
      Press(dialog, "okButton");
    });
    return SampleBitsDialog(nullptr, "Select Import Bits");
  };
  EXPECT_EQ(choose(""), SampleBits::Eight);
  EXPECT_EQ(choose("&16 Bits (unsigned)"), SampleBits::Sixteen);
  EXPECT_EQ(choose("&24 Bits (greyscale)"), SampleBits::TwentyFour);
}

TEST(SampleBitsDialogTest, EscapeAndCancelChooseNothing) {
  WhenOpen([](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLabel*>("noteLabel")->text(),
              "* All files are exported in RAW format.");
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  EXPECT_FALSE(SampleBitsDialog(nullptr, "Select Export Bits"));
  WhenOpen([](QDialog& dialog) { Press(dialog, "cancelButton"); });
  EXPECT_FALSE(SampleBitsDialog(nullptr, "Select Export Bits"));
}

}  // namespace
}  // namespace mw

#include "app/ui/new_level_dialog.h"

#include <QDialog>

#include "app/ui/qt_text.h"
#include "data/mod_config.h"
#include "data/ui/radio_focus.h"
#include "platform/prompts.h"
#include "ui_154_new_level.h"

namespace mw {
namespace {

constexpr const char* kDefaultName = "MyLevel";

class NewLevelDialog : public QDialog {
 public:
  explicit NewLevelDialog(QWidget* parent);
  NewLevelChoices Choices() const;

 private:
  void ShowFirstValues();
  void ShowDefaults();
  void ConnectControls();
  void WarnOfLargeLevels();
  void AcceptName();

  Ui::NewLevelForm form_;
  std::string name_;  // once it was accepted
};

NewLevelDialog::NewLevelDialog(QWidget* parent) : QDialog(parent) {
  form_.setupUi(this);
  ConnectControls();
  ShowFirstValues();
  LetTabGoToCheckedRadios(*this);
}

void NewLevelDialog::ConnectControls() {
  connect(form_.heightScaleSlider, &QSlider::valueChanged, this, [this](int tenths) {
    form_.heightScaleValue->setText(QString::number(tenths * 0.1, 'f', 1));
    form_.heightScaleNotice->setText(FromText(HeightScaleNotice(tenths)));
    form_.heightScaleNotice->setVisible(!form_.heightScaleNotice->text().isEmpty());
  });
  connect(form_.largeButton, &QRadioButton::clicked, this, &NewLevelDialog::WarnOfLargeLevels);
  connect(form_.waterCheck, &QCheckBox::toggled, this, [this](bool water) {
    if (!water && form_.largeButton->isChecked()) form_.mediumButton->setChecked(true);
  });
  connect(form_.defaultsButton, &QPushButton::clicked, this, &NewLevelDialog::ShowDefaults);
  connect(form_.okButton, &QPushButton::clicked, this, &NewLevelDialog::AcceptName);
}

void NewLevelDialog::ShowFirstValues() {
  const NewLevelChoices first;
  form_.nameEdit->setMaxLength(static_cast<int>(kMaxLevelName));
  form_.nameEdit->setText(FromText(modConfig.LevelName.View()));
  form_.mediumButton->setChecked(true);
  form_.heightScaleSlider->setRange(kMinHeightScaleTenths, kMaxHeightScaleTenths);
  form_.heightScaleSlider->setValue(first.heightScaleTenths);
  form_.conquestCheck->setChecked(true);
  form_.teamDeathMatchCheck->setChecked(true);
  form_.randomTerrainCheck->setChecked(true);
  for (int i = 0; i < modConfig.theatreCount; ++i) {
    form_.theatreCombo->addItem(FromText(modConfig.theatres[static_cast<std::size_t>(i)].View()));
  }
  form_.nameEdit->selectAll();
}

// Theatre and random terrain stay as they are.
void NewLevelDialog::ShowDefaults() {
  modConfig.LevelName = kDefaultName;
  form_.nameEdit->setText(kDefaultName);
  form_.heightScaleSlider->setValue(NewLevelChoices().heightScaleTenths);
  form_.mediumButton->setChecked(true);
  form_.singlePlayerCheck->setChecked(false);
  form_.conquestCheck->setChecked(true);
  form_.teamDeathMatchCheck->setChecked(true);
  form_.captureTheFlagCheck->setChecked(true);
  form_.waterCheck->setChecked(false);
}

void NewLevelDialog::WarnOfLargeLevels() {
  ShowPrompt(
      "WARNING: Large maps are used for open sea maps.\nYou will not be able to use a large "
      "map for all terrain levels\nwithout using a huge amount of resources.",
      "Large Map", PromptButtons::Ok, PromptIcon::Stop);
  form_.waterCheck->setChecked(true);
}

void NewLevelDialog::AcceptName() {
  const auto name = AcceptLevelName(form_.nameEdit->text().toStdString());
  if (!name) {
    form_.nameEdit->setFocus();
    return;
  }
  name_ = *name;
  accept();
}

NewLevelChoices NewLevelDialog::Choices() const {
  NewLevelChoices choices;
  choices.name = name_;
  choices.size = form_.smallButton->isChecked()   ? LevelSize::Small
                 : form_.largeButton->isChecked() ? LevelSize::Large
                                                  : LevelSize::Medium;
  choices.heightScaleTenths = form_.heightScaleSlider->value();
  choices.rules = {form_.singlePlayerCheck->isChecked(), form_.conquestCheck->isChecked(),
                   form_.teamDeathMatchCheck->isChecked(), form_.captureTheFlagCheck->isChecked()};
  choices.water = form_.waterCheck->isChecked();
  choices.theatre = form_.theatreCombo->currentText().toStdString();
  choices.randomTerrain = form_.randomTerrainCheck->isChecked();
  return choices;
}

}  // namespace

std::optional<NewLevelChoices> RunNewLevelDialog(QWidget* owner) {
  NewLevelDialog dialog(owner);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Choices();
}

}  // namespace mw

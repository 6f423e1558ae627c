#include <algorithm>

#include "data/ui/environment_dialogs.h"
#include "data/ui/environment_fields.h"
#include "ui_2006_team_selection.h"

namespace mw {
namespace {

void ShowTeams(QComboBox& list, std::int32_t chosen) {
  const int count = std::clamp(modConfig.teamCount, 0, kMaxTeams);
  for (int team = 0; team < count; ++team) {
    list.addItem(QString::fromUtf8(modConfig.teams[static_cast<std::size_t>(team)].name.c_str()));
  }
  list.setCurrentIndex(chosen < count ? chosen : -1);
}

void StoreTeam(const QComboBox& list, std::int32_t& chosen) {
  if (list.currentIndex() >= 0) ChangeSetting<std::int32_t>(chosen, list.currentIndex());
}

void ShowTeamSelection(const Ui::TeamSelection& ui) {
  ShowTeams(*ui.teamOneCombo, modConfig.chosenTeam[0]);
  ShowTeams(*ui.teamTwoCombo, modConfig.chosenTeam[1]);
  DisableWhatIsNotKept(
      {{ui.teamOneCombo, "game.setTeamSkin 1"}, {ui.teamTwoCombo, "game.setTeamSkin 2"}});
}

void StoreTeamSelection(const Ui::TeamSelection& ui) {
  StoreTeam(*ui.teamOneCombo, modConfig.chosenTeam[0]);
  StoreTeam(*ui.teamTwoCombo, modConfig.chosenTeam[1]);
}

}  // namespace

bool TeamSelectionDialog(QWidget* owner) {
  return RunSettingsDialog<Ui::TeamSelection>(owner, ShowTeamSelection, StoreTeamSelection);
}

}  // namespace mw

// What commands do, where it is more than one call: for the rows of the command table.
#pragma once

namespace mw {

// Of the File menu. What replaces the open level first offers to save it.
void CreateLevelOnCommand();
void OpenLevelOnCommand();
void ExitOnCommand();

void CopyOnCommand();
// The next press in the view will paste.
void PasteOnCommand();

// How the ground is drawn.
void ShowWireframe();
void ShowTextured();
void ShowTexturedWireframe();
void SwitchReliefShading();

// Of the Tools menu. The last three need an installed game that is new enough, and say so.
void GenerateMaterialMapOnCommand();
void GenerateSurfaceMapsOnCommand();
void GenerateTerrainShadowsOnCommand();
void MergeTerrainLightmapsOnCommand();
void GenerateObjectLightmapsOnCommand();

// The pages of the working folder. The status bar says so when one cannot be opened.
void OpenUsersGuide();
void OpenTutorial();

}  // namespace mw

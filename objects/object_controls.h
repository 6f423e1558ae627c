// Identifiers of the buttons on the Object Mapper's toolbar; they are also the commands that keys
// send.
#pragma once

namespace mw {

enum class ObjectControl : int {
  ShowStandardMeshes = 4000,
  ShowTreeMeshes = 4001,
  ShowObjectSpawns = 4002,
  ShowSoldierSpawns = 4003,
  ShowControlPoints = 4004,
  ViewBoundingBox = 4005,
  ViewCollisionMesh = 4006,
  ViewDetailMesh = 4007,
  ViewTexturedMesh = 32796,
  Select = 4008,
  Translate = 4009,
  RaiseLower = 4010,
  RotateX = 4011,
  RotateY = 4012,
  RotateZ = 4013,
  ScaleWidth = 4015,
  ScaleHeight = 4016,
  Scatter = 4017,
  SnapToGround = 4014,
  GridStep = 4020,
  TurnStep = 4021
};

}  // namespace mw

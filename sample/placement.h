// Puts objects on the ground of a level.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "sample/levels.h"

namespace mw::sample {

class Placer {
 public:
  explicit Placer(const Landscape& land) : land_(land) {}

  // On the ground, `above` world units over it.
  void Put(std::string_view name, Point at, float heading, float above = 0);
  void PutAt(std::string_view name, Point at, float heading, float height);
  // A row from `from` towards `to`, each piece turned along it (its front to the left) and `length`
  // long.
  void PutRow(std::string_view name, Point from, Point to, float length);
  // A row beside a road that turns with it, `beside` world units to the right of its centre line
  // (to the left when negative), from the road's point nearest to `from` to that nearest to `to`.
  void PutAlongRoad(std::string_view name, const Road& road, Point from, Point to, float beside,
                    float length);
  // Groups of trees on grassland: away from roads, built-up places and other objects. Pines grow
  // high, birches near water, oaks elsewhere.
  void PlantWoods(int trees, std::uint32_t seed);

  std::vector<PlacedObject> Take() { return std::move(objects_); }

 private:
  // One piece of a row, from one end to the other.
  void PutBetween(std::string_view name, Point from, Point to);
  bool IsFree(Point at, float distance) const;
  bool CarriesTrees(Point at) const;
  std::string_view TreeFor(Point at, float chance) const;

  const Landscape& land_;
  std::vector<PlacedObject> objects_;
};

}  // namespace mw::sample

#include "bench/plain/object_scene.h"

#include <GL/gl.h>
#include <cmath>
#include <map>
#include <numbers>

#include "core/camera.h"
#include "data/mod_config.h"

namespace mw {
namespace {

std::map<MeshListId, GLuint> displayLists;

struct Side {
  Vector3 corners[4];  // of the unit box
};
constexpr Side kSides[] = {
    {{{1, 0, 0}, {1, 1, 0}, {1, 1, 1}, {1, 0, 1}}}, {{{0, 0, 0}, {0, 0, 1}, {0, 1, 1}, {0, 1, 0}}},
    {{{0, 1, 0}, {0, 1, 1}, {1, 1, 1}, {1, 1, 0}}}, {{{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}}},
    {{{0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}}}, {{{0, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 0, 0}}}};

void DrawSurface(const MeshSurface& surface) {
  glBindTexture(GL_TEXTURE_2D, surface.texture);
  const bool lines = surface.kind == MeshSurface::Kind::Lines;
  if (lines) glLineWidth(surface.lineWidth);
  glBegin(lines ? GL_LINES : GL_TRIANGLES);
  for (const std::uint32_t index : surface.indices) {
    const MeshVertex& vertex = surface.vertices[index];
    glTexCoord2f(vertex.u, vertex.v);
    glVertex3f(vertex.position.x, vertex.position.y, vertex.position.z);
  }
  glEnd();
  if (lines) glLineWidth(1);
}

void PlainColour(const StaticObject& object, bool hovered, MeshKind kind) {
  if (hovered && object.selected) return glColor3ub(255, 255, 0);
  if (hovered) return glColor3ub(0, 255, 0);
  if (object.selected) return glColor3ub(255, 0, 0);
  if (kind == MeshKind::TreeMesh) return glColor3ub(0, 255, 0);
  glColor3ubv(object.boxColour.data());
}

bool IsHoveredPlainly(const Vector3& p, float boxTop) {
  const Vector3& c = objectStore.CursorPoint;
  const float y0 = p.y + boxTop;
  return p.x - 0.75f <= c.x && c.x <= p.x + 0.75f && y0 <= c.y && c.y <= y0 + 1.75f &&
         p.z - 0.75f <= c.z && c.z <= p.z + 0.75f;
}

void DrawPlainMarker(float boxTop, bool red) {
  const Vector3& f = camera.direction;
  if (red)
    glColor3ub(255, 0, 0);
  else
    glColor3ub(255, 255, 255);
  glLineWidth(8);
  glBegin(GL_LINE_STRIP);
  glVertex3f(0, boxTop, 0);
  glVertex3f(-f.x * f.y, boxTop + 4.75f, -f.z * f.y);
  glEnd();
}

void DrawPlainMesh(const StaticObject& object, bool hovered, MeshKind kind) {
  const GLuint list = displayLists[object.lists[static_cast<std::size_t>(objectStore.viewMode)]];
  PlainColour(object, hovered, kind);
  if (objectStore.viewMode != ViewMode::TexturedMesh) {
    glLineWidth(1);
    glCallList(list);
    return;
  }
  glDisable(GL_BLEND);
  glColor4f(1, 1, 1, 1);
  glEnable(GL_TEXTURE_2D);
  glCallList(list);
  glDisable(GL_TEXTURE_2D);
}

void DrawPlainObject(const StaticObject& object, const CatalogueEntry& entry, int& hoveredObject,
                     int index) {
  const Vector3 p = object.ViewPosition();
  const bool shown = entry.meshKind == MeshKind::StandardMesh ? objectStore.showStandardMeshes
                                                              : objectStore.showTreeMeshes;
  const double margin = std::trunc(entry.boxA.DistanceTo(entry.boxB) * 2 / 3);
  if (!shown || !camera.IsPointVisible(p.x, p.y, p.z, -static_cast<float>(margin))) return;
  const bool hovered = hoveredObject < 0 && IsHoveredPlainly(p, entry.boxB.y);
  if (hovered) hoveredObject = index;
  glPushMatrix();
  glTranslatef(p.x, p.y, p.z);
  DrawPlainMarker(entry.boxB.y, hovered || object.selected);
  glRotatef(object.rotation.x, 0, -1, 0);
  glRotatef(object.rotation.y, 1, 0, 0);
  glRotatef(object.rotation.z, 0, 0, -1);
  glScalef(-object.scale.x, object.scale.y, object.scale.z);
  DrawPlainMesh(object, hovered, entry.meshKind);
  glPopMatrix();
}

MeshVertex OnBall(int ring, int step, int rings, int steps, float radius) {
  const float up = std::numbers::pi_v<float> * static_cast<float>(ring) / static_cast<float>(rings);
  const float round =
      2 * std::numbers::pi_v<float> * static_cast<float>(step) / static_cast<float>(steps);
  return {
      Vector3{std::sin(up) * std::cos(round), 1 - std::cos(up), std::sin(up) * std::sin(round)} *
          radius,
      static_cast<float>(step) / static_cast<float>(steps),
      static_cast<float>(ring) / static_cast<float>(rings)};
}

}  // namespace

unsigned MakeSideTexture() {
  constexpr int kWidth = 48, kStripe = kWidth / 6;
  std::vector<std::uint8_t> rgb;
  for (int x = 0; x < kWidth; ++x) {
    const PictureColour& colour = kSideColours[static_cast<std::size_t>(x / kStripe)];
    rgb.insert(rgb.end(), colour.begin(), colour.end());
  }
  GLuint name = 0;
  glGenTextures(1, &name);
  glBindTexture(GL_TEXTURE_2D, name);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, kWidth, 1, 0, GL_RGB, GL_UNSIGNED_BYTE, rgb.data());
  glBindTexture(GL_TEXTURE_2D, 0);
  return name;
}

void AddBox(MeshSurface& surface, const Vector3& low, const Vector3& high) {
  const Vector3 size = high - low;
  float u = 1.0f / 12;
  for (const Side& side : kSides) {
    const auto base = static_cast<std::uint32_t>(surface.vertices.size());
    for (const Vector3& c : side.corners)
      surface.vertices.push_back({low + Vector3{c.x * size.x, c.y * size.y, c.z * size.z}, u, 0});
    for (const std::uint32_t corner : {0u, 1u, 2u, 0u, 2u, 3u})
      surface.indices.push_back(base + corner);
    u += 1.0f / 6;
  }
}

MeshSurface LetterF(unsigned texture) {
  MeshSurface letter;
  letter.texture = texture;
  AddBox(letter, {0, 0, 0}, {1, 5, 1});
  AddBox(letter, {1, 4, 0}, {4, 5, 1});
  AddBox(letter, {1, 2, 0}, {3, 3, 1});
  return letter;
}

MeshSurface Ball(int triangles, float radius, unsigned texture) {
  MeshSurface ball;
  ball.texture = texture;
  const int rings = static_cast<int>(std::sqrt(triangles / 4.0)), steps = triangles / 2 / rings;
  for (int ring = 0; ring <= rings; ++ring)
    for (int step = 0; step <= steps; ++step)
      ball.vertices.push_back(OnBall(ring, step, rings, steps, radius));
  for (int ring = 0; ring < rings; ++ring) {
    for (int step = 0; step < steps; ++step) {
      const auto a = static_cast<std::uint32_t>(ring * (steps + 1) + step);
      const auto b = a + static_cast<std::uint32_t>(steps) + 1;
      for (const std::uint32_t index : {a, b, a + 1, a + 1, b, b + 1})
        ball.indices.push_back(index);
    }
  }
  return ball;
}

MeshListId MakeSceneMesh(std::span<const MeshSurface> surfaces) {
  const MeshListId list = CreateMeshList(surfaces);
  const GLuint plainList = glGenLists(1);
  glNewList(plainList, GL_COMPILE);
  for (const MeshSurface& surface : surfaces) DrawSurface(surface);
  glEndList();
  displayLists[list] = plainList;
  return list;
}

void DeleteSceneMeshes() {
  for (const auto& [list, plainList] : displayLists) {
    DeleteMeshList(list);
    glDeleteLists(plainList, 1);
  }
  displayLists.clear();
}

int AddSceneEntry(MeshKind kind, const Vector3& boxA, const Vector3& boxB) {
  ObjectCatalogue& catalogue = objectStore.catalogue;
  CatalogueEntry& entry = catalogue.entries[static_cast<std::size_t>(catalogue.entryCount)];
  entry = CatalogueEntry{};
  entry.meshKind = kind;
  entry.boxA = boxA;
  entry.boxB = boxB;
  return catalogue.entryCount++;
}

StaticObject& AddSceneObject(int entry, MeshListId list, const Vector3& levelPosition) {
  StaticObject& object = objectStore.objects.emplace_back();
  object.catalogueIndex = entry;
  object.meshIndex = 0;
  object.lists.fill(list);
  object.position = levelPosition;
  object.boxColour = {90, 120, 150};
  return object;
}

void plain::DrawStaticObjects() {
  int hoveredObject = -1, index = 0;
  for (const StaticObject& object : objectStore.objects) {
    const int at = index++;
    if (object.meshIndex < 0 || object.catalogueIndex < 0) continue;
    const auto& entry =
        objectStore.catalogue.entries[static_cast<std::size_t>(object.catalogueIndex)];
    DrawPlainObject(object, entry, hoveredObject, at);
  }
}

}  // namespace mw

// The pictures of the working folder: media/ and the texture sets "Default" and "Winter".
#include <array>
#include <atomic>
#include <functional>
#include <thread>
#include <vector>

#include "assets/charts.h"
#include "assets/ground.h"
#include "assets/media_files.h"
#include "assets/palette.h"
#include "assets/picture_file.h"
#include "assets/sky.h"
#include "assets/snow.h"
#include "assets/water.h"

namespace mw {
namespace {

using Job = std::function<bool()>;

constexpr std::array<const char*, 6> kEnvironmentNames{"South", "West", "North",
                                                       "East",  "Up",   "Down"};

// Every job runs, spread over the cores; true when all succeeded.
bool RunAll(const std::vector<Job>& jobs) {
  std::atomic<std::size_t> next{0};
  std::atomic<bool> allDone{true};
  const auto work = [&] {
    for (std::size_t i = next++; i < jobs.size(); i = next++) {
      if (!jobs[i]()) allDone = false;
    }
  };
  std::vector<std::thread> threads(std::max(1u, std::thread::hardware_concurrency()));
  for (std::thread& thread : threads) thread = std::thread(work);
  for (std::thread& thread : threads) thread.join();
  return allDone;
}

struct Folders {
  QString media, defaultSet, winterSet;
};

bool WriteBitmap(const QString& folder, const QString& file, const Picture& picture) {
  return WriteImage(folder + u'/' + file, ToImage(picture));
}

// A ground is the material's picture at half its size, and whole in each texture set.
bool WriteGround(std::size_t material, const Folders& folders) {
  const GroundKind& kind = kGroundKinds[material];
  const Picture ground = kind.paint();
  const QString file = QStringLiteral("%1.bmp").arg(kind.key);
  return WriteBitmap(folders.media, "mat_" + file, Halved(ground)) &&
         WriteBitmap(folders.defaultSet, file, ground) &&
         WriteBitmap(folders.winterSet, file, WinterGround(ground, material));
}

QString EnvironmentFile(std::size_t entry) { return QStringLiteral("env_0%1.bmp").arg(entry + 1); }

template <std::size_t size>
QByteArray Bytes(const std::array<std::uint8_t, size>& data) {
  return {reinterpret_cast<const char*>(data.data()), static_cast<qsizetype>(size)};
}

QByteArray TextureSetIndex() {
  QString text;
  for (std::size_t i = 0; i < kGroundKinds.size(); ++i) {
    text += QStringLiteral("Texture=%1,%2,%3.bmp\n")
                .arg(i)
                .arg(kGroundKinds[i].name, kGroundKinds[i].key);
  }
  for (std::size_t i = 0; i < kEnvironmentFaces.size(); ++i) {
    text += QStringLiteral("Env=%1,%2,%3\n").arg(i).arg(kEnvironmentNames[i], EnvironmentFile(i));
  }
  text +=
      QStringLiteral("Detail=detail.bmp\nTerrainPalette=terrain.pal\nObjectPalette=object.pal\n");
  return text.toLatin1();
}

bool WriteEnvironment(std::size_t entry, const Folders& folders) {
  const Picture side = PaintEnvironment(kEnvironmentFaces[entry]);
  const QString file = EnvironmentFile(entry);
  return WriteBitmap(folders.defaultSet, file, side) &&
         WriteBitmap(folders.winterSet, file, WinterSky(side));
}

bool WriteDetail(const Folders& folders) {
  const Picture detail = PaintDetail();
  return WriteBitmap(folders.defaultSet, "detail.bmp", detail) &&
         WriteBitmap(folders.winterSet, "detail.bmp", WinterDetail(detail));
}

bool WriteSetData(const QString& set, const PaletteFile& terrain, const PaletteFile& objects) {
  return WriteBytes(set + "/terrain.pal", Bytes(terrain)) &&
         WriteBytes(set + "/object.pal", Bytes(objects)) &&
         WriteBytes(set + "/index.dat", TextureSetIndex());
}

}  // namespace

bool WriteWorkingFolderMedia(const QString& folder) {
  const QString sets = folder + QStringLiteral("/TextureSets");
  const Folders folders{folder + "/media", sets + "/Default", sets + "/Winter"};
  if (!MakeFolder(folders.media) || !MakeFolder(folders.defaultSet) ||
      !MakeFolder(folders.winterSet)) {
    return false;
  }
  std::vector<Job> jobs;
  for (std::size_t i = 0; i < kGroundKinds.size(); ++i) {
    jobs.push_back([i, &folders] { return WriteGround(i, folders); });
  }
  for (std::size_t i = 0; i < kEnvironmentFaces.size(); ++i) {
    jobs.push_back([i, &folders] { return WriteEnvironment(i, folders); });
  }
  jobs.push_back([&] { return WriteDetail(folders); });
  jobs.push_back([&] { return WriteBitmap(folders.media, "nosurface.bmp", PaintNoSurface()); });
  jobs.push_back([&] { return WriteBitmap(folders.media, "water.bmp", PaintWaterFilter()); });
  jobs.push_back([&] { return WriteBitmap(folders.media, "igmfont.bmp", PaintMapGlyphs()); });
  jobs.push_back(
      [&] { return WriteSetData(folders.defaultSet, TerrainPaletteFile(), ObjectPaletteFile()); });
  jobs.push_back([&] {
    return WriteSetData(folders.winterSet, WinterTerrainPaletteFile(), WinterObjectPaletteFile());
  });
  return RunAll(jobs);
}

}  // namespace mw

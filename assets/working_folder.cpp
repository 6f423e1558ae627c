// The pictures of the working folder: media/ and the texture set "Default".
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

// A ground serves twice: whole in the texture set, and at half its size as the material's picture.
bool WriteGround(const GroundKind& kind, const QString& media, const QString& set) {
  const Picture ground = kind.paint();
  return WriteImage(QStringLiteral("%1/%2.bmp").arg(set, kind.key), ToImage(ground)) &&
         WriteImage(QStringLiteral("%1/mat_%2.bmp").arg(media, kind.key), ToImage(Halved(ground)));
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

}  // namespace

bool WriteWorkingFolderMedia(const QString& folder) {
  const QString media = folder + QStringLiteral("/media");
  const QString set = folder + QStringLiteral("/TextureSets/Default");
  if (!MakeFolder(media) || !MakeFolder(set)) return false;
  std::vector<Job> jobs;
  for (const GroundKind& kind : kGroundKinds) {
    jobs.push_back([&kind, &media, &set] { return WriteGround(kind, media, set); });
  }
  for (std::size_t i = 0; i < kEnvironmentFaces.size(); ++i) {
    jobs.push_back([i, &set] {
      return WriteImage(set + u'/' + EnvironmentFile(i),
                        ToImage(PaintEnvironment(kEnvironmentFaces[i])));
    });
  }
  jobs.push_back([&] { return WriteImage(set + "/detail.bmp", ToImage(PaintDetail())); });
  jobs.push_back([&] { return WriteImage(media + "/nosurface.bmp", ToImage(PaintNoSurface())); });
  jobs.push_back([&] { return WriteImage(media + "/water.bmp", ToImage(PaintWaterFilter())); });
  jobs.push_back([&] { return WriteImage(media + "/igmfont.bmp", ToImage(PaintMapGlyphs())); });
  jobs.push_back([&] { return WriteBytes(set + "/terrain.pal", Bytes(TerrainPaletteFile())); });
  jobs.push_back([&] { return WriteBytes(set + "/object.pal", Bytes(ObjectPaletteFile())); });
  jobs.push_back([&] { return WriteBytes(set + "/index.dat", TextureSetIndex()); });
  return RunAll(jobs);
}

}  // namespace mw

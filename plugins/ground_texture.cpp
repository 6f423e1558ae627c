#include "plugins/ground_texture.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace mw::plugin {
namespace {

constexpr int kMaxPictureSide = 8192;
constexpr std::size_t kPatternPixels = std::size_t{kPatternSide} * kPatternSide;
// The surface view lays a texture one cell further along the columns of the grid, which are the
// rows of a tile.
constexpr int kRowShift = kCellPixels;

constexpr std::array<Rgb8, MAPWRIGHT_MATERIALS> kPlainColours{{
    {128, 122, 104},  // Default
    {58, 84, 100},    // Water
    {162, 150, 96},   // Dry Grass
    {92, 116, 58},    // Wet Grass
    {150, 118, 82},   // Dry Dirt
    {84, 64, 46},     // Wet Dirt
    {76, 60, 46},     // Mud
    {58, 56, 52},     // Outside Map
    {140, 134, 126},  // Gravel
    {206, 212, 218},  // Frozen Ground
    {214, 190, 142},  // Dry Sand
    {164, 138, 100},  // Wet Sand
    {124, 118, 110},  // Rock Surface
    {190, 164, 116},  // Sand Road
    {130, 102, 72},   // Dirt Road
    {92, 90, 88},     // Paved Road
}};

// The source pixels that make up one of the pattern, along one axis.
struct Span {
  int first = 0;  // wraps at the picture's side
  std::vector<float> weights;
};

// Mean over the pattern pixel's extent, or over one source pixel where those are larger, which is
// then linear interpolation.
Span SpanOf(int place, int side) {
  const float scale = static_cast<float>(side) / kPatternSide;
  const float half = std::max(scale, 1.0f) / 2;
  const float centre = (static_cast<float>(place) + 0.5f) * scale;
  const float from = centre - half, to = centre + half;
  Span span;
  span.first = static_cast<int>(std::floor(from));
  for (int k = span.first; static_cast<float>(k) < to; ++k) {
    const float start = std::max(from, static_cast<float>(k));
    const float end = std::min(to, static_cast<float>(k + 1));
    span.weights.push_back((end - start) / (2 * half));
  }
  return span;
}

int Wrap(int value, int side) { return ((value % side) + side) % side; }

using Sum = std::array<float, 3>;

void Add(Sum& sum, const Sum& value, float weight) {
  for (std::size_t c = 0; c < sum.size(); ++c) sum[c] += weight * value[c];
}

// The picture's row, scaled to the width of the pattern.
std::vector<Sum> ScaledRow(const std::uint8_t* row, int width, const std::vector<Span>& spans) {
  std::vector<Sum> scaled(kPatternSide);
  for (std::size_t x = 0; x < scaled.size(); ++x) {
    int source = spans[x].first;
    for (const float weight : spans[x].weights) {
      const std::uint8_t* pixel = row + 3 * Wrap(source++, width);
      Add(scaled[x], {float(pixel[0]), float(pixel[1]), float(pixel[2])}, weight);
    }
  }
  return scaled;
}

std::vector<Span> SpansOf(int side) {
  std::vector<Span> spans;
  spans.reserve(kPatternSide);
  for (int place = 0; place < kPatternSide; ++place) spans.push_back(SpanOf(place, side));
  return spans;
}

Rgb8 Rounded(const Sum& sum) {
  Rgb8 rgb{};
  for (std::size_t c = 0; c < rgb.size(); ++c) {
    rgb[c] = static_cast<std::uint8_t>(std::clamp(sum[c] + 0.5f, 0.0f, 255.0f));
  }
  return rgb;
}

std::vector<Rgb8> ScaledPicture(const MapwrightTextureSlot& slot) {
  const std::vector<Span> across = SpansOf(slot.width), down = SpansOf(slot.height);
  std::vector<std::vector<Sum>> rows;
  rows.reserve(static_cast<std::size_t>(slot.height));
  for (int row = 0; row < slot.height; ++row) {
    rows.push_back(ScaledRow(slot.pixels + std::size_t{3} * slot.width * row, slot.width, across));
  }
  std::vector<Rgb8> pattern(kPatternPixels);
  for (int y = 0; y < kPatternSide; ++y) {
    const Span& span = down[static_cast<std::size_t>(Wrap(y - kRowShift, kPatternSide))];
    for (int x = 0; x < kPatternSide; ++x) {
      Sum sum{};
      int source = span.first;
      for (const float weight : span.weights) {
        Add(sum, rows[static_cast<std::size_t>(Wrap(source++, slot.height))][x], weight);
      }
      pattern[static_cast<std::size_t>(y) * kPatternSide + static_cast<std::size_t>(x)] =
          Rounded(sum);
    }
  }
  return pattern;
}

float Brightness(const Rgb8& rgb) {
  return (0.299f * rgb[0] + 0.587f * rgb[1] + 0.114f * rgb[2]) / 255;
}

std::vector<float> Prominence(const std::vector<Rgb8>& pixels) {
  double sum = 0, squares = 0;
  for (const Rgb8& pixel : pixels) {
    const double value = Brightness(pixel);
    sum += value;
    squares += value * value;
  }
  const double count = static_cast<double>(pixels.size()), mean = sum / count;
  const double spread = std::sqrt(std::max(squares / count - mean * mean, 0.0));
  std::vector<float> prominence(pixels.size());
  if (spread < 1e-3) return prominence;
  for (std::size_t k = 0; k < pixels.size(); ++k) {
    const double deviation = (Brightness(pixels[k]) - mean) / (2 * spread);
    prominence[k] = static_cast<float>(std::clamp(deviation, -1.0, 1.0));
  }
  return prominence;
}

GroundTexture GroundOf(std::vector<Rgb8> pixels, std::vector<float> prominence) {
  GroundTexture ground{std::move(pixels), {}, std::move(prominence)};
  for (std::size_t c = 0; c < ground.channels.size(); ++c) {
    ground.channels[c].reserve(ground.pixels.size());
    for (const Rgb8& pixel : ground.pixels) ground.channels[c].push_back(pixel[c]);
  }
  return ground;
}

bool HasPicture(const MapwrightTextureSlot& slot) {
  return slot.loaded && slot.pixels && slot.width > 0 && slot.height > 0 &&
         slot.width <= kMaxPictureSide && slot.height <= kMaxPictureSide;
}

}  // namespace

GroundTexture PlainGround(Material material) {
  return GroundOf(
      std::vector<Rgb8>(kPatternPixels, kPlainColours[static_cast<std::size_t>(material)]),
      std::vector<float>(kPatternPixels));
}

GroundTexture MakeGround(const MapwrightTextureSlot& slot, Material material) {
  if (!HasPicture(slot)) return PlainGround(material);
  std::vector<Rgb8> pixels = ScaledPicture(slot);
  std::vector<float> prominence = Prominence(pixels);
  return GroundOf(std::move(pixels), std::move(prominence));
}

}  // namespace mw::plugin

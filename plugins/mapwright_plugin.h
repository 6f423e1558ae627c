/* What a plug-in of Mapwright exports and what it is handed. A plug-in is a shared library beside
   the program; this header needs nothing else and serves C and C++ alike.

   mw_amm.mwp  initMatMap, generateMatMap                            materials from the terrain
   mw_smg.mwp  initSurfaceMap, initSurfaceBmp, generateSurfaceMap    surface tiles from materials

   All calls come from one thread. */
#pragma once

#include <assert.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#if defined(_WIN32)
#define MAPWRIGHT_EXPORT __declspec(dllexport)
#else
#define MAPWRIGHT_EXPORT __attribute__((visibility("default")))
#endif

enum {
  MAPWRIGHT_GRID_ROW = 1033,    /* records per row, and rows, of both grids */
  MAPWRIGHT_MAX_SIZE = 1024,    /* the largest materialSize */
  MAPWRIGHT_TILE_CELLS = 64,    /* cells per side of a surface tile */
  MAPWRIGHT_TEXTURE_CELLS = 16, /* cells after which a ground texture repeats */
  MAPWRIGHT_TILE_PIXELS = 1024, /* pixels per side of a surface tile */
  MAPWRIGHT_MATERIALS = 16
};

/* Both grids are indexed [row][column]. Vertex (i, j) lies at world x = i * cell size and
   z = j * cell size; cell (i, j) spans the vertices i - 1 ... i and j ... j + 1. Rows
   1 ... materialSize and columns 0 ... materialSize - 1 carry data. */
typedef struct MapwrightVertex {
  float x; /* world units */
  float h; /* height units, 0 ... 256; times heightScale in world units */
  float z; /* world units */
  uint32_t reserved0;
  uint8_t selected;
  uint8_t reserved1[3];
  float weight; /* of automatic smoothing */
  uint32_t reserved2[2];
} MapwrightVertex;

/* One texture of the loaded texture set; its number is that of the material it shows. */
typedef struct MapwrightTextureSlot {
  char name[16];    /* zero-terminated */
  char file[32];    /* picture within the texture set, zero-terminated */
  uint32_t texture; /* the editor's own */
  uint8_t loaded;   /* 0: width, height and pixels mean nothing */
  uint8_t reserved[3];
  int32_t width, height; /* pixels */
  const uint8_t* pixels; /* width x height x 3 bytes of RGB, rows from the bottom */
} MapwrightTextureSlot;

static_assert(sizeof(MapwrightVertex) == 32, "size of a vertex");
static_assert(offsetof(MapwrightVertex, h) == 4, "place of the height");
static_assert(offsetof(MapwrightVertex, z) == 8, "place of z");
static_assert(offsetof(MapwrightVertex, selected) == 16, "place of the selection");
static_assert(offsetof(MapwrightVertex, weight) == 20, "place of the weight");
static_assert(sizeof(MapwrightTextureSlot) == 64 + sizeof(void*), "size of a texture slot");
static_assert(offsetof(MapwrightTextureSlot, file) == 16, "place of the file name");
static_assert(offsetof(MapwrightTextureSlot, texture) == 48, "place of the texture name");
static_assert(offsetof(MapwrightTextureSlot, loaded) == 52, "place of the loaded flag");
static_assert(offsetof(MapwrightTextureSlot, width) == 56, "place of the width");
static_assert(offsetof(MapwrightTextureSlot, height) == 60, "place of the height");
static_assert(offsetof(MapwrightTextureSlot, pixels) == 64, "place of the pixels");

/* False: the plug-in cannot work, and generateMatMap is not called. */
MAPWRIGHT_EXPORT bool initMatMap(void);

/* Fills rows 1 ... materialSize, columns 0 ... materialSize - 1 of the material grid with materials
   0 ... 15. waterLevel is in world units. */
MAPWRIGHT_EXPORT void generateMatMap(int32_t materialSize, uint32_t* materials,
                                     const MapwrightVertex* vertices, float waterLevel,
                                     float heightScale);

/* Begins a run over the tiles of a level. The grid stays as it is until the run is over; offsets
   are in tiles. False: nothing is to be generated. */
MAPWRIGHT_EXPORT bool initSurfaceMap(const uint32_t* materials, int32_t materialSize,
                                     int32_t texOffsetX, int32_t texOffsetY);

/* Called for the slots 0 ... 15 after initSurfaceMap. The slot's pixels stay until the run is over.
 */
MAPWRIGHT_EXPORT void initSurfaceBmp(int32_t slot, const MapwrightTextureSlot* texture);

/* Paints a tile: size x size x 3 bytes of RGB, rows from the top, which stay the plug-in's own and
   are valid until its next call. Pixel (row y, column x) shows the cell in grid row
   materialSize - 64 * (tileRow + texOffsetX) - x / 16 and column 64 * (tileCol + texOffsetY) + y
   / 16. The editor asks for a size of MAPWRIGHT_TILE_PIXELS. Null: no tile can be made. */
MAPWRIGHT_EXPORT const uint8_t* generateSurfaceMap(int32_t size, int32_t tileRow, int32_t tileCol);

#ifdef __cplusplus
}
#endif
